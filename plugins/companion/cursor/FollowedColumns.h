// SPDX-License-Identifier: GPL-3.0-or-later
// Where columns of an alignment stand after edits.
#pragma once

#include "Alignment.h"
#include "LayoutChanges.h"

#include <optional>
#include <vector>

namespace companion {

using ColumnRange = TAMBO::Alignment::Range;

// After edits that are known one by one. Columns that come between belong to them; an empty range
// when all have gone.
[[nodiscard]] ColumnRange followed(ColumnRange columns,
                                   const std::vector<TAMBO::LayoutChange> &changes);

// After edits of which nothing is known but what they have made: by the residues of some rows that
// stood there.
class ColumnAnchors
{
public:
    // Some rows all over the alignment are looked at, however many there are.
    ColumnAnchors(const TAMBO::Alignment &alignment, const ColumnRange &columns);

    // Where most of the residues are now; where they were when no row is left at its place. Nothing
    // when all rows have lost residues or got some, so that none can be told.
    [[nodiscard]] std::optional<ColumnRange> find(const TAMBO::Alignment &alignment) const;

private:
    struct Anchor
    {
        unsigned long row;
        const TAMBO::Compound *sequence;
        // Counted in the row, which has so many.
        unsigned long residue;
        unsigned long residues;
        unsigned long column;
    };

    // By how many columns most of them have moved.
    [[nodiscard]] static std::optional<long> shift(const TAMBO::Alignment &alignment,
                                                   const std::vector<Anchor> &anchors);

    ColumnRange m_Columns;
    std::vector<Anchor> m_First;
    std::vector<Anchor> m_Last;
};

} // namespace companion
