// SPDX-License-Identifier: GPL-3.0-or-later
#include "TrackPainting.h"

#include <QFont>
#include <QFontMetrics>
#include <QPainter>
#include <QPainterPath>
#include <QTransform>

#include <algorithm>
#include <string_view>

namespace companion {

namespace {

constexpr QColor kConservationColor(58, 104, 168);
constexpr QColor kOccupancyColor(130, 140, 150);
constexpr QColor kDistanceColor(176, 92, 44);
constexpr QColor kBeyondColor(60, 20, 0);
constexpr QColor kUnknownColor(238, 238, 238);
constexpr QColor kTrackLine(110, 110, 110);

// From so many pixels on a column keeps one from the next one, and letters can be read.
constexpr int kSeparated = 4;
constexpr int kReadable = 6;
// Lower letters are drawn as a bar.
constexpr double kLowestLetter = 3;
constexpr int kGlyphPixels = 100;
constexpr int kTick = 3;
// At the top of a bar that is higher than the scale.
constexpr int kBeyondHeight = 2;
constexpr int kBesideTick = 3;

// The letters A to Z, each as large as the unit square.
std::array<QPainterPath, 26> makeGlyphs()
{
    // Its I has bars, and stays an I when it is made wide.
    QFont font(QStringLiteral("DejaVu Sans Mono"));
    font.setStyleHint(QFont::Monospace);
    font.setBold(true);
    font.setPixelSize(kGlyphPixels);
    std::array<QPainterPath, 26> glyphs;
    for (std::size_t i = 0; i < glyphs.size(); ++i) {
        QPainterPath path;
        path.addText(0, 0, font, QString(QLatin1Char(char('A' + i))));
        const QRectF box = path.boundingRect();
        if (box.isEmpty())
            continue;
        glyphs[i] = (QTransform::fromTranslate(-box.left(), -box.top()) *
                     QTransform::fromScale(1 / box.width(), 1 / box.height()))
                        .map(path);
    }
    return glyphs;
}

void paintLetter(QPainter &painter, char letter, const QRectF &place)
{
    static const std::array<QPainterPath, 26> kGlyphs = makeGlyphs();
    const auto index = std::size_t(letter - 'A');
    if (index >= kGlyphs.size() || place.width() < kReadable - 1 || place.height() < kLowestLetter)
        return painter.fillRect(place, logoColor(letter));
    const QTransform fit(place.width(), 0, 0, place.height(), place.left(), place.top());
    painter.fillPath(fit.map(kGlyphs[index]), logoColor(letter));
}

void paintLogo(QPainter &painter, const TrackColumn &column, const QRect &place, int width)
{
    painter.setRenderHint(QPainter::Antialiasing, width >= kReadable - 1);
    double bottom = place.y() + place.height();
    for (const LogoLetter &each : column.logo) {
        const double height = each.bits / kMostBits * place.height();
        bottom -= height;
        paintLetter(painter, each.letter, QRectF(place.x(), bottom, width, height));
    }
    painter.setRenderHint(QPainter::Antialiasing, false);
}

} // namespace

QColor trackColor(Track track)
{
    if (track == Track::Distance)
        return kDistanceColor;
    return track == Track::Conservation ? kConservationColor : kOccupancyColor;
}

QColor logoColor(char letter)
{
    constexpr std::string_view kAcidic = "DE";
    constexpr std::string_view kBasic = "KRH";
    constexpr std::string_view kPolar = "GSTYC";
    constexpr std::string_view kAmide = "NQ";
    const auto is = [letter](std::string_view kind) {
        return kind.find(letter) != std::string_view::npos;
    };
    if (is(kAcidic))
        return {204, 0, 0};
    if (is(kBasic))
        return {0, 0, 204};
    if (is(kPolar))
        return {0, 128, 0};
    if (is(kAmide))
        return {128, 0, 128};
    return Qt::black;
}

void paintTrackColumn(QPainter &painter, Track track, const TrackColumn *column, const QRect &place)
{
    if (column == nullptr || !hasTrackValue(track, *column))
        return painter.fillRect(place, kUnknownColor);
    const int width = place.width() - (place.width() >= kSeparated ? 1 : 0);
    if (track == Track::Logo)
        return paintLogo(painter, *column, place, width);
    const double share = trackShare(track, *column);
    if (share <= 0)
        return;
    const int height = std::max(1, qRound(share * place.height()));
    painter.fillRect(place.x(), place.y() + place.height() - height, width, height,
                     trackColor(track));
    if (isBeyondScale(track, *column))
        painter.fillRect(place.x(), place.y(), width, kBeyondHeight, kBeyondColor);
}

void paintTrackName(QPainter &painter, Track track, const QRect &place)
{
    const QFontMetrics metrics(painter.font());
    const int line = place.right() - 1;
    painter.setPen(kTrackLine);
    painter.drawLine(line, place.top(), line, place.bottom());
    painter.drawLine(line - kTick, place.top(), line, place.top());
    painter.drawLine(line - kTick, place.bottom(), line, place.bottom());

    QRect text = place;
    text.setRight(line - kTick - kBesideTick);
    text.setLeft(place.left() + kBesideTick);
    // Between the ends of the scale, or beside them.
    QRect name = text;
    if (place.height() < 3 * metrics.height())
        name.setRight(text.right() - metrics.horizontalAdvance(trackTop(track)) - kBesideTick);
    painter.setPen(Qt::black);
    painter.drawText(text, Qt::AlignRight | Qt::AlignTop, trackTop(track));
    painter.drawText(text, Qt::AlignRight | Qt::AlignBottom, QStringLiteral("0"));
    painter.drawText(name, Qt::AlignLeft | Qt::AlignVCenter,
                     metrics.elidedText(trackName(track), Qt::ElideRight, name.width()));
}

} // namespace companion
