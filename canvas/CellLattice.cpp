// SPDX-License-Identifier: GPL-3.0-or-later
#include "CellLattice.h"

#include <algorithm>

namespace {

int pixels(unsigned long cells, int size) noexcept
{
    constexpr unsigned long kMost = CellLattice::kFarthest;
    const auto step = static_cast<unsigned long>(size);
    return step != 0 && cells > kMost / step ? static_cast<int>(kMost)
                                             : static_cast<int>(cells * step);
}

unsigned long firstCell(int from, int size) noexcept
{
    return from <= 0 ? 0 : static_cast<unsigned long>(from / size);
}

// One past the cell that holds the pixel.
unsigned long endCell(int last, int size, unsigned long count) noexcept
{
    return last < 0 ? 0 : std::min(count, static_cast<unsigned long>(last / size) + 1);
}

} // namespace

CellLattice::CellLattice(unsigned long rows, unsigned long columns, int cellWidth,
                         int cellHeight) noexcept
{
    if (rows == 0 || columns == 0 || cellWidth <= 0 || cellHeight <= 0)
        return;
    m_Rows = rows;
    m_Columns = columns;
    m_CellWidth = cellWidth;
    m_CellHeight = cellHeight;
}

bool CellLattice::contains(const Cell &cell) const noexcept
{
    return cell.row < m_Rows && cell.col < m_Columns;
}

QRect CellLattice::rect() const noexcept
{
    return {0, 0, pixels(m_Columns, m_CellWidth), pixels(m_Rows, m_CellHeight)};
}

QRect CellLattice::cellRect(const Cell &cell) const noexcept
{
    return {pixels(cell.col, m_CellWidth), pixels(cell.row, m_CellHeight), m_CellWidth,
            m_CellHeight};
}

std::optional<Cell> CellLattice::cellAt(const QPoint &point) const noexcept
{
    if (isEmpty() || point.x() < 0 || point.y() < 0)
        return std::nullopt;
    const Cell cell{firstCell(point.y(), m_CellHeight), firstCell(point.x(), m_CellWidth)};
    return contains(cell) ? std::optional(cell) : std::nullopt;
}

CellRange CellLattice::cellsIn(const QRect &rect) const noexcept
{
    if (isEmpty() || rect.isEmpty())
        return {};
    const CellRange range{
        firstCell(rect.top(), m_CellHeight), endCell(rect.bottom(), m_CellHeight, m_Rows),
        firstCell(rect.left(), m_CellWidth), endCell(rect.right(), m_CellWidth, m_Columns)};
    return range.isEmpty() ? CellRange{} : range;
}
