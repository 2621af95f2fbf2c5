// SPDX-License-Identifier: GPL-3.0-or-later
// Finds a pattern in the rows of an alignment and selects the residues of what it finds. Inside a
// guard.
#pragma once

#include "Alignment.h"

class QString;

namespace ZEP {

// In the simple language of CellPattern; matches may overlap.
void selectCells(TAMBO::Alignment &alignment, const QString &pattern);

// As a regular expression; the log tells how often each row has it.
void selectMatches(TAMBO::Alignment &alignment, const QString &pattern);

// One match in a row.
void selectMatch(TAMBO::Alignment &alignment, unsigned long row, unsigned long begin,
                 unsigned long length);

} // namespace ZEP
