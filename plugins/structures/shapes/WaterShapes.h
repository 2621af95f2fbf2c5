// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "MoleculeShapes.h"

namespace structures {

// A small sphere for each water for which isDrawn says so, or for all when it is empty.
void addWaters(const Molecule &molecule, const std::vector<bool> &isDrawn, Shapes &shapes);

} // namespace structures
