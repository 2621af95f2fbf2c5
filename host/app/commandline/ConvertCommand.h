// SPDX-License-Identifier: GPL-3.0-or-later
// `tambo convert`: one file read, another written in the format asked for.
#pragma once

#include "ConvertOrder.h"

#include <iosfwd>

namespace TAMBO::app {

// What the new format loses goes to err, a line each with the file's name. The exit status: 0; 1
// when a file is bad.
[[nodiscard]] int runConvert(const ConvertOrder &order, std::ostream &err);

} // namespace TAMBO::app
