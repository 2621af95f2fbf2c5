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

double topOfLine(const PagePlan &plan, const PagePart &part, std::size_t place)
{
    const double all = plan.measures.tracksHeight;
    const double below = double(plan.order.lines.size() - place) * plan.measures.lineHeight;
    return plan.layout.tracksTop(part) + all - below;
}

QPointF nameOfTrack(const PagePlan &plan, const PlacedTrack &track)
{
    return {plan.order.margin,
            track.place.center().y() - plan.measures.lineHeight / 2 + plan.measures.baseline};
}

} // namespace companion
