// SPDX-License-Identifier: GPL-3.0-or-later
#include "PaintedPages.h"

#include "CellLooks.h"
#include "Ruler.h"
#include "TextColors.h"
#include "TrackLabels.h"
#include "TrackPainting.h"

#include <QPainter>

#include <utility>

namespace companion {

PaintedPages::PaintedPages(const PagePlan &plan, QPainter &painter, double dots,
                           PlaceOfPage placeOfPage)
    : m_Plan(plan),
      m_Painter(painter),
      m_Dots(dots),
      m_PlaceOfPage(std::move(placeOfPage)),
      m_Font(pageFont(plan.order.fontSize))
{
    m_Metrics.emplace(m_Font, painter.device());
}

PaintedPages::~PaintedPages() = default;

QPointF PaintedPages::dotsOf(const QPointF &place) const
{
    return m_Origin + place * m_Dots;
}

QRect PaintedPages::dotsOf(const QRectF &place) const
{
    const QPointF from = dotsOf(place.topLeft());
    const QPointF to = dotsOf(place.bottomRight());
    return {QPoint(qRound(from.x()), qRound(from.y())),
            QPoint(qRound(to.x()) - 1, qRound(to.y()) - 1)};
}

void PaintedPages::write(const QPointF &baseline, const QString &text)
{
    m_Painter.drawText(dotsOf(baseline), text);
}

void PaintedPages::writeBefore(const QPointF &baseline, const QString &text)
{
    const QPointF place = dotsOf(baseline);
    m_Painter.drawText(QPointF(place.x() - m_Metrics->horizontalAdvance(text), place.y()), text);
}

// Both ends of a name are what tells it from its neighbours.
QString PaintedPages::cut(const QString &text, double width) const
{
    return m_Metrics->horizontalAdvance(text) <= width * m_Dots
               ? text
               : m_Metrics->elidedText(text, Qt::ElideMiddle, width * m_Dots);
}

void PaintedPages::beginPage(const Page &page)
{
    m_Origin = m_PlaceOfPage(page.number);
    const double margin = m_Plan.order.margin;
    const double baseline = margin + m_Plan.measures.baseline;
    const QString number = m_Plan.pageText(page.number);
    const double width = page.size.width() - 2 * margin;
    const double numberWidth = m_Metrics->horizontalAdvance(number) / m_Dots;
    m_Painter.setFont(m_Font);
    m_Painter.setPen(Qt::black);
    write({margin, baseline},
          cut(m_Plan.order.title, width - numberWidth - m_Plan.measures.cellWidth));
    m_Painter.setPen(kQuietText);
    writeBefore({margin + width, baseline}, number);
}

void PaintedPages::beginPart(const PagePart &part)
{
    if (!m_Plan.order.hasRuler)
        return;
    const double cell = m_Plan.measures.cellWidth;
    const unsigned long step = rulerStep(double(QString::number(part.colEnd).size()), 1);
    m_Painter.setFont(m_Font);
    m_Painter.setPen(kQuietText);
    for (const RulerMark &mark : rulerMarks(part.colBegin, part.colEnd, step, 1, 1))
        writeBefore({m_Plan.layout.cellsLeft() + double(mark.col + 1 - part.colBegin) * cell,
                     part.top + m_Plan.measures.baseline},
                    mark.text);
}

void PaintedPages::addRow(const PagePart &part, const PageRow &row)
{
    const PageMeasures &measures = m_Plan.measures;
    const double left = m_Plan.layout.cellsLeft();
    const double top = m_Plan.layout.rowTop(part, row.place);
    const double baseline = top + measures.baseline;
    const bool hasColors = m_Plan.order.hasColors;
    m_Painter.setFont(m_Font);
    m_Painter.setPen(Qt::black);
    if (!row.name.isEmpty())
        write({m_Plan.order.margin, baseline},
              cut(row.name, measures.nameWidth - measures.cellWidth / 2));

    for (std::size_t begin = 0, end = 0; hasColors && begin < row.cells.size(); begin = end) {
        const QRgb ground = groundOf(row.cells[begin]);
        while (end < row.cells.size() && groundOf(row.cells[end]) == ground)
            ++end;
        if (ground != kWhiteGround)
            m_Painter.fillRect(
                dotsOf(QRectF(left + double(begin) * measures.cellWidth, top,
                              double(end - begin) * measures.cellWidth, measures.lineHeight)),
                QColor::fromRgb(ground));
    }
    bool isWhite = false;
    for (std::size_t i = 0; i < row.cells.size(); ++i) {
        const bool wantsWhite = hasColors && hasWhiteLetter(groundOf(row.cells[i]));
        if (wantsWhite != std::exchange(isWhite, wantsWhite))
            m_Painter.setPen(isWhite ? Qt::white : Qt::black);
        writeLetter({left + double(i) * measures.cellWidth, baseline}, letterOf(row.cells[i]));
    }
    if (row.number.isEmpty())
        return;
    m_Painter.setPen(kQuietText);
    writeBefore(
        {left + double(part.colEnd - part.colBegin) * measures.cellWidth + measures.numberWidth,
         baseline},
        row.number);
}

void PaintedPages::writeLetter(const QPointF &cell, char letter)
{
    const QString text(QLatin1Char{letter});
    const QPointF place = dotsOf(cell);
    const double beside =
        (m_Plan.measures.cellWidth * m_Dots - m_Metrics->horizontalAdvance(text)) / 2;
    m_Painter.drawText(QPointF(place.x() + beside, place.y()), text);
}

void PaintedPages::addLine(const PagePart &part, std::size_t place, const std::string &text)
{
    const PageMeasures &measures = m_Plan.measures;
    const double baseline = topOfLine(m_Plan, part, place) + measures.baseline;
    m_Painter.setFont(m_Font);
    m_Painter.setPen(kQuietText);
    if (m_Plan.order.hasNames)
        write({m_Plan.order.margin, baseline},
              cut(m_Plan.order.lines[place].name, measures.nameWidth - measures.cellWidth / 2));
    for (std::size_t i = 0; i < text.size(); ++i)
        if (text[i] != ' ')
            writeLetter({m_Plan.layout.cellsLeft() + double(i) * measures.cellWidth, baseline},
                        text[i]);
}

void PaintedPages::addTracks(const PagePart &part, const ColumnOfTrack &columns)
{
    const double cell = m_Plan.measures.cellWidth;
    for (const PlacedTrack &track : placedTracks(m_Plan, part)) {
        m_Painter.setFont(m_Font);
        m_Painter.setPen(kQuietText);
        if (m_Plan.order.hasNames)
            write(nameOfTrack(m_Plan, track),
                  cut(trackName(track.track), m_Plan.measures.nameWidth - cell / 2));
        for (unsigned long col = part.colBegin; col < part.colEnd; ++col) {
            QRectF place = track.place;
            place.setLeft(place.left() + double(col - part.colBegin) * cell);
            place.setWidth(cell);
            paintTrackColumn(m_Painter, track.track, columns(col), dotsOf(place));
        }
    }
}

} // namespace companion
