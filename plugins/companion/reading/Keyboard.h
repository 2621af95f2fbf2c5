// SPDX-License-Identifier: GPL-3.0-or-later
// The keyboard for a part of an editor window, wherever it was asked for.
#pragma once

class QWidget;

namespace companion {

// The window of the widget comes to the front, too: who chooses in the menu of the main window
// types into the bar that opens, not into the main window.
void takeKeyboard(QWidget &widget);

} // namespace companion
