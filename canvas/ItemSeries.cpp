// SPDX-License-Identifier: GPL-3.0-or-later
#include "ItemSeries.h"

#include <algorithm>

ItemSeries::~ItemSeries() = default;

void ItemSeries::itemGoes(QCanvasItem *) { }

SlotRange ItemSeries::placesIn(int from, int to, int size, unsigned long count)
{
    if (size <= 0 || to < 0 || from > to)
        return {};
    const auto begin = static_cast<unsigned long>(std::max(from, 0) / size);
    const auto end = static_cast<unsigned long>(to / size) + 1;
    return {std::min(begin, count), std::min(end, count)};
}
