// SPDX-License-Identifier: GPL-3.0-or-later
// How tracks look.
#pragma once

#include "Track.h"

#include <QColor>
#include <QRect>

class QPainter;

namespace companion {

// Of the bars of a track of numbers.
[[nodiscard]] QColor trackColor(Track track);
// Of a letter in a logo, by what its residue is like: acidic, basic, polar, hydrophobic.
[[nodiscard]] QColor logoColor(char letter);

// The column in its place, which is as wide as its cell and as high as the track; null while it is
// not known.
void paintTrackColumn(QPainter &painter, Track track, const TrackColumn *column,
                      const QRect &place);
// The name and the ends of the scale, to the right edge of the place.
void paintTrackName(QPainter &painter, Track track, const QRect &place);

} // namespace companion
