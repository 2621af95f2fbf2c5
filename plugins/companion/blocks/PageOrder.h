// SPDX-License-Identifier: GPL-3.0-or-later
// Which part of an alignment is to be on pages, and how: what a user has chosen.
#pragma once

#include "LineTrack.h"
#include "Track.h"

#include <QFont>
#include <QSizeF>
#include <QString>

#include <vector>

namespace TAMBO {
class Alignment;
}

namespace companion {

// Lengths are points, of which an inch has 72.
inline constexpr double kPointsOfInch = 72;

struct PageOrder
{
    // On each page.
    QString title;
    std::vector<unsigned long> rows;
    // Half-open.
    unsigned long colBegin = 0;
    unsigned long colEnd = 0;

    // Upright or on its side, as it is given.
    QSizeF paper{595, 842};
    double margin = 36;
    // Without, there is one page, as high as all of it needs.
    bool hasBreaks = true;
    double fontSize = 8;
    // Of a block; 0 for as many as fit.
    unsigned long mostColumns = 0;

    bool hasNames = true;
    bool hasRuler = true;
    // Of the last residue, at the ends of rows.
    bool hasNumbers = true;
    bool hasColors = true;
    // From above, and below them those of characters.
    std::vector<Track> tracks;
    std::vector<LineTrack> lines;
};

// Of the letters on pages, in points.
[[nodiscard]] QFont pageFont(double size);

// How large the parts of a page are, in points.
struct PageMeasures
{
    // The order's rows are those of the alignment.
    PageMeasures(const PageOrder &order, const TAMBO::Alignment &alignment);

    double cellWidth = 0;
    double lineHeight = 0;
    // From the upper edge of a line.
    double baseline = 0;
    // With the room between them and the cells; 0 without.
    double nameWidth = 0;
    double numberWidth = 0;
    double rulerHeight = 0;
    // Of all tracks and lines, with the room above each track, and above the first line.
    double tracksHeight = 0;
    // Of the title, with the room below it.
    double titleHeight = 0;
};

// Of one track, and above it.
[[nodiscard]] double trackHeight(const PageMeasures &measures, Track track) noexcept;
[[nodiscard]] double gapOfTrack(const PageMeasures &measures) noexcept;

} // namespace companion
