// SPDX-License-Identifier: GPL-3.0-or-later
// Columns that go, come back or are replaced with what stands in them, as bytes.
#include "AlignmentEditBytes.h"
#include "AlignmentEdits.h"

#include <utility>

namespace TAMBO {

using Column = AlignmentTable::Column;

namespace {

constexpr Column kWidest = AlignmentTable::kMostColumns;

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

// What comes back must be residues of the rows' sequences, which a copy of each row tells: restore
// puts the cells of so many columns into it. One residue far behind all others takes the cells
// before it in each row, which may be more than there is memory for.
template <typename Restore>
bool cellsFit(const AlignmentTable &table, const RestoreColumnsEdit::Cells &kept, Column count,
              Restore restore)
{
    std::uint64_t now = kept.bits.size();
    for (std::size_t i = 0; i < table.rowCount(); ++i)
        now += table.row(i).cells().end();
    std::uint64_t then = 0;
    auto next = kept.residues.begin();
    for (std::size_t i = 0; i < table.rowCount(); ++i) {
        const std::vector<BitBuffer::Word> cells = kept.bits.bits(i * count, count);
        std::vector<ResidueRun> residues;
        std::uint64_t sum = 0;
        for (; next != kept.residues.end() && next->row == i; ++next) {
            residues.push_back(next->run);
            sum += next->run.count;
        }
        if (!residues.empty() && sum != bitsIn(cells))
            return false;
        AlignmentRow row(table.row(i));
        restore(row, cells, residues);
        then += row.cells().end();
        if (!isOfItsSequence(row) || !isAffordable(now, then))
            return false;
    }
    return next == kept.residues.end();
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

std::vector<RestoreColumnsEdit::RowResidues> RestoreColumnsEdit::loadResidues(EditReader &in)
{
    std::vector<RowResidues> residues(in.count(3));
    for (RowResidues &one : residues) {
        constexpr std::uint64_t kMostRows = ~std::uint32_t(0);
        one.row = static_cast<std::uint32_t>(in.number(kMostRows));
        one.run.index = static_cast<std::uint32_t>(in.number(kMostRows));
        one.run.count = static_cast<std::uint32_t>(in.number(kMostRows));
    }
    return residues;
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

bool RestoreColumnsEdit::fits() const
{
    const Column width = m_Table.width() + m_Count;
    if (m_Begin > m_Table.width() || width > kWidest || !breaksFit(m_Table, m_Cells.breaks) ||
        m_Cells.bits.size() != m_Table.rowCount() * m_Count || !fitsRange(width) ||
        !canOpen(m_Table.annotation(), m_Begin, m_Count))
        return false;
    return cellsFit(m_Table, m_Cells, m_Count,
                    [&](AlignmentRow &row, const auto &cells, const auto &residues) {
                        row.restoreColumns(m_Begin, cells, m_Count, width, residues);
                    });
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
    cells.residues = RestoreColumnsEdit::loadResidues(in);
    cells.breaks = loadRowBreaks(in);
    return std::make_unique<RestoreColumnsEdit>(table, kind, begin, count, std::move(cells),
                                                loadRange(in));
}

// ---- Columns in many places

void RemoveRunsEdit::store(EditWriter &out) const
{
    storeHead(EditTag::RemoveRuns, out);
    storeRuns(m_Runs, out);
    storeRange(out);
}

void RemoveRunsEdit::storeInverse(EditWriter &out) const
{
    storeHead(EditTag::RestoreRuns, out);
    storeRuns(m_Runs, out);
    Cells cells;
    cells.bits.reserve(m_Table.rowCount() * count());
    for (std::size_t i = 0; i < m_Table.rowCount(); ++i)
        static_cast<void>(rowWithout(i, cells));
    RestoreRunsEdit::storeCells(cells, out);
    storeFormerRange(out);
}

bool RemoveRunsEdit::fits() const
{
    const Column all = count();
    return areWithin(m_Table, m_Runs.back().column, all) && fitsRange(m_Table.width() - all);
}

std::unique_ptr<Edit> RestoreRunsEdit::load(AlignmentTable &table, const char *kind, EditReader &in)
{
    std::vector<GapRun> runs = loadRuns(in);
    Cells cells;
    cells.bits = loadBits(in);
    cells.residues = RestoreColumnsEdit::loadResidues(in);
    cells.breaks = loadRowBreaks(in);
    return std::make_unique<RestoreRunsEdit>(table, kind, std::move(runs), std::move(cells),
                                             loadRange(in));
}

void RestoreRunsEdit::storeCells(const Cells &cells, EditWriter &out)
{
    storeBits(cells.bits, out);
    RestoreColumnsEdit::storeResidues(cells.residues, out);
    storeRowBreaks(cells.breaks, out);
}

void RestoreRunsEdit::store(EditWriter &out) const
{
    storeHead(EditTag::RestoreRuns, out);
    storeRuns(m_Runs, out);
    storeCells(m_Cells, out);
    storeRange(out);
}

void RestoreRunsEdit::storeInverse(EditWriter &out) const
{
    storeHead(EditTag::RemoveRuns, out);
    storeRuns(m_Runs, out);
    storeFormerRange(out);
}

bool RestoreRunsEdit::fits() const
{
    const Column count = columnsIn(m_Runs);
    const Column width = m_Table.width() + count;
    if (m_Runs.back().column > m_Table.width() || width > AlignmentTable::kMostColumns ||
        m_Cells.bits.size() != m_Table.rowCount() * count || !fitsRange(width) ||
        !breaksFit(m_Table, m_Cells.breaks) ||
        !canOpen(m_Table.annotation(), m_Runs.front().column, count))
        return false;
    return cellsFit(m_Table, m_Cells, count,
                    [&](AlignmentRow &row, const auto &cells, const auto &residues) {
                        row.restoreRuns(m_Runs, cells, width, residues);
                    });
}

} // namespace TAMBO
