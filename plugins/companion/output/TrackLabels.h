// SPDX-License-Identifier: GPL-3.0-or-later
// What stands beside the tracks on a page.
#pragma once

#include "PageSink.h"

#include <QPointF>
#include <QRectF>

#include <vector>

namespace companion {

struct PlacedTrack
{
    Track track = Track::Conservation;
    // In points, of the page.
    QRectF place;
};

// Where the tracks of a part stand, below its rows.
[[nodiscard]] std::vector<PlacedTrack> placedTracks(const PagePlan &plan, const PagePart &part);
// The upper edge of a line of characters, below the tracks.
[[nodiscard]] double topOfLine(const PagePlan &plan, const PagePart &part, std::size_t place);
// The left end of its name's line, from which it is written to the right.
[[nodiscard]] QPointF nameOfTrack(const PagePlan &plan, const PlacedTrack &track);

} // namespace companion
