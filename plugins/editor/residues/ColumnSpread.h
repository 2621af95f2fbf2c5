// SPDX-License-Identifier: GPL-3.0-or-later
// How far apart the residues of a column lie in space.
#pragma once

#include "Vertex.h"

#include <vector>

namespace ZEP {

// In Angstrom, over all pairs. There are two positions or more, all of them defined.
[[nodiscard]] double meanDistance(const std::vector<TAMBO::Vertex> &positions);

} // namespace ZEP
