// SPDX-License-Identifier: GPL-3.0-or-later
// In which order rows are to stand: at place i of an order stands the row that is to come there.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace companion {

using RowOrder = std::vector<unsigned long>;

enum class RowMove { ToTop, Up, Down };

// Of so many rows. The chosen ones are in ascending order; they keep their order, and so do the
// others. Up and down, each run of them steps over one row, as long as there is one.
[[nodiscard]] RowOrder moved(unsigned long rows, const std::vector<unsigned long> &chosen,
                             RowMove move);

// A row that is in no group.
inline constexpr std::uint32_t kNoGroup = 0xffffffffU;

// The rows of each group come together at the place of the first of them; all else keeps its order.
// groups has the number of each row's group.
[[nodiscard]] RowOrder grouped(const std::vector<std::uint32_t> &groups);

// Names in the order of these are in that of people: numbers by their value, so that 2 is before
// 10, and capital letters with small ones. No two names have the same.
[[nodiscard]] std::string naturalKey(std::string_view name);

} // namespace companion
