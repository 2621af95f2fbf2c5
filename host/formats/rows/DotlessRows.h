// SPDX-License-Identifier: GPL-3.0-or-later
// A2M files often leave the dots off: rows then hold the columns as capitals and dashes, and the
// residues inserted between columns in lower case. This gives such rows their columns back.
#pragma once

#include "Records.h"
#include "WorkLooks.h"

#include <vector>

namespace TAMBO::formats {

// Rows that have the same number of columns besides their inserted residues; each insertion is
// made as wide as the longest one at that place, residues first. Nothing is said of inserted
// columns in the lines, which have a character for each of the others. False, and everything as it
// was, when that would take more cells than any memory has. Rows of a reading that is cancelled
// meanwhile are of no use.
[[nodiscard]] bool openDotlessRows(PackedRows &rows, std::vector<Annotation> &lines,
                                   WorkLooks &looks);

} // namespace TAMBO::formats
