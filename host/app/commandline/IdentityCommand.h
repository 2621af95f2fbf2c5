// SPDX-License-Identifier: GPL-3.0-or-later
// `tambo identity`: a table of how alike the rows of an alignment are.
#pragma once

#include <iosfwd>
#include <string>

namespace TAMBO::app {

// A header and one line of fields between tabs for each pair of rows; "NA" stands for a share of
// nothing. One line to err when something is wrong. The exit status: 0; 1 when the file is bad.
[[nodiscard]] int runIdentity(const std::string &file, std::ostream &out, std::ostream &err);

} // namespace TAMBO::app
