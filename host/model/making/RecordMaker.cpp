// SPDX-License-Identifier: GPL-3.0-or-later
#include "RecordMaker.h"

#include "AlignmentTable.h"
#include "Atom.h"
#include "Element.h"
#include "LongWork.h"
#include "Peptide.h"
#include "ResidueGroup.h"
#include "Structure.h"

#include <algorithm>
#include <cstring>
#include <optional>
#include <span>
#include <string_view>
#include <utility>

namespace TAMBO {

namespace {

// ---- Alignments

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

// Whether there is nothing to say of the row besides its name and cells. So it is with most rows of
// large alignments, of which no residue need be looked at then.
bool isPlain(const AlignmentRow &row)
{
    const Peptide &sequence = row.sequence();
    return row.label() == nullptr && !sequence.hasTies() && sequence.objectCount() == 0 &&
           !sequence.hasOwnNumbers() && !sequence.hasOwnColors(0, sequence.residueCount()) &&
           dynamic_cast<const Structure *>(sequence.Parent()) == nullptr;
}

// All of it but name and cells.
RowRecord describeRow(const AlignmentRow &row, unsigned long width)
{
    RowRecord record;
    const Peptide &sequence = row.sequence();
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

RowRecord makeRow(const AlignmentRow &row, unsigned long width)
{
    RowRecord record = isPlain(row) ? RowRecord() : describeRow(row, width);
    record.name = row.name();
    const Peptide &sequence = row.sequence();
    record.sequence.letters.reserve(row.cells().residues());
    row.forEachRun(0, width, [&](AlignmentRow::Column, std::uint32_t index, std::uint32_t count) {
        record.sequence.letters.append(sequence.letters(), index, count);
    });
    record.sequence.width = width;
    record.sequence.occupancy = row.cells().columns(0, width);
    return record;
}

void copyLetters(const AlignmentRow &row, unsigned long width, std::span<char> out)
{
    const std::string_view letters = row.sequence().letters();
    if (out.empty())
        return;
    if (row.isComplete()) {
        std::memcpy(out.data(), letters.data(), out.size());
        return;
    }
    char *to = out.data();
    row.forEachRun(0, width, [&](AlignmentRow::Column, std::uint32_t index, std::uint32_t count) {
        std::memcpy(to, letters.data() + index, count);
        to += count;
    });
}

void copyCells(const OccupancyRow &cells, unsigned long width, std::span<std::uint64_t> out)
{
    for (std::size_t i = 0; i < out.size(); ++i)
        out[i] = cells.word(i);
    if (width % OccupancyRow::kWordColumns != 0)
        out.back() &= bits::low(width % OccupancyRow::kWordColumns);
}

// All of the alignment but its rows.
AlignmentRecord makeWhole(const Alignment &alignment)
{
    AlignmentRecord record;
    record.name = alignment.Name();
    const AlignmentTable &table = alignment.table();
    if (const AlignmentAnnotation *const annotation = table.annotation()) {
        record.annotations = annotation->remarks();
        record.columnAnnotations = annotation->lines(table.width());
    }
    return record;
}

// ---- Structures

AtomRecord makeAtom(const Atom &atom)
{
    return {std::string(atom.name()), std::string(atom.element()), atom.place(), atom.bFactor(),
            atom.occupancy()};
}

ResidueRecord makeGroup(const ResidueGroup &group)
{
    ResidueRecord record;
    record.typeName = group.TypeName();
    record.letter = group.TypeCode();
    record.number = group.GetSeqId();
    record.isAminoAcid = false;
    for (std::size_t i = 0; i < group.ChildCount(); ++i)
        record.atoms.push_back(makeAtom(dynamic_cast<const Atom &>(*group.Child(i))));
    return record;
}

// Each piece of it.
void addElement(const Peptide &chain, const Element &element, StructureRecord &record)
{
    const char letter = element.TypeCode();
    const bool isSmall = letter >= 'a';
    const char type = isSmall ? char(letter - 'a' + 'A') : letter;
    std::size_t pieces = 0;
    bool isInside = false;
    for (std::size_t i = 0; i < chain.residueCount(); ++i) {
        if (!element.contains(i)) {
            isInside = false;
            continue;
        }
        if (!isInside) {
            ++pieces;
            record.elements.push_back(
                {element.Name(), type, chain.Name(), chain.number(i), {}, isSmall});
        }
        record.elements.back().last = chain.number(i);
        isInside = true;
    }
    if (pieces > 1)
        ++record.brokenElements;
}

bool hasColoredAtoms(const Compound &parent)
{
    for (std::size_t i = 0; i < parent.ChildCount(); ++i) {
        const auto *const atom = dynamic_cast<const Atom *>(parent.Child(i));
        if (atom != nullptr && atom->hasOwnColor())
            return true;
    }
    return false;
}

bool hasOwnColors(const Peptide &chain)
{
    if (chain.state().color || chain.hasOwnColors(0, chain.residueCount()))
        return true;
    for (std::size_t i = 0; i < chain.residueCount(); ++i) {
        for (std::size_t k = 0; k < chain.atomCount(i); ++k)
            if (chain.atom(i, k)->hasOwnColor())
                return true;
    }
    for (std::size_t i = 0; i < chain.objectCount(); ++i) {
        const auto *const group = dynamic_cast<const ResidueGroup *>(chain.object(i));
        const auto *const element = dynamic_cast<const Element *>(chain.object(i));
        if ((group != nullptr && (group->hasOwnColor() || hasColoredAtoms(*group))) ||
            (element != nullptr && element->state().color))
            return true;
    }
    return false;
}

// Nothing when it is given up.
std::optional<AlignmentSnapshot> copyRows(const Alignment &alignment, LongWork::Kind kind)
{
    const AlignmentTable &table = alignment.table();
    const unsigned long width = table.width();
    AlignmentSnapshot snapshot(makeWhole(alignment), table.rowCount());
    LongWork work("Copying rows", table.rowCount(), kind);
    for (std::size_t i = 0; i < table.rowCount(); ++i) {
        if (!work.goesOn())
            return std::nullopt;
        const AlignmentRow &row = table.row(i);
        const AlignmentSnapshot::Room room =
            snapshot.add(row.name(), row.cells().residues(), width);
        copyLetters(row, width, room.letters);
        copyCells(row.cells(), width, room.occupancy);
        if (!isPlain(row))
            snapshot.say(describeRow(row, width));
    }
    return snapshot;
}

} // namespace

AlignmentRecord makeRecord(const Alignment &alignment)
{
    AlignmentRecord record = makeWhole(alignment);
    const AlignmentTable &table = alignment.table();
    record.rows.reserve(table.rowCount());
    for (std::size_t i = 0; i < table.rowCount(); ++i)
        record.rows.push_back(makeRow(table.row(i), table.width()));
    return record;
}

AlignmentSnapshot makeSnapshot(const Alignment &alignment)
{
    return *copyRows(alignment, LongWork::Kind::Fixed);
}

std::optional<AlignmentSnapshot> askedSnapshot(const Alignment &alignment)
{
    return copyRows(alignment, LongWork::Kind::Reading);
}

RowRecord makeRowRecord(const Alignment &alignment, std::size_t row)
{
    return makeRow(alignment.table().row(row), alignment.width());
}

ResidueRecord makeRecord(const Peptide &chain, std::size_t index)
{
    ResidueRecord record;
    record.typeName = chain.typeName(index);
    record.letter = chain.letter(index);
    record.number = chain.number(index);
    record.atoms.reserve(chain.atomCount(index));
    for (std::size_t i = 0; i < chain.atomCount(index); ++i)
        record.atoms.push_back(makeAtom(*chain.atom(index, i)));
    return record;
}

StructureRecord makeRecord(const Structure &structure)
{
    StructureRecord record;
    record.name = structure.Name();
    record.models = structure.modelCount();
    record.isModel = structure.isModel();
    record.hasOwnColors = structure.state().color.has_value();
    for (std::size_t c = 0; const Peptide *const chain = structure.chain(c); ++c) {
        ChainRecord &made = record.chains.emplace_back();
        made.name = chain->Name();
        record.hasOwnColors = record.hasOwnColors || hasOwnColors(*chain);
        for (std::size_t i = 0; i < chain->residueCount(); ++i)
            made.residues.push_back(makeRecord(*chain, i));
        for (std::size_t i = 0; i < chain->objectCount(); ++i) {
            if (const auto *const group = dynamic_cast<const ResidueGroup *>(chain->object(i)))
                made.residues.push_back(makeGroup(*group));
            else if (const auto *const element = dynamic_cast<const Element *>(chain->object(i)))
                addElement(*chain, *element, record);
        }
    }
    return record;
}

} // namespace TAMBO
