// SPDX-License-Identifier: GPL-3.0-or-later
#include "PlacedText.h"

#include <QPainter>

void PlacedText::setPlace(const QRect &place, bool hasLetters)
{
    aboutToChange();
    m_Place = place;
    m_IsLetterless = !hasLetters;
    hasChanged();
}

QRect PlacedText::boundingRect() const
{
    return isPlaced() ? m_Place : QCanvasText::boundingRect();
}

QRect PlacedText::reach() const
{
    return isPlaced() ? m_Place : QCanvasText::reach();
}

void PlacedText::drawText(QPainter &painter, int alignment)
{
    if (!isPlaced()) {
        QCanvasText::draw(painter);
        return;
    }
    if (isLetterless() || text().isEmpty())
        return;
    painter.setFont(font());
    painter.setPen(color());
    painter.drawText(m_Place, alignment, text());
}

void PlacedText::fillPlace(QPainter &painter, const QColor &color, int inset) const
{
    painter.fillRect(m_Place.adjusted(0, inset, 0, -inset), color);
}
