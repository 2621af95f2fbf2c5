// SPDX-License-Identifier: GPL-3.0-or-later
// The part of a view's state that is the scene's, and where windows may be.
#pragma once

#include "ViewState.h"

#include <QRect>

class QWidget;

namespace structures {

class StructureScene;

[[nodiscard]] ViewState stateOf(const StructureScene &scene);
// Structures of which nothing is said, or that have other residues than they had, stay as they are.
// Within SessionPart::restore().
void restoreScene(const ViewState &state, StructureScene &scene);

// Leaves it where it is when nothing of that place is on a screen.
void putInSight(QWidget &window, const QRect &place);

} // namespace structures
