// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Molecule.h"

#include <vector>

namespace structures {

// Bonds between the atoms that are given by their indices, by distance: two atoms are bonded when
// they are farther apart than 0.4 Angstrom and not farther than the sum of their covalent radii and
// 0.45 Angstrom (E. C. Meng and R. A. Lewis, J. Comput. Chem. 12, 891, 1991). Hydrogens have one
// bond, and none with each other; a metal has none here. At most 8 an atom, so that atoms that lie
// on each other cannot multiply. Each bond once, its first atom below its second one, in order.
[[nodiscard]] std::vector<Bond> bondsBetween(const Molecule &molecule,
                                             const std::vector<std::uint32_t> &atoms);

// The order of the links of a molecule.
[[nodiscard]] bool comesBefore(const Link &a, const Link &b) noexcept;

} // namespace structures
