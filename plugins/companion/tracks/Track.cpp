// SPDX-License-Identifier: GPL-3.0-or-later
#include "Track.h"

#include "Texts.h"

#include <QStringList>

#include <algorithm>

namespace companion {

namespace {

// Of a stack, in a tool tip; the others are hardly to be seen.
constexpr std::size_t kMostLogoLetters = 6;
// Of fewer the correction for their number takes everything away, however alike they are.
constexpr std::uint32_t kFewestKnown = 4;
constexpr int kBarLines = 3;
constexpr int kLogoLines = 5;

QString logoText(const TrackColumn &column)
{
    if (column.logo.empty()) {
        const std::uint32_t known = column.counts.aminoAcids();
        return known > 0 && known < kFewestKnown
                   ? tr("Logo: 0 bits; fewer than %1 amino acids tell nothing").arg(kFewestKnown)
                   : tr("Logo: 0 bits");
    }
    QStringList letters;
    for (auto each = column.logo.rbegin(); each != column.logo.rend(); ++each) {
        if (std::size_t(letters.size()) == kMostLogoLetters) {
            letters << QStringLiteral("…");
            break;
        }
        letters
            << QStringLiteral("%1 %2").arg(QLatin1Char(each->letter)).arg(each->bits, 0, 'f', 2);
    }
    return tr("Logo: %1 bits: %2")
        .arg(column.bits, 0, 'f', 2)
        .arg(letters.join(QStringLiteral(", ")));
}

QString distanceText(const ColumnSpread &spread)
{
    if (!spread.distance)
        return spread.positions == 0 ? tr("CA distance: none; no row has coordinates here")
                                     : tr("CA distance: none; only one row has coordinates here");
    return tr("CA distance: %1 Å, mean over %L2 pairs of %L3 rows")
        .arg(*spread.distance, 0, 'f', 2)
        .arg(spread.positions * (spread.positions - 1) / 2)
        .arg(spread.positions);
}

} // namespace

QString trackName(Track track)
{
    switch (track) {
    case Track::Conservation:
        return tr("Conservation");
    case Track::Occupancy:
        return tr("Occupancy");
    case Track::Logo:
        return tr("Logo");
    case Track::Distance:
        return tr("CA distance");
    }
    return {};
}

QString trackMeaning(Track track)
{
    switch (track) {
    case Track::Conservation:
        return tr("How far the amino acids of a column are from what proteins have anywhere: the "
                  "Jensen-Shannon divergence, times the share of rows that have one.");
    case Track::Occupancy:
        return tr("The share of rows that have a residue in a column.");
    case Track::Logo:
        return tr("The amino acids of a column: together as high as the information is that it "
                  "holds, in bits, each with its share.");
    case Track::Distance:
        return tr("The mean distance of the CA atoms of a column, over all pairs of rows that have "
                  "one there, as Color, By Distance shows it. It tells something of structures "
                  "that are superposed.");
    }
    return {};
}

QString trackKey(Track track)
{
    switch (track) {
    case Track::Conservation:
        return QStringLiteral("conservation");
    case Track::Occupancy:
        return QStringLiteral("occupancy");
    case Track::Logo:
        return QStringLiteral("logo");
    case Track::Distance:
        return QStringLiteral("distance");
    }
    return {};
}

bool isOnAtFirst(Track track) noexcept
{
    return track != Track::Distance;
}

QString trackTop(Track track)
{
    switch (track) {
    case Track::Logo:
        return tr("%1 bits").arg(kMostBits, 0, 'f', 1);
    case Track::Distance:
        return QStringLiteral("%1 Å").arg(kMostDistance);
    default:
        return QStringLiteral("1");
    }
}

QString trackValue(Track track, const TrackColumn &column)
{
    switch (track) {
    case Track::Conservation:
        return tr("Conservation: %1").arg(column.conservation, 0, 'f', 2);
    case Track::Occupancy:
        return tr("Occupancy: %1, %2 of %3 rows")
            .arg(column.occupancy, 0, 'f', 2)
            .arg(column.counts.residues())
            .arg(column.counts.rows());
    case Track::Logo:
        return logoText(column);
    case Track::Distance:
        return distanceText(column.spread.value_or(ColumnSpread()));
    }
    return {};
}

double trackShare(Track track, const TrackColumn &column) noexcept
{
    switch (track) {
    case Track::Conservation:
        return column.conservation;
    case Track::Occupancy:
        return column.occupancy;
    case Track::Logo:
        return column.bits / kMostBits;
    case Track::Distance:
        return column.spread && column.spread->distance
                   ? std::min(1.0, *column.spread->distance / kMostDistance)
                   : 0;
    }
    return 0;
}

bool isBeyondScale(Track track, const TrackColumn &column) noexcept
{
    return track == Track::Distance && column.spread &&
           column.spread->distance.value_or(0) > kMostDistance;
}

bool hasTrackValue(Track track, const TrackColumn &column) noexcept
{
    return track != Track::Distance || column.spread;
}

int trackLines(Track track) noexcept
{
    return track == Track::Logo ? kLogoLines : kBarLines;
}

} // namespace companion
