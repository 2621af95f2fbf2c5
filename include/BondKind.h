// SPDX-License-Identifier: GPL-3.0-or-later
// The kinds of bonds that files of structures name.
#pragma once

namespace TAMBO {

// The numbers stand in kept files: none is ever given to another kind.
enum class BondKind : unsigned char {
    // Between residues, or within a group; also where a file does not say more.
    Covalent = 1,
    // Between two cysteines.
    Disulfide = 2,
    // Of a metal with what holds it.
    Metal = 3,
    Hydrogen = 4
};

} // namespace TAMBO
