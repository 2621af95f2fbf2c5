// SPDX-License-Identifier: GPL-3.0-or-later
// A column as a stack of letters whose heights are bits: a sequence logo, after T. D. Schneider and
// R. M. Stephens, Nucleic Acids Res. 18, 6097 (1990).
#pragma once

#include "ColumnCounts.h"

#include <vector>

namespace companion {

// log2(20): no stack is higher.
inline constexpr double kMostBits = 4.321928094887363;

struct LogoLetter
{
    char letter = 'A';
    double bits = 0;

    friend bool operator==(const LogoLetter &, const LogoLetter &) = default;
};

// What the column tells, in bits: log2(20) - (H + e), where H is the entropy of its amino acids and
// e = 19 / (2 ln(2) n) corrects for there being only n of them (T. D. Schneider, G. D. Stormo, L.
// Gold and A. Ehrenfeucht, J. Mol. Biol. 188, 415, 1986). Never below 0; 0 without amino acids.
// Gaps and other letters are left out: that few rows have a residue makes e larger, and nothing
// else.
[[nodiscard]] double informationContent(const ColumnCounts &counts) noexcept;

// The stack from the bottom: the letters of the column, each with its share of the information, the
// smallest first; letters of the same height from Z to A, so that reading goes down from A. Empty
// when the column tells nothing.
[[nodiscard]] std::vector<LogoLetter> logo(const ColumnCounts &counts);

} // namespace companion
