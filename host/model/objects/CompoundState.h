// SPDX-License-Identifier: GPL-3.0-or-later
// What nearly every stored object of the tree keeps besides its content, so that naming, locking
// and ownership treat all of them alike.
#pragma once

#include "Color.h"

#include <cstdint>
#include <optional>
#include <string>

namespace TAMBO {

class Compound;

struct CompoundState
{
    std::string name;
    // Null while the object is not in the tree.
    Compound *parent = nullptr;
    // None: the colour of the kind.
    std::optional<Color> color;
    bool isSelected = false;
    bool isLocked = false;
    // The number that identityOf() gives; 0 until somebody asks.
    mutable std::uint32_t identity = 0;
};

} // namespace TAMBO
