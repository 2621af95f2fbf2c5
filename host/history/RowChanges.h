// SPDX-License-Identifier: GPL-3.0-or-later
// What has changed of an alignment through what it shows and does not hold: its sequences and their
// chains.
#pragma once

#include "EditParts.h"
#include "PointerSet.h"

namespace TAMBO {

class Alignment;
class AlignmentRow;
class Compound;
class Peptide;

class RowChanges
{
public:
    // Of any object; those that no row shows are left out.
    void add(const Compound &holder, EditPart part);
    [[nodiscard]] auto adder()
    {
        return [this](const Compound &holder, EditPart part) { add(holder, part); };
    }
    // Looks at the rows only when there is something to be found.
    [[nodiscard]] EditParts of(const Alignment &alignment) const;

private:
    // Of such a part; null for one that no row shows.
    [[nodiscard]] PointerSet<Compound> *changedIn(EditPart part) noexcept;
    [[nodiscard]] EditParts mostOfRows() const;
    [[nodiscard]] EditParts partsOf(const Compound *object) const;
    [[nodiscard]] EditParts ofChain(const Peptide &chain) const;
    [[nodiscard]] EditParts ofRow(const AlignmentRow &row) const;

    // Of sequences, chains and structures.
    PointerSet<Compound> m_Renamed;
    PointerSet<Compound> m_Renumbered;
    PointerSet<Compound> m_WithElements;
};

} // namespace TAMBO
