// SPDX-License-Identifier: GPL-3.0-or-later
#include "RecordMaker.h"

#include "AlignmentTable.h"
#include "Peptide.h"
#include "Structure.h"

#include <optional>
#include <utility>

namespace TAMBO {

namespace {

// The structure whose chain has the data of a residue, or null.
const Structure *structureOf(const ResiduePlace &place)
{
    return dynamic_cast<const Structure *>(place.peptide->Parent());
}

// From the first to the last residue of the row that is in the coordinates.
void describeCoordinates(const AlignmentRow &row, RowRecord &record)
{
    const Peptide &sequence = row.sequence();
    std::optional<ResiduePlace> first;
    std::optional<ResiduePlace> last;
    row.forEachResidue(0, row.cells().end(), [&](AlignmentRow::Column, std::uint32_t index) {
        const ResiduePlace place = sequence.resolve(index);
        if (structureOf(place) == nullptr)
            return;
        if (!first)
            first = place;
        last = place;
    });
    if (!first)
        return;
    StructureLink &link = record.link;
    // The file may call the structure by its file name, which finds it as well.
    if (link.structure.empty())
        link.structure = structureOf(*first)->Name();
    link.chain = first->peptide->Name();
    link.first = first->peptide->number(first->index).getValue();
    link.last = last->peptide->number(last->index).getValue();
    link.lastChain = last->peptide->Name();
}

RowRecord makeRow(const AlignmentRow &row, unsigned long width)
{
    RowRecord record;
    record.name = row.name();
    const Peptide &sequence = row.sequence();
    record.sequence.letters.reserve(row.cells().residues());
    row.forEachResidue(0, width, [&](AlignmentRow::Column, std::uint32_t index) {
        record.sequence.letters.push_back(sequence.letter(index));
    });
    record.sequence.width = width;
    record.sequence.occupancy = row.cells().columns(0, width);
    if (const RowLabel *const label = row.label()) {
        record.description = label->description;
        record.link = label->link;
        // Counted by residues, so they only hold for a row that still has all of them.
        if (row.isComplete())
            record.chainBreaks = label->chainBreaks;
    }
    describeCoordinates(row, record);
    return record;
}

} // namespace

AlignmentRecord makeRecord(const Alignment &alignment)
{
    AlignmentRecord record;
    record.name = alignment.Name();
    const AlignmentTable &table = alignment.table();
    record.rows.reserve(table.rowCount());
    for (std::size_t i = 0; i < table.rowCount(); ++i)
        record.rows.push_back(makeRow(table.row(i), table.width()));
    return record;
}

} // namespace TAMBO
