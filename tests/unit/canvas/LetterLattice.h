// SPDX-License-Identifier: GPL-3.0-or-later
// A lattice of letters for tests: cell (row, col) holds the letter of its column on a colour of its
// own kind.
#pragma once

#include "LatticeSource.h"
#include "QCanvas.h"
#include "QCanvasRectangle.h"

#include <QColor>
#include <QPainter>

#include <memory>

class LetterItem : public QCanvasRectangle
{
public:
    static constexpr int RTTI = 1001;

    LetterItem(const Cell &cell, const QRect &rect, QCanvas *canvas)
        : QCanvasRectangle(rect, canvas), m_Cell(cell)
    {
        ++s_Alive;
    }
    ~LetterItem() override { --s_Alive; }
    [[nodiscard]] int rtti() const override { return RTTI; }
    [[nodiscard]] const Cell &cell() const { return m_Cell; }

    static inline int s_Alive = 0;

private:
    Cell m_Cell;
};

class LetterLattice : public LatticeSource
{
public:
    [[nodiscard]] static CellLook lookAt(const Cell &cell)
    {
        const auto hue = static_cast<int>((cell.row * 37 + cell.col * 53) % 360);
        return {static_cast<char>('A' + cell.col % 26), QColor::fromHsv(hue, 160, 230).rgb()};
    }

    QCanvasItem *makeItem(QCanvas &canvas, const Cell &cell, const QRect &rect) override
    {
        return new LetterItem(cell, rect, &canvas);
    }
    void readCells(unsigned long row, unsigned long begin, unsigned long end,
                   std::vector<CellLook> &out) const override
    {
        for (unsigned long col = begin; col < end; ++col)
            out.push_back(lookAt({row, col}));
    }
    void drawCell(QPainter &painter, const QRectF &rect, const CellLook &look) const override
    {
        ++m_Drawn;
        painter.fillRect(rect, QColor::fromRgb(look.background));
        painter.setFont(m_Font);
        painter.setPen(Qt::black);
        painter.drawText(rect, Qt::AlignCenter, QString(QLatin1Char(look.letter)));
    }
    QFont font() const override { return m_Font; }

    QFont m_Font;
    mutable int m_Drawn = 0;
};

// The canvas gets a lattice of its own size.
inline LetterLattice *giveLetters(QCanvas &canvas, unsigned long rows, unsigned long columns,
                                  int cellWidth, int cellHeight)
{
    auto source = std::make_unique<LetterLattice>();
    LetterLattice *letters = source.get();
    canvas.resize(static_cast<int>(columns) * cellWidth, static_cast<int>(rows) * cellHeight);
    canvas.setLattice(CellLattice(rows, columns, cellWidth, cellHeight), std::move(source));
    return letters;
}
