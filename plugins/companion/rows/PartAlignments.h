// SPDX-License-Identifier: GPL-3.0-or-later
// New alignments of parts of the one that a window shows.
#pragma once

#include "CellPlaces.h"

#include <QString>

#include <vector>

namespace TAMBO {
class AlignmentWindow;
}

namespace companion {

// Each is one step of undo. What has come of it, or why nothing has, for people.

// All rows of the block over its columns.
[[nodiscard]] QString newAlignmentOfBlock(TAMBO::AlignmentWindow &window,
                                          const TAMBO::CellBlock &block);
// The rows, in ascending order, over the columns in which one of them has a residue.
[[nodiscard]] QString newAlignmentOfRows(TAMBO::AlignmentWindow &window,
                                         const std::vector<unsigned long> &rows);

} // namespace companion
