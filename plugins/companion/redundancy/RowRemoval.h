// SPDX-License-Identifier: GPL-3.0-or-later
// Removing many rows at once.
#pragma once

#include <string>
#include <vector>

namespace TAMBO {
class Alignment;
}

namespace companion {

// Those for which the flags say true, as one step of undo with that name. False when the alignment
// cannot be changed now.
[[nodiscard]] bool removeRows(TAMBO::Alignment &alignment, const std::vector<bool> &rows,
                              const std::string &step);

} // namespace companion
