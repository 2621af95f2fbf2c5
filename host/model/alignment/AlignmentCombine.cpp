// SPDX-License-Identifier: GPL-3.0-or-later
// Combining two alignments along a sequence that both hold.
#include "Alignment.h"

#include "AlignmentEdits.h"
#include "AlignmentTable.h"
#include "ChangeScope.h"
#include "SharedRows.h"
#include "Structure.h"

#include <algorithm>
#include <numeric>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

namespace TAMBO {

namespace {

using Column = AlignmentTable::Column;

constexpr const char *kKind = "combine";

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

// Of rows with the same letters.
Matches matchesInOrder(const AlignmentRow &row, const AlignmentRow &other)
{
    Matches matches;
    row.forEachResidue(0, row.cells().end(),
                       [&](Column column, std::uint32_t) { matches.emplace_back(column, 0); });
    auto match = matches.begin();
    other.forEachResidue(0, other.cells().end(),
                         [&](Column column, std::uint32_t) { (match++)->second = column; });
    return matches;
}

Matches anchorMatches(const AlignmentTable &table, const AlignmentTable &other,
                      const Partners *anchor)
{
    if (anchor == nullptr)
        return {};
    const AlignmentRow &row = table.row(anchor->row);
    const AlignmentRow &otherRow = other.row(anchor->other);
    return anchor->isSame ? matchesOf(row, otherRow) : matchesInOrder(row, otherRow);
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
AlignmentTable::Rows remainingRows(const AlignmentTable &other, const SharedRows &shared,
                                   const std::vector<GapRun> &openings)
{
    const Column width = other.width() + sumOf(openings);
    AlignmentTable::Rows rows;
    for (std::size_t i = 0; i < other.rowCount(); ++i) {
        if (shared.isShared(i))
            continue;
        rows.push_back(std::make_unique<AlignmentRow>(other.row(i)));
        if (!openings.empty())
            rows.back()->openGaps(openings, width);
    }
    return rows;
}

// Residues of the row share their data with those of a structure.
bool isTied(const AlignmentRow &row)
{
    const Peptide &sequence = row.sequence();
    return sequence.hasTies() || dynamic_cast<const Structure *>(sequence.Parent()) != nullptr;
}

// The rows that give way to those of the other table, because only these have a structure.
std::vector<Partners> untiedRows(const AlignmentTable &table, const AlignmentTable &other,
                                 const SharedRows &shared)
{
    std::vector<Partners> untied;
    for (const Partners &partners : shared.equal()) {
        if (!isTied(table.row(partners.row)) && isTied(other.row(partners.other)))
            untied.push_back(partners);
    }
    return untied;
}

// The rows take the places and the gaps of those that go. Inside a ChangeScope.
void replaceRows(AlignmentTable &table, const AlignmentTable &other,
                 const std::vector<Partners> &replaced)
{
    std::vector<std::size_t> indices;
    AlignmentTable::Rows rows;
    for (const Partners &partners : replaced) {
        indices.push_back(partners.row);
        rows.push_back(std::make_unique<AlignmentRow>(other.row(partners.other)));
        rows.back()->takeCells(table.row(partners.row), table.width());
    }
    const Column width = table.width();
    RemoveRowsEdit removal(table, kKind, indices, width);
    recordInverse(removal.apply());
    InsertRowsEdit insertion(table, kKind, std::move(indices), std::move(rows), width);
    recordInverse(insertion.apply());
}

std::string quoted(const std::string &name)
{
    return '"' + name + '"';
}

std::string rowsText(std::size_t count)
{
    return std::to_string(count) + (count == 1 ? " row" : " rows");
}

// "Combined "b" into "a" along "x", which both hold; 2 rows added, 1 row was there already."
void tell(const AlignmentTable &table, const AlignmentTable &other, const SharedRows &shared,
          std::size_t added)
{
    std::string text = "Combined " + quoted(other.name()) + " into " + quoted(table.name());
    if (const Partners *const anchor = shared.anchor())
        text += " along " + quoted(table.row(anchor->row).name()) +
                (anchor->isSame ? ", which both hold"
                                : ", which has the same name and letters in both");
    else
        text += ", which have no sequence in common";
    text += "; " + rowsText(added) + " added";
    const std::size_t present = other.rowCount() - added;
    if (present > 0)
        text += ", " + rowsText(present) + (present == 1 ? " was" : " were") + " there already";
    writeLog(text + '.');
}

void tellReplaced(const AlignmentTable &table, const std::vector<Partners> &replaced)
{
    for (const Partners &partners : replaced)
        writeLog("The row " + quoted(table.row(partners.row).name()) +
                 " is now the one that is tied to its structure.");
}

} // namespace

void Alignment::combine(const Alignment &other)
{
    const AlignmentTable &otherTable = other.table();
    if (&other == this || otherTable.rowCount() == 0 || !mayChange(*this))
        return;
    AlignmentTable &table = *m_Table;
    const SharedRows shared(table, otherTable);
    const Openings openings(anchorMatches(table, otherTable, shared.anchor()));
    AlignmentTable::Rows rows = remainingRows(otherTable, shared, openings.there);
    const std::vector<Partners> untied = untiedRows(table, otherTable, shared);
    const Column width = rows.empty() ? m_Width
                                      : std::max(m_Width + sumOf(openings.here),
                                                 other.m_Width + sumOf(openings.there));
    if (!table.hasRoomFor(width - m_Width))
        return;
    tell(table, otherTable, shared, rows.size());
    if (rows.empty() && untied.empty())
        return;
    const ChangeScope scope;
    if (!rows.empty() && !openings.here.empty()) {
        OpenColumnsEdit edit(table, kKind, openings.here);
        recordInverse(edit.apply());
    }
    if (!untied.empty()) {
        replaceRows(table, otherTable, untied);
        tellReplaced(table, untied);
    }
    if (rows.empty())
        return;
    std::vector<std::size_t> indices(rows.size());
    std::iota(indices.begin(), indices.end(), table.rowCount());
    InsertRowsEdit edit(table, kKind, std::move(indices), std::move(rows), width);
    recordInverse(edit.apply());
}

} // namespace TAMBO
