// SPDX-License-Identifier: GPL-3.0-or-later
#include "ChainBreakPlaces.h"

#include <algorithm>

namespace TAMBO {

namespace {

using Column = OccupancyRow::Column;

// The gaps [begin, end) between two residues.
struct Gap
{
    Column begin;
    Column end;
};

Gap gapBehind(const OccupancyRow &cells, std::uint32_t letters, Column width)
{
    letters = std::min(letters, cells.residues());
    const Column begin = letters == 0 ? 0 : cells.columnOf(letters - 1) + 1;
    const Column end =
        letters < cells.residues() ? cells.columnOf(letters) : std::max(begin, width);
    return {begin, end};
}

// As near to the wanted ones as can be, ascending. The gap has room for them.
std::vector<Column> apart(std::vector<Column> wanted, const Gap &gap)
{
    for (Column &column : wanted)
        column = std::clamp(column, gap.begin, gap.end - 1);
    std::ranges::sort(wanted);
    Column next = gap.begin;
    for (Column &column : wanted) {
        column = std::max(column, next);
        next = column + 1;
    }
    Column bound = gap.end;
    for (auto column = wanted.rbegin(); column != wanted.rend(); ++column) {
        *column = std::min(*column, bound - 1);
        bound = *column;
    }
    return wanted;
}

// Breaks in one gap are all alike, so they may change places.
std::vector<Column> placesIn(const Gap &gap, std::vector<Column> wanted, std::size_t count)
{
    const Column room = gap.end - gap.begin;
    count = std::min<Column>(count, room);
    if (wanted.size() > count)
        wanted.resize(count);
    std::vector<Column> places = apart(std::move(wanted), gap);
    std::size_t next = 0;
    for (Column free = gap.begin; places.size() < count; ++free) {
        while (next < places.size() && places[next] < free)
            ++next;
        if (next == places.size() || places[next] != free)
            places.insert(places.begin() + std::ptrdiff_t(next), free);
    }
    return places;
}

} // namespace

BreakColumns placeBreaks(const OccupancyRow &cells, const std::vector<std::uint32_t> &letters,
                         const BreakColumns &wanted, Column width)
{
    BreakColumns result(letters.size());
    for (std::size_t begin = 0; begin < letters.size();) {
        std::size_t end = begin;
        std::vector<Column> columns;
        for (; end < letters.size() && letters[end] == letters[begin]; ++end) {
            if (wanted[end])
                columns.push_back(*wanted[end]);
        }
        const std::vector<Column> places =
            placesIn(gapBehind(cells, letters[begin], width), std::move(columns), end - begin);
        std::ranges::copy(places, result.begin() + std::ptrdiff_t(begin));
        begin = end;
    }
    return result;
}

} // namespace TAMBO
