// SPDX-License-Identifier: GPL-3.0-or-later
// A2M files often leave the dots off: rows then hold the columns as capitals and dashes, and the
// residues inserted between columns in lower case. This gives such rows their columns back.
#pragma once

#include "Records.h"

#include <vector>

namespace TAMBO::formats {

// Rows that have the same number of columns besides their inserted residues; each insertion is
// made as wide as the longest one at that place, residues first. False, and the rows as they were,
// when that would take more cells than any memory has.
[[nodiscard]] bool openInsertColumns(std::vector<RowRecord> &rows);

} // namespace TAMBO::formats
