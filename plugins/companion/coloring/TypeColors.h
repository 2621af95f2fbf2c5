// SPDX-License-Identifier: GPL-3.0-or-later
// The colors that residues have by their type before anything is colored.
#pragma once

#include "Color.h"
#include "Legend.h"

namespace companion {

// Large and small letters are the same; one for all that are no amino acid.
[[nodiscard]] Color typeColor(char letter) noexcept;
// An entry for each color.
[[nodiscard]] Legend typeLegend();

} // namespace companion
