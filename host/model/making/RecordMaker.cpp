// SPDX-License-Identifier: GPL-3.0-or-later
#include "RecordMaker.h"

#include "AlignmentTable.h"
#include "Peptide.h"
#include "Structure.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace TAMBO {

namespace {

// The structure whose chain has the data of a residue, or null. A model is in no file that another
// could name.
const Structure *structureOf(const ResiduePlace &place)
{
    const auto *const structure = dynamic_cast<const Structure *>(place.peptide->Parent());
    return structure == nullptr || structure->isModel() ? nullptr : structure;
}

bool isOfModel(const ResiduePlace &place)
{
    const auto *const structure = dynamic_cast<const Structure *>(place.peptide->Parent());
    return structure != nullptr && structure->isModel();
}

// From the first to the last residue of the row that is in the coordinates.
void describeCoordinates(const AlignmentRow &row, RowRecord &record)
{
    const Peptide &sequence = row.sequence();
    std::optional<ResiduePlace> first;
    std::optional<ResiduePlace> last;
    // Neighbours are of one chain mostly, which is looked at once.
    const Peptide *chain = nullptr;
    const Structure *structure = nullptr;
    row.forEachResidue(0, row.cells().end(), [&](AlignmentRow::Column, std::uint32_t index) {
        const ResiduePlace place = sequence.resolve(index);
        if (place.peptide != chain) {
            chain = place.peptide;
            structure = structureOf(place);
            record.hasModel = record.hasModel || isOfModel(place);
        }
        if (structure == nullptr)
            return;
        if (!first)
            first = place;
        last = place;
    });
    if (!first)
        return;
    StructureLink &link = record.link.change();
    // The file may call the structure otherwise, which finds it as well.
    if (link.structure.empty())
        link.structure = structureOf(*first)->code();
    link.chain = first->peptide->Name();
    link.first = first->peptide->number(first->index).getValue();
    link.last = last->peptide->number(last->index).getValue();
    link.lastChain = last->peptide->Name();
}

// Whether reading the row from a PIR file would number its residues as they are.
bool isCountedByHeader(const AlignmentRow &row, const RowRecord &record)
{
    const Peptide &sequence = row.sequence();
    const auto isInFile = [&](std::uint32_t index) {
        return structureOf(sequence.resolve(index)) != nullptr;
    };
    const std::uint32_t count = row.cells().residues();
    // Residues in front of the first one that the structure has are counted back from it.
    std::uint32_t first = 0;
    while (first < count && !isInFile(row.residueIndex(first)))
        ++first;
    SequenceNumber number(record.link->first);
    if (first < count)
        number = SequenceNumber(sequence.number(row.residueIndex(first)).number() - int(first));
    else if (!number.isValid())
        number = SequenceNumber(1);
    for (std::uint32_t i = 0; i < count; ++i, ++number) {
        const std::uint32_t index = row.residueIndex(i);
        if (isInFile(index))
            number = sequence.number(index);
        else if (!(sequence.number(index) == number))
            return false;
    }
    return true;
}

// Of residues that no structure file describes.
bool hasElements(const AlignmentRow &row, const RowRecord &record)
{
    const Peptide &sequence = row.sequence();
    // Without a look at each residue where there cannot be any.
    if (!record.hasModel && sequence.objectCount() == 0)
        return false;
    bool has = false;
    row.forEachResidue(0, row.cells().end(), [&](AlignmentRow::Column, std::uint32_t index) {
        has = has || (structureOf(sequence.resolve(index)) == nullptr &&
                      sequence.elementAt(index) != nullptr);
    });
    return has;
}

bool hasOwnColors(const AlignmentRow &row)
{
    const std::vector<ResidueRun> runs = row.residueRuns(0, row.cells().residues());
    return std::ranges::any_of(runs, [&row](const ResidueRun &run) {
        return row.sequence().hasOwnColors(run.index, run.index + run.count);
    });
}

// Lines over the residues become lines over the columns.
std::vector<Annotation> residueLines(const AlignmentRow &row, const RowLabel &label,
                                     unsigned long width)
{
    std::vector<Annotation> lines;
    lines.reserve(label.residueAnnotations.size());
    for (const Annotation &said : label.residueAnnotations) {
        std::string text(width, AlignmentAnnotation::kNothing);
        row.forEachResidue(0, width, [&](AlignmentRow::Column column, std::uint32_t index) {
            // Below zero becomes a large number, which no text reaches.
            const std::uint32_t place = index - label.firstResidue;
            if (place < said.text.size())
                text[column] = said.text[place];
        });
        lines.push_back({said.tag, std::move(text)});
    }
    return lines;
}

RowRecord makeRow(const AlignmentRow &row, unsigned long width)
{
    RowRecord record;
    record.name = row.name();
    const Peptide &sequence = row.sequence();
    record.sequence.letters.reserve(row.cells().residues());
    row.forEachRun(0, width, [&](AlignmentRow::Column, std::uint32_t index, std::uint32_t count) {
        record.sequence.letters.append(sequence.letters(), index, count);
    });
    record.sequence.width = width;
    record.sequence.occupancy = row.cells().columns(0, width);
    if (const RowLabel *const label = row.label()) {
        record.description = label->description;
        record.link = label->link;
        record.annotations = label->annotations;
        record.chainBreaks = row.chainBreaks(width);
        record.residueAnnotations = residueLines(row, *label, width);
    }
    describeCoordinates(row, record);
    record.hasOwnNumbers =
        dynamic_cast<const Structure *>(sequence.Parent()) == nullptr && sequence.hasOwnNumbers();
    record.areNumbersInHeader = record.hasOwnNumbers && isCountedByHeader(row, record);
    record.hasElements = hasElements(row, record);
    record.hasOwnColors = hasOwnColors(row);
    return record;
}

} // namespace

AlignmentRecord makeRecord(const Alignment &alignment)
{
    AlignmentRecord record;
    record.name = alignment.Name();
    const AlignmentTable &table = alignment.table();
    if (const AlignmentAnnotation *const annotation = table.annotation()) {
        record.annotations = annotation->remarks();
        record.columnAnnotations = annotation->lines(table.width());
    }
    record.rows.reserve(table.rowCount());
    for (std::size_t i = 0; i < table.rowCount(); ++i)
        record.rows.push_back(makeRow(table.row(i), table.width()));
    return record;
}

RowRecord makeRowRecord(const Alignment &alignment, std::size_t row)
{
    return makeRow(alignment.table().row(row), alignment.width());
}

} // namespace TAMBO
