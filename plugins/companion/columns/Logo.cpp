// SPDX-License-Identifier: GPL-3.0-or-later
#include "Logo.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace companion {

double informationContent(const ColumnCounts &counts) noexcept
{
    const double known = counts.aminoAcids();
    if (known == 0)
        return 0;
    double entropy = 0;
    for (std::size_t i = 0; i < kAminoAcidCount; ++i) {
        const double share = counts.of(i) / known;
        if (share > 0)
            entropy -= share * std::log2(share);
    }
    const double correction = double(kAminoAcidCount - 1) / (2 * std::numbers::ln2 * known);
    return std::max(0.0, kMostBits - (entropy + correction));
}

std::vector<LogoLetter> logo(const ColumnCounts &counts)
{
    std::vector<LogoLetter> stack;
    const double bits = informationContent(counts);
    if (bits == 0)
        return stack;
    const double known = counts.aminoAcids();
    for (std::size_t i = 0; i < kAminoAcidCount; ++i)
        if (const std::uint32_t count = counts.of(i); count > 0)
            stack.push_back({kAminoAcids[i], bits * count / known});
    std::ranges::sort(stack, [](const LogoLetter &a, const LogoLetter &b) {
        return a.bits != b.bits ? a.bits < b.bits : a.letter > b.letter;
    });
    return stack;
}

} // namespace companion
