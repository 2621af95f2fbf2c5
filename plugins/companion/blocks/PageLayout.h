// SPDX-License-Identifier: GPL-3.0-or-later
// Where the blocks of an alignment stand on pages. It knows each page without looking at those
// before it, so any size costs the same.
#pragma once

#include "PageOrder.h"

#include <QString>

#include <cstddef>
#include <vector>

namespace companion {

// A block, or of one that is higher than a page some of its rows.
struct PagePart
{
    unsigned long colBegin = 0;
    unsigned long colEnd = 0;
    // Places in PageOrder::rows.
    std::size_t rowBegin = 0;
    std::size_t rowEnd = 0;
    // From the upper edge of the page to that of the ruler.
    double top = 0;
    // Below its rows: where the block ends.
    bool hasTracks = false;
};

struct Page
{
    // From 0.
    std::size_t number = 0;
    QSizeF size;
    std::vector<PagePart> parts;
};

class PageLayout
{
public:
    PageLayout(const PageOrder &order, const PageMeasures &measures);

    // Why there are no pages, a sentence; empty when there are.
    [[nodiscard]] const QString &obstacle() const noexcept { return m_Obstacle; }
    [[nodiscard]] std::size_t pages() const noexcept { return m_Pages; }
    [[nodiscard]] Page page(std::size_t number) const;
    [[nodiscard]] unsigned long columnsOfBlock() const noexcept { return m_Wide; }
    // Of each of the pages.
    [[nodiscard]] const QSizeF &pageSize() const noexcept { return m_Size; }

    [[nodiscard]] double cellsLeft() const noexcept { return m_CellsLeft; }
    // Of one of the part's rows, and of what stands below them.
    [[nodiscard]] double rowTop(const PagePart &part, std::size_t row) const noexcept;
    [[nodiscard]] double tracksTop(const PagePart &part) const noexcept
    {
        return rowTop(part, part.rowEnd);
    }

private:
    [[nodiscard]] PagePart partOf(std::size_t block, std::size_t section) const;

    QString m_Obstacle;
    unsigned long m_ColBegin;
    unsigned long m_ColEnd;
    std::size_t m_Rows;
    unsigned long m_Wide = 1;
    std::size_t m_Blocks = 0;
    // One of them is 1: blocks of a page, or pages of a block.
    std::size_t m_BlocksOfPage = 1;
    std::size_t m_PagesOfBlock = 1;
    // Of a page that a block goes beyond.
    std::size_t m_RowsOfPage = 0;
    std::size_t m_Pages = 0;
    QSizeF m_Size;
    double m_CellsLeft = 0;
    double m_Top = 0;
    double m_BlockHeight = 0;
    double m_RulerHeight = 0;
    double m_LineHeight = 0;
};

} // namespace companion
