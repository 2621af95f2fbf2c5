// SPDX-License-Identifier: GPL-3.0-or-later
// When residues are placed anew, some of the new columns hold what an old one held; what is said of
// that one holds for them still.
#pragma once

#include "AlignmentTable.h"

#include <optional>
#include <vector>

namespace TAMBO {

// For each of count new columns the old one, counted from the range's first, that held the very
// same residues. cells has a row for each of the table's, with as many residues as that has in the
// range.
[[nodiscard]] std::vector<std::optional<AlignmentTable::Column>>
carriedColumns(const AlignmentTable &table, const AlignmentTable::Range &range,
               const std::vector<OccupancyRow> &cells, AlignmentTable::Column count);

} // namespace TAMBO
