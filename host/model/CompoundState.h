// SPDX-License-Identifier: GPL-3.0-or-later
// What every stored object of the tree keeps besides its content. NamedCompound has one, and so has
// AlignmentTable (its state()), so that naming, locking and ownership treat all objects alike.
#pragma once

#include "Color.h"

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
};

// The state of a stored object; null for a handle such as a residue, which has none of its own.
[[nodiscard]] CompoundState *stateOf(Compound &object) noexcept;

} // namespace TAMBO
