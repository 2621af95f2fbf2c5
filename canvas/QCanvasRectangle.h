// SPDX-License-Identifier: GPL-3.0-or-later
// A rectangle on a canvas, drawn with its pen inside its size.
#pragma once

#include "QCanvasItem.h"

#include <QBrush>
#include <QPen>
#include <QSize>

class QCanvasRectangle : public QCanvasItem
{
public:
    static constexpr int RTTI = Rtti_Rectangle;

    explicit QCanvasRectangle(QCanvas *canvas);
    QCanvasRectangle(const QRect &rect, QCanvas *canvas);
    QCanvasRectangle(int x, int y, int width, int height, QCanvas *canvas);
    ~QCanvasRectangle() override;

    [[nodiscard]] int width() const noexcept { return m_Width; }
    [[nodiscard]] int height() const noexcept { return m_Height; }
    [[nodiscard]] QSize size() const noexcept { return {m_Width, m_Height}; }
    [[nodiscard]] QRect rect() const noexcept;
    // A size below 1 by 1 is kept, but covers and draws nothing.
    void setSize(int width, int height);

    [[nodiscard]] const QPen &pen() const noexcept { return m_Pen; }
    [[nodiscard]] const QBrush &brush() const noexcept { return m_Brush; }
    void setPen(const QPen &pen);
    void setBrush(const QBrush &brush);

    void draw(QPainter &painter) override;
    [[nodiscard]] int rtti() const override;
    [[nodiscard]] QRect boundingRect() const override;

private:
    int m_Width = 0;
    int m_Height = 0;
    QPen m_Pen;
    QBrush m_Brush;
};
