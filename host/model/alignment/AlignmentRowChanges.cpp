// SPDX-License-Identifier: GPL-3.0-or-later
// The changes of a row's cells, and how its breaks between chains follow them.
#include "AlignmentRow.h"

#include <algorithm>
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

} // namespace TAMBO
