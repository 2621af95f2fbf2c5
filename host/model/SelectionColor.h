// SPDX-License-Identifier: GPL-3.0-or-later
// How selected objects are shown.
#pragma once

#include "Color.h"

namespace TAMBO {

// Half and half with the selection colour.
[[nodiscard]] Color selectedColor(Color color) noexcept;

} // namespace TAMBO
