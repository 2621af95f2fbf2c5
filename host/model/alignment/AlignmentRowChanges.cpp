// SPDX-License-Identifier: GPL-3.0-or-later
// The changes of a row's cells, and how its breaks between chains follow them.
#include "AlignmentRow.h"

#include "Bits.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace TAMBO {

// ---- Breaks between chains

// Residues between which a break stood may be gone from the row.
std::vector<std::uint32_t> AlignmentRow::lettersBeforeBreaks() const
{
    std::vector<std::uint32_t> result;
    result.reserve(label()->chainBreaks.size());
    const std::vector<ResidueRun> runs = residueRuns(0, m_Cells.residues());
    auto run = runs.begin();
    std::uint32_t before = 0;
    for (const ChainBreak &chainBreak : label()->chainBreaks) {
        const std::uint64_t behind = label()->firstResidue + chainBreak.letters;
        for (; run != runs.end() && std::uint64_t(run->index) + run->count <= behind; ++run)
            before += run->count;
        const bool isInRun = run != runs.end() && run->index < behind;
        result.push_back(before + (isInRun ? std::uint32_t(behind - run->index) : 0));
    }
    return result;
}

std::vector<ChainBreak> AlignmentRow::chainBreaks(Column width) const
{
    std::vector<ChainBreak> result;
    if (!hasBreaks())
        return result;
    const std::vector<std::uint32_t> letters = lettersBeforeBreaks();
    const BreakColumns columns = placeBreaks(m_Cells, letters, breakColumns(), width);
    for (std::size_t i = 0; i < letters.size(); ++i)
        result.push_back({letters[i], columns[i]});
    return result;
}

BreakColumns AlignmentRow::breakColumns() const
{
    BreakColumns columns;
    if (!hasBreaks())
        return columns;
    columns.reserve(label()->chainBreaks.size());
    for (const ChainBreak &chainBreak : label()->chainBreaks)
        columns.push_back(chainBreak.column);
    return columns;
}

void AlignmentRow::setBreakColumns(const BreakColumns &columns)
{
    if (!hasBreaks() || columns == breakColumns())
        return;
    RowLabel &kept = m_Extras.changeLabel();
    for (std::size_t i = 0; i < columns.size(); ++i)
        kept.chainBreaks[i].column = columns[i];
}

bool AlignmentRow::hasBreaksIn(Column begin, Column count) const
{
    return hasBreaks() && std::ranges::any_of(label()->chainBreaks, [&](const ChainBreak &one) {
               return !one.column || (*one.column >= begin && *one.column - begin < count);
           });
}

template <typename Moved> void AlignmentRow::moveBreaks(Column width, Moved moved)
{
    BreakColumns columns = breakColumns();
    for (auto &column : columns) {
        if (column)
            column = moved(*column);
    }
    setBreakColumns(placeBreaks(m_Cells, lettersBeforeBreaks(), columns, width));
}

// ---- Changes

void AlignmentRow::takeCells(const AlignmentRow &other, Column width)
{
    m_Cells = other.m_Cells;
    if (!hasBreaks())
        return;
    const std::vector<std::uint32_t> letters = lettersBeforeBreaks();
    const bool areSame = other.hasBreaks() && other.lettersBeforeBreaks() == letters;
    setBreakColumns(placeBreaks(
        m_Cells, letters, areSame ? other.breakColumns() : BreakColumns(letters.size()), width));
}

void AlignmentRow::moveGaps(Column from, Column count, Column to, Column width)
{
    const std::uint32_t before = hasBreaks() ? m_Cells.rank(from) : 0;
    m_Cells.moveGaps(from, count, to);
    if (!hasBreaks())
        return;
    const bool passesResidues = m_Cells.rank(to) != before;
    moveBreaks(width, [&](Column column) {
        if (column >= from && column - from < count)
            return passesResidues ? column : column - from + to;
        if (column >= to && column < from)
            return column + count;
        const bool isPassed = column >= from && column < to + count;
        return isPassed ? column - count : column;
    });
}

void AlignmentRow::openGaps(const std::vector<GapRun> &runs, Column width)
{
    m_Cells.openGaps(runs);
    openBreaks(runs, width);
}

void AlignmentRow::openBreaks(const std::vector<GapRun> &runs, Column width)
{
    if (!hasBreaks())
        return;
    moveBreaks(width, [&](Column column) {
        Column opened = 0;
        for (auto run = runs.begin(); run != runs.end() && run->column <= column; ++run)
            opened += run->count;
        return column + opened;
    });
}

void AlignmentRow::closeGaps(const std::vector<GapRun> &runs, Column width)
{
    m_Cells.closeGaps(runs);
    closeBreaks(runs, width);
}

void AlignmentRow::closeBreaks(const std::vector<GapRun> &runs, Column width)
{
    if (!hasBreaks())
        return;
    moveBreaks(width, [&](Column column) {
        Column closed = 0;
        for (auto run = runs.begin(); run != runs.end() && run->column + closed <= column; ++run) {
            if (column - run->column - closed < run->count)
                return run->column;
            closed += run->count;
        }
        return column - closed;
    });
}

void AlignmentRow::removeColumns(Column begin, Column count, Column width,
                                 std::vector<ResidueRun> &removed)
{
    takeOut(begin, count, removed);
    if (!hasBreaks())
        return;
    moveBreaks(width, [&](Column column) {
        return column < begin ? column : std::max(column, begin + count) - count;
    });
}

void AlignmentRow::restoreColumns(Column begin, std::span<const OccupancyRow::Word> bits,
                                  Column count, Column width,
                                  const std::vector<ResidueRun> &residues)
{
    putBack(begin, count, bits, residues);
    if (hasBreaks())
        moveBreaks(width, [&](Column column) { return column < begin ? column : column + count; });
}

void AlignmentRow::replaceColumns(Column begin, Column oldCount,
                                  std::span<const OccupancyRow::Word> bits, Column count,
                                  Column width)
{
    if (count < oldCount)
        m_Cells.removeColumns(begin + count, oldCount - count);
    else
        m_Cells.insertGaps(begin + oldCount, count - oldCount);
    m_Cells.setColumns(begin, count, bits);
    if (!hasBreaks())
        return;
    moveBreaks(width, [&](Column column) {
        return column < begin + oldCount ? column : column - oldCount + count;
    });
}

// ---- Many runs of columns that go, or come back, in one pass

namespace {

void appendRun(std::vector<ResidueRun> &runs, const ResidueRun &next)
{
    if (!runs.empty() && runs.back().index + runs.back().count == next.index)
        runs.back().count += next.count;
    else
        runs.push_back(next);
}

// Takes residues one stretch after the other.
class RunTaker
{
public:
    explicit RunTaker(const std::vector<ResidueRun> &runs) : m_Next(runs.begin()), m_End(runs.end())
    { }

    // As far as there are so many.
    void take(std::uint32_t count, std::vector<ResidueRun> &out)
    {
        while (count > 0 && m_Next != m_End) {
            const std::uint32_t here = std::min(count, m_Next->count - m_Taken);
            if (here > 0)
                appendRun(out, {m_Next->index + m_Taken, here});
            m_Taken += here;
            count -= here;
            if (m_Taken == m_Next->count) {
                m_Taken = 0;
                ++m_Next;
            }
        }
    }

private:
    std::vector<ResidueRun>::const_iterator m_Next;
    std::vector<ResidueRun>::const_iterator m_End;
    std::uint32_t m_Taken = 0;
};

// Without a residue before them, those that come back are the ones directly before the next.
std::uint32_t firstBefore(const std::vector<ResidueRun> &staying, std::uint32_t count)
{
    return staying.empty() || staying.front().index < count ? 0 : staying.front().index - count;
}

std::uint32_t countBits(std::span<const OccupancyRow::Word> words, OccupancyRow::Column begin,
                        OccupancyRow::Column count)
{
    std::uint32_t sum = 0;
    for (OccupancyRow::Column done = 0; done < count; done += OccupancyRow::kWordColumns) {
        const std::size_t index = bits::wordOf(begin + done);
        const OccupancyRow::Word next = index + 1 < words.size() ? words[index + 1] : 0;
        sum += bits::count(bits::joined(words[index], next, bits::placeOf(begin + done)) &
                           bits::low(std::min(count - done, OccupancyRow::kWordColumns)));
    }
    return sum;
}

} // namespace

void AlignmentRow::removeRuns(const std::vector<GapRun> &runs, Column width, BitBuffer &bits,
                              std::vector<ResidueRun> &removed)
{
    const std::uint32_t total = m_Cells.residues();
    std::vector<Stretch> stretches;
    stretches.reserve(runs.size());
    Column before = 0;
    for (const GapRun &run : runs) {
        const Column begin = run.column + before;
        before += run.count;
        for (Column done = 0; done < run.count; done += OccupancyRow::kWordColumns)
            bits.append(m_Cells.bitsAt(begin + done),
                        std::min(run.count - done, OccupancyRow::kWordColumns));
        const std::uint32_t first = m_Cells.rank(begin);
        const std::uint32_t count = m_Cells.rank(begin + run.count) - first;
        if (count == 0)
            continue;
        // No residue stays between them.
        if (!stretches.empty() && stretches.back().ordinal + stretches.back().count == first)
            stretches.back().count += count;
        else
            stretches.push_back({first, count});
    }
    m_Cells.closeGaps(runs);
    if (!stretches.empty())
        dropStretches(stretches, total, removed);
    closeBreaks(runs, width);
}

void AlignmentRow::dropStretches(const std::vector<Stretch> &stretches, std::uint32_t total,
                                 std::vector<ResidueRun> &removed)
{
    const std::vector<ResidueRun> own = residueRuns(0, total);
    RunTaker taker(own);
    std::vector<ResidueRun> staying;
    staying.reserve(own.size() + stretches.size());
    std::vector<ResidueRun> gone;
    std::optional<ResidueRun> first;
    bool areImplied = true;
    std::uint32_t done = 0;
    for (const Stretch &stretch : stretches) {
        taker.take(stretch.ordinal - done, staying);
        gone.clear();
        taker.take(stretch.count, gone);
        done = stretch.ordinal + stretch.count;
        if (staying.empty())
            first = gone.front();
        areImplied =
            areImplied && gone.size() == 1 &&
            (staying.empty() || staying.back().index + staying.back().count == gone.front().index);
    }
    taker.take(total - done, staying);
    areImplied = areImplied && (!first || firstBefore(staying, first->count) == first->index);
    setResidues(staying);
    if (areImplied)
        return;
    RunTaker again(own);
    std::vector<ResidueRun> passed;
    done = 0;
    for (const Stretch &stretch : stretches) {
        passed.clear();
        again.take(stretch.ordinal - done, passed);
        again.take(stretch.count, removed);
        done = stretch.ordinal + stretch.count;
    }
}

void AlignmentRow::restoreRuns(const std::vector<GapRun> &runs,
                               std::span<const OccupancyRow::Word> bits, Column width,
                               const std::vector<ResidueRun> &residues)
{
    const std::uint32_t total = m_Cells.residues();
    std::vector<Stretch> stretches;
    stretches.reserve(runs.size());
    Column before = 0;
    for (const GapRun &run : runs) {
        const std::uint32_t count = countBits(bits, before, run.count);
        before += run.count;
        if (count == 0)
            continue;
        const std::uint32_t ordinal = m_Cells.rank(run.column);
        if (!stretches.empty() && stretches.back().ordinal == ordinal)
            stretches.back().count += count;
        else
            stretches.push_back({ordinal, count});
    }
    m_Cells.restoreRuns(runs, bits);
    if (!stretches.empty())
        takeBackStretches(stretches, total, residues);
    openBreaks(runs, width);
}

void AlignmentRow::takeBackStretches(const std::vector<Stretch> &stretches, std::uint32_t total,
                                     const std::vector<ResidueRun> &residues)
{
    const std::vector<ResidueRun> staying = residueRuns(0, total);
    RunTaker stays(staying);
    RunTaker comes(residues);
    std::vector<ResidueRun> all;
    all.reserve(staying.size() + stretches.size());
    std::uint32_t done = 0;
    for (const Stretch &stretch : stretches) {
        stays.take(stretch.ordinal - done, all);
        done = stretch.ordinal;
        if (!residues.empty())
            comes.take(stretch.count, all);
        else
            appendRun(all, {all.empty() ? firstBefore(staying, stretch.count)
                                        : all.back().index + all.back().count,
                            stretch.count});
    }
    stays.take(total - done, all);
    setResidues(all);
}

} // namespace TAMBO
