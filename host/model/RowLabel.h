// SPDX-License-Identifier: GPL-3.0-or-later
// What an alignment file said of a row besides its cells; kept so that saving does not lose it.
#pragma once

#include "Records.h"

#include <string>

namespace TAMBO {

struct RowLabel
{
    // Shown instead of the sequence's name, unless empty.
    std::string name;
    std::string description;
    StructureLink link;
};

} // namespace TAMBO
