// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Shapes.h"
#include "Style.h"

namespace structures {

// A thin line through the trace points of the residues that are drawn as cartoon or trace, for
// pictures of many models in one. Its picks are those of the residues.
void addThinTrace(const Molecule &molecule, const std::vector<ResidueStyle> &styles,
                  Shapes &shapes);

} // namespace structures
