// SPDX-License-Identifier: GPL-3.0-or-later
#include "KindIcons.h"

#include <QPainter>
#include <QPainterPath>
#include <QPixmap>

#include <array>
#include <cmath>
#include <numbers>

namespace TAMBO::app {

namespace {

// All drawing is on a square of this size, scaled to the icon.
constexpr int kUnits = 16;

const QColor kBlue(0x3b, 0x6e, 0xa8);
const QColor kGreen(0x4c, 0x95, 0x5a);
const QColor kOrange(0xd9, 0x8a, 0x2b);
const QColor kRed(0xc0, 0x50, 0x4d);
const QColor kGrey(0x7d, 0x86, 0x90);

void drawBall(QPainter &painter, QPointF centre, double radius, const QColor &color)
{
    painter.setPen(QPen(color.darker(130), 0.8));
    painter.setBrush(color);
    painter.drawEllipse(centre, radius, radius);
}

void drawStructure(QPainter &painter)
{
    painter.setPen(QPen(kGrey, 1.6));
    painter.drawLine(QPointF(4, 11), QPointF(8.5, 4.5));
    painter.drawLine(QPointF(8.5, 4.5), QPointF(12.5, 11));
    drawBall(painter, {4, 11}, 2.7, kRed);
    drawBall(painter, {8.5, 4.5}, 3.0, kGrey.lighter(135));
    drawBall(painter, {12.5, 11}, 2.5, kBlue);
}

void drawChain(QPainter &painter, const QColor &color)
{
    QPainterPath wave(QPointF(1.5, 10));
    wave.cubicTo(4, 1, 6, 1, 8, 8);
    wave.cubicTo(10, 15, 12, 15, 14.5, 6);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(color.darker(120), 3.2, Qt::SolidLine, Qt::RoundCap));
    painter.drawPath(wave);
    painter.setPen(QPen(color.lighter(125), 1.6, Qt::SolidLine, Qt::RoundCap));
    painter.drawPath(wave);
}

// A line of cells.
void drawCells(QPainter &painter, double top, std::array<const QColor *, 4> cells)
{
    painter.setPen(Qt::NoPen);
    for (std::size_t i = 0; i < cells.size(); ++i) {
        painter.setBrush(cells[i] != nullptr ? *cells[i] : kGrey.lighter(165));
        painter.drawRect(QRectF(1.5 + 3.4 * double(i), top, 2.8, 2.8));
    }
}

void drawSequence(QPainter &painter)
{
    drawCells(painter, 6.5, {&kGreen, &kOrange, &kBlue, &kGreen});
}

void drawAlignment(QPainter &painter)
{
    drawCells(painter, 2, {&kGreen, &kBlue, nullptr, &kOrange});
    drawCells(painter, 6.5, {&kGreen, nullptr, &kRed, &kOrange});
    drawCells(painter, 11, {&kGreen, &kBlue, &kRed, nullptr});
}

void drawHexagon(QPainter &painter, const QColor &color)
{
    QPolygonF hexagon;
    for (int i = 0; i < 6; ++i) {
        const double angle = (i + 0.5) * std::numbers::pi / 3;
        hexagon << QPointF(8 + 5.6 * std::cos(angle), 8 + 5.6 * std::sin(angle));
    }
    painter.setPen(QPen(color.darker(120), 1.2));
    painter.setBrush(color.lighter(150));
    painter.drawPolygon(hexagon);
}

void drawHelix(QPainter &painter)
{
    painter.setPen(QPen(kRed, 1.8, Qt::SolidLine, Qt::RoundCap));
    for (int turn = 0; turn < 4; ++turn)
        painter.drawLine(QPointF(2 + 3.2 * turn, 12.5), QPointF(5 + 3.2 * turn, 3.5));
}

void drawStrand(QPainter &painter)
{
    painter.setPen(QPen(kOrange.darker(120), 0.8));
    painter.setBrush(kOrange);
    painter.drawPolygon(
        QPolygonF({{1.5, 6.2}, {9, 6.2}, {9, 3.2}, {14.5, 8}, {9, 12.8}, {9, 9.8}, {1.5, 9.8}}));
}

void drawTurn(QPainter &painter)
{
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(kGreen, 2.2, Qt::SolidLine, Qt::RoundCap));
    painter.drawArc(QRectF(4, 3, 8, 9), 0, 180 * 16);
    painter.drawLine(QPointF(4, 7.5), QPointF(4, 13));
    painter.drawLine(QPointF(12, 7.5), QPointF(12, 13));
}

void drawLock(QPainter &painter)
{
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(Qt::black, 1.3));
    painter.drawArc(QRectF(9.6, 6.8, 4, 5.6), 0, 180 * 16);
    painter.setPen(QPen(Qt::black, 0.7));
    painter.setBrush(QColor(0xf2, 0xc1, 0x2e));
    painter.drawRect(QRectF(8.4, 9.8, 6.4, 5));
}

void drawKind(QPainter &painter, ObjectKind kind)
{
    switch (kind) {
    case ObjectKind::Structure:
        return drawStructure(painter);
    case ObjectKind::Chain:
        return drawChain(painter, kBlue);
    case ObjectKind::Sequence:
        return drawSequence(painter);
    case ObjectKind::Alignment:
        return drawAlignment(painter);
    case ObjectKind::Residue:
        return drawHexagon(painter, kBlue);
    case ObjectKind::Group:
        return drawHexagon(painter, kOrange);
    case ObjectKind::Atom:
        return drawBall(painter, {8, 8}, 4, kGrey.lighter(130));
    case ObjectKind::Helix:
        return drawHelix(painter);
    case ObjectKind::Strand:
        return drawStrand(painter);
    case ObjectKind::Turn:
        return drawTurn(painter);
    case ObjectKind::Other:
        return drawHexagon(painter, kGrey);
    }
}

QIcon makeIcon(ObjectKind kind, bool locked)
{
    QIcon icon;
    for (const int size : {16, 24, 32, 48}) {
        QPixmap pixmap(size, size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.scale(double(size) / kUnits, double(size) / kUnits);
        drawKind(painter, kind);
        if (locked)
            drawLock(painter);
        painter.end();
        icon.addPixmap(pixmap);
    }
    return icon;
}

} // namespace

const QIcon &KindIcons::icon(ObjectKind kind, bool locked)
{
    const auto [place, isNew] = m_Icons.try_emplace({kind, locked});
    if (isNew)
        place->second = makeIcon(kind, locked);
    return place->second;
}

} // namespace TAMBO::app
