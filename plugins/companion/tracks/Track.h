// SPDX-License-Identifier: GPL-3.0-or-later
// Which tracks there are along the columns of an alignment, and what they say to people.
#pragma once

#include "TrackColumns.h"

#include <QString>

#include <array>

namespace companion {

enum class Track { Conservation, Occupancy, Logo, Distance };

// From above.
inline constexpr std::array kTracks = {Track::Conservation, Track::Occupancy, Track::Logo,
                                       Track::Distance};

// The upper end of the scale of distances, in Angstrom: where By Distance has its last color.
inline constexpr double kMostDistance = 6;

[[nodiscard]] QString trackName(Track track);
// What it means, in a sentence or two.
[[nodiscard]] QString trackMeaning(Track track);
// Until somebody switches it on or off.
[[nodiscard]] bool isOnAtFirst(Track track) noexcept;
// Under which it is kept.
[[nodiscard]] QString trackKey(Track track);
// The upper end of its scale; the lower one is 0.
[[nodiscard]] QString trackTop(Track track);
// The value of a column.
[[nodiscard]] QString trackValue(Track track, const TrackColumn &column);
// The height of a column: a share of the track's, 1 for what is beyond its scale.
[[nodiscard]] double trackShare(Track track, const TrackColumn &column) noexcept;
[[nodiscard]] bool isBeyondScale(Track track, const TrackColumn &column) noexcept;
// Whether the column has a value of the track; its distance is not always asked for.
[[nodiscard]] bool hasTrackValue(Track track, const TrackColumn &column) noexcept;
// Of a usual track, in lines of text.
[[nodiscard]] int trackLines(Track track) noexcept;

} // namespace companion
