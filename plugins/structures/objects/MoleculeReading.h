// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Molecule.h"

#include "StructureDetails.h"

#include <string>

namespace structures {

// What is drawn of a structure of the workbench. Atoms without a finite position are left out. A
// structure without secondary structure gets that of its CA atoms. Residues and
// chains have the indices that they have in the table.
[[nodiscard]] Molecule readMolecule(const std::string &name, const TAMBO::StructureTable &table);

} // namespace structures
