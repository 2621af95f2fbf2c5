// SPDX-License-Identifier: GPL-3.0-or-later
// A structure made of a record, with what is kept of its file besides chains.
#pragma once

#include "Records.h"

#include <memory>

namespace TAMBO {

class Structure;

[[nodiscard]] std::unique_ptr<Structure> makeStructure(StructureRecord &&record);

} // namespace TAMBO
