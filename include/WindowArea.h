// SPDX-License-Identifier: GPL-3.0-or-later
// The parts of an alignment window that have to do with cells.
#pragma once

#include <QFlags>

namespace TAMBO {

// Each has coordinates of its own: logical pixels from the upper left corner of what is to be seen
// of it. The rows of Names are at the same heights as those of Cells, the columns of Header as far
// to the right.
enum class WindowArea {
    Cells = 1,
    // The names of the rows, left of the cells.
    Names = 2,
    // Numbering, consensus and marks of the columns, above the cells.
    Header = 4,
    // Left of the header.
    Corner = 8
};
Q_DECLARE_FLAGS(WindowAreas, WindowArea)
Q_DECLARE_OPERATORS_FOR_FLAGS(WindowAreas)

} // namespace TAMBO
