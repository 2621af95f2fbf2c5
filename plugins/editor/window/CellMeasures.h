// SPDX-License-Identifier: GPL-3.0-or-later
// How large the cells of a window are, and with which fonts its texts fit: as its font asks, or as
// somebody wants the cells to be. All lengths in logical pixels.
#pragma once

#include <QFont>
#include <QSize>

namespace ZEP {

class CellMeasures
{
public:
    // Cells are as large as the font asks, whatever was wanted before.
    void setFont(const QFont &font);
    [[nodiscard]] const QFont &font() const noexcept { return m_Font; }
    // As that font asks.
    [[nodiscard]] QSize ownCell() const noexcept { return m_OwnCell; }
    [[nodiscard]] QSize largestCell() const;

    // Cut off at one pixel and at the largest cell.
    void setCell(const QSize &size);
    [[nodiscard]] QSize cell() const noexcept { return m_Cell; }
    [[nodiscard]] int cellWidth() const noexcept { return m_Cell.width(); }
    [[nodiscard]] int cellHeight() const noexcept { return m_Cell.height(); }
    [[nodiscard]] bool isOwn() const noexcept { return m_Cell == m_OwnCell; }

    // Without letters there is none that could be read, and the font means nothing.
    struct Letters
    {
        QFont font;
        bool areShown = true;
    };
    [[nodiscard]] const Letters &cellLetters() const noexcept { return m_CellLetters; }
    // A letter over a column, no larger than the font's own; the name of a row likewise.
    [[nodiscard]] const Letters &columnLetters() const noexcept { return m_ColumnLetters; }
    [[nodiscard]] const Letters &nameLetters() const noexcept { return m_NameLetters; }

private:
    QFont m_Font;
    QSize m_OwnCell;
    QSize m_Cell;
    Letters m_CellLetters;
    Letters m_ColumnLetters;
    Letters m_NameLetters;
};

} // namespace ZEP
