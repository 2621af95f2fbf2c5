// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ColumnColors.h"
#include "ColumnCounts.h"
#include "Legend.h"

namespace companion {

// The colors of proteins in Clustal X: J. D. Thompson, T. J. Gibson, F. Plewniak, F. Jeanmougin and
// D. G. Higgins, "The CLUSTAL_X windows interface: flexible strategies for multiple sequence
// alignment aided by quality analysis tools", Nucleic Acids Res. 25, 4876 (1997), by the default
// table of its color parameters. A column meets a condition when more than so many percent of all
// its rows, those with a gap, too, have an amino acid of a group; a residue gets a color when its
// column meets one of the conditions of its rule. Of a residue's rules the last that holds decides.
[[nodiscard]] ColumnColors clustalColors(const ColumnCounts &counts) noexcept;

// An entry for each color; no scale.
[[nodiscard]] Legend clustalLegend();

} // namespace companion
