// SPDX-License-Identifier: GPL-3.0-or-later
// What an alignment file said of a row besides its cells; kept so that saving does not lose it.
// Only the columns of breaks between chains ever change.
#pragma once

#include "Rare.h"
#include "RowFacts.h"

#include <cstdint>
#include <string>
#include <vector>

namespace TAMBO {

struct RowLabel
{
    // Shown instead of the sequence's name, unless empty.
    std::string name;
    std::string description;
    Rare<StructureLink> link;
    // The residue of the sequence that was the row's first one in the file.
    std::uint32_t firstResidue = 0;
    // Their letters are residues from that one on, whether the row still has them or not.
    std::vector<ChainBreak> chainBreaks;
    std::vector<Annotation> annotations;
    // One character for each residue from the first one on. They are tied to residues, not to
    // cells, so no edit of gaps or columns has to touch them.
    std::vector<Annotation> residueAnnotations;
};

} // namespace TAMBO
