// SPDX-License-Identifier: GPL-3.0-or-later
// Places in an alignment window: its areas, one cell, and a block of cells. Rows and columns count
// from 0.
#pragma once

#include <QFlags>

#include <algorithm>

namespace TAMBO {

// Each area has coordinates of its own: logical pixels from the upper left corner of what is to be
// seen of it. The rows of Names are at the same heights as those of Cells, the columns of Header as
// far to the right.
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

struct CellIndex
{
    unsigned long row = 0;
    unsigned long col = 0;

    friend constexpr bool operator==(const CellIndex &, const CellIndex &) = default;
};

// Half-open in both directions: [rowBegin, rowEnd) and [colBegin, colEnd). Empty when one of them
// is.
struct CellBlock
{
    unsigned long rowBegin = 0;
    unsigned long rowEnd = 0;
    unsigned long colBegin = 0;
    unsigned long colEnd = 0;

    [[nodiscard]] static constexpr CellBlock of(const CellIndex &cell) noexcept
    {
        return {cell.row, cell.row + 1, cell.col, cell.col + 1};
    }
    [[nodiscard]] constexpr bool isEmpty() const noexcept
    {
        return rowBegin >= rowEnd || colBegin >= colEnd;
    }
    [[nodiscard]] constexpr bool contains(const CellIndex &cell) const noexcept
    {
        return cell.row >= rowBegin && cell.row < rowEnd && cell.col >= colBegin &&
               cell.col < colEnd;
    }
    // What both have; empty when they have nothing in common.
    [[nodiscard]] constexpr CellBlock intersected(const CellBlock &other) const noexcept
    {
        const CellBlock common{std::max(rowBegin, other.rowBegin), std::min(rowEnd, other.rowEnd),
                               std::max(colBegin, other.colBegin), std::min(colEnd, other.colEnd)};
        return common.isEmpty() ? CellBlock{} : common;
    }
    // The smallest block that holds both; an empty one adds nothing.
    [[nodiscard]] constexpr CellBlock united(const CellBlock &other) const noexcept
    {
        if (isEmpty())
            return other;
        if (other.isEmpty())
            return *this;
        return {std::min(rowBegin, other.rowBegin), std::max(rowEnd, other.rowEnd),
                std::min(colBegin, other.colBegin), std::max(colEnd, other.colEnd)};
    }

    friend constexpr bool operator==(const CellBlock &, const CellBlock &) = default;
};

} // namespace TAMBO
