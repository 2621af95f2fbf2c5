// SPDX-License-Identifier: GPL-3.0-or-later
// One cell of an alignment on the residue canvas: the residue's letter on its colour, or a gap.
#pragma once

#include "QCanvasRectangle.h"

#include <QFont>
#include <QRect>

class Color;
class QColor;
class QRectF;

namespace TAMBO {
class Alignment;
}

class ResidueItem : public QCanvasRectangle
{
public:
    static constexpr int RTTI = 66;

    // The alignment must outlive the item.
    ResidueItem(TAMBO::Alignment *alignment, unsigned long row, unsigned long col,
                const QFont &font, QCanvas *canvas, int x, int y, int w, int h);
    ~ResidueItem() override;
    void draw(QPainter &painter) override;
    [[nodiscard]] int rtti() const override;

    // Toggles the selection of the residue.
    void hit();

    [[nodiscard]] unsigned long getRow() const noexcept { return m_Row; }
    [[nodiscard]] unsigned long getCol() const noexcept { return m_Col; }
    [[nodiscard]] TAMBO::Alignment *getTarget() const noexcept { return m_Target; }
    [[nodiscard]] bool isGap() const;

    // As it looks on white, for a colour that is not opaque.
    [[nodiscard]] static QColor shownColor(const Color &color);
    // How every cell is painted, whoever paints it.
    static void drawCell(QPainter &painter, const QRectF &rect, const QFont &font, char letter,
                         const QColor &background);

private:
    TAMBO::Alignment *m_Target;
    unsigned long m_Row;
    unsigned long m_Col;
    QRect m_Rect;
    QFont m_Font;
};
