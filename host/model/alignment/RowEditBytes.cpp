// SPDX-License-Identifier: GPL-3.0-or-later
// Gaps that move and rows that come, go or change places, as bytes.
#include "AlignmentEditBytes.h"
#include "AlignmentEdits.h"
#include "ObjectOperations.h"
#include "ObjectReader.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace TAMBO {

using Column = AlignmentTable::Column;

namespace {

// The alignment may be made as wide as that.
bool isWideEnough(const AlignmentTable &table, Column width)
{
    if (width > AlignmentTable::kMostColumns)
        return false;
    for (std::size_t i = 0; width < table.width() && i < table.rowCount(); ++i) {
        if (table.row(i).cells().end() > width)
            return false;
    }
    return true;
}

AlignmentTable::Rows readRows(std::size_t count, Column width, EditReader &in)
{
    NewObjects none(in.index());
    ObjectReader cells(in.text(), none);
    std::vector<OccupancyRow::Word> scratch;
    AlignmentTable::Rows rows;
    for (std::size_t i = 0; i < count && !cells.failed(); ++i)
        rows.push_back(AlignmentRow::read(cells, width, scratch));
    if (cells.failed() || !cells.atEnd())
        in.fail(cells.failed() ? cells.cause() : "there are more rows than places");
    return rows;
}

} // namespace

namespace {

// Behind which the row has its last residue when gaps have moved, of cells that have none there.
Column endAfter(const OccupancyRow &cells, const GapEdit::Move &move)
{
    const Column end = cells.end();
    if (move.from >= end)
        return move.to < end ? end + move.count : end;
    return move.to + move.count >= end ? end - move.count : end;
}

void storeMove(const GapEdit::Move &move, const BreakColumns &breaks, EditWriter &out)
{
    out.number(move.row);
    out.number(move.from);
    out.number(move.count);
    out.number(move.to);
    out.signedNumber(move.growth);
    storeBreaks(breaks, out);
}

} // namespace

void GapEdit::store(EditWriter &out) const
{
    storeHead(EditTag::Gap, out);
    storeMove(m_Move, *m_Breaks, out);
}

void GapEdit::storeInverse(EditWriter &out) const
{
    const Move &move = m_Move;
    storeHead(EditTag::Gap, out);
    storeMove({move.row, move.to, move.count, move.from, -move.growth},
              m_Table.row(move.row).breakColumns(), out);
}

bool GapEdit::fits() const
{
    const Move &move = m_Move;
    const auto grown = Column(move.growth > 0 ? move.growth : 0);
    const auto lost = Column(move.growth < 0 ? -move.growth : 0);
    const Column width = m_Table.width() + grown;
    if (move.row >= m_Table.rowCount() || width > AlignmentTable::kMostColumns || lost > width ||
        std::max(move.from, move.to) + move.count > width)
        return false;
    const AlignmentRow &row = m_Table.row(move.row);
    if (residuesIn(row.cells(), move.from, move.count) != 0)
        return false;
    if (!m_Breaks->empty() && m_Breaks->size() != row.breakColumns().size())
        return false;
    const Column end = endAfter(row.cells(), move);
    return (lost == 0 || std::max(end, m_Table.endOfOthers(move.row)) <= width - lost) &&
           m_Table.takesColumns(long(end) - long(row.cells().end()));
}

std::unique_ptr<Edit> GapEdit::load(AlignmentTable &table, const char *kind, EditReader &in)
{
    GapEdit::Move move;
    move.row = in.number();
    move.from = in.number(AlignmentTable::kMostColumns);
    move.count = in.number(AlignmentTable::kMostColumns);
    move.to = in.number(AlignmentTable::kMostColumns);
    move.growth =
        in.signedNumber(-long(AlignmentTable::kMostColumns), long(AlignmentTable::kMostColumns));
    Rare<BreakColumns> breaks;
    breaks = loadBreaks(in);
    return std::make_unique<GapEdit>(table, kind, move, std::move(breaks));
}

void RowMoveEdit::store(EditWriter &out) const
{
    storeHead(EditTag::RowMove, out);
    out.number(m_From);
    out.number(m_To);
}

void RowMoveEdit::storeInverse(EditWriter &out) const
{
    RowMoveEdit(m_Table, m_To, m_From).store(out);
}

bool RowMoveEdit::fits() const
{
    return m_From < m_Table.rowCount() && m_To < m_Table.rowCount();
}

void RowOrderEdit::store(EditWriter &out) const
{
    storeHead(EditTag::RowOrder, out);
    out.number(m_Order.size());
    for (const std::uint32_t place : m_Order)
        out.number(place);
}

void RowOrderEdit::storeInverse(EditWriter &out) const
{
    RowOrderEdit(m_Table, inverse()).store(out);
}

bool RowOrderEdit::fits() const
{
    if (m_Order.size() != m_Table.rowCount())
        return false;
    std::vector<bool> isTaken(m_Order.size());
    return std::ranges::all_of(m_Order, [&](std::uint32_t place) {
        if (place >= isTaken.size() || isTaken[place])
            return false;
        isTaken[place] = true;
        return true;
    });
}

std::unique_ptr<Edit> RowOrderEdit::load(AlignmentTable &table, EditReader &in)
{
    Order order(in.count());
    for (std::uint32_t &place : order)
        place = std::uint32_t(in.number(std::numeric_limits<std::uint32_t>::max()));
    return std::make_unique<RowOrderEdit>(table, std::move(order));
}

void InsertRowsEdit::store(EditWriter &out) const
{
    storeHead(EditTag::InsertRows, out);
    out.ascendingNumbers(m_Indices);
    out.number(m_Width);
    ObjectWriter cells;
    for (const std::unique_ptr<AlignmentRow> &row : m_Rows)
        row->write(cells);
    out.text(cells.bytes());
}

void InsertRowsEdit::storeInverse(EditWriter &out) const
{
    RemoveRowsEdit(m_Table, m_Kind, m_Indices, m_Table.width()).store(out);
}

bool InsertRowsEdit::fits() const
{
    return fitsInCopy() &&
           std::ranges::all_of(m_Rows, [](const auto &row) { return isInTree(row->sequence()); });
}

bool InsertRowsEdit::fitsInCopy() const
{
    if (!isWideEnough(m_Table, m_Width))
        return false;
    for (std::size_t i = 0; i < m_Rows.size(); ++i) {
        if (m_Indices[i] > m_Table.rowCount() + i || m_Rows[i]->cells().end() > m_Width)
            return false;
    }
    return true;
}

void RemoveRowsEdit::store(EditWriter &out) const
{
    storeHead(EditTag::RemoveRows, out);
    out.ascendingNumbers(m_Indices);
    out.number(m_Width);
}

void RemoveRowsEdit::storeInverse(EditWriter &out) const
{
    storeHead(EditTag::InsertRows, out);
    out.ascendingNumbers(m_Indices);
    out.number(m_Table.width());
    ObjectWriter cells;
    for (const std::size_t index : m_Indices)
        m_Table.row(index).write(cells);
    out.text(cells.bytes());
}

bool RemoveRowsEdit::fits() const
{
    if (m_Indices.back() >= m_Table.rowCount() || m_Width > AlignmentTable::kMostColumns)
        return false;
    auto next = m_Indices.begin();
    for (std::size_t i = 0; m_Width < m_Table.width() && i < m_Table.rowCount(); ++i) {
        if (next != m_Indices.end() && *next == i)
            ++next;
        else if (m_Table.row(i).cells().end() > m_Width)
            return false;
    }
    return true;
}

std::unique_ptr<Edit> InsertRowsEdit::load(AlignmentTable &table, const char *kind, EditReader &in)
{
    std::vector<std::size_t> indices = in.ascendingNumbers();
    const Column width = in.number(AlignmentTable::kMostColumns);
    if (indices.empty())
        in.fail("there are no rows");
    AlignmentTable::Rows rows = readRows(indices.size(), width, in);
    return std::make_unique<InsertRowsEdit>(table, kind, std::move(indices), std::move(rows),
                                            width);
}

std::unique_ptr<Edit> RemoveRowsEdit::load(AlignmentTable &table, const char *kind, EditReader &in)
{
    std::vector<std::size_t> indices = in.ascendingNumbers();
    const Column width = in.number(AlignmentTable::kMostColumns);
    if (indices.empty())
        in.fail("there are no rows");
    return std::make_unique<RemoveRowsEdit>(table, kind, std::move(indices), width);
}

} // namespace TAMBO
