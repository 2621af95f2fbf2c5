// SPDX-License-Identifier: GPL-3.0-or-later
#include "TrackColumns.h"

#include "ColumnScores.h"
#include "StructureDetails.h"

#include <algorithm>
#include <utility>

namespace companion {

using TAMBO::LayoutChange;
using TAMBO::LayoutChanges;

namespace {

void score(TrackColumn &column)
{
    column.conservation = conservation(column.counts);
    column.occupancy = occupancy(column.counts);
    column.bits = informationContent(column.counts);
    column.logo = logo(column.counts);
}

} // namespace

void TrackColumns::clear()
{
    m_Kept.clear();
    m_Revision.reset();
    m_Width = kAllColumns;
    beginAgain();
}

void TrackColumns::want(unsigned long begin, unsigned long end)
{
    m_Begin = begin;
    m_End = end;
    m_Next = begin;
    if (m_PassBegin >= end || m_PassEnd <= begin)
        giveUpPass();
    if (m_Kept.size() > kMostKept)
        std::erase_if(m_Kept, [begin, end](const auto &each) {
            return each.first < begin || each.first >= end;
        });
    skipKnown();
}

void TrackColumns::wantSpread(bool isWanted)
{
    if (isWanted == m_WantsSpread)
        return;
    m_WantsSpread = isWanted;
    beginAgain();
}

const TrackColumn *TrackColumns::at(unsigned long col) const
{
    const auto found = m_Kept.find(col);
    if (found == m_Kept.end())
        return nullptr;
    // A gap that moves changes all columns behind it, most of which nobody looks at.
    Kept &kept = found->second;
    if (!std::exchange(kept.isScored, true))
        score(kept.column);
    return &kept.column;
}

bool TrackColumns::lacksCounts(unsigned long col) const
{
    const auto found = m_Kept.find(col);
    return found == m_Kept.end() || !found->second.hasCounts;
}

bool TrackColumns::lacksSpread(unsigned long col) const
{
    const auto found = m_Kept.find(col);
    return m_WantsSpread && (found == m_Kept.end() || !found->second.hasSpread);
}

bool TrackColumns::isKnown(unsigned long col) const
{
    return !lacksCounts(col) && !lacksSpread(col);
}

// ---- Computing

// To read a row is quicker than to read a column, and can be left off at any row.
bool TrackColumns::goOn(const TAMBO::Alignment &alignment, std::chrono::microseconds most)
{
    follow(alignment);
    const auto end = Clock::now() + most;
    const unsigned long rows = alignment.height();
    while (!isDone()) {
        if (!hasPass())
            beginPass();
        bool isLate = false;
        while (m_Row < rows && !isLate) {
            addRow(alignment);
            isLate = Clock::now() >= end;
        }
        if (m_Row >= rows && sumUp(end))
            endPass();
        if (isLate || Clock::now() >= end)
            break;
    }
    return !isDone();
}

void TrackColumns::beginPass()
{
    m_PassBegin = m_Next;
    m_PassEnd = m_Next;
    m_PassCounts = lacksCounts(m_Next);
    m_PassSpread = lacksSpread(m_Next);
    while (m_PassEnd < wantedEnd() && m_PassEnd - m_PassBegin < kAtOnce &&
           lacksCounts(m_PassEnd) == m_PassCounts && lacksSpread(m_PassEnd) == m_PassSpread)
        ++m_PassEnd;
    m_Row = 0;
    const std::size_t columns = m_PassEnd - m_PassBegin;
    m_Counts.assign(m_PassCounts ? columns : 0, ColumnCounts());
    m_Sums.assign(m_PassSpread ? columns : 0, SpreadSum());
    m_NextSum = 0;
}

void TrackColumns::addRow(const TAMBO::Alignment &alignment)
{
    const unsigned long row = m_Row++;
    ++m_RowsRead;
    if (m_PassCounts) {
        m_Cells.clear();
        alignment.readRow(row, m_PassBegin, m_PassEnd, m_Cells);
        for (std::size_t i = 0; i < m_Cells.size(); ++i)
            m_Counts[i].add(m_Cells[i].letter);
    }
    if (m_PassSpread && alignment.hasPositions(row)) {
        m_Positions.clear();
        alignment.readPositions(row, m_PassBegin, m_PassEnd, m_Positions);
        for (std::size_t i = 0; i < m_Positions.size(); ++i)
            if (m_Positions[i].isDefined())
                m_Sums[i].add(m_Positions[i]);
    }
}

bool TrackColumns::sumUp(Clock::time_point end)
{
    for (; m_NextSum < m_Sums.size(); ++m_NextSum)
        if (m_Sums[m_NextSum].goOn(end))
            return false;
    return true;
}

void TrackColumns::endPass()
{
    for (unsigned long col = m_PassBegin; col < m_PassEnd; ++col) {
        const std::size_t i = col - m_PassBegin;
        Kept &kept = m_Kept[col];
        if (m_PassCounts) {
            kept.column.counts = m_Counts[i];
            kept.isScored = false;
            kept.hasCounts = true;
        }
        if (m_PassSpread) {
            kept.column.spread = m_Sums[i].value();
            kept.hasSpread = true;
        }
    }
    m_Computed += m_Counts.size();
    m_Spreads += m_Sums.size();
    giveUpPass();
    skipKnown();
}

void TrackColumns::skipKnown()
{
    while (m_Next < wantedEnd() && isKnown(m_Next))
        ++m_Next;
}

void TrackColumns::beginAgain()
{
    giveUpPass();
    m_Next = m_Begin;
    skipKnown();
}

// ---- After an edit

void TrackColumns::follow(const TAMBO::Alignment &alignment)
{
    const std::uint64_t structures = TAMBO::StructureDetails::revision();
    if (std::exchange(m_Structures, structures) != structures) {
        setStale(0, kAllColumns, Stale::Spread);
        if (m_WantsSpread)
            beginAgain();
    }
    const std::uint64_t revision = LayoutChanges::revision(alignment);
    const auto before = std::exchange(m_Revision, revision);
    m_Width = alignment.width();
    if (!before || *before == revision)
        return;
    const auto changes = LayoutChanges::since(alignment, *before);
    const auto edits = changes ? rowEdits(alignment, *changes) : std::nullopt;
    if (edits) {
        takeIn(alignment, *edits);
    } else if (changes) {
        giveUpPass();
        for (const LayoutChange &change : *changes)
            apply(change);
    } else {
        giveUpPass();
        setStale(0, kAllColumns, Stale::Both);
    }
    cutAt(m_Width);
    m_Next = m_Begin;
    skipKnown();
}

// Also into what has been counted so far of a pass that goes on.
void TrackColumns::takeIn(const TAMBO::Alignment &alignment, const std::vector<RowEdit> &edits)
{
    const bool areNew = std::ranges::any_of(edits, &RowEdit::isNew);
    const bool moveAtoms = std::ranges::any_of(edits, [&](const RowEdit &edit) {
        return m_WantsSpread && alignment.hasPositions(edit.row);
    });
    if (areNew || moveAtoms || m_PassEnd > m_Width)
        giveUpPass();
    for (const RowEdit &edit : edits)
        takeIn(alignment, edit);
}

void TrackColumns::takeIn(const TAMBO::Alignment &alignment, const RowEdit &edit)
{
    const unsigned long end = edit.begin + edit.after.size();
    if (alignment.hasPositions(edit.row))
        setStale(edit.begin, end, Stale::Spread);
    const auto change = [&edit](ColumnCounts &counts, std::size_t i) {
        if (!edit.isNew)
            counts.remove(edit.before[i]);
        counts.add(edit.after[i]);
    };
    for (auto &[col, kept] : m_Kept) {
        if (col < edit.begin || col >= end || !kept.hasCounts)
            continue;
        const std::size_t i = col - edit.begin;
        if (!edit.isNew && edit.before[i] == edit.after[i])
            continue;
        change(kept.column.counts, i);
        kept.isScored = false;
    }
    if (!hasPass() || !m_PassCounts || edit.row >= m_Row)
        return;
    for (unsigned long col = std::max(edit.begin, m_PassBegin); col < std::min(end, m_PassEnd);
         ++col)
        change(m_Counts[col - m_PassBegin], col - edit.begin);
}

void TrackColumns::apply(const LayoutChange &change)
{
    using Kind = LayoutChange::Kind;
    switch (change.kind) {
    case Kind::GapsMoved:
        setStale(std::min(change.from, change.to), std::max(change.from, change.to) + change.count,
                 Stale::Both);
        break;
    case Kind::EndMoved:
        if (change.oldCount > 0)
            cutAt(change.from);
        break;
    case Kind::ColumnsReplaced:
        replaceColumns(change);
        break;
    case Kind::RowAdded:
    case Kind::RowRemoved:
        setStale(0, kAllColumns, Stale::Both);
        break;
    case Kind::RowMoved:
    case Kind::RowsSorted:
        break;
    }
}

// What comes in their place is shown as they were, as far as there are as many.
void TrackColumns::replaceColumns(const LayoutChange &change)
{
    std::unordered_map<unsigned long, Kept> moved;
    moved.reserve(m_Kept.size());
    for (auto &[col, kept] : m_Kept) {
        const bool isBehind = col >= change.from + change.oldCount;
        if (isBehind) {
            moved.emplace(col - change.oldCount + change.newCount, std::move(kept));
        } else if (col < change.from) {
            moved.emplace(col, std::move(kept));
        } else if (col < change.from + change.newCount) {
            kept.hasCounts = false;
            kept.hasSpread = false;
            moved.emplace(col, std::move(kept));
        }
    }
    m_Kept = std::move(moved);
}

void TrackColumns::setStale(unsigned long begin, unsigned long end, Stale what)
{
    for (auto &[col, kept] : m_Kept) {
        if (col < begin || col >= end)
            continue;
        if (what != Stale::Spread)
            kept.hasCounts = false;
        if (what != Stale::Counts)
            kept.hasSpread = false;
    }
}

void TrackColumns::cutAt(unsigned long width)
{
    std::erase_if(m_Kept, [width](const auto &each) { return each.first >= width; });
}

} // namespace companion
