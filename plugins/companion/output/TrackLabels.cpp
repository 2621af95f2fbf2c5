// SPDX-License-Identifier: GPL-3.0-or-later
#include "TrackLabels.h"

namespace companion {

std::vector<PlacedTrack> placedTracks(const PagePlan &plan, const PagePart &part)
{
    std::vector<PlacedTrack> placed;
    double top = plan.layout.tracksTop(part);
    const double width = double(part.colEnd - part.colBegin) * plan.measures.cellWidth;
    for (const Track track : plan.order.tracks) {
        const double height = trackHeight(plan.measures, track);
        top += gapOfTrack(plan.measures);
        placed.push_back({track, {plan.layout.cellsLeft(), top, width, height}});
        top += height;
    }
    return placed;
}

QPointF nameOfTrack(const PagePlan &plan, const PlacedTrack &track)
{
    return {plan.order.margin,
            track.place.center().y() - plan.measures.lineHeight / 2 + plan.measures.baseline};
}

} // namespace companion
