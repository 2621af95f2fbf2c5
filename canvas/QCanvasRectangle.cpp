// SPDX-License-Identifier: GPL-3.0-or-later
#include "QCanvasRectangle.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

QCanvasRectangle::QCanvasRectangle(QCanvas *canvas) : QCanvasItem(canvas) { }

QCanvasRectangle::QCanvasRectangle(const QRect &rect, QCanvas *canvas)
    : QCanvasRectangle(rect.x(), rect.y(), rect.width(), rect.height(), canvas)
{ }

QCanvasRectangle::QCanvasRectangle(int x, int y, int width, int height, QCanvas *canvas)
    : QCanvasItem(canvas), m_Width(width), m_Height(height)
{
    move(x, y);
}

QCanvasRectangle::~QCanvasRectangle()
{
    hide();
}

QRect QCanvasRectangle::rect() const noexcept
{
    return {static_cast<int>(std::floor(x())), static_cast<int>(std::floor(y())), m_Width,
            m_Height};
}

void QCanvasRectangle::setSize(int width, int height)
{
    if (width == m_Width && height == m_Height)
        return;
    aboutToChange();
    m_Width = width;
    m_Height = height;
    hasChanged();
}

void QCanvasRectangle::setPen(const QPen &pen)
{
    aboutToChange();
    m_Pen = pen;
    hasChanged();
}

void QCanvasRectangle::setBrush(const QBrush &brush)
{
    aboutToChange();
    m_Brush = brush;
    hasChanged();
}

void QCanvasRectangle::draw(QPainter &painter)
{
    const QRect area = boundingRect();
    if (area.isEmpty())
        return;
    if (m_Brush.style() != Qt::NoBrush)
        painter.fillRect(area, m_Brush);
    if (m_Pen.style() == Qt::NoPen)
        return;
    const double inset = std::max(1.0, m_Pen.widthF()) / 2;
    painter.setPen(m_Pen);
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(QRectF(area).adjusted(inset, inset, -inset, -inset));
}

int QCanvasRectangle::rtti() const
{
    return RTTI;
}

QRect QCanvasRectangle::boundingRect() const
{
    return m_Width > 0 && m_Height > 0 ? rect() : QRect(rect().topLeft(), QSize(0, 0));
}
