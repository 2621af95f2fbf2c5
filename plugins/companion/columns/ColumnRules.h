// SPDX-License-Identifier: GPL-3.0-or-later
// Rules that color the residues of a column by what else stands in it.
#pragma once

#include "ColumnColors.h"
#include "ColumnCounts.h"
#include "Legend.h"

namespace companion {

enum class ColumnRule {
    // The most frequent amino acid, in three shades of blue: above 80, 60 and 40 % of all rows,
    // those
    // with a gap here, too. Equally frequent ones all have the color; other letters have none.
    Identity,
    // The most frequent amino acid in a darker blue, and in a lighter one letters with a positive
    // score
    // against it, by blosum62(), also B and Z. Of equally frequent ones each counts as the most
    // frequent.
    Blosum62,
    // See ClustalColors.h.
    ClustalX,
    // All letters of a column in one of four shades of blue, by conservation() of it: above 0.8,
    // 0.6, 0.4 and 0.2.
    Conservation
};

[[nodiscard]] ColumnColors columnColors(ColumnRule rule, const ColumnCounts &counts);

// With the unit % and the scale from 0 to 100 for Identity, with the scale from 0 to 1 for
// Conservation; the others are of kinds.
[[nodiscard]] Legend legendOf(ColumnRule rule);

} // namespace companion
