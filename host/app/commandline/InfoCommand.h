// SPDX-License-Identifier: GPL-3.0-or-later
// `tambo info`: what is in files, for scripts. Needs no display and makes no objects.
#pragma once

#include <iosfwd>
#include <string>
#include <vector>

namespace TAMBO::app {

// One JSON object a line and file to out, one line a bad file to err; goes on after a bad one.
// The exit status: 0, or 1 when a file was bad.
[[nodiscard]] int runInfo(const std::vector<std::string> &files, std::ostream &out,
                          std::ostream &err);

} // namespace TAMBO::app
