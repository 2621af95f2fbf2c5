// SPDX-License-Identifier: GPL-3.0-or-later
#include "CommandIcons.h"

#include <QApplication>
#include <QPainter>
#include <QPainterPath>
#include <QPalette>
#include <QPixmap>

namespace TAMBO::app {

namespace {

constexpr int kUnits = 24;

// Draws on a square of kUnits in the given colour.
using Drawing = void (*)(QPainter &painter, const QColor &color);

QPixmap drawn(Drawing drawing, int size, const QColor &color)
{
    QPixmap pixmap(size, size);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(double(size) / kUnits, double(size) / kUnits);
    drawing(painter, color);
    return pixmap;
}

QIcon makeIcon(Drawing drawing)
{
    const QPalette palette = QApplication::palette();
    QIcon icon;
    for (const int size : {16, 24, 32, 48}) {
        icon.addPixmap(drawn(drawing, size, palette.color(QPalette::ButtonText)));
        icon.addPixmap(
            drawn(drawing, size, palette.color(QPalette::Disabled, QPalette::ButtonText)),
            QIcon::Disabled);
    }
    return icon;
}

void drawFolder(QPainter &painter, const QColor &color)
{
    QPainterPath folder(QPointF(3, 19));
    folder.lineTo(3, 6);
    folder.lineTo(9, 6);
    folder.lineTo(11, 8.5);
    folder.lineTo(19, 8.5);
    folder.lineTo(19, 11);
    QPainterPath front(QPointF(3, 19));
    front.lineTo(6.2, 11);
    front.lineTo(22, 11);
    front.lineTo(18.8, 19);
    front.closeSubpath();
    painter.setPen(QPen(color, 1.6, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(Qt::NoBrush);
    painter.drawPath(folder);
    painter.setBrush(QColor(0xf2, 0xc9, 0x6b));
    painter.drawPath(front);
}

void drawUndo(QPainter &painter, const QColor &color)
{
    QPainterPath arc(QPointF(5, 9.5));
    arc.lineTo(14.5, 9.5);
    arc.arcTo(QRectF(10, 9.5, 9, 9), 90, -180);
    arc.lineTo(9, 18.5);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(color, 2.2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPath(arc);
    painter.drawPolyline(QPolygonF({{9, 5}, {4.5, 9.5}, {9, 14}}));
}

void drawRedo(QPainter &painter, const QColor &color)
{
    painter.translate(kUnits, 0);
    painter.scale(-1, 1);
    drawUndo(painter, color);
}

} // namespace

QIcon openIcon()
{
    return makeIcon(drawFolder);
}

QIcon undoIcon()
{
    return makeIcon(drawUndo);
}

QIcon redoIcon()
{
    return makeIcon(drawRedo);
}

} // namespace TAMBO::app
