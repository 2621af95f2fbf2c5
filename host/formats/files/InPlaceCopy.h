// SPDX-License-Identifier: GPL-3.0-or-later
// Gives a file other content while it stays the same file, for those that cannot be replaced by
// another one.
#pragma once

#include "Result.h"

#include <cstdint>
#include <filesystem>
#include <functional>

namespace TAMBO::formats {

// Writes the content of one file over that of another. That is no single act as replacing is: the
// old content is kept in the scratch folder meanwhile, and put back when something fails; should
// it not come back either, both are kept, the failure tells where, and isDamaged becomes true. step
// is asked, with the bytes of the old content that are kept and all of them, until the file itself
// is touched; false calls it off.
[[nodiscard]] Result<void>
copyInPlace(const std::filesystem::path &from, const std::filesystem::path &target,
            const std::filesystem::path &scratch, bool &isDamaged,
            const std::function<bool(std::uint64_t done, std::uint64_t total)> &step = {});

} // namespace TAMBO::formats
