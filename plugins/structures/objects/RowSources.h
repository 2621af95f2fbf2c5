// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Alignment.h"
#include "AlignmentDetails.h"
#include "StructureDetails.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace structures {

// Calls visit(row, residue, source) for each residue of an alignment that has atoms: which of its
// row it is, and the chain's residue that it is tied to, or is.
template <typename Visit> void forEachSource(const TAMBO::Alignment &alignment, const Visit &visit)
{
    for (unsigned long row = 0; row < alignment.height(); ++row) {
        if (!alignment.hasPositions(row))
            continue;
        const std::vector<TAMBO::ResidueSource> sources =
            TAMBO::StructureDetails::sources(alignment.GetSeq(row));
        const std::vector<std::uint32_t> shown =
            TAMBO::AlignmentDetails::shownResidues(alignment, row);
        for (std::size_t i = 0; i < shown.size(); ++i)
            if (sources[shown[i]].chain != nullptr)
                visit(row, i, sources[shown[i]]);
    }
}

} // namespace structures
