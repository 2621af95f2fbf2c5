// SPDX-License-Identifier: GPL-3.0-or-later
#include "ColumnScores.h"

#include "Blosum62.h"

#include <algorithm>
#include <cmath>

namespace companion {

namespace {

constexpr double kPseudocount = 1e-6;

} // namespace

double conservation(const ColumnCounts &counts) noexcept
{
    const double known = counts.aminoAcids();
    if (known == 0)
        return 0;
    const double total = known + double(kAminoAcidCount) * kPseudocount;
    double sum = 0;
    for (std::size_t i = 0; i < kAminoAcidCount; ++i) {
        const double here = (counts.of(i) + kPseudocount) / total;
        const double anywhere = kBackgroundFrequencies[i];
        const double mean = (here + anywhere) / 2;
        sum += here * std::log2(here / mean) + anywhere * std::log2(anywhere / mean);
    }
    return std::max(0.0, sum / 2) * known / counts.rows();
}

double occupancy(const ColumnCounts &counts) noexcept
{
    const double rows = counts.rows();
    return rows == 0 ? 0 : counts.residues() / rows;
}

} // namespace companion
