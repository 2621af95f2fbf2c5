// SPDX-License-Identifier: GPL-3.0-or-later
// `tambo script`: a script in the system's Python, with the package beside the program. No window
// and no workbench that runs knows of it.
#pragma once

#include <iosfwd>
#include <string>
#include <vector>

namespace TAMBO::app {

// The file, and what it is called with. Ends the program by becoming Python, whose exit status is
// that of the call; comes back with one line to err and a status when it cannot: 1 when the file is
// not there, 2 without the package or Python.
[[nodiscard]] int runScriptCommand(const std::vector<std::string> &words, std::ostream &err);

} // namespace TAMBO::app
