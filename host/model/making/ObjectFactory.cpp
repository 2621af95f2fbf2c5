// SPDX-License-Identifier: GPL-3.0-or-later
#include "ObjectFactory.h"

#include "AlignmentTable.h"
#include "Bits.h"
#include "ChangeScope.h"
#include "Element.h"
#include "ObjectSpace.h"
#include "Peptide.h"
#include "RowPacking.h"
#include "RowTie.h"
#include "Structure.h"
#include "StructureLookup.h"

#include <algorithm>
#include <numeric>
#include <optional>
#include <utility>

namespace TAMBO {

namespace {

Peptide *chainNamed(const Structure &structure, const std::string &name, const SequenceNumber &with)
{
    for (std::size_t i = 0; i < structure.objectCount(); ++i) {
        Peptide *const chain = structure.chain(i);
        if (chain->Name() != name)
            continue;
        for (std::size_t k = 0; k < chain->residueCount(); ++k) {
            if (chain->number(k) == with)
                return chain;
        }
    }
    return nullptr;
}

void addElement(const Structure &structure, ElementRecord &&record)
{
    Peptide *const chain = chainNamed(structure, record.chain, record.first);
    if (chain == nullptr)
        return;
    const auto indexOf = [chain](const SequenceNumber &number, std::size_t from) {
        std::size_t index = from;
        while (index < chain->residueCount() && !(chain->number(index) == number))
            ++index;
        return index;
    };
    const std::size_t first = indexOf(record.first, 0);
    const std::size_t last = indexOf(record.last, first);
    if (last == chain->residueCount())
        return;
    std::vector<std::uint32_t> residues(last - first + 1);
    std::iota(residues.begin(), residues.end(), static_cast<std::uint32_t>(first));
    chain->insertObject(
        chain->objectCount(),
        std::make_unique<Element>(std::move(record.name), record.type, std::move(residues)));
}

// Residues that the chain lacks are numbered on from those before them, or back from the first.
void presetNumbers(Peptide &peptide, const RowTie &tie, const StructureLink &link)
{
    if (tie.runs().empty()) {
        if (link.first.empty())
            return;
        const SequenceNumber first(link.first);
        if (first.isValid() && peptide.residueCount() > 0)
            peptide.presetNumber(0, first);
        return;
    }
    const RowTieRun &begin = tie.runs().front();
    if (begin.first > 0) {
        const int number = begin.chain->number(begin.chainFirst).number();
        peptide.presetNumber(0, SequenceNumber(number - int(begin.first)));
    }
    std::size_t next = begin.first;
    for (const RowTieRun &run : tie.runs()) {
        if (next < run.first) {
            SequenceNumber number = peptide.number(next - 1);
            peptide.presetNumber(next, ++number);
        }
        for (std::size_t i = 0; i < run.count; ++i)
            peptide.presetNumber(run.first + i, run.chain->number(run.chainFirst + i));
        next = run.first + run.count;
    }
}

// Lines over the columns become lines over the row's residues.
void followResidues(std::vector<Annotation> &lines, const PackedRow &row)
{
    for (Annotation &line : lines) {
        std::string text;
        text.reserve(row.cells.residues());
        for (std::size_t word = 0; word * bits::kPerWord < row.cells.end(); ++word) {
            bits::forEach(row.cells.word(word), word * bits::kPerWord, [&](std::size_t column) {
                text +=
                    column < line.text.size() ? line.text[column] : AlignmentAnnotation::kNothing;
            });
        }
        line.text = std::move(text);
    }
}

using Sequences = std::vector<std::unique_ptr<StoredObject>>;

// A sequence of the row's own, which is not in Space yet.
Peptide &makeSequence(PackedRow &row, const RowTie &tie, Sequences &sequences)
{
    auto made = std::make_unique<Peptide>(std::move(row.text));
    presetNumbers(*made, tie, *row.label->link);
    for (const RowTieRun &run : tie.runs())
        made->tie(run.first, *run.chain, run.chainFirst, run.count);
    Peptide &peptide = *made;
    sequences.push_back(std::move(made));
    return peptide;
}

std::unique_ptr<AlignmentRow> makeRow(PackedRow &row, const RowTie &tie, Sequences &sequences)
{
    RowLabel label;
    std::uint32_t first = 0;
    Peptide *sequence = nullptr;
    const bool hasLabel = !row.label.isUsual();
    if (hasLabel) {
        label = *row.label;
        followResidues(label.residueAnnotations, row);
    }
    if (tie.isExact()) {
        sequence = tie.runs().front().chain;
        first = static_cast<std::uint32_t>(tie.runs().front().chainFirst);
        // A sequence of the row's own has its name already.
        label.name = row.text.name();
    } else {
        sequence = &makeSequence(row, tie, sequences);
    }
    if (!hasLabel && label.name.empty())
        return std::make_unique<AlignmentRow>(*sequence, std::move(row.cells), first);
    label.firstResidue = first;
    return std::make_unique<AlignmentRow>(*sequence, std::move(row.cells), std::move(label), first);
}

} // namespace

Structure *ObjectFactory::adopt(StructureRecord &&record)
{
    auto made = std::make_unique<Structure>(std::move(record.name), record.models, record.isModel);
    for (ChainRecord &chain : record.chains) {
        if (!chain.residues.empty())
            made->insertObject(made->objectCount(), std::make_unique<Peptide>(std::move(chain)));
    }
    for (ElementRecord &element : record.elements)
        addElement(*made, std::move(element));
    Structure *const structure = made.get();
    ObjectSpace::get().add(std::move(made));
    return structure;
}

Alignment *ObjectFactory::adopt(AlignmentRecord &&record)
{
    const ChangeScope scope;
    const StructureLookup structures;
    AlignmentTable::Rows rows;
    Sequences sequences;
    std::uint64_t width = 0;
    const std::size_t count = record.rows.size() + record.packed.size();
    sequences.reserve(count);
    rows.reserve(record.isAligned ? count : 0);
    static const RowRecord untied;
    const auto take = [&](PackedRow &&row) {
        // Looked at only where there are chains that it may share its residues with.
        std::optional<RowRecord> plain;
        if (!structures.isEmpty())
            plain = unpacked(PackedRow(row));
        const RowTie tie(plain ? *plain : untied, structures);
        for (const std::string &remark : tie.remarks())
            writeLog(remark, LogSeverity::Warning);
        width = std::max(width, row.width);
        if (record.isAligned)
            rows.push_back(makeRow(row, tie, sequences));
        else
            makeSequence(row, tie, sequences);
    };
    for (RowRecord &row : record.rows)
        take(packed(std::move(row)));
    record.packed.takeEach(take);
    // The file holds them, and the alignment that shows them.
    ObjectSpace::get().addAll(std::move(sequences), EditPart::Arrival);
    if (!record.isAligned)
        return nullptr;
    std::unique_ptr<Alignment> made = AlignmentTable::make(record.name, std::move(rows), width);
    Alignment *const alignment = made.get();
    if (!record.annotations.empty() || !record.columnAnnotations.empty())
        alignment->table().presetAnnotation(std::make_unique<AlignmentAnnotation>(
            std::move(record.annotations), std::move(record.columnAnnotations)));
    ObjectSpace::get().add(std::move(made));
    return alignment;
}

} // namespace TAMBO
