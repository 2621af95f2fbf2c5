// SPDX-License-Identifier: GPL-3.0-or-later
// Removing many columns at once.
#pragma once

#include <QString>

#include <string>
#include <vector>

namespace TAMBO {
class Alignment;
}

namespace companion {

// Those for which the flags say true, as one step of undo with that name. What has come of it, or
// why nothing has, for people; which: "without residues".
[[nodiscard]] QString removeColumns(TAMBO::Alignment &alignment, const std::vector<bool> &columns,
                                    const std::string &step, const QString &which);

} // namespace companion
