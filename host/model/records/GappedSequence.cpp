// SPDX-License-Identifier: GPL-3.0-or-later
#include "GappedSequence.h"

#include <bit>

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
        const std::uint64_t column = begin + i;
        occupancy[column / 64] |= std::uint64_t(1) << column % 64;
        letters.push_back(columns[i]);
    }
}

void GappedSequence::appendGaps(std::uint64_t count)
{
    width += count;
    occupancy.resize((width + 63) / 64);
}

std::string GappedSequence::text() const
{
    std::string result(width, '-');
    std::size_t next = 0;
    for (std::size_t word = 0; word < occupancy.size(); ++word) {
        for (std::uint64_t bits = occupancy[word]; bits != 0; bits &= bits - 1)
            result[word * 64 + std::countr_zero(bits)] = letters[next++];
    }
    return result;
}

} // namespace TAMBO
