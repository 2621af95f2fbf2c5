// SPDX-License-Identifier: GPL-3.0-or-later
// What fills the cells of a canvas's lattice: the looks of the cells for painting, and items for
// those who ask for them.
#pragma once

#include "CellLattice.h"

#include <QFont>
#include <QRgb>

#include <vector>

class QCanvas;
class QCanvasItem;
class QPainter;
class QRectF;

// Two cells with the same look are painted alike.
struct CellLook
{
    char letter = '-';
    QRgb background = 0xffffffff;

    friend constexpr bool operator==(const CellLook &, const CellLook &) = default;
};

class LatticeSource
{
public:
    LatticeSource() = default;
    virtual ~LatticeSource();
    LatticeSource(const LatticeSource &) = delete;
    LatticeSource &operator=(const LatticeSource &) = delete;

    // A new item of this canvas that stands in the cell's rectangle.
    [[nodiscard]] virtual QCanvasItem *makeItem(QCanvas &canvas, const Cell &cell,
                                                const QRect &rect) = 0;
    // Appends end - begin looks.
    virtual void readCells(unsigned long row, unsigned long begin, unsigned long end,
                           std::vector<CellLook> &out) const = 0;
    // Fills the rectangle. The look and the font are all that may show in it.
    virtual void drawCell(QPainter &painter, const QRectF &rect, const CellLook &look) const = 0;
    [[nodiscard]] virtual QFont font() const = 0;
    // Without letters a cell is its background and nothing else, which needs no tiles.
    [[nodiscard]] virtual bool hasLetters() const;
    // Writes end - begin backgrounds, those that readCells() gives.
    virtual void readBackgrounds(unsigned long row, unsigned long begin, unsigned long end,
                                 QRgb *out) const;
};
