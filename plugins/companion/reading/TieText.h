// SPDX-License-Identifier: GPL-3.0-or-later
// What is to be said of a cell that does not fit the structure of its row.
#pragma once

#include "AlignmentDetails.h"
#include "CellPlaces.h"

#include <QString>

namespace TAMBO {
class Alignment;
}

namespace companion {

// Empty for one that fits, a gap, and a row without a structure.
[[nodiscard]] QString tieText(const TAMBO::CellTie &tie);
[[nodiscard]] QString tieText(const TAMBO::Alignment &alignment, const TAMBO::CellIndex &cell);

} // namespace companion
