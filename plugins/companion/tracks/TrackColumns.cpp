// SPDX-License-Identifier: GPL-3.0-or-later
#include "TrackColumns.h"

#include "ColumnScores.h"

namespace companion {

namespace {

TrackColumn trackColumn(const ColumnCounts &counts)
{
    return {counts, conservation(counts), occupancy(counts), informationContent(counts),
            logo(counts)};
}

} // namespace

void TrackColumns::clear()
{
    m_Kept.clear();
    giveUpPass();
    m_Next = m_Begin;
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

const TrackColumn *TrackColumns::at(unsigned long col) const
{
    const auto found = m_Kept.find(col);
    return found == m_Kept.end() ? nullptr : &found->second;
}

// To read a row is quicker than to read a column, and can be left off at any row.
bool TrackColumns::goOn(const TAMBO::Alignment &alignment, std::chrono::microseconds most)
{
    using Clock = std::chrono::steady_clock;
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
        if (m_Row >= rows)
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
    while (m_PassEnd < m_End && m_PassEnd - m_PassBegin < kAtOnce && !m_Kept.contains(m_PassEnd))
        ++m_PassEnd;
    m_Row = 0;
    m_Counts.assign(m_PassEnd - m_PassBegin, ColumnCounts());
}

void TrackColumns::addRow(const TAMBO::Alignment &alignment)
{
    m_Cells.clear();
    alignment.readRow(m_Row++, m_PassBegin, m_PassEnd, m_Cells);
    for (std::size_t i = 0; i < m_Cells.size(); ++i)
        m_Counts[i].add(m_Cells[i].letter);
}

void TrackColumns::endPass()
{
    for (std::size_t i = 0; i < m_Counts.size(); ++i)
        m_Kept.insert_or_assign(m_PassBegin + i, trackColumn(m_Counts[i]));
    m_Computed += m_Counts.size();
    giveUpPass();
    skipKnown();
}

void TrackColumns::skipKnown()
{
    while (m_Next < m_End && m_Kept.contains(m_Next))
        ++m_Next;
}

} // namespace companion
