// SPDX-License-Identifier: GPL-3.0-or-later
// Sends what a file holds into a pipe or a device, whose other end may keep us waiting.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>

namespace TAMBO::formats {

// The error of the system, 0 for none. step is asked, with the bytes sent and all of them, also
// while nobody reads; false ends it with ECANCELED. Without it, it waits as long as it takes.
[[nodiscard]] int
sendFile(const std::filesystem::path &from, const std::filesystem::path &to,
         const std::function<bool(std::uint64_t done, std::uint64_t total)> &step);

} // namespace TAMBO::formats
