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
// False for null, too.
bool isAnySelectedOf(const TAMBO::Alignment *alignment);
bool selectEverything(TAMBO::Alignment &alignment);
bool invertSelection(TAMBO::Alignment &alignment);

} // namespace companion
