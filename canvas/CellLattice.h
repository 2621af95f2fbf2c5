// SPDX-License-Identifier: GPL-3.0-or-later
// All arithmetic between pixels and the cells of a grid of equal cells that starts at (0, 0).
#pragma once

#include <QPoint>
#include <QRect>

#include <optional>

struct Cell
{
    unsigned long row = 0;
    unsigned long col = 0;

    friend constexpr bool operator==(const Cell &, const Cell &) = default;
};

// Half-open in both directions.
struct CellRange
{
    unsigned long rowBegin = 0;
    unsigned long rowEnd = 0;
    unsigned long colBegin = 0;
    unsigned long colEnd = 0;

    [[nodiscard]] constexpr bool isEmpty() const noexcept
    {
        return rowBegin >= rowEnd || colBegin >= colEnd;
    }
    friend constexpr bool operator==(const CellRange &, const CellRange &) = default;
};

// A lattice with no rows, no columns or a cell without an area is empty: it has no cells and covers
// nothing. Pixels beyond kFarthest are cut off.
class CellLattice
{
public:
    // Far from the end of int, so that sums of positions and lengths stay within it.
    static constexpr int kFarthest = 0x3fffffff;

    CellLattice() = default;
    CellLattice(unsigned long rows, unsigned long columns, int cellWidth, int cellHeight) noexcept;

    [[nodiscard]] unsigned long rows() const noexcept { return m_Rows; }
    [[nodiscard]] unsigned long columns() const noexcept { return m_Columns; }
    [[nodiscard]] unsigned long cellCount() const noexcept { return m_Rows * m_Columns; }
    [[nodiscard]] int cellWidth() const noexcept { return m_CellWidth; }
    [[nodiscard]] int cellHeight() const noexcept { return m_CellHeight; }
    [[nodiscard]] bool isEmpty() const noexcept { return m_Rows == 0; }
    [[nodiscard]] bool contains(const Cell &cell) const noexcept;

    // What all cells cover together.
    [[nodiscard]] QRect rect() const noexcept;
    // Also for cells that the lattice does not have.
    [[nodiscard]] QRect cellRect(const Cell &cell) const noexcept;
    // Nothing left of, above or beyond the cells.
    [[nodiscard]] std::optional<Cell> cellAt(const QPoint &point) const noexcept;
    // The cells that share at least a pixel with the rectangle.
    [[nodiscard]] CellRange cellsIn(const QRect &rect) const noexcept;

    // Cells are numbered row by row.
    [[nodiscard]] unsigned long indexOf(const Cell &cell) const noexcept
    {
        return cell.row * m_Columns + cell.col;
    }

private:
    unsigned long m_Rows = 0;
    unsigned long m_Columns = 0;
    int m_CellWidth = 0;
    int m_CellHeight = 0;
};
