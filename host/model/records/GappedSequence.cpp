// SPDX-License-Identifier: GPL-3.0-or-later
#include "GappedSequence.h"

#include "Bits.h"

namespace TAMBO {

namespace {

constexpr bool isGapCharacter(char c) noexcept
{
    return c == '-' || c == '.' || c == '~';
}

} // namespace

void GappedSequence::append(std::string_view columns)
{
    const std::uint64_t begin = width;
    appendGaps(columns.size());
    for (std::size_t i = 0; i < columns.size(); ++i) {
        if (isGapCharacter(columns[i]))
            continue;
        bits::set(occupancy, begin + i);
        letters.push_back(columns[i]);
    }
}

void GappedSequence::appendGaps(std::uint64_t count)
{
    width += count;
    occupancy.resize(bits::wordsFor(width));
}

std::string GappedSequence::text() const
{
    std::string result(width, '-');
    std::size_t next = 0;
    bits::forEachIn(occupancy, [&](std::size_t column) { result[column] = letters[next++]; });
    return result;
}

} // namespace TAMBO
