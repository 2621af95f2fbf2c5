// SPDX-License-Identifier: GPL-3.0-or-later
// Whether a template is still the same one: in a workbench structures are laid on each other, which
// is no reason to build all models on it anew.
#pragma once

#include <string_view>

namespace TAMBO::families {

// Of two texts of PDB files: only the coordinates differ, and those by one motion.
[[nodiscard]] bool isOnlyMoved(std::string_view before, std::string_view now);

} // namespace TAMBO::families
