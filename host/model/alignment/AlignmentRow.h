// SPDX-License-Identifier: GPL-3.0-or-later
// One row of an alignment: a sequence, where its residues stand, and which of them they are.
#pragma once

#include "BitBuffer.h"
#include "Bits.h"
#include "ChainBreakPlaces.h"
#include "OccupancyRow.h"
#include "Peptide.h"
#include "RowExtras.h"
#include "RowLabel.h"
#include "RowPool.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace TAMBO {

class ObjectReader;
class ObjectWriter;

// Consecutive residues of a sequence.
struct ResidueRun
{
    std::uint32_t index = 0;
    std::uint32_t count = 0;

    friend bool operator==(const ResidueRun &, const ResidueRun &) = default;
};

class AlignmentRow
{
public:
    using Column = OccupancyRow::Column;

    // The row's residues are consecutive ones of the sequence.
    AlignmentRow(Peptide &sequence, OccupancyRow cells, std::uint32_t firstResidue = 0);
    AlignmentRow(Peptide &sequence, OccupancyRow cells, RowLabel label,
                 std::uint32_t firstResidue = 0);
    AlignmentRow(const AlignmentRow &other);
    AlignmentRow &operator=(const AlignmentRow &) = delete;
    ~AlignmentRow();

    [[nodiscard]] static void *operator new(std::size_t bytes) { return RowPool::take(bytes); }
    static void operator delete(void *row) noexcept { RowPool::give(row); }

    [[nodiscard]] Peptide &sequence() const noexcept { return *m_Sequence; }
    // As the views show it: the label's name, or else the sequence's.
    [[nodiscard]] std::string name() const;
    // Null for a row without one.
    [[nodiscard]] const RowLabel *label() const noexcept { return m_Extras.label(); }
    [[nodiscard]] const OccupancyRow &cells() const noexcept { return m_Cells; }

    // Which residue of the sequence the row's ordinal-th one is.
    [[nodiscard]] std::uint32_t residueIndex(std::uint32_t ordinal) const noexcept;
    // False when the cells ask for more residues than the sequence has.
    [[nodiscard]] bool isWithinSequence() const noexcept
    {
        return m_Cells.residues() == 0 ||
               residueIndex(m_Cells.residues() - 1) < m_Sequence->residueCount();
    }
    // True when the row holds the whole sequence.
    [[nodiscard]] bool isComplete() const noexcept
    {
        return !m_Extras.hasSegments() && m_Cells.residues() == m_Sequence->residueCount();
    }
    // The residues [begin, end) of the row as runs of the sequence's.
    [[nodiscard]] std::vector<ResidueRun> residueRuns(std::uint32_t begin, std::uint32_t end) const;

    // Calls visit(column, index of the residue in the sequence, count) for the residues in
    // [begin, end), side by side in the row and in the sequence.
    template <typename Visit> void forEachRun(Column begin, Column end, Visit visit) const;
    // Calls visit(column, index) for each of them.
    template <typename Visit> void forEachResidue(Column begin, Column end, Visit visit) const
    {
        forEachRun(begin, end, [&](Column column, std::uint32_t index, std::uint32_t count) {
            for (std::uint32_t i = 0; i < count; ++i)
                visit(column + i, index + i);
        });
    }

    // ---- Breaks between chains, which few rows have. Each stays between the same residues and on
    // its gap; when that goes or passes a residue, it gets another one there, if there is one.

    [[nodiscard]] bool hasBreaks() const noexcept
    {
        const RowLabel *const kept = label();
        return kept != nullptr && !kept->chainBreaks.empty();
    }
    // Their letters are the residues of the row.
    [[nodiscard]] std::vector<ChainBreak> chainBreaks(Column width) const;
    // What edits keep for the way back, when these columns go or others come in their place.
    [[nodiscard]] BreakColumns breakColumns() const;
    void setBreakColumns(const BreakColumns &columns);
    // Whether the place of one cannot be told when the columns have gone and come back.
    [[nodiscard]] bool hasBreaksIn(Column begin, Column count) const;

    // No edit: for a row that is in no alignment yet. Breaks between chains are those that it has.
    void presetLabel(RowLabel label);

    // ---- As bytes

    void write(ObjectWriter &out) const;
    // Of an alignment of that width; null after a failure. Callers read many rows, and hand over
    // what each needs for a moment.
    [[nodiscard]] static std::unique_ptr<AlignmentRow>
    read(ObjectReader &in, Column width, std::vector<OccupancyRow::Word> &scratch);

    // ---- Changes. The width is that of the alignment afterwards.

    // As many residues stand where those of the other row do.
    void takeCells(const AlignmentRow &other, Column width);
    void moveGaps(Column from, Column count, Column to, Column width);
    void openGaps(const std::vector<GapRun> &runs, Column width);
    void closeGaps(const std::vector<GapRun> &runs, Column width);
    // The columns vanish with their residues. The residues are appended to removed unless
    // impliedResidues() gives them.
    void removeColumns(Column begin, Column count, Column width, std::vector<ResidueRun> &removed);
    // The same of fewer columns than a word has; gives what stood there. Nothing, and nothing is
    // done, for rows that have more to be looked at.
    [[nodiscard]] std::optional<OccupancyRow::Word> takeFew(Column begin, unsigned count,
                                                            std::vector<ResidueRun> &removed);
    // The columns come back; with empty residues those that impliedResidues() gives.
    void restoreColumns(Column begin, std::span<const OccupancyRow::Word> bits, Column count,
                        Column width, const std::vector<ResidueRun> &residues);
    // Runs of columns vanish with their residues, or come back with them. What stands in them is
    // put behind bits, or is there, one run's behind the other's. The residues are appended to
    // removed unless those that stay tell which they are; without any, these do.
    void removeRuns(const std::vector<GapRun> &runs, Column width, BitBuffer &bits,
                    std::vector<ResidueRun> &removed);
    void restoreRuns(const std::vector<GapRun> &runs, std::span<const OccupancyRow::Word> bits,
                     Column width, const std::vector<ResidueRun> &residues);
    // Other columns come in their place, in which the same residues stand.
    void replaceColumns(Column begin, Column oldCount, std::span<const OccupancyRow::Word> bits,
                        Column count, Column width);

    [[nodiscard]] std::size_t bytes() const noexcept;

private:
    using Segment = RowExtras::Segment;

    void readSegments(ObjectReader &in);
    // Whether the sequence has all residues that the row asks for.
    [[nodiscard]] bool isOfSequence() const noexcept;
    [[nodiscard]] static std::size_t segmentOf(std::span<const Segment> segments,
                                               std::uint32_t ordinal) noexcept;
    [[nodiscard]] ResidueRun impliedResidues(std::uint32_t ordinal, std::uint32_t count,
                                             std::uint32_t total) const;
    void setResidues(const std::vector<ResidueRun> &runs);
    void takeOut(Column begin, Column count, std::vector<ResidueRun> &removed);
    // The residues [first, last) of so many are gone from the cells.
    void dropResidues(std::uint32_t first, std::uint32_t last, std::uint32_t total,
                      std::vector<ResidueRun> &removed);
    // The same of residues that stand beside the one stretch that the row leaves out; false when
    // they do not.
    [[nodiscard]] bool leaveOut(std::uint32_t first, std::uint32_t last, std::uint32_t total,
                                std::vector<ResidueRun> &removed);
    void putBack(Column begin, Column count, std::span<const OccupancyRow::Word> bits,
                 const std::vector<ResidueRun> &residues);
    [[nodiscard]] bool takeBack(std::uint32_t first, std::uint32_t count, std::uint32_t total);
    // Residues of the row that go, or stand before those that come, and how many, in their order.
    struct Stretch
    {
        std::uint32_t ordinal = 0;
        std::uint32_t count = 0;
    };
    void dropStretches(const std::vector<Stretch> &stretches, std::uint32_t total,
                       std::vector<ResidueRun> &removed);
    void takeBackStretches(const std::vector<Stretch> &stretches, std::uint32_t total,
                           const std::vector<ResidueRun> &residues);
    [[nodiscard]] std::vector<std::uint32_t> lettersBeforeBreaks() const;
    // To where moved() says that their columns went.
    template <typename Moved> void moveBreaks(Column width, Moved moved);
    void openBreaks(const std::vector<GapRun> &runs, Column width);
    void closeBreaks(const std::vector<GapRun> &runs, Column width);

    Peptide *m_Sequence;
    OccupancyRow m_Cells;
    RowExtras m_Extras;
};

template <typename Visit> void AlignmentRow::forEachRun(Column begin, Column end, Visit visit) const
{
    using Word = OccupancyRow::Word;
    constexpr Column kWordColumns = OccupancyRow::kWordColumns;
    constexpr std::uint32_t kNever = ~std::uint32_t(0);
    end = std::min(end, m_Cells.end());
    if (begin >= end)
        return;
    std::uint32_t ordinal = m_Cells.rank(begin);
    const RowExtras::Segments kept = m_Extras.segments();
    const std::span<const Segment> segments = kept.all();
    std::size_t segment = segmentOf(segments, ordinal);
    // The difference between index and ordinal holds until the next segment begins.
    std::uint32_t shift = 0;
    std::uint32_t until = kNever;
    const auto enter = [&] {
        shift = segments[segment].index - segments[segment].ordinal;
        until = segment + 1 < segments.size() ? segments[segment + 1].ordinal : kNever;
    };
    if (!segments.empty())
        enter();
    for (std::size_t i = begin / kWordColumns; i * kWordColumns < end; ++i) {
        const Column first = i * kWordColumns;
        Word cells = m_Cells.word(i) & bits::low(end - first);
        if (first < begin)
            cells = bits::without(cells, begin - first);
        // A loop of its own: behind a function that is handed over, the compiler keeps the counters
        // in memory, which made passes over all letters a third slower.
        while (cells != 0) {
            const unsigned place = bits::first(cells);
            std::uint32_t count = bits::run(cells >> place);
            cells = bits::without(cells, place + count);
            Column column = first + place;
            while (count > until - ordinal) {
                const std::uint32_t here = until - ordinal;
                if (here > 0)
                    visit(column, ordinal + shift, here);
                column += here;
                count -= here;
                ordinal = until;
                ++segment;
                enter();
            }
            visit(column, ordinal + shift, count);
            ordinal += count;
        }
    }
}

} // namespace TAMBO
