// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Molecule.h"

#include "Compound.h"

namespace structures {

// Brings the atoms of a structure's molecule to where they are in one of its models, from 0 on.
// Residues have their trace point where the model has it.
void placeInModel(const TAMBO::Compound &structure, std::size_t model,
                  const std::vector<MoleculeResidue> &ofFirst, Molecule &molecule);

} // namespace structures
