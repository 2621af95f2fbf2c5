// SPDX-License-Identifier: GPL-3.0-or-later
// What every stored object of the tree keeps besides its content. NamedCompound has one, and so has
// AlignmentTable (its state()), so that naming, locking and ownership treat all objects alike.
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
    // See identityOf(); 0 until somebody asks.
    mutable std::uint32_t identity = 0;
};

// The state of a stored object; null for a handle such as a residue, which has none of its own.
[[nodiscard]] CompoundState *stateOf(Compound &object) noexcept;

// A number that no other object has or will have, also when one comes to stand at the address of
// another that is gone. The same for as long as the object is there, deleted or not; 0 for a
// handle.
[[nodiscard]] std::uint32_t identityOf(const Compound &object) noexcept;

} // namespace TAMBO
