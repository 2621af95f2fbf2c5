// SPDX-License-Identifier: GPL-3.0-or-later
// Coloring the residues of an alignment by what else stands in their columns.
#pragma once

#include "ColumnRules.h"

#include <vector>

class QWidget;

namespace TAMBO {
class Alignment;
}

namespace companion {

// One for each column, of all rows.
[[nodiscard]] std::vector<ColumnCounts> countColumns(const TAMBO::Alignment &alignment);

// Every residue as the rule wants it, and white where it has no color for it; one step of undo.
// False when nothing can be changed now, of which the workbench tells why, or when the user has
// cancelled it, in a dialog over the widget that comes when it takes a while.
bool colorByColumn(TAMBO::Alignment &alignment, ColumnRule rule, QWidget *over = nullptr);

} // namespace companion
