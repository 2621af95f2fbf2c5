// SPDX-License-Identifier: GPL-3.0-or-later
// What one cell of an alignment is, in a line for people.
#pragma once

#include "CellPlaces.h"

#include <QString>

namespace TAMBO {
class Alignment;
class Compound;
} // namespace TAMBO

namespace companion {

// Its row and name, its column, its residue with number and chain, where it does not fit the
// structure, and what the column has most of.
// Rows and columns count from 1. Empty for a cell that the alignment does not have.
[[nodiscard]] QString placeText(const TAMBO::Alignment &alignment, const TAMBO::CellIndex &cell);

// The chain of a loaded structure that a residue of a row is of, also when the row's sequence is
// one of its own and only tied to the chain; null without one.
[[nodiscard]] const TAMBO::Compound *chainOf(const TAMBO::Compound &residue);

} // namespace companion
