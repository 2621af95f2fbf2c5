// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Camera.h"
#include "Look.h"
#include "Measures.h"

#include <QFont>
#include <QPointF>
#include <QPolygonF>
#include <QRectF>
#include <QSizeF>
#include <QString>

#include <cstddef>
#include <optional>
#include <vector>

class QPainter;
class QPainterPath;

namespace structures {

// Measures as lines and texts over one picture. To be read on any ground and any color.
class MeasurePainting
{
public:
    // size: of the picture, in the painter's coordinates. scale: how much larger than usual lines
    // and letters are. What the camera cuts away of is left out.
    MeasurePainting(const Measures &measures, const Camera &camera, const QSizeF &size,
                    const Look &look, double scale = 1);

    struct Label
    {
        // In Measures::all().
        std::size_t measure;
        QString text;
        QRectF rect;
    };
    [[nodiscard]] const std::vector<Label> &labels() const noexcept { return m_Labels; }
    // The one whose label is there; of several the one that is painted last.
    [[nodiscard]] std::optional<std::size_t> measureAt(const QPointF &point) const;

    void paint(QPainter &painter) const;
    // Over what has been painted: the label of a measure, as that of the one that is chosen.
    void paintChosen(QPainter &painter, std::size_t measure) const;
    // Atoms of a measure that is not complete yet.
    void paintPicked(QPainter &painter, const std::vector<Vec3> &places) const;

private:
    // Nothing for what is not in the picture's depth.
    [[nodiscard]] std::optional<QPointF> pointOf(Vec3 place) const;
    [[nodiscard]] std::optional<QPolygonF> lineOf(const std::vector<Vec3> &places) const;
    void add(std::size_t index, const std::vector<Vec3> &places);
    // Between the sides of an angle; empty where they are on a line.
    [[nodiscard]] QPolygonF arcOf(const std::vector<Vec3> &places) const;
    [[nodiscard]] QRectF rectBeside(const QPointF &from, const QPointF &to,
                                    const QSizeF &text) const;
    void paintLine(QPainter &painter, const QPolygonF &line) const;
    [[nodiscard]] QPainterPath lettersOf(const Label &label) const;

    struct Line
    {
        QPolygonF atoms;
        QPolygonF arc;
    };

    Projection m_Projection;
    bool m_IsDark;
    double m_Scale;
    QFont m_Font;
    std::vector<Line> m_Lines;
    std::vector<Label> m_Labels;
};

} // namespace structures
