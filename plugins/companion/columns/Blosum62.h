// SPDX-License-Identifier: GPL-3.0-or-later
// What S. Henikoff and J. G. Henikoff, "Amino acid substitution matrices from protein blocks",
// Proc. Natl. Acad. Sci. USA 89, 10915 (1992) counted in blocks of sequences that are clustered at
// 62 %.
#pragma once

#include "AminoAcidOrder.h"

#include <array>
#include <string_view>

namespace companion {

// How often each amino acid stands in these blocks, in the order of kAminoAcids, with the three
// digits that J. A. Capra and M. Singh, Bioinformatics 23, 1875 (2007) score columns with. Rounded
// like this their sum is 1.001; they are used as they are, so that scores are those of that method.
inline constexpr std::array<double, kAminoAcidCount> kBackgroundFrequencies = {
    0.078, 0.051, 0.041, 0.052, 0.024, 0.034, 0.059, 0.083, 0.025, 0.062,
    0.092, 0.056, 0.024, 0.043, 0.043, 0.059, 0.055, 0.014, 0.034, 0.072};

// The letters of the matrix in its order: the amino acids, D or N, E or Q, any of them, and the end
// of a chain.
inline constexpr std::string_view kBlosumLetters = "ARNDCQEGHILKMFPSTWYVBZX*";

// The score of one letter against the other, in half bits. Small letters are as capital ones; what
// the matrix lacks (U, O, J, gaps) scores as X.
[[nodiscard]] int blosum62(char a, char b) noexcept;

} // namespace companion
