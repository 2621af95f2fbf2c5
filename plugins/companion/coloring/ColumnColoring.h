// SPDX-License-Identifier: GPL-3.0-or-later
// Coloring the residues of an alignment by what else stands in their columns.
#pragma once

#include "ColumnRules.h"

#include <vector>

namespace TAMBO {
class Alignment;
}

namespace companion {

// One for each column, of all rows.
[[nodiscard]] std::vector<ColumnCounts> countColumns(const TAMBO::Alignment &alignment);

// Every residue as the rule wants it, and white where it has no color for it; one step of undo.
// False when nothing can be changed now, of which the workbench tells why.
bool colorByColumn(TAMBO::Alignment &alignment, ColumnRule rule);

} // namespace companion
