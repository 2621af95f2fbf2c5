// SPDX-License-Identifier: GPL-3.0-or-later
// What a user resting on a cell of an alignment is told about it.
#pragma once

#include <QString>

namespace TAMBO {
class Alignment;
}

// Sequence and column, counted from 1, and for a residue its type, letter, number and chain.
[[nodiscard]] QString cellToolTip(const TAMBO::Alignment &alignment, unsigned long row,
                                  unsigned long col);
