// SPDX-License-Identifier: GPL-3.0-or-later
#include "ObjectFactory.h"

#include "AlignmentTable.h"
#include "Bits.h"
#include "ChangeScope.h"
#include "Element.h"
#include "ObjectSpace.h"
#include "Peptide.h"
#include "RowTie.h"
#include "Structure.h"
#include "StructureLookup.h"

#include <algorithm>
#include <numeric>
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
std::vector<Annotation> residueLines(std::vector<Annotation> lines, const GappedSequence &sequence)
{
    for (Annotation &line : lines) {
        std::string text;
        text.reserve(sequence.letters.size());
        bits::forEachIn(sequence.occupancy, [&](std::size_t column) {
            text += column < line.text.size() ? line.text[column] : AlignmentAnnotation::kNothing;
        });
        line.text = std::move(text);
    }
    return lines;
}

using Sequences = std::vector<std::unique_ptr<StoredObject>>;

// A sequence of the row's own, which is not in Space yet.
Peptide &makeSequence(RowRecord &row, const RowTie &tie, Sequences &sequences)
{
    auto made = std::make_unique<Peptide>(row.name, row.sequence.letters);
    row.sequence.letters = {};
    presetNumbers(*made, tie, *row.link);
    for (const RowTieRun &run : tie.runs())
        made->tie(run.first, *run.chain, run.chainFirst, run.count);
    Peptide &peptide = *made;
    sequences.push_back(std::move(made));
    return peptide;
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
    rows.reserve(record.rows.size());
    Sequences sequences;
    sequences.reserve(record.rows.size());
    std::uint64_t width = 0;
    for (RowRecord &row : record.rows) {
        const RowTie tie(row, structures);
        for (const std::string &remark : tie.remarks())
            writeLog(remark, LogSeverity::Warning);
        if (!record.isAligned) {
            makeSequence(row, tie, sequences);
            continue;
        }
        width = std::max(width, row.sequence.width);
        std::vector<Annotation> ofResidues =
            residueLines(std::move(row.residueAnnotations), row.sequence);
        OccupancyRow cells(row.sequence.occupancy);
        row.sequence.occupancy = {};
        const bool isChain = tie.isExact();
        Peptide &sequence = isChain ? *tie.runs().front().chain : makeSequence(row, tie, sequences);
        const std::size_t first = isChain ? tie.runs().front().chainFirst : 0;
        // A sequence of the row's own has its name already.
        RowLabel label{isChain ? std::move(row.name) : std::string(),
                       std::move(row.description),
                       *row.link,
                       static_cast<std::uint32_t>(first),
                       std::move(row.chainBreaks),
                       std::move(row.annotations),
                       std::move(ofResidues)};
        rows.push_back(std::make_unique<AlignmentRow>(sequence, std::move(cells), std::move(label),
                                                      static_cast<std::uint32_t>(first)));
    }
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
