// SPDX-License-Identifier: GPL-3.0-or-later
// `tambo convert` of a session: one of its objects into a file, or all of them into a folder.
#pragma once

#include "ConvertOrder.h"

#include <iosfwd>

namespace TAMBO::app {

// As runConvert() does it. A folder that could not be filled is as it was.
[[nodiscard]] int convertSession(const ConvertOrder &order, std::ostream &err);

} // namespace TAMBO::app
