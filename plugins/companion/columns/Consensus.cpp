// SPDX-License-Identifier: GPL-3.0-or-later
#include "Consensus.h"

#include <algorithm>

namespace companion {

namespace {

std::uint32_t highestCount(const ColumnCounts &counts) noexcept
{
    std::uint32_t highest = 0;
    for (std::size_t i = 0; i < kAminoAcidCount; ++i)
        highest = std::max(highest, counts.of(i));
    return highest;
}

} // namespace

std::string consensus(const ColumnCounts &counts)
{
    std::string letters;
    const std::uint32_t highest = highestCount(counts);
    for (std::size_t i = 0; highest > 0 && i < kAminoAcidCount; ++i)
        if (counts.of(i) == highest)
            letters += kAminoAcids[i];
    std::ranges::sort(letters);
    return letters;
}

double consensusShare(const ColumnCounts &counts) noexcept
{
    const double rows = counts.rows();
    return rows == 0 ? 0 : highestCount(counts) / rows;
}

} // namespace companion
