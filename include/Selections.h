// SPDX-License-Identifier: GPL-3.0-or-later
// Taking everything out of the selection, and selecting it again.
#pragma once

#include "Export.h"

#include <cstddef>

namespace TAMBO {

// How much was selected before, or is again: residues, and objects that are selected themselves,
// such as alignments.
struct SelectedCount
{
    std::size_t residues = 0;
    std::size_t objects = 0;

    [[nodiscard]] bool isNone() const noexcept { return residues == 0 && objects == 0; }
};

// Both inside a guard on Space. Neither is a step of undo.
class TAMBO_API Selections
{
public:
    // Of all objects. What was selected is kept with its objects, in place of what was kept before,
    // unless nothing was selected; that takes no further memory.
    static SelectedCount deselectAll();
    // Adds to the selection what is kept, as far as its objects are there, whatever has been edited
    // since.
    static SelectedCount selectAgain();
};

} // namespace TAMBO
