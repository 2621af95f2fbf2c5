// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Compound.h"

#include <vector>

namespace structures {

enum class Selecting {
    // Instead of what was selected, anywhere in the workbench.
    Only,
    // Beside it.
    Add,
    // Those that are selected are not selected any more, and the other way round.
    Toggle
};

// In one published change. False when the workbench does not allow one now.
bool select(const std::vector<TAMBO::Compound *> &objects, Selecting how);

} // namespace structures
