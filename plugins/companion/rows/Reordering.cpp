// SPDX-License-Identifier: GPL-3.0-or-later
#include "Reordering.h"

#include "Alignment.h"
#include "DataPoint.h"
#include "StepName.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace companion {

namespace {

// From where to where one row goes, if that is all: between them each row stands one place further.
std::optional<std::pair<unsigned long, unsigned long>> oneMove(const RowOrder &order)
{
    unsigned long begin = 0;
    while (order[begin] == begin)
        ++begin;
    unsigned long last = order.size() - 1;
    while (order[last] == last)
        --last;
    const bool isDown = order[last] == begin;
    if (!isDown && order[begin] != last)
        return std::nullopt;
    for (unsigned long place = isDown ? begin : begin + 1; place < (isDown ? last : last + 1);
         ++place)
        if (order[place] != (isDown ? place + 1 : place - 1))
            return std::nullopt;
    return isDown ? std::pair(begin, last) : std::pair(last, begin);
}

} // namespace

Reordered reorder(TAMBO::Alignment &alignment, const RowOrder &order, const std::string &step)
{
    if (std::ranges::is_sorted(order))
        return Reordered::Not;
    DataPoint<TAMBO::Alignment> change(nullptr, &alignment);
    if (!change.m_good)
        return Reordered::Refused;
    const StepName name(step);
    // Of a million rows an order is four million bytes of undo, and a move is some dozens.
    if (const auto move = oneMove(order))
        alignment.bubbleRow(move->first, move->second);
    else
        alignment.reorderRows(order);
    return Reordered::Done;
}

} // namespace companion
