// SPDX-License-Identifier: GPL-3.0-or-later
#include "ResidueLattice.h"

#include "Alignment.h"
#include "Check.h"
#include "ResidueItem.h"

#include <QColor>
#include <QPainter>

#include <algorithm>

namespace {

QRgb backgroundOf(const TAMBO::AlignmentCell &cell)
{
    return cell.color.isOpaque() ? cell.color.argb() : ResidueItem::shownColor(cell.color).rgb();
}

} // namespace

ResidueLattice::ResidueLattice(TAMBO::Alignment *alignment, const QFont &font, bool hasLetters)
    : m_Target(alignment), m_Font(font), m_HasLetters(hasLetters)
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
        out[first + i] = {m_Cells[i].letter, backgroundOf(m_Cells[i])};
    }
}

void ResidueLattice::readBackgrounds(unsigned long row, unsigned long begin, unsigned long end,
                                     QRgb *out) const
{
    m_Cells.clear();
    m_Target->readRow(row, begin, end, m_Cells);
    constexpr QRgb kGap = CellLook().background;
    // Where gaps are cannot be foretold, so the loop branches for colours alone.
    for (const TAMBO::AlignmentCell &cell : m_Cells) {
        const auto isGap = static_cast<unsigned>(cell.isGap());
        const auto isClear = static_cast<unsigned>(!cell.color.isOpaque());
        const QRgb own = (isClear & ~isGap) != 0 ? backgroundOf(cell) : cell.color.argb();
        const QRgb mask = 0U - isGap;
        *out++ = (kGap & mask) | (own & ~mask);
    }
    std::fill_n(out, (end - begin) - m_Cells.size(), kGap);
}

void ResidueLattice::drawCell(QPainter &painter, const QRectF &rect, const CellLook &look) const
{
    if (m_HasLetters)
        ResidueItem::drawCell(painter, rect, m_Font, look.letter, QColor::fromRgb(look.background));
    else
        painter.fillRect(rect, QColor::fromRgb(look.background));
}
