// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Molecule.h"

#include "StructureDetails.h"

#include <string>
#include <vector>

namespace structures {

// What the structure has beside its table.
struct MoleculeExtras
{
    std::vector<TAMBO::BondDetails> bonds;
    // At finite positions.
    std::vector<TAMBO::WaterDetails> waters;
};

// What is drawn of a structure of the workbench. Atoms without a finite position are left out. A
// structure without secondary structure gets that of its CA atoms. Residues and
// chains have the indices that they have in the table, waters those of the extras. A bond that is
// too long to be one, as to an atom of which another copy in the crystal is meant, is left out.
[[nodiscard]] Molecule readMolecule(const std::string &name, const TAMBO::StructureTable &table,
                                    const MoleculeExtras &extras = {});

} // namespace structures
