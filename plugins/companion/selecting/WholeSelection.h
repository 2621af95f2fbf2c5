// SPDX-License-Identifier: GPL-3.0-or-later
// Selecting without a choice: nothing, everything, everything else.
#pragma once

namespace TAMBO {
class Alignment;
}

namespace companion {

// Whatever is selected anywhere, as the workbench's own command. False when nothing can be selected
// now, here and below.
bool selectNothing();
// The same if a residue of the alignment is selected; false, too, when none is, and for null.
bool selectNothingOf(const TAMBO::Alignment *alignment);
bool selectEverything(TAMBO::Alignment &alignment);
bool invertSelection(TAMBO::Alignment &alignment);

} // namespace companion
