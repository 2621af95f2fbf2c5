// SPDX-License-Identifier: GPL-3.0-or-later
// How tracks of characters look.
#pragma once

#include "LineTrack.h"

#include <QRect>

#include <string>

class QPainter;

namespace companion {

// So many columns beside those in sight are read, too: a helix ends where it ends, and not at the
// border.
inline constexpr unsigned long kBesideSight = 100;

// The text's first column is in the place, which is as wide as a cell and as high as the track; the
// others are beside it.
void paintLine(QPainter &painter, const LineTrack &track, const std::string &text,
               const QRect &first);
// The name, to the right edge of the place.
void paintLineName(QPainter &painter, const LineTrack &track, const QRect &place);

} // namespace companion
