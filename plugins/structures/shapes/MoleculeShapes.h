// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Shapes.h"
#include "Style.h"

namespace structures {

// The pick of an atom and of a residue in the shapes of their molecule.
[[nodiscard]] constexpr Pick pickOfAtom(std::uint32_t atom) noexcept
{
    return atom + 1;
}
[[nodiscard]] inline Pick pickOfResidue(const Molecule &molecule, std::uint32_t residue) noexcept
{
    return Pick(molecule.atoms.size()) + residue + 1;
}

// Of a water that is no residue.
[[nodiscard]] inline Pick pickOfWater(const Molecule &molecule, std::uint32_t water) noexcept
{
    return Pick(molecule.atoms.size() + molecule.residues.size()) + water + 1;
}

// Styles has an entry for each residue.
[[nodiscard]] Shapes shapesOf(const Molecule &molecule, const std::vector<ResidueStyle> &styles);

} // namespace structures
