// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Molecule.h"

namespace structures {

// Helices and strands of each chain from the places of its CA atoms alone, after G. Labesse, N.
// Colloc'h, J. Pothier and J.-P. Mornon, "P-SEA: a new efficient assignment of secondary structure
// from C-alpha trace of proteins", Comput. Appl. Biosci. 13, 291 (1997): by the distances between
// CA i and i+2, i+3, i+4, the angle at three and the torsion of four of them. Helices have at least
// five residues; strands at least five, or three that lie beside other extended ones.
void assignFold(Molecule &molecule);

} // namespace structures
