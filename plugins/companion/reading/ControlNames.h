// SPDX-License-Identifier: GPL-3.0-or-later
// Names, for assistive technology, of the parts that the toolkit's controls are made of.
#pragma once

class QWidget;

namespace companion {

// Fields inside of lists and numbers get the name of what they are in; the button of a tool bar
// that has no room, and that in the corner of a table, say what they do. Those that have a name
// keep it.
void nameInnerControls(QWidget &all);

} // namespace companion
