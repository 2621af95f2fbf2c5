// SPDX-License-Identifier: GPL-3.0-or-later
#include "PageLayout.h"

#include "Texts.h"

#include <algorithm>
#include <cmath>

namespace companion {

namespace {

// So that a sum of many lines is not taken for more than the page for its last digit.
constexpr double kRounding = 1e-6;

std::size_t roundedUp(std::size_t all, std::size_t each)
{
    return (all + each - 1) / each;
}

// How often the part goes into the whole.
std::size_t timesIn(double whole, double part)
{
    return whole < 0 ? 0 : std::size_t(std::floor(whole / part + kRounding));
}

} // namespace

PageLayout::PageLayout(const PageOrder &order, const PageMeasures &measures)
    : m_ColBegin(order.colBegin),
      m_ColEnd(std::max(order.colBegin, order.colEnd)),
      m_Rows(order.rows.size()),
      m_Size(order.paper),
      m_CellsLeft(order.margin + measures.nameWidth),
      m_Top(order.margin + measures.titleHeight),
      m_RulerHeight(measures.rulerHeight),
      m_LineHeight(measures.lineHeight)
{
    if (m_Rows == 0 || m_ColBegin == m_ColEnd) {
        m_Obstacle = m_Rows == 0 ? tr("No rows are chosen.") : tr("No columns are chosen.");
        return;
    }
    const double width =
        order.paper.width() - 2 * order.margin - measures.nameWidth - measures.numberWidth;
    const std::size_t fitting = timesIn(width, measures.cellWidth);
    if (fitting == 0) {
        m_Obstacle = tr("Not a single column has room beside the names. Choose a smaller font or "
                        "larger paper.");
        return;
    }
    m_Wide = order.mostColumns == 0 ? fitting : std::min<unsigned long>(fitting, order.mostColumns);
    m_Blocks = roundedUp(m_ColEnd - m_ColBegin, m_Wide);

    // With the room behind it, which the last one on a page does not need.
    const double without = m_RulerHeight + double(m_Rows) * m_LineHeight + measures.tracksHeight;
    m_BlockHeight = without + m_LineHeight;
    if (!order.hasBreaks) {
        m_BlocksOfPage = m_Blocks;
        m_Pages = 1;
        m_Size.setHeight(m_Top + double(m_Blocks) * m_BlockHeight - m_LineHeight + order.margin);
        return;
    }
    const double height = order.paper.height() - m_Top - order.margin;
    if (without <= height + kRounding) {
        m_BlocksOfPage = std::max<std::size_t>(1, timesIn(height + m_LineHeight, m_BlockHeight));
        m_Pages = roundedUp(m_Blocks, m_BlocksOfPage);
        return;
    }
    m_RowsOfPage = timesIn(height - m_RulerHeight, m_LineHeight);
    const std::size_t besideTracks =
        timesIn(height - m_RulerHeight - measures.tracksHeight, m_LineHeight);
    if (m_RowsOfPage == 0 || besideTracks == 0) {
        m_Obstacle = tr("Not a single row has room on the page. Choose a smaller font or larger "
                        "paper.");
        m_Blocks = 0;
        return;
    }
    m_PagesOfBlock = m_Rows > besideTracks ? 1 + roundedUp(m_Rows - besideTracks, m_RowsOfPage) : 1;
    m_Pages = m_Blocks * m_PagesOfBlock;
}

PagePart PageLayout::partOf(std::size_t block, std::size_t section) const
{
    PagePart part;
    part.colBegin = m_ColBegin + block * m_Wide;
    part.colEnd = std::min(part.colBegin + m_Wide, m_ColEnd);
    part.hasTracks = section + 1 == m_PagesOfBlock;
    // The tracks have a row above them on their page.
    part.rowBegin = section == 0 ? 0 : std::min(section * m_RowsOfPage, m_Rows - 1);
    part.rowEnd = part.hasTracks ? m_Rows : std::min((section + 1) * m_RowsOfPage, m_Rows - 1);
    part.top = m_Top;
    return part;
}

Page PageLayout::page(std::size_t number) const
{
    Page page{number, m_Size, {}};
    if (number >= m_Pages)
        return page;
    if (m_PagesOfBlock > 1) {
        page.parts = {partOf(number / m_PagesOfBlock, number % m_PagesOfBlock)};
        return page;
    }
    const std::size_t first = number * m_BlocksOfPage;
    for (std::size_t block = first; block < std::min(first + m_BlocksOfPage, m_Blocks); ++block) {
        page.parts.push_back(partOf(block, 0));
        page.parts.back().top += double(block - first) * m_BlockHeight;
    }
    return page;
}

double PageLayout::rowTop(const PagePart &part, std::size_t row) const noexcept
{
    return part.top + m_RulerHeight + double(row - part.rowBegin) * m_LineHeight;
}

} // namespace companion
