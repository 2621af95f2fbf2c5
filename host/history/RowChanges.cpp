// SPDX-License-Identifier: GPL-3.0-or-later
#include "RowChanges.h"

#include "Alignment.h"
#include "AlignmentTable.h"
#include "Peptide.h"
#include "Structure.h"

namespace TAMBO {

namespace {

// A row that has no name of its own follows its sequence.
bool followsName(const AlignmentRow &row)
{
    return row.label() == nullptr || row.label()->name.empty();
}

} // namespace

void RowChanges::add(const Compound &holder, EditPart part)
{
    const bool isShown =
        part == EditPart::Name || part == EditPart::Numbers || part == EditPart::Elements;
    if (isShown && dynamic_cast<const Alignment *>(&holder) == nullptr)
        m_Changed[&holder].add(part);
}

EditParts RowChanges::of(const Alignment &alignment) const
{
    EditParts parts;
    if (m_Changed.empty())
        return parts;
    const AlignmentTable &table = alignment.table();
    for (std::size_t row = 0; row < table.rowCount(); ++row)
        parts.add(ofRow(table.row(row)));
    return parts;
}

EditParts RowChanges::partsOf(const Compound *object) const
{
    const auto found = m_Changed.find(object);
    return found == m_Changed.end() ? EditParts() : found->second;
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
    const auto *const structure = dynamic_cast<const Structure *>(sequence.Parent());
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
