// SPDX-License-Identifier: GPL-3.0-or-later
// Radii and colors of the chemical elements that structures are made of.
#pragma once

#include <array>
#include <cstdint>

namespace structures {

struct ElementFacts
{
    std::array<char, 2> symbol;
    // Angstrom. Van der Waals: S. Alvarez, Dalton Trans. 42, 8617 (2013), rounded, with the usual
    // A. Bondi values (J. Phys. Chem. 68, 441, 1964) for H, C, N, O, F, P, S, Cl, Se, Br, I.
    float vanDerWaals;
    // Angstrom. Covalent: B. Cordero et al., Dalton Trans. 2832 (2008).
    float covalent;
    // 0xRRGGBB; by the convention of R. Corey, L. Pauling and W. Koltun.
    std::uint32_t color;
    bool isMetal;
};

// Of an unknown element, those of carbon in another color.
[[nodiscard]] const ElementFacts &factsOf(std::array<char, 2> symbol) noexcept;

} // namespace structures
