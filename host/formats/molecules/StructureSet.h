// SPDX-License-Identifier: GPL-3.0-or-later
// Several structures, where their atoms are now, as what one file holds.
#pragma once

#include "Records.h"

#include <span>
#include <string>
#include <vector>

namespace TAMBO {

struct MergedStructures
{
    // All chains in their order.
    StructureRecord whole;
    // Of chains whose name an earlier structure has: a sentence each.
    std::vector<std::string> renamed;
};

// As chains of one structure. Names that come again become others, of one character as long as
// there are such, else of two, so that a PDB file can hold them; helices and strands go along.
[[nodiscard]] MergedStructures mergedChains(std::span<const StructureRecord> structures,
                                            const std::string &name);

} // namespace TAMBO
