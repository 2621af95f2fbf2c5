// SPDX-License-Identifier: GPL-3.0-or-later
// From rows as readers leave them to rows that can be looked at, and back.
#pragma once

#include "Records.h"

#include <string>

namespace TAMBO {

[[nodiscard]] PackedRow packed(RowRecord &&row);
[[nodiscard]] RowRecord unpacked(PackedRow &&row);
// All rows become plain ones.
void unpackRows(AlignmentRecord &alignment);

// Calls visit(name) for the structure that a row names, in the order of the rows.
template <typename Visit> void forEachNamedStructure(const AlignmentRecord &alignment, Visit visit)
{
    const auto tell = [&](const StructureLink &link) {
        if (!link.structure.empty())
            visit(link.structure);
    };
    for (const RowRecord &row : alignment.rows)
        tell(*row.link);
    for (std::size_t row = 0; row < alignment.packed.size(); ++row)
        tell(*alignment.packed[row].label->link);
}

} // namespace TAMBO
