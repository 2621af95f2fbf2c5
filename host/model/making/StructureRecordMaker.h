// SPDX-License-Identifier: GPL-3.0-or-later
// The way back from a loaded structure to the plain values that file writers take.
#pragma once

#include "Records.h"

namespace TAMBO {

class Structure;

// An element that is not in one piece becomes several.
[[nodiscard]] StructureRecord makeRecord(const Structure &structure);

} // namespace TAMBO
