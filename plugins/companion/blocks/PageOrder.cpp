// SPDX-License-Identifier: GPL-3.0-or-later
#include "PageOrder.h"

#include "Alignment.h"

#include <QFontMetricsF>

#include <algorithm>

namespace companion {

namespace {

// Fonts are measured so much larger, since small ones are rounded to pixels.
constexpr int kMeasuredPixels = 1000;
// Of the widest letter. More, and readers of page files would take each letter for a word.
constexpr double kCellOfLetter = 1.08;
constexpr double kLineOfFont = 1.06;
// Beyond that names are cut.
constexpr double kMostNames = 1.0 / 3;
constexpr std::size_t kNamesLookedAt = 1000;
constexpr qsizetype kFewestDigits = 5;

QFont monospaced()
{
    QFont font(QStringLiteral("DejaVu Sans Mono"));
    font.setStyleHint(QFont::Monospace);
    return font;
}

double widestLetter(const QFontMetricsF &metrics)
{
    double widest = metrics.horizontalAdvance(u'-');
    for (char letter = 'A'; letter <= 'Z'; ++letter)
        widest = std::max(widest, metrics.horizontalAdvance(QLatin1Char(letter)));
    return widest;
}

} // namespace

QFont pageFont(double size)
{
    QFont font = monospaced();
    font.setPointSizeF(size);
    return font;
}

PageMeasures::PageMeasures(const PageOrder &order, const TAMBO::Alignment &alignment)
{
    QFont font = monospaced();
    font.setPixelSize(kMeasuredPixels);
    const QFontMetricsF metrics(font);
    const double scale = order.fontSize / kMeasuredPixels;
    cellWidth = widestLetter(metrics) * scale * kCellOfLetter;
    lineHeight = metrics.height() * scale * kLineOfFont;
    baseline = (lineHeight - metrics.height() * scale) / 2 + metrics.ascent() * scale;
    if (order.hasNames) {
        double widest = 0;
        for (std::size_t i = 0; i < std::min(order.rows.size(), kNamesLookedAt); ++i)
            widest = std::max(widest, metrics.horizontalAdvance(QString::fromStdString(
                                          alignment.GetSeqName(order.rows[i]))));
        for (const Track track : order.tracks)
            widest = std::max(widest, metrics.horizontalAdvance(trackName(track)));
        for (const LineTrack &line : order.lines)
            widest = std::max(widest, metrics.horizontalAdvance(line.name));
        nameWidth = std::min(widest * scale + cellWidth,
                             (order.paper.width() - 2 * order.margin) * kMostNames);
    }
    if (order.hasNumbers) {
        const qsizetype digits = QString::number(alignment.width()).size();
        numberWidth = double(std::max(kFewestDigits, digits) + 1) * cellWidth;
    }
    rulerHeight = order.hasRuler ? lineHeight : 0;
    for (const Track track : order.tracks)
        tracksHeight += gapOfTrack(*this) + trackHeight(*this, track);
    if (!order.lines.empty())
        tracksHeight += gapOfTrack(*this) + double(order.lines.size()) * lineHeight;
    titleHeight = 2 * lineHeight;
}

double trackHeight(const PageMeasures &measures, Track track) noexcept
{
    return trackLines(track) * measures.lineHeight;
}

double gapOfTrack(const PageMeasures &measures) noexcept
{
    return measures.lineHeight / 3;
}

} // namespace companion
