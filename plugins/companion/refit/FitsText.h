// SPDX-License-Identifier: GPL-3.0-or-later
// How well structures lie on each other, in words.
#pragma once

#include "Disputes.h"

namespace companion {

// "4 structures lie on 1A0J_A: RMSD 0.80 to 1.14 Å over 169 to 180 pairs of CA atoms", or, when
// pairs are left out, "core 0.61 to 1.02 Å of 74 to 90 % of 169 to 180 pairs of CA atoms"; or why
// they do not.
[[nodiscard]] QString fitsText(const TAMBO::Alignment &alignment, const FitsFound &found,
                               const Disputes &disputes);
// A line for each row, up to some tens.
[[nodiscard]] QString fitLines(const TAMBO::Alignment &alignment, const FitsFound &found,
                               const Disputes &disputes);

} // namespace companion
