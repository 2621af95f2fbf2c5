// SPDX-License-Identifier: GPL-3.0-or-later
// What is said of a comparison.
#pragma once

#include <QString>

#include <cstdint>

namespace companion {

struct Comparison;

// Cut off and not rounded, so that 100 % is said of all alone.
[[nodiscard]] QString shareText(std::uint64_t part, std::uint64_t whole);

// Without a stretch that differs.
[[nodiscard]] QString noDifference(const Comparison &found);

} // namespace companion
