// SPDX-License-Identifier: GPL-3.0-or-later
#include "WaterShapes.h"

namespace structures {

namespace {

// Angstrom.
constexpr float kWaterRadius = 0.45F;

} // namespace

void addWaters(const Molecule &molecule, const std::vector<bool> &isDrawn, Shapes &shapes)
{
    for (std::uint32_t i = 0; i < molecule.waters.size(); ++i)
        if (isDrawn.empty() || isDrawn[i])
            shapes.spheres.push_back({molecule.waters[i], kWaterRadius, pickOfWater(molecule, i)});
}

} // namespace structures
