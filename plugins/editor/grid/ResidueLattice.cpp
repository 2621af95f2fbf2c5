// SPDX-License-Identifier: GPL-3.0-or-later
#include "ResidueLattice.h"

#include "Alignment.h"
#include "Check.h"
#include "ResidueItem.h"

#include <QColor>

ResidueLattice::ResidueLattice(TAMBO::Alignment *alignment, const QFont &font)
    : m_Target(alignment), m_Font(font)
{
    TAMBO_CHECK_PTR(m_Target, "ResidueLattice", 15);
}

ResidueLattice::~ResidueLattice() = default;

CellLattice ResidueLattice::latticeOf(const TAMBO::Alignment &alignment, int cellWidth,
                                      int cellHeight)
{
    return {alignment.height(), alignment.width(), cellWidth, cellHeight};
}

QCanvasItem *ResidueLattice::makeItem(QCanvas &canvas, const Cell &cell, const QRect &rect)
{
    auto *item = new ResidueItem(m_Target, cell.row, cell.col, m_Font, &canvas, rect.x(), rect.y(),
                                 rect.width(), rect.height());
    TAMBO_CHECK_PTR(item, "KalmoIO", 86);
    return item;
}

void ResidueLattice::readCells(unsigned long row, unsigned long begin, unsigned long end,
                               std::vector<CellLook> &out) const
{
    m_Cells.clear();
    m_Target->readRow(row, begin, end, m_Cells);
    const std::size_t first = out.size();
    out.resize(first + (end - begin));
    // Cells that the alignment has lost since the lattice was made are left looking like gaps.
    for (std::size_t i = 0; i < m_Cells.size(); ++i) {
        if (m_Cells[i].isGap())
            continue;
        const Color color = m_Cells[i].color;
        out[first + i] = {m_Cells[i].letter,
                          color.isOpaque() ? color.argb() : ResidueItem::shownColor(color).rgb()};
    }
}

void ResidueLattice::drawCell(QPainter &painter, const QRectF &rect, const CellLook &look) const
{
    ResidueItem::drawCell(painter, rect, m_Font, look.letter, QColor::fromRgb(look.background));
}
