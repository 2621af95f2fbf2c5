// SPDX-License-Identifier: GPL-3.0-or-later
// Pages by a painter: on paper, in PDF, in a picture of pixels.
#pragma once

#include "PageSink.h"

#include <QFont>
#include <QFontMetricsF>
#include <QPointF>

#include <functional>
#include <optional>

class QPainter;

namespace companion {

class PaintedPages : public PageSink
{
public:
    // How far right and down from the painter's origin, in dots, a page begins; called before each.
    using PlaceOfPage = std::function<QPointF(std::size_t number)>;

    // The painter is active as long as this is used, and has so many dots a point.
    PaintedPages(const PagePlan &plan, QPainter &painter, double dots, PlaceOfPage placeOfPage);
    ~PaintedPages() override;

    void beginPage(const Page &page) override;
    void beginPart(const PagePart &part) override;
    void addRow(const PagePart &part, const PageRow &row) override;
    void addTracks(const PagePart &part, const ColumnOfTrack &columns) override;
    void addLine(const PagePart &part, std::size_t place, const std::string &text) override;

private:
    // Of points of the page. Edges come to lie between dots, so that nothing shines through.
    [[nodiscard]] QRect dotsOf(const QRectF &place) const;
    [[nodiscard]] QPointF dotsOf(const QPointF &place) const;
    void write(const QPointF &baseline, const QString &text);
    // To the left of the place.
    void writeBefore(const QPointF &baseline, const QString &text);
    // In the middle of a cell.
    void writeLetter(const QPointF &cell, char letter);
    [[nodiscard]] QString cut(const QString &text, double width) const;

    const PagePlan &m_Plan;
    QPainter &m_Painter;
    double m_Dots;
    PlaceOfPage m_PlaceOfPage;
    QPointF m_Origin;
    QFont m_Font;
    std::optional<QFontMetricsF> m_Metrics;
};

} // namespace companion
