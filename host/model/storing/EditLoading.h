// SPDX-License-Identifier: GPL-3.0-or-later
// Edits made again of their bytes.
#pragma once

#include "EditBytes.h"

namespace TAMBO {

// Fails when the bytes cannot be those of an edit of the objects that there are; whether it can be
// applied to them as they are now, it says itself.
[[nodiscard]] LoadedEdit loadEdit(EditReader &in);

} // namespace TAMBO
