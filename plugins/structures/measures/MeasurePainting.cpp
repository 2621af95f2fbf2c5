// SPDX-License-Identifier: GPL-3.0-or-later
#include "MeasurePainting.h"

#include <QColor>
#include <QFontMetricsF>
#include <QLineF>
#include <QPainter>
#include <QPainterPath>
#include <QPainterPathStroker>

#include <algorithm>
#include <cmath>

namespace structures {

namespace {

// Pixels of a picture of the usual scale.
constexpr double kLetters = 15;
constexpr double kLine = 1.6;
constexpr double kThinLine = 1.2;
constexpr double kHalo = 3.5;
constexpr double kDot = 2.8;
constexpr double kRing = 6;
constexpr double kBeside = 5;
constexpr double kCorner = 4;
// Of the shorter side of an angle, and in Angstrom.
constexpr float kArcShare = 0.4F;
constexpr float kMostArc = 3;
constexpr int kArcPieces = 24;

constexpr QColor kChosen(0xd0, 0, 0xa8);
constexpr QColor kPicked(0xff, 0x90, 0);

} // namespace

MeasurePainting::MeasurePainting(const Measures &measures, const Camera &camera, const QSizeF &size,
                                 const Look &look, double scale)
    : m_Projection(camera, float(size.width()), float(size.height())),
      m_IsDark(!look.isTransparent && qGray(QRgb(look.background)) < 0x80),
      m_Scale(scale)
{
    m_Font.setPixelSize(std::max(1, int(std::lround(kLetters * scale))));
    m_Font.setWeight(QFont::DemiBold);
    for (std::size_t i = 0; i < measures.all().size(); ++i)
        add(i, measures.placesOf(i));
}

std::optional<QPointF> MeasurePainting::pointOf(Vec3 place) const
{
    const Vec3 view = m_Projection.toView(place);
    if (!(view.z <= m_Projection.front() && view.z >= m_Projection.back()))
        return std::nullopt;
    const Vec3 point = m_Projection.toPicture(view);
    return QPointF(double(point.x), double(point.y));
}

std::optional<QPolygonF> MeasurePainting::lineOf(const std::vector<Vec3> &places) const
{
    QPolygonF line;
    for (const Vec3 place : places) {
        const std::optional<QPointF> point = pointOf(place);
        if (!point)
            return std::nullopt;
        line.append(*point);
    }
    return line;
}

QPolygonF MeasurePainting::arcOf(const std::vector<Vec3> &places) const
{
    const Vec3 vertex = places[1];
    const Vec3 first = normalized(places[0] - vertex);
    const Vec3 second = normalized(places[2] - vertex);
    const Vec3 across = second - first * dot(first, second);
    if (!(length(across) > 1e-3F))
        return {};
    const Vec3 beside = normalized(across);
    const float radius = std::min(
        kMostArc, kArcShare * std::min(distance(places[0], vertex), distance(places[2], vertex)));
    const float whole = std::atan2(length(across), dot(first, second));
    QPolygonF arc;
    for (int i = 0; i <= kArcPieces; ++i) {
        const float angle = whole * float(i) / float(kArcPieces);
        if (const auto point = pointOf(vertex + first * (radius * std::cos(angle)) +
                                       beside * (radius * std::sin(angle))))
            arc.append(*point);
    }
    return arc;
}

QRectF MeasurePainting::rectBeside(const QPointF &from, const QPointF &to, const QSizeF &text) const
{
    const QLineF line(from, to);
    QPointF aside(0, -1);
    if (line.length() > 0) {
        const QLineF normal = line.unitVector().normalVector();
        aside = QPointF(normal.dx(), normal.dy());
        if (aside.y() > 0 || (aside.y() == 0 && aside.x() < 0))
            aside = -aside;
    }
    const double way = std::abs(aside.x()) * text.width() / 2 +
                       std::abs(aside.y()) * text.height() / 2 + kBeside * m_Scale;
    QRectF rect(QPointF(), text);
    rect.moveCenter(line.center() + aside * way);
    return rect;
}

void MeasurePainting::add(std::size_t index, const std::vector<Vec3> &places)
{
    if (places.empty())
        return;
    const std::optional<QPolygonF> line = lineOf(places);
    if (!line)
        return;
    Label label{index, measureText(places), {}};
    const QFontMetricsF metrics(m_Font);
    const QSizeF text(metrics.horizontalAdvance(label.text), metrics.height());
    QPolygonF arc;
    if (places.size() == 3) {
        arc = arcOf(places);
        // Outside of the arc, away from the vertex.
        const QPointF vertex = line->at(1);
        const QPointF middle = arc.isEmpty() ? vertex : arc[arc.size() / 2];
        QLineF outwards(vertex, middle);
        if (!(outwards.length() > 0))
            outwards = QLineF(vertex, vertex + QPointF(0, -1));
        const QLineF unit = outwards.unitVector();
        const double way = std::abs(unit.dx()) * text.width() / 2 +
                           std::abs(unit.dy()) * text.height() / 2 + kBeside * m_Scale;
        label.rect = QRectF(QPointF(), text);
        label.rect.moveCenter(middle + QPointF(unit.dx(), unit.dy()) * way);
    } else {
        const qsizetype middle = line->size() / 2;
        label.rect = rectBeside(line->at(middle - 1), line->at(middle), text);
    }
    m_Lines.push_back({*line, std::move(arc)});
    m_Labels.push_back(std::move(label));
}

std::optional<std::size_t> MeasurePainting::measureAt(const QPointF &point) const
{
    for (auto label = m_Labels.rbegin(); label != m_Labels.rend(); ++label)
        if (label->rect.contains(point))
            return label->measure;
    return std::nullopt;
}

void MeasurePainting::paintLine(QPainter &painter, const QPolygonF &line) const
{
    QPainterPath path;
    path.addPolygon(line);
    QPainterPathStroker stroker;
    stroker.setWidth(kLine * m_Scale);
    stroker.setDashPattern({4, 3});
    QPainterPath dashes = stroker.createStroke(path);
    for (const QPointF &atom : line)
        dashes.addEllipse(atom, kDot * m_Scale, kDot * m_Scale);
    dashes.setFillRule(Qt::WindingFill);
    const QColor halo = m_IsDark ? QColor(0, 0, 0, 200) : QColor(255, 255, 255, 220);
    painter.strokePath(dashes,
                       QPen(halo, kHalo * m_Scale, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.fillPath(dashes, m_IsDark ? QColor(Qt::white) : QColor(0x20, 0x20, 0x20));
}

QPainterPath MeasurePainting::lettersOf(const Label &label) const
{
    QPainterPath letters;
    letters.addText(label.rect.left(), label.rect.top() + QFontMetricsF(m_Font).ascent(), m_Font,
                    label.text);
    return letters;
}

void MeasurePainting::paint(QPainter &painter) const
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    for (const Line &line : m_Lines) {
        paintLine(painter, line.atoms);
        if (!line.arc.isEmpty()) {
            painter.setBrush(Qt::NoBrush);
            const auto paintArc = [&](const QColor &color, double width) {
                painter.setPen(QPen(color, width * m_Scale));
                painter.drawPolyline(line.arc);
            };
            paintArc(m_IsDark ? QColor(0, 0, 0, 200) : QColor(255, 255, 255, 220), kHalo);
            paintArc(m_IsDark ? QColor(Qt::white) : QColor(0x20, 0x20, 0x20), kThinLine);
        }
    }
    // Over all lines.
    for (const Label &label : m_Labels) {
        const QPainterPath letters = lettersOf(label);
        painter.strokePath(letters, QPen(m_IsDark ? Qt::black : Qt::white, kHalo * m_Scale,
                                         Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter.fillPath(letters, m_IsDark ? QColor(Qt::white) : QColor(0x10, 0x10, 0x10));
    }
    painter.restore();
}

void MeasurePainting::paintChosen(QPainter &painter, std::size_t measure) const
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    for (const Label &label : m_Labels) {
        if (label.measure != measure)
            continue;
        const double margin = kCorner * m_Scale;
        QPainterPath plate;
        plate.addRoundedRect(label.rect.adjusted(-margin, 0, margin, 0), margin, margin);
        painter.fillPath(plate, kChosen);
        painter.fillPath(lettersOf(label), Qt::white);
    }
    painter.restore();
}

void MeasurePainting::paintPicked(QPainter &painter, const std::vector<Vec3> &places) const
{
    QPolygonF line;
    for (const Vec3 place : places)
        if (const auto point = pointOf(place))
            line.append(*point);
    if (line.isEmpty())
        return;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    if (line.size() > 1)
        paintLine(painter, line);
    painter.setBrush(Qt::NoBrush);
    for (const QPointF &atom : line)
        for (const auto &[color, width] :
             {std::pair(m_IsDark ? QColor(Qt::black) : QColor(Qt::white), 4.5),
              std::pair(kPicked, 2.5)}) {
            painter.setPen(QPen(color, width * m_Scale));
            painter.drawEllipse(atom, kRing * m_Scale, kRing * m_Scale);
        }
    painter.restore();
}

} // namespace structures
