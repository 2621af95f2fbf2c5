// SPDX-License-Identifier: GPL-3.0-or-later
// Combining two alignments along a sequence that both hold.
#include "Alignment.h"

#include "AlignmentEdits.h"
#include "AlignmentTable.h"
#include "ChangeScope.h"

#include <algorithm>
#include <numeric>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

namespace TAMBO {

namespace {

using Column = AlignmentTable::Column;

// The columns in which two rows hold the same residues, ascending on both sides.
using Matches = std::vector<std::pair<Column, Column>>;

Matches matchesOf(const AlignmentRow &row, const AlignmentRow &other)
{
    std::unordered_map<std::uint32_t, Column> columnOf;
    other.forEachResidue(0, other.cells().end(), [&](Column column, std::uint32_t index) {
        columnOf.emplace(index, column);
    });
    Matches matches;
    row.forEachResidue(0, row.cells().end(), [&](Column column, std::uint32_t index) {
        const auto found = columnOf.find(index);
        if (found != columnOf.end())
            matches.emplace_back(column, found->second);
    });
    return matches;
}

// The first row whose sequence the other table holds too is the anchor.
Matches anchorMatches(const AlignmentTable &table, const AlignmentTable &other)
{
    std::unordered_map<const Peptide *, const AlignmentRow *> rowOf;
    for (std::size_t i = 0; i < other.rowCount(); ++i)
        rowOf.emplace(&other.row(i).sequence(), &other.row(i));
    for (std::size_t i = 0; i < table.rowCount(); ++i) {
        const auto found = rowOf.find(&table.row(i).sequence());
        if (found != rowOf.end())
            return matchesOf(table.row(i), *found->second);
    }
    return {};
}

// Where each side opens columns so that the matched ones come to stand one upon the other. Between
// two matches the sides begin together; before the first one they end together.
struct Openings
{
    std::vector<GapRun> here;
    std::vector<GapRun> there;

    explicit Openings(const Matches &matches)
    {
        Column hereDone = 0;
        Column thereDone = 0;
        for (const auto &[hereColumn, thereColumn] : matches) {
            const bool isFirst = hereColumn == matches.front().first;
            const Column hereCount = hereColumn - hereDone;
            const Column thereCount = thereColumn - thereDone;
            if (hereCount < thereCount)
                here.push_back({isFirst ? 0 : hereColumn, thereCount - hereCount});
            else if (thereCount < hereCount)
                there.push_back({isFirst ? 0 : thereColumn, hereCount - thereCount});
            hereDone = hereColumn + 1;
            thereDone = thereColumn + 1;
        }
    }
};

Column sumOf(const std::vector<GapRun> &runs)
{
    return std::accumulate(runs.begin(), runs.end(), Column(0),
                           [](Column sum, const GapRun &run) { return sum + run.count; });
}

// The rows of sequences that the table lacks, with the columns opened.
AlignmentTable::Rows remainingRows(const AlignmentTable &table, const AlignmentTable &other,
                                   const std::vector<GapRun> &openings)
{
    std::unordered_set<const Peptide *> present;
    for (std::size_t i = 0; i < table.rowCount(); ++i)
        present.insert(&table.row(i).sequence());
    AlignmentTable::Rows rows;
    for (std::size_t i = 0; i < other.rowCount(); ++i) {
        if (present.contains(&other.row(i).sequence()))
            continue;
        rows.push_back(std::make_unique<AlignmentRow>(other.row(i)));
        if (!openings.empty())
            rows.back()->cells().openGaps(openings);
    }
    return rows;
}

} // namespace

void Alignment::combine(const Alignment &other)
{
    if (&other == this || !mayChange(*this))
        return;
    AlignmentTable &table = *m_Table;
    const Openings openings(anchorMatches(table, other.table()));
    AlignmentTable::Rows rows = remainingRows(table, other.table(), openings.there);
    const Column width =
        std::max(m_Width + sumOf(openings.here), other.m_Width + sumOf(openings.there));
    if (rows.empty() || !table.hasRoomFor(width - m_Width))
        return;
    const ChangeScope scope;
    if (!openings.here.empty()) {
        OpenColumnsEdit edit(table, "combine", openings.here);
        recordInverse(edit.apply());
    }
    std::vector<std::size_t> indices(rows.size());
    std::iota(indices.begin(), indices.end(), table.rowCount());
    InsertRowsEdit edit(table, "combine", std::move(indices), std::move(rows), width);
    recordInverse(edit.apply());
}

} // namespace TAMBO
