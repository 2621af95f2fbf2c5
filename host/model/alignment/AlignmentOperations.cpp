// SPDX-License-Identifier: GPL-3.0-or-later
// The plug-ins' door to the changes of an alignment: checks what is asked for, and leaves the
// change to an edit.
#include "Alignment.h"

#include "AlignmentEdits.h"
#include "AlignmentTable.h"
#include "ChangeScope.h"
#include "LongWork.h"
#include "MarkFollower.h"
#include "ObjectSpace.h"
#include "TableChanges.h"
#include "ValueStore.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace TAMBO {

namespace {

// One change, as a step of its own unless a guard or another operation is around it.
void perform(AlignmentEdit &&edit)
{
    const ChangeScope scope;
    recordInverse(edit.apply());
}

bool movesBreaks(const AlignmentTable &table, const GapEdit::Move &move)
{
    const AlignmentRow &row = table.row(move.row);
    if (!row.hasBreaks())
        return false;
    AlignmentRow moved(row);
    moved.moveGaps(move.from, move.count, move.to, table.width());
    return moved.breakColumns() != row.breakColumns();
}

// The gaps [from, from + count) of a row are put in at to.
void moveGaps(AlignmentTable &table, unsigned long row, unsigned long from, unsigned long count,
              unsigned long to)
{
    const OccupancyRow &cells = table.row(row).cells();
    const GapEdit::Move move{row, from, count, to, 0};
    // Gaps among gaps: no cell would change, so there is nothing to undo either.
    if (cells.rank(std::min(from, to)) == cells.rank(std::max(from, to) + count) &&
        !movesBreaks(table, move))
        return;
    perform(GapEdit(table, "move gap", move));
}

// What stands at col and behind it moves right, into the gaps at the row's end as far as there are.
void insertGaps(AlignmentTable &table, const char *kind, unsigned long row, unsigned long col,
                unsigned long count)
{
    const unsigned long end = table.row(row).cells().end();
    if (col >= end)
        return;
    const unsigned long spare = table.width() - end;
    const unsigned long growth = count > spare ? count - spare : 0;
    if (!table.hasRoomFor(growth))
        return;
    const unsigned long from = table.width() + growth - count;
    perform(GapEdit(table, kind, {row, from, count, col, long(growth)}));
}

// The residue at from and what follows it: right, by gaps put in before it; left, into the gaps
// directly before it.
void slideResidue(AlignmentTable &table, unsigned long row, unsigned long from, unsigned long to)
{
    if (to > from) {
        insertGaps(table, "move gap", row, from, to - from);
        return;
    }
    const OccupancyRow &cells = table.row(row).cells();
    if (cells.isResidue(from - 1))
        return;
    const unsigned long count = std::min(from - to, from - cells.gapRunBegin(from - 1));
    moveGaps(table, row, from - count, count, table.width() - count);
}

bool isRange(const Alignment::Range &range, unsigned long width)
{
    return range.first < range.second && range.second <= width;
}

} // namespace

void Alignment::range(const Range &range)
{
    const bool isEmpty = range.first >= range.second;
    if (!isEmpty && range.first >= m_Width)
        return;
    const Range cut = isEmpty ? range : Range(range.first, std::min(range.second, m_Width));
    if (cut == m_Range || !mayChange(*this))
        return;
    const ChangeScope scope;
    m_Range = cut;
    noteMarks(*this);
}

void Alignment::rangeAll()
{
    range({0, m_Width});
}

void Alignment::select(const Range &range, bool selected)
{
    if (!isRange(range, m_Width) || !mayChange(*this))
        return;
    const ChangeScope scope;
    for (std::size_t row = 0; row < height(); ++row) {
        const AlignmentRow &line = m_Table->row(row);
        const OccupancyRow &cells = line.cells();
        for (const ResidueRun &run :
             line.residueRuns(cells.rank(range.first), cells.rank(range.second)))
            line.sequence().setSelected(run.index, run.index + run.count, selected);
    }
}

void Alignment::remove(const Range &range)
{
    if (!isRange(range, m_Width) || !mayChange(*this))
        return;
    const ChangeScope scope;
    const unsigned long count = range.second - range.first;
    clearColumnTexts(*m_Table, "remove columns", range.first, count);
    perform(RemoveColumnsEdit(*m_Table, "remove columns", range.first, count));
}

void Alignment::remove(unsigned long col)
{
    if (col < m_Width)
        remove(Range(col, col + 1));
}

void Alignment::removeRow(unsigned long row)
{
    if (row < height() && mayChange(*this))
        perform(RemoveRowsEdit(*m_Table, "remove row", {row}, m_Width));
}

void Alignment::insertGapCol(unsigned long col, unsigned long count)
{
    if (col <= m_Width && count > 0 && mayChange(*this) && m_Table->hasRoomFor(count))
        perform(OpenColumnsEdit(*m_Table, "insert column", {{col, count}}));
}

void Alignment::insertGap(unsigned long row, unsigned long col)
{
    if (row < height() && col < m_Width && mayChange(*this))
        TAMBO::insertGaps(*m_Table, "insert gap", row, col, 1);
}

void Alignment::insertGaps(unsigned long row, unsigned long col, unsigned long count)
{
    if (row < height() && col < m_Width && count > 0 && mayChange(*this))
        TAMBO::insertGaps(*m_Table, "insert gaps", row, col, count);
}

void Alignment::moveGap(unsigned long row, unsigned long from, unsigned long to, bool point)
{
    if (row >= height() || from >= m_Width || to >= m_Width || from == to || !mayChange(*this))
        return;
    const OccupancyRow &cells = m_Table->row(row).cells();
    if (cells.isResidue(from)) {
        slideResidue(*m_Table, row, from, to);
    } else if (point) {
        TAMBO::moveGaps(*m_Table, row, from, 1, to);
    } else {
        const unsigned long begin = cells.gapRunBegin(from);
        const unsigned long end = cells.gapRunEnd(from, m_Width);
        const unsigned long target = to < from ? begin - std::min(begin, from - to)
                                               : begin + std::min(m_Width - end, to - from);
        TAMBO::moveGaps(*m_Table, row, begin, end - begin, target);
    }
}

void Alignment::moveGaps(unsigned long row, unsigned long from, unsigned long count,
                         unsigned long to)
{
    if (row >= height() || count == 0 || count > m_Width || from > m_Width - count ||
        to > m_Width - count || from == to || !mayChange(*this))
        return;
    const OccupancyRow &cells = m_Table->row(row).cells();
    if (cells.rank(from) == cells.rank(from + count))
        TAMBO::moveGaps(*m_Table, row, from, count, to);
}

Alignment::GapsMoved Alignment::moveGaps(const std::vector<GapMove> &moves)
{
    // By the gaps that come into a row, of which the moves stand side by side.
    unsigned long growth = 0;
    unsigned long coming = 0;
    for (std::size_t i = 0; i < moves.size(); ++i) {
        const GapMove &move = moves[i];
        if (i == 0 || moves[i - 1].row != move.row)
            coming = 0;
        if (move.from || move.row >= height() || move.count == 0)
            continue;
        const unsigned long end = m_Table->row(move.row).cells().end();
        if (move.to >= end)
            continue;
        coming += std::min(move.count, ~coming);
        growth = std::max(growth, coming - std::min(coming, m_Width - end));
    }
    if (growth > 0 && !m_Table->hasRoomFor(growth))
        return GapsMoved::TooWide;
    LongWork work("Moving gaps", moves.size(), LongWork::Kind::Changing);
    const ChangeScope scope;
    for (const GapMove &move : moves) {
        if (!work.goesOn())
            return GapsMoved::GivenUp;
        if (move.from)
            moveGaps(move.row, *move.from, move.count, move.to);
        else
            insertGaps(move.row, move.to, move.count);
    }
    return GapsMoved::All;
}

void Alignment::pushResidues(const std::vector<bool> &rows, const Range &columns, bool toLeft)
{
    if (!isRange(columns, m_Width) || !mayChange(*this))
        return;
    const unsigned long count = columns.second - columns.first;
    BitBuffer pushed;
    pushed.reserve(m_Table->rowCount() * count);
    bool isSame = true;
    for (std::size_t i = 0; i < m_Table->rowCount(); ++i) {
        const OccupancyRow &cells = m_Table->row(i).cells();
        auto words = cells.columns(columns.first, count);
        if (i < rows.size() && rows[i]) {
            const std::uint32_t residues = cells.rank(columns.second) - cells.rank(columns.first);
            OccupancyRow side = OccupancyRow::filled(residues);
            if (!toLeft)
                side.insertGaps(0, count - residues);
            auto placed = side.columns(0, count);
            isSame = isSame && placed == words;
            words = std::move(placed);
        }
        pushed.append(words, count);
    }
    if (isSame)
        return;
    const ChangeScope scope;
    replaceCells(*m_Table, "push residues", columns, std::move(pushed));
}

void Alignment::bubbleRow(unsigned long from, unsigned long to)
{
    if (from < height() && to < height() && from != to && mayChange(*this))
        perform(RowMoveEdit(*m_Table, from, to));
}

void Alignment::reorderRows(const std::vector<unsigned long> &order)
{
    const auto isRow = [this](unsigned long place) { return place < height(); };
    if (order.size() != height() || std::ranges::is_sorted(order) ||
        !std::ranges::all_of(order, isRow) || !mayChange(*this))
        return;
    RowOrderEdit edit(*m_Table, RowOrderEdit::Order(order.begin(), order.end()));
    if (edit.fits())
        perform(std::move(edit));
}

void Alignment::addRows(const std::vector<Compound *> &sequences)
{
    if (mayChange(*this))
        addRowsTo(*m_Table, AlignmentTable::rowsOf(sequences));
}

} // namespace TAMBO
