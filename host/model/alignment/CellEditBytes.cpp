// SPDX-License-Identifier: GPL-3.0-or-later
// Columns that go, come back or are replaced with what stands in them, as bytes.
#include "AlignmentEditBytes.h"
#include "AlignmentEdits.h"

#include <utility>

namespace TAMBO {

using Column = AlignmentTable::Column;

namespace {

constexpr Column kWidest = AlignmentTable::kMostColumns;

void storeBits(const BitBuffer &bits, EditWriter &out)
{
    out.number(bits.size());
    out.words(bits.words());
}

BitBuffer loadBits(EditReader &in)
{
    const std::uint64_t count = in.number();
    const std::size_t words = count / bits::kPerWord + (bits::placeOf(count) == 0 ? 0 : 1);
    if (words > in.left() / sizeof(BitBuffer::Word))
        in.fail("cells are missing");
    if (in.failed())
        return {};
    std::vector<BitBuffer::Word> loaded(words);
    in.words(loaded);
    if (bits::placeOf(count) != 0)
        loaded.back() &= bits::low(bits::placeOf(count));
    return {std::move(loaded), count};
}

void storeRowBreaks(const std::vector<RowBreaks> &rows, EditWriter &out)
{
    out.number(rows.size());
    for (const RowBreaks &row : rows) {
        out.number(row.row);
        storeBreaks(row.columns, out);
    }
}

std::vector<RowBreaks> loadRowBreaks(EditReader &in)
{
    std::vector<RowBreaks> rows(in.count(2));
    for (RowBreaks &row : rows) {
        row.row = in.number();
        row.columns = loadBreaks(in);
    }
    return rows;
}

// Of the rows that have any, in their order.
bool breaksFit(const AlignmentTable &table, const std::vector<RowBreaks> &rows)
{
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const std::size_t row = rows[i].row;
        if (row >= table.rowCount() || (i > 0 && row <= rows[i - 1].row) ||
            rows[i].columns.size() != table.row(row).breakColumns().size())
            return false;
    }
    return true;
}

// As they are now.
std::vector<RowBreaks> allBreaks(const AlignmentTable &table)
{
    std::vector<RowBreaks> rows;
    for (std::size_t i = 0; i < table.rowCount(); ++i) {
        if (table.row(i).hasBreaks())
            rows.push_back({i, table.row(i).breakColumns()});
    }
    return rows;
}

BitBuffer bitsNow(const AlignmentTable &table, Column begin, Column count)
{
    BitBuffer cells;
    cells.reserve(table.rowCount() * count);
    for (std::size_t i = 0; i < table.rowCount(); ++i)
        cells.append(table.row(i).cells().columns(begin, count), count);
    return cells;
}

std::uint64_t bitsIn(const std::vector<BitBuffer::Word> &words)
{
    std::uint64_t sum = 0;
    for (const BitBuffer::Word word : words)
        sum += bits::count(word);
    return sum;
}

} // namespace

void RemoveColumnsEdit::store(EditWriter &out) const
{
    storeHead(EditTag::RemoveColumns, out);
    out.number(m_Begin);
    out.number(m_Count);
    storeRange(out);
}

void RemoveColumnsEdit::storeInverse(EditWriter &out) const
{
    storeHead(EditTag::RestoreColumns, out);
    out.number(m_Begin);
    out.number(m_Count);
    storeBits(bitsNow(m_Table, m_Begin, m_Count), out);
    std::vector<RestoreColumnsEdit::RowResidues> residues;
    for (std::size_t i = 0; i < m_Table.rowCount(); ++i) {
        const AlignmentRow &row = m_Table.row(i);
        for (const ResidueRun &run :
             row.residueRuns(row.cells().rank(m_Begin), row.cells().rank(m_Begin + m_Count)))
            residues.push_back({std::uint32_t(i), run});
    }
    RestoreColumnsEdit::storeResidues(residues, out);
    storeRowBreaks(allBreaks(m_Table), out);
    storeFormerRange(out);
}

bool RemoveColumnsEdit::fits() const
{
    return areWithin(m_Table, m_Begin, m_Count) && fitsRange(m_Table.width() - m_Count);
}

void RestoreColumnsEdit::storeResidues(const std::vector<RowResidues> &residues, EditWriter &out)
{
    out.number(residues.size());
    for (const RowResidues &one : residues) {
        out.number(one.row);
        out.number(one.run.index);
        out.number(one.run.count);
    }
}

void RestoreColumnsEdit::store(EditWriter &out) const
{
    storeHead(EditTag::RestoreColumns, out);
    out.number(m_Begin);
    out.number(m_Count);
    storeBits(m_Cells.bits, out);
    storeResidues(m_Cells.residues, out);
    storeRowBreaks(m_Cells.breaks, out);
    storeRange(out);
}

void RestoreColumnsEdit::storeInverse(EditWriter &out) const
{
    storeHead(EditTag::RemoveColumns, out);
    out.number(m_Begin);
    out.number(m_Count);
    storeFormerRange(out);
}

// What comes back must be residues of the rows' sequences, which a copy of each row tells.
bool RestoreColumnsEdit::fits() const
{
    const Column width = m_Table.width() + m_Count;
    if (m_Begin > m_Table.width() || width > kWidest || !breaksFit(m_Table, m_Cells.breaks) ||
        m_Cells.bits.size() != m_Table.rowCount() * m_Count || !fitsRange(width) ||
        !canOpen(m_Table.annotation(), m_Begin, m_Count))
        return false;
    auto next = m_Cells.residues.begin();
    for (std::size_t i = 0; i < m_Table.rowCount(); ++i) {
        const std::vector<BitBuffer::Word> cells = m_Cells.bits.bits(i * m_Count, m_Count);
        std::vector<ResidueRun> residues;
        std::uint64_t sum = 0;
        for (; next != m_Cells.residues.end() && next->row == i; ++next) {
            residues.push_back(next->run);
            sum += next->run.count;
        }
        if (!residues.empty() && sum != bitsIn(cells))
            return false;
        AlignmentRow row(m_Table.row(i));
        row.restoreColumns(m_Begin, cells, m_Count, width, residues);
        std::uint64_t behind = 0;
        for (const ResidueRun &run : row.residueRuns(0, row.cells().residues())) {
            if (run.index < behind)
                return false;
            behind = std::uint64_t(run.index) + run.count;
        }
        if (behind > row.sequence().residueCount())
            return false;
    }
    return next == m_Cells.residues.end();
}

void ReplaceColumnsEdit::store(EditWriter &out) const
{
    storeHead(EditTag::ReplaceColumns, out);
    storeStretch(m_Stretch, out);
    storeBits(m_Bits, out);
    storeRowBreaks(m_Breaks, out);
    storeRange(out);
}

void ReplaceColumnsEdit::storeStretch(const Stretch &stretch, EditWriter &out)
{
    for (const Column column : {stretch.begin, stretch.oldCount, stretch.newCount})
        out.number(column);
}

void ReplaceColumnsEdit::storeInverse(EditWriter &out) const
{
    storeHead(EditTag::ReplaceColumns, out);
    storeStretch({m_Stretch.begin, m_Stretch.newCount, m_Stretch.oldCount}, out);
    storeBits(bitsNow(m_Table, m_Stretch.begin, m_Stretch.oldCount), out);
    storeRowBreaks(allBreaks(m_Table), out);
    storeFormerRange(out);
}

bool ReplaceColumnsEdit::fits() const
{
    const Column width = m_Table.width() - m_Stretch.oldCount + m_Stretch.newCount;
    if (!areWithin(m_Table, m_Stretch.begin, m_Stretch.oldCount) || width > kWidest ||
        m_Bits.size() != m_Table.rowCount() * m_Stretch.newCount || !breaksFit(m_Table, m_Breaks) ||
        !fitsRange(width) || !canOpen(m_Table.annotation(), m_Stretch.begin, m_Stretch.newCount))
        return false;
    for (std::size_t i = 0; i < m_Table.rowCount(); ++i) {
        if (bitsIn(m_Bits.bits(i * m_Stretch.newCount, m_Stretch.newCount)) !=
            residuesIn(m_Table.row(i).cells(), m_Stretch.begin, m_Stretch.oldCount))
            return false;
    }
    return true;
}

std::unique_ptr<Edit> ColumnEdit::loadCells(EditTag tag, AlignmentTable &table, const char *kind,
                                            EditReader &in)
{
    const Column begin = in.number(kWidest);
    const Column count = in.number(kWidest);
    if (tag == EditTag::RemoveColumns)
        return std::make_unique<RemoveColumnsEdit>(table, kind, begin, count, loadRange(in));
    if (tag == EditTag::ReplaceColumns) {
        const Column newCount = in.number(kWidest);
        BitBuffer bits = loadBits(in);
        std::vector<RowBreaks> breaks = loadRowBreaks(in);
        return std::make_unique<ReplaceColumnsEdit>(
            table, kind, ReplaceColumnsEdit::Stretch{begin, count, newCount}, std::move(bits),
            std::move(breaks), loadRange(in));
    }
    RestoreColumnsEdit::Cells cells;
    cells.bits = loadBits(in);
    cells.residues.resize(in.count(3));
    for (RestoreColumnsEdit::RowResidues &one : cells.residues) {
        constexpr std::uint64_t kMostRows = ~std::uint32_t(0);
        one.row = static_cast<std::uint32_t>(in.number(kMostRows));
        one.run.index = static_cast<std::uint32_t>(in.number(kMostRows));
        one.run.count = static_cast<std::uint32_t>(in.number(kMostRows));
    }
    cells.breaks = loadRowBreaks(in);
    return std::make_unique<RestoreColumnsEdit>(table, kind, begin, count, std::move(cells),
                                                loadRange(in));
}

} // namespace TAMBO
