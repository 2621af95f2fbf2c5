// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ColumnCounts.h"

#include <string>

namespace companion {

// The most frequent amino acid of a column: several where they are equally frequent, from A to Z,
// none where the column has none. More gaps or other letters than that do not matter.
[[nodiscard]] std::string consensus(const ColumnCounts &counts);

// The share of rows that have the most frequent amino acid, from 0 to 1: of all rows, those with a
// gap here, too. 0 without rows.
[[nodiscard]] double consensusShare(const ColumnCounts &counts) noexcept;

} // namespace companion
