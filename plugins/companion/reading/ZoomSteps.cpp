// SPDX-License-Identifier: GPL-3.0-or-later
#include "ZoomSteps.h"

#include <algorithm>

namespace companion {

QSize cellsOfWidth(int width, const QSize &own)
{
    if (width == own.width())
        return own;
    const int height = (width * own.height() + own.width() / 2) / std::max(1, own.width());
    // A map has a pixel for each cell.
    return {width, width == 1 ? 1 : std::max(1, height)};
}

QSize zoomedIn(const QSize &now, const QSize &own, const QSize &largest)
{
    int width = now.width() + std::max(1, now.width() / 8);
    if (now.width() < own.width())
        width = std::min(width, own.width());
    width = std::min(width, largest.width());
    return cellsOfWidth(width, own).boundedTo(largest);
}

QSize zoomedOut(const QSize &now, const QSize &own)
{
    int width = now.width() - std::max(1, now.width() / 9);
    if (now.width() > own.width())
        width = std::max(width, own.width());
    return cellsOfWidth(std::max(1, width), own);
}

} // namespace companion
