// SPDX-License-Identifier: GPL-3.0-or-later
#include "GuideTexts.h"

#include "Texts.h"

namespace companion {

namespace {

QString meanText(const std::optional<double> &distance)
{
    return distance ? QString::number(*distance, 'f', 2) : QStringLiteral("–");
}

} // namespace

QString changeText(const std::optional<double> &before, const std::optional<double> &after)
{
    return tr("%1 → %2 Å").arg(meanText(before), meanText(after));
}

QString columnsText(unsigned long begin, unsigned long end)
{
    return end == begin + 1 ? tr("Column %1").arg(end)
                            : tr("Columns %1–%2").arg(begin + 1).arg(end);
}

} // namespace companion
