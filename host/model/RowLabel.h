// SPDX-License-Identifier: GPL-3.0-or-later
// What an alignment file said of a row besides its cells; kept so that saving does not lose it.
#pragma once

#include "Records.h"

#include <cstdint>
#include <string>
#include <vector>

namespace TAMBO {

struct RowLabel
{
    // Shown instead of the sequence's name, unless empty.
    std::string name;
    std::string description;
    StructureLink link;
    // The numbers of the sequence's residues before each break between two chains.
    std::vector<std::uint64_t> chainBreaks;
};

} // namespace TAMBO
