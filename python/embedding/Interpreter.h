// SPDX-License-Identifier: GPL-3.0-or-later
// The system's Python in this process. It is started once, and ends with the process.
#pragma once

#include "Result.h"

namespace TAMBO::scripting {

// The lock of the interpreter is free afterwards. Nothing happens when it runs already.
[[nodiscard]] Result<void> startPython();

} // namespace TAMBO::scripting
