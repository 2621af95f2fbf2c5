// SPDX-License-Identifier: GPL-3.0-or-later
#include "AlignmentMaking.h"

#include "Bits.h"
#include "ChangeScope.h"
#include "ObjectSpace.h"
#include "Peptide.h"
#include "RowPacking.h"
#include "RowTie.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace TAMBO {

namespace {

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

AlignmentMaking::AlignmentMaking(AlignmentRecord &&record)
    : m_Record(std::move(record)), m_RowCount(m_Record.rows.size() + m_Record.packed.size())
{
    m_Sequences.reserve(m_RowCount);
    m_Rows.reserve(m_Record.isAligned ? m_RowCount : 0);
}

AlignmentMaking::~AlignmentMaking() = default;

bool AlignmentMaking::makeRows(std::size_t most)
{
    const std::size_t end = std::min(m_RowCount, m_Made + std::min(most, m_RowCount));
    for (; m_Made < std::min(end, m_Record.rows.size()); ++m_Made)
        take(packed(std::move(m_Record.rows[m_Made])));
    const std::size_t first = m_Made - std::min(m_Made, m_Record.rows.size());
    m_Record.packed.takeSome(first, end - m_Made,
                             [this](PackedRow &&row) { take(std::move(row)); });
    m_Made = end;
    return m_Made < m_RowCount;
}

void AlignmentMaking::take(PackedRow &&row)
{
    static const RowRecord untied;
    // Looked at only where there are chains that it may share its residues with.
    std::optional<RowRecord> plain;
    if (!m_Structures.isEmpty())
        plain = unpacked(PackedRow(row));
    const RowTie tie(plain ? *plain : untied, m_Structures);
    for (const std::string &remark : tie.remarks())
        writeLog(remark, LogSeverity::Warning);
    m_Width = std::max(m_Width, row.width);
    if (m_Record.isAligned)
        m_Rows.push_back(makeRow(row, tie, m_Sequences));
    else
        makeSequence(row, tie, m_Sequences);
}

Alignment *AlignmentMaking::finish()
{
    const ChangeScope scope;
    // The file holds them, and the alignment that shows them.
    ObjectSpace::get().addAll(std::move(m_Sequences), EditPart::Arrival);
    if (!m_Record.isAligned)
        return nullptr;
    std::unique_ptr<Alignment> made =
        AlignmentTable::make(m_Record.name, std::move(m_Rows), m_Width);
    Alignment *const alignment = made.get();
    if (!m_Record.annotations.empty() || !m_Record.columnAnnotations.empty())
        alignment->table().presetAnnotation(std::make_unique<AlignmentAnnotation>(
            std::move(m_Record.annotations), std::move(m_Record.columnAnnotations)));
    ObjectSpace::get().add(std::move(made));
    return alignment;
}

} // namespace TAMBO
