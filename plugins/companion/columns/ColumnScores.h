// SPDX-License-Identifier: GPL-3.0-or-later
// One number for a column: how conserved it is, how many rows have a residue in it.
#pragma once

#include "ColumnCounts.h"

namespace companion {

// 0, where the amino acids are as frequent as in any protein, to nearly 1. After J. A. Capra and M.
// Singh, "Predicting functionally important residues from sequence conservation", Bioinformatics
// 23, 1875 (2007): the Jensen-Shannon divergence, in bits, of the column's amino acids from
// kBackgroundFrequencies, both with the weight 1/2; 10^-6 is added to each count. All rows weigh
// the same, and neighbouring columns do not matter. It is multiplied by the share of rows that have
// one of the 20 amino acids here: letters that do not say which one it is (B, Z, X, U, O, J, ...)
// tell nothing about conservation, and count as gaps do. 0 where there is none of them.
[[nodiscard]] double conservation(const ColumnCounts &counts) noexcept;

// The share of rows that have a residue here, of whatever letter, from 0 to 1; 0 without rows.
[[nodiscard]] double occupancy(const ColumnCounts &counts) noexcept;

} // namespace companion
