// SPDX-License-Identifier: GPL-3.0-or-later
#include "RowOrders.h"

#include <algorithm>
#include <numeric>

namespace companion {

namespace {

// A number of more digits is compared as several.
constexpr std::size_t kMostDigits = 200;

bool isDigit(char character) noexcept
{
    return character >= '0' && character <= '9';
}

char smallLetter(char character) noexcept
{
    return character >= 'A' && character <= 'Z' ? char(character - 'A' + 'a') : character;
}

RowOrder withFirst(unsigned long rows, const std::vector<unsigned long> &chosen)
{
    RowOrder order = chosen;
    order.reserve(rows);
    std::size_t next = 0;
    for (unsigned long row = 0; row < rows; ++row) {
        if (next < chosen.size() && chosen[next] == row)
            ++next;
        else
            order.push_back(row);
    }
    return order;
}

} // namespace

RowOrder moved(unsigned long rows, const std::vector<unsigned long> &chosen, RowMove move)
{
    if (move == RowMove::ToTop)
        return withFirst(rows, chosen);
    RowOrder order(rows);
    std::iota(order.begin(), order.end(), 0UL);
    std::vector<bool> isChosen(rows);
    for (const unsigned long row : chosen)
        isChosen[row] = true;
    // The row that is stepped over is never a chosen one, so that runs stay behind each other.
    if (move == RowMove::Up) {
        for (const unsigned long row : chosen)
            if (row > 0 && !isChosen[order[row - 1]])
                std::swap(order[row - 1], order[row]);
    } else {
        for (auto row = chosen.rbegin(); row != chosen.rend(); ++row)
            if (*row + 1 < rows && !isChosen[order[*row + 1]])
                std::swap(order[*row + 1], order[*row]);
    }
    return order;
}

RowOrder grouped(const std::vector<std::uint32_t> &groups)
{
    std::uint32_t count = 0;
    for (const std::uint32_t group : groups)
        count = group == kNoGroup ? count : std::max(count, group + 1);
    // Where the rows of each group begin, and how many are there already.
    std::vector<std::size_t> sizes(count);
    for (const std::uint32_t group : groups)
        if (group != kNoGroup)
            ++sizes[group];
    RowOrder order(groups.size());
    std::vector<std::size_t> next(count);
    std::vector<bool> isPlaced(count);
    std::size_t place = 0;
    for (unsigned long row = 0; row < groups.size(); ++row) {
        const std::uint32_t group = groups[row];
        if (group == kNoGroup) {
            order[place++] = row;
            continue;
        }
        if (!isPlaced[group]) {
            isPlaced[group] = true;
            next[group] = place;
            place += sizes[group];
        }
        order[next[group]++] = row;
    }
    return order;
}

std::string naturalKey(std::string_view name)
{
    std::string key;
    key.reserve(2 * name.size() + 4);
    for (std::size_t i = 0; i < name.size();) {
        if (!isDigit(name[i])) {
            key += smallLetter(name[i++]);
            continue;
        }
        std::size_t end = i;
        while (end < name.size() && isDigit(name[end]))
            ++end;
        while (i + 1 < end && name[i] == '0')
            ++i;
        end = std::min(end, i + kMostDigits);
        // A longer number is a larger one.
        key += '0';
        key += char(end - i);
        key.append(name, i, end - i);
        i = end;
    }
    // Equal ones by their very characters, behind all that goes on otherwise.
    key += '\0';
    key += name;
    return key;
}

} // namespace companion
