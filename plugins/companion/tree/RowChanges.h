// SPDX-License-Identifier: GPL-3.0-or-later
// What the tree does to the rows of an alignment.
#pragma once

#include <vector>

namespace TAMBO {
class Alignment;
}

namespace companion {

// The residues of the rows, in ascending order, besides what is selected in the alignment or
// instead of it. False when it may not be changed now.
bool selectRows(TAMBO::Alignment &alignment, const std::vector<unsigned long> &rows, bool adds);

// These rows come first, in this order, and the others behind them, as one named step of undo.
// False when it may not be changed now.
bool sortRows(TAMBO::Alignment &alignment, const std::vector<unsigned long> &rows);

} // namespace companion
