// SPDX-License-Identifier: GPL-3.0-or-later
// Selects the residues of what a search has found in the rows of an alignment. Inside a guard.
#pragma once

#include "RowSearch.h"

namespace ZEP {

// Of matches in the simple language.
void selectCells(TAMBO::Alignment &alignment, const RowSearch::Found &found);

// Of matches of a regular expression; the log tells how often each row has it.
void selectMatches(TAMBO::Alignment &alignment, const QString &pattern,
                   const RowSearch::Found &found);

// One match in a row.
void selectMatch(TAMBO::Alignment &alignment, unsigned long row, unsigned long begin,
                 unsigned long length);

} // namespace ZEP
