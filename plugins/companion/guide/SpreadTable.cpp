// SPDX-License-Identifier: GPL-3.0-or-later
#include "SpreadTable.h"

#include "StructureDetails.h"

#include <algorithm>

namespace companion {

using TAMBO::LayoutChange;
using TAMBO::LayoutChanges;

namespace {

// Between two looks at the clock.
constexpr unsigned long kRowsAtOnce = 4096;

} // namespace

void SpreadTable::clear()
{
    *this = SpreadTable();
}

void SpreadTable::want(unsigned long begin, unsigned long end)
{
    m_Wanted = {begin, end};
}

bool SpreadTable::isKnown(unsigned long col) const noexcept
{
    return hasRows() && (col >= m_Columns.size() || m_Columns[col].isKnown);
}

bool SpreadTable::areKnown(unsigned long begin, unsigned long end) const noexcept
{
    return hasRows() && unknown(begin, end) == kNone;
}

PairSum SpreadTable::at(unsigned long col) const noexcept
{
    return col < m_Columns.size() ? m_Columns[col].pairs : PairSum();
}

std::optional<MeanOfColumns> SpreadTable::total() const noexcept
{
    return hasRows() && m_Unknown == 0 ? std::optional(m_Total) : std::nullopt;
}

unsigned long SpreadTable::unknown(unsigned long begin, unsigned long end) const noexcept
{
    end = std::min<unsigned long>(end, m_Columns.size());
    for (unsigned long col = begin; col < end; ++col)
        if (!m_Columns[col].isKnown)
            return col;
    return kNone;
}

// ---- After an edit

void SpreadTable::forgetAll(const TAMBO::Alignment &alignment)
{
    ++m_Revision;
    m_Columns.assign(alignment.width(), Column());
    m_Unknown = m_Columns.size();
    m_Total = {};
    m_Rows.clear();
    m_NextRow = 0;
    m_NextColumn = 0;
    giveUpPass();
}

void SpreadTable::forget(unsigned long begin, unsigned long end)
{
    end = std::min<unsigned long>(end, m_Columns.size());
    for (unsigned long col = begin; col < end; ++col) {
        m_Unknown += m_Columns[col].isKnown ? 1 : 0;
        m_Columns[col] = Column();
    }
    m_NextColumn = std::min(m_NextColumn, begin);
}

// False when everything may be another.
bool SpreadTable::takeIn(const TAMBO::Alignment &alignment, const LayoutChange &change)
{
    using Kind = LayoutChange::Kind;
    const auto at = [this](unsigned long col) {
        return m_Columns.begin() + std::ptrdiff_t(std::min<std::size_t>(col, m_Columns.size()));
    };
    switch (change.kind) {
    case Kind::GapsMoved:
        if (alignment.hasPositions(change.row))
            forget(std::min(change.from, change.to),
                   std::max(change.from, change.to) + change.count);
        return true;
    case Kind::EndMoved:
    case Kind::ColumnsReplaced:
        forget(change.from, change.from + change.oldCount);
        {
            const auto first = at(change.from);
            const auto last = at(change.from + change.oldCount);
            m_Unknown -= std::size_t(last - first);
            m_Columns.insert(m_Columns.erase(first, last), change.newCount, Column());
            m_Unknown += change.newCount;
        }
        m_NextColumn = std::min(m_NextColumn, change.from);
        return true;
    case Kind::RowAdded:
    case Kind::RowRemoved:
    case Kind::RowMoved:
    case Kind::RowsSorted:
        return false;
    }
    return false;
}

void SpreadTable::follow(const TAMBO::Alignment &alignment)
{
    const std::uint64_t structures = TAMBO::StructureDetails::revision();
    const std::uint64_t layout = LayoutChanges::revision(alignment);
    const bool hasMoved = std::exchange(m_Structures, structures) != structures;
    const auto before = std::exchange(m_Layout, layout);
    if (before == layout && !hasMoved)
        return;
    const auto changes = before && !hasMoved ? LayoutChanges::since(alignment, *before)
                                             : std::optional<std::vector<LayoutChange>>();
    giveUpPass();
    ++m_Revision;
    const bool isFollowed =
        changes && hasRows() && std::ranges::all_of(*changes, [&](const LayoutChange &each) {
            return takeIn(alignment, each);
        });
    if (!isFollowed || m_Columns.size() != alignment.width())
        return forgetAll(alignment);
    m_Total = {};
    for (const Column &column : m_Columns)
        m_Total.add(column.pairs);
}

// ---- Computing

bool SpreadTable::goOn(const TAMBO::Alignment &alignment, std::chrono::microseconds most)
{
    follow(alignment);
    const auto end = Clock::now() + most;
    while (!hasRows() || m_Unknown > 0) {
        if (!hasRows())
            findRows(alignment, end);
        else if (m_PassBegin < m_PassEnd || beginPass())
            if (readRows(alignment, end) && sumUp(end))
                giveUpPass();
        if (Clock::now() >= end)
            break;
    }
    return !hasRows() || m_Unknown > 0;
}

void SpreadTable::findRows(const TAMBO::Alignment &alignment, Clock::time_point end)
{
    do {
        const unsigned long last = std::min(m_NextRow + kRowsAtOnce, alignment.height());
        for (; m_NextRow < last; ++m_NextRow)
            if (alignment.hasPositions(m_NextRow))
                m_Rows.push_back(m_NextRow);
        if (m_NextRow == alignment.height())
            m_NextRow = kNone;
    } while (!hasRows() && Clock::now() < end);
}

bool SpreadTable::beginPass()
{
    m_PassBegin = unknown(m_Wanted.first, m_Wanted.second);
    if (m_PassBegin == kNone) {
        m_PassBegin = unknown(m_NextColumn, m_Columns.size());
        m_NextColumn = m_PassBegin;
    }
    m_PassEnd = m_PassBegin;
    while (m_PassEnd < m_Columns.size() && m_PassEnd - m_PassBegin < kAtOnce &&
           !m_Columns[m_PassEnd].isKnown)
        ++m_PassEnd;
    m_PassRow = 0;
    m_PassSum = 0;
    m_Sums.assign(m_PassEnd - m_PassBegin, SpreadSum());
    return m_PassBegin < m_PassEnd;
}

bool SpreadTable::readRows(const TAMBO::Alignment &alignment, Clock::time_point end)
{
    while (m_PassRow < m_Rows.size()) {
        m_Positions.clear();
        alignment.readPositions(m_Rows[m_PassRow++], m_PassBegin, m_PassEnd, m_Positions);
        for (std::size_t i = 0; i < m_Positions.size(); ++i)
            if (m_Positions[i].isDefined())
                m_Sums[i].add(m_Positions[i]);
        if (Clock::now() >= end)
            return m_PassRow == m_Rows.size();
    }
    return true;
}

bool SpreadTable::sumUp(Clock::time_point end)
{
    for (; m_PassSum < m_Sums.size(); ++m_PassSum) {
        SpreadSum &sum = m_Sums[m_PassSum];
        if (sum.goOn(end))
            return false;
        Column &column = m_Columns[m_PassBegin + m_PassSum];
        column = {{std::uint32_t(sum.positions()), sum.sum()}, true};
        m_Total.add(column.pairs);
        --m_Unknown;
        ++m_Found;
    }
    return true;
}

} // namespace companion
