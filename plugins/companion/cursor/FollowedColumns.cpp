// SPDX-License-Identifier: GPL-3.0-or-later
#include "FollowedColumns.h"

#include <algorithm>
#include <map>

namespace companion {

namespace {

constexpr unsigned long kMostRows = 64;

} // namespace

ColumnRange followed(ColumnRange columns, const std::vector<TAMBO::LayoutChange> &changes)
{
    for (const TAMBO::LayoutChange &change : changes) {
        if (change.kind != TAMBO::LayoutChange::Kind::ColumnsReplaced &&
            change.kind != TAMBO::LayoutChange::Kind::EndMoved)
            continue;
        const unsigned long end = change.from + change.oldCount;
        const unsigned long newEnd = change.from + change.newCount;
        if (columns.first >= end)
            columns.first = columns.first - end + newEnd;
        else
            columns.first = std::min(columns.first, change.from);
        if (columns.second > change.from)
            columns.second = columns.second >= end ? columns.second - end + newEnd : newEnd;
        columns.second = std::max(columns.first, columns.second);
    }
    return columns;
}

ColumnAnchors::ColumnAnchors(const TAMBO::Alignment &alignment, const ColumnRange &columns)
    : m_Columns(columns)
{
    const unsigned long rows = alignment.height();
    const unsigned long step = std::max(1UL, rows / kMostRows);
    for (unsigned long row = 0; row < rows; row += step) {
        const unsigned long before = alignment.residueCount(row, columns.first);
        const unsigned long behind = alignment.residueCount(row, columns.second);
        if (before == behind)
            continue;
        const TAMBO::Compound *const sequence = alignment.GetSeq(row);
        const unsigned long all = alignment.residueCount(row, alignment.width());
        m_First.push_back({row, sequence, before, all, alignment.columnOfResidue(row, before)});
        m_Last.push_back(
            {row, sequence, behind - 1, all, alignment.columnOfResidue(row, behind - 1)});
    }
}

std::optional<long> ColumnAnchors::shift(const TAMBO::Alignment &alignment,
                                         const std::vector<Anchor> &anchors)
{
    std::map<long, int> votes;
    bool hasOthers = false;
    for (const Anchor &anchor : anchors) {
        if (anchor.row >= alignment.height() || alignment.GetSeq(anchor.row) != anchor.sequence)
            continue;
        if (alignment.residueCount(anchor.row, alignment.width()) != anchor.residues) {
            hasOthers = true;
            continue;
        }
        const unsigned long column = alignment.columnOfResidue(anchor.row, anchor.residue);
        ++votes[long(column) - long(anchor.column)];
    }
    if (votes.empty())
        return hasOthers ? std::nullopt : std::optional(0L);
    return std::ranges::max_element(
               votes, {}, [](const std::pair<const long, int> &vote) { return vote.second; })
        ->first;
}

std::optional<ColumnRange> ColumnAnchors::find(const TAMBO::Alignment &alignment) const
{
    const std::optional<long> first = shift(alignment, m_First);
    const std::optional<long> last = shift(alignment, m_Last);
    if (!first || !last)
        return std::nullopt;
    const auto moved = [&alignment](unsigned long column, long by) {
        const long to = std::max(0L, long(column) + by);
        return std::min(static_cast<unsigned long>(to), alignment.width());
    };
    const unsigned long begin = moved(m_Columns.first, *first);
    return ColumnRange{begin, std::max(begin, moved(m_Columns.second, *last))};
}

} // namespace companion
