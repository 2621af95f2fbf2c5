// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

namespace TAMBO {

// A name that can be offered for a file, an ending behind it: characters that a file name cannot
// hold, or that file dialogs take for something else, become "_", and what is too long is cut.
[[nodiscard]] std::string fileNameOf(const std::string &name);

} // namespace TAMBO
