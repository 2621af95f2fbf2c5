// SPDX-License-Identifier: GPL-3.0-or-later
// What can be done to any stored object of the tree.
#pragma once

#include "Color.h"

#include <optional>
#include <string>

namespace TAMBO {

class Compound;

// A recorded change; inside a guard. False when the object is locked or is a mere handle (a
// residue) that has no name of its own.
bool renameObject(Compound &object, const std::string &name);

// No step of undo. False for a handle, which cannot be locked.
bool setObjectLocked(Compound &object, bool locked);

// Stands in Space, itself or what it is a part of.
[[nodiscard]] bool isInTree(const Compound &object);

// ---- For the classes of the tree

// Sets the colour kept in slot, a part of object, as a recorded change.
void assignColor(Compound &object, std::optional<Color> &slot, std::optional<Color> color);
// Sets the flag, a part of object. Selection is no step of undo.
void assignSelected(Compound &object, bool &flag, bool selected);

} // namespace TAMBO
