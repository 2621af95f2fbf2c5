// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

namespace structures {

// Where the colors of a picture come from.
enum class Coloring : std::uint8_t {
    // The workbench's own, as the grid of an alignment shows them.
    Workbench,
    Chain,
    SecondaryStructure,
    // Blue, white, red from the least to the largest B factor of the structure.
    BFactor
};

} // namespace structures
