// SPDX-License-Identifier: GPL-3.0-or-later
#include "RowChanges.h"

#include "Alignment.h"
#include "AlignmentTable.h"
#include "Peptide.h"
#include "Space.h"
#include "Structure.h"

#include <typeinfo>

namespace TAMBO {

namespace {

// A row that has no name of its own follows its sequence.
bool followsName(const AlignmentRow &row)
{
    return row.label() == nullptr || row.label()->name.empty();
}

} // namespace

PointerSet<Compound> *RowChanges::changedIn(EditPart part) noexcept
{
    switch (part) {
    case EditPart::Name:
        return &m_Renamed;
    case EditPart::Numbers:
        return &m_Renumbered;
    case EditPart::Elements:
        return &m_WithElements;
    default:
        return nullptr;
    }
}

void RowChanges::add(const Compound &holder, EditPart part)
{
    PointerSet<Compound> *const changed = changedIn(part);
    if (changed == nullptr)
        return;
    // Mostly it is a sequence, of which a cast that finds nothing costs more than all else.
    const bool isSequence = typeid(holder) == typeid(Peptide);
    if (isSequence || dynamic_cast<const Alignment *>(&holder) == nullptr)
        changed->insert(&holder);
}

EditParts RowChanges::of(const Alignment &alignment) const
{
    const EditParts most = mostOfRows();
    const AlignmentTable &table = alignment.table();
    EditParts parts;
    for (std::size_t row = 0; row < table.rowCount() && parts != most; ++row)
        parts.add(ofRow(table.row(row)));
    return parts;
}

// Of a million rows that have all been renamed the first one tells it.
EditParts RowChanges::mostOfRows() const
{
    EditParts most;
    if (!m_Renamed.empty())
        most.add(EditPart::RowNames);
    if (!m_Renumbered.empty()) {
        most.add(EditPart::Numbers);
        most.add(EditPart::HeaderNumbers);
    }
    if (!m_WithElements.empty())
        most.add(EditPart::Elements);
    return most;
}

EditParts RowChanges::partsOf(const Compound *object) const
{
    EditParts parts;
    if (m_Renamed.contains(object))
        parts.add(EditPart::Name);
    if (m_Renumbered.contains(object))
        parts.add(EditPart::Numbers);
    if (m_WithElements.contains(object))
        parts.add(EditPart::Elements);
    return parts;
}

EditParts RowChanges::ofChain(const Peptide &chain) const
{
    EditParts parts;
    if (partsOf(&chain).has(EditPart::Numbers))
        parts.add(EditPart::HeaderNumbers);
    return parts;
}

EditParts RowChanges::ofRow(const AlignmentRow &row) const
{
    const Peptide &sequence = row.sequence();
    const EditParts own = partsOf(&sequence);
    const Compound *const parent = sequence.Parent();
    const auto *const structure =
        parent == Space::instance() ? nullptr : dynamic_cast<const Structure *>(parent);
    const bool isNamedByOther = structure != nullptr && partsOf(structure).has(EditPart::Name);
    EditParts parts;
    if (followsName(row) && (own.has(EditPart::Name) || isNamedByOther))
        parts.add(EditPart::RowNames);
    if (structure != nullptr)
        parts.add(ofChain(sequence));
    for (const EditPart part : {EditPart::Numbers, EditPart::Elements}) {
        if (structure == nullptr && own.has(part))
            parts.add(part);
    }
    if (sequence.hasTies())
        sequence.forEachTiedChain([&](const Peptide &chain) { parts.add(ofChain(chain)); });
    return parts;
}

} // namespace TAMBO
