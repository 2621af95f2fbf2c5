// SPDX-License-Identifier: GPL-3.0-or-later
// `tambo print`: an editor window paints its pages, and nobody sees it.
#pragma once

#include "PrintOrder.h"

#include <iosfwd>

namespace TAMBO::app {

// Needs an application object. One line to err when something is wrong. The exit status: 0; 1 when
// a file is bad; 2 when the call is wrong. Settings are changed for this run only.
[[nodiscard]] int runPrint(const PrintOrder &order, std::ostream &err);

} // namespace TAMBO::app
