// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Molecule.h"

#include <cstddef>

namespace structures {

// A structure or a chain, as the list has them.
struct ListedPart
{
    // In the scene.
    std::size_t structure = 0;
    // kNone: all of the structure.
    std::uint32_t chain = kNone;
};

} // namespace structures
