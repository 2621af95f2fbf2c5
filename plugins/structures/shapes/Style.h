// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Molecule.h"

#include <cstdint>
#include <vector>

namespace structures {

enum class Style : std::uint8_t { Hidden, Cartoon, Trace, Sticks, BallsAndSticks, Spheres };

struct ResidueStyle
{
    Style style = Style::Cartoon;
    // Its side chain as sticks, beside a cartoon or a trace.
    bool hasSideChain = false;

    friend constexpr bool operator==(const ResidueStyle &, const ResidueStyle &) = default;
};

// How each residue is drawn at first: chains as cartoon, nucleic acids as tube, all else as balls
// and sticks, waters not at all. Of a chain of nothing but lone residues the atoms are shown.
[[nodiscard]] std::vector<ResidueStyle> firstStyles(const Molecule &molecule);

} // namespace structures
