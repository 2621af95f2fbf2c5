// SPDX-License-Identifier: GPL-3.0-or-later
// How selected objects are shown.
#pragma once

#include "Color.h"

namespace TAMBO {

// The colour of a selected object that has this colour of its own. It is a dark shade of the
// selection colour, or for a colour that is dark itself a light tint of the selection colour's
// opposite, with a little of the own colour in it, and always opaque.
[[nodiscard]] Color selectedColor(Color color) noexcept;
// What selectedColor() mixes in. Bright yellow unless set.
void setSelectionColor(Color color) noexcept;

} // namespace TAMBO
