// SPDX-License-Identifier: GPL-3.0-or-later
#include "Track.h"

#include "Texts.h"

#include <QStringList>

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
    }
    return {};
}

QString trackTop(Track track)
{
    return track == Track::Logo ? tr("%1 bits").arg(kMostBits, 0, 'f', 1) : QStringLiteral("1");
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
    }
    return 0;
}

int trackLines(Track track) noexcept
{
    return track == Track::Logo ? kLogoLines : kBarLines;
}

} // namespace companion
