// SPDX-License-Identifier: GPL-3.0-or-later
#include "CompareTexts.h"

#include "Comparison.h"
#include "Texts.h"

#include <algorithm>

namespace companion {

QString shareText(std::uint64_t part, std::uint64_t whole)
{
    constexpr double kWholePercent = 100;
    if (whole == 0)
        return QStringLiteral("–");
    const double percent =
        double(std::uint64_t(double(part) / double(whole) * kWholePercent * kWholePercent)) /
        kWholePercent;
    return QStringLiteral("%1 %").arg(part == whole ? kWholePercent : std::min(percent, 99.99), 0,
                                      'f', 2);
}

QString noDifference(const Comparison &found)
{
    return found.here.alone > 0 || found.there.alone > 0
               ? companion::tr(": no difference in the residues that both have")
               : companion::tr(": no difference");
}

} // namespace companion
