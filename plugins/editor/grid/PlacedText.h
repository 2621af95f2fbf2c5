// SPDX-License-Identifier: GPL-3.0-or-later
// A text beside the cells of a grid that stands where it was put, or, when the cells have another
// size than its font asks for, in a place as large as its row or column.
#pragma once

#include "QCanvasText.h"

class PlacedText : public QCanvasText
{
public:
    // The item covers the place from now on, and its text stands in the middle. Without room for
    // letters something else shows what it has to say.
    void setPlace(const QRect &place, bool hasLetters);

    [[nodiscard]] QRect boundingRect() const override;

protected:
    using QCanvasText::QCanvasText;

    [[nodiscard]] QRect reach() const override;
    // Whether the place is too small for letters.
    [[nodiscard]] bool isLetterless() const noexcept { return m_IsLetterless; }
    [[nodiscard]] bool isPlaced() const noexcept { return !m_Place.isNull(); }
    // The text in its place; in the manner of the toolkit's flags.
    void drawText(QPainter &painter, int alignment = Qt::AlignCenter);
    // The place, but for so many of its pixels above and below, filled.
    void fillPlace(QPainter &painter, const QColor &color, int inset = 0) const;

private:
    QRect m_Place;
    bool m_IsLetterless = false;
};
