// SPDX-License-Identifier: GPL-3.0-or-later
// The text of a line at the lower edge of a window.
#pragma once

class QLabel;

namespace companion {

// Plain text, which takes the room that there is and never asks for a wider window; an ellipsis
// stands for what has no room. For a tool bar, which it then belongs to.
[[nodiscard]] QLabel *makeLineLabel();

} // namespace companion
