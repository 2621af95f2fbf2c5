// SPDX-License-Identifier: GPL-3.0-or-later
// The text of structure files from molecules of the coordinate library. Apart from its callers, and
// in C++17, as CifMolecule.h is.
#pragma once

#include <gemmi/model.hpp>

#include <string>

namespace TAMBO::formats {

// Throws what the library throws.
[[nodiscard]] std::string pdbTextOf(const gemmi::Structure &structure);
// Names its polymers and ligands on the way.
[[nodiscard]] std::string cifTextOf(gemmi::Structure &structure);

} // namespace TAMBO::formats
