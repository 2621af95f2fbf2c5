// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Alignment.h"
#include "StructureDetails.h"

#include <cstddef>
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
        for (std::size_t i = 0; i < sources.size(); ++i)
            if (sources[i].chain != nullptr)
                visit(row, i, sources[i]);
    }
}

} // namespace structures
