// SPDX-License-Identifier: GPL-3.0-or-later
// Finds gaps of a row for its breaks between chains to stand on.
#pragma once

#include "OccupancyRow.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace TAMBO {

// Of each break in turn; nothing for one that has no gap.
using BreakColumns = std::vector<std::optional<OccupancyRow::Column>>;

// Each break keeps its wanted column if that is a gap between its residues, or gets the nearest one
// that is free; one without a wish gets the first. No two share a gap, so some may get none.
// Letters are the numbers of residues before each break, ascending. The row ends at width.
[[nodiscard]] BreakColumns placeBreaks(const OccupancyRow &cells,
                                       const std::vector<std::uint32_t> &letters,
                                       const BreakColumns &wanted, OccupancyRow::Column width);

} // namespace TAMBO
