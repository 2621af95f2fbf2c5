// SPDX-License-Identifier: GPL-3.0-or-later
#include "AlignmentEdits.h"

#include "ChangeSession.h"
#include "LongWork.h"

#include <algorithm>
#include <iterator>
#include <numeric>
#include <optional>
#include <utility>

namespace TAMBO {

using Column = AlignmentTable::Column;
using Range = AlignmentTable::Range;

namespace {

std::size_t bytesOf(const std::vector<RowBreaks> &breaks) noexcept
{
    return std::accumulate(breaks.begin(), breaks.end(), breaks.capacity() * sizeof(RowBreaks),
                           [](std::size_t sum, const RowBreaks &row) {
                               return sum + row.columns.capacity() * sizeof(row.columns[0]);
                           });
}

// Keeps those that would not be found again when the columns are gone.
void keepBreaks(const AlignmentRow &row, std::size_t index, const Range &columns,
                std::vector<RowBreaks> &kept)
{
    if (row.hasBreaksIn(columns.first, columns.second - columns.first))
        kept.push_back({index, row.breakColumns()});
}

// Of columns that are about to change.
void keepCells(const OccupancyRow &cells, Column begin, Column count, BitBuffer &kept)
{
    for (Column done = 0; done < count; done += OccupancyRow::kWordColumns)
        kept.append(cells.bitsAt(begin + done), std::min(count - done, OccupancyRow::kWordColumns));
}

// Called for each row in turn, from the first one on.
class BreakRestorer
{
public:
    explicit BreakRestorer(const std::vector<RowBreaks> &breaks, std::size_t firstRow = 0)
        : m_Next(std::ranges::lower_bound(breaks, firstRow, {}, &RowBreaks::row)),
          m_End(breaks.end())
    { }
    void restore(AlignmentRow &row, std::size_t index)
    {
        if (m_Next != m_End && m_Next->row == index)
            row.setBreakColumns((m_Next++)->columns);
    }

private:
    std::vector<RowBreaks>::const_iterator m_Next;
    std::vector<RowBreaks>::const_iterator m_End;
};

} // namespace

// ---- Gaps and rows

std::unique_ptr<Edit> GapEdit::apply()
{
    const Move &move = m_Move;
    ChangeSession::get().tellOfRow(m_Table.alignment(), move.row);
    Rare<BreakColumns> former;
    former = m_Table.row(move.row).breakColumns();
    m_Table.moveGaps(move.row, move.from, move.count, move.to, move.growth);
    if (!m_Breaks->empty())
        m_Table.setBreakColumns(move.row, *m_Breaks);
    return std::make_unique<GapEdit>(m_Table, m_Kind,
                                     Move{move.row, move.to, move.count, move.from, -move.growth},
                                     std::move(former));
}

std::size_t GapEdit::bytes() const
{
    return sizeof(*this) + m_Breaks->capacity() * sizeof(BreakColumns::value_type);
}

std::unique_ptr<Edit> RowMoveEdit::apply()
{
    ChangeSession::get().tellOfMove(m_Table.alignment(), m_From, m_To);
    m_Table.moveRow(m_From, m_To);
    return std::make_unique<RowMoveEdit>(m_Table, m_To, m_From);
}

std::unique_ptr<Edit> RowOrderEdit::apply()
{
    auto back = std::make_unique<RowOrderEdit>(m_Table, inverse());
    m_Table.reorderRows(m_Order);
    return back;
}

std::size_t RowOrderEdit::bytes() const
{
    return sizeof(*this) + m_Order.capacity() * sizeof(m_Order[0]);
}

RowOrderEdit::Order RowOrderEdit::inverse() const
{
    Order back(m_Order.size());
    for (std::size_t i = 0; i < m_Order.size(); ++i)
        back[m_Order[i]] = std::uint32_t(i);
    return back;
}

InsertRowsEdit::InsertRowsEdit(AlignmentTable &table, const char *kind,
                               std::vector<std::size_t> indices, AlignmentTable::Rows rows,
                               Column width)
    : AlignmentEdit(table, kind),
      m_Indices(std::move(indices)),
      m_Rows(std::move(rows)),
      m_Width(width)
{ }

std::unique_ptr<Edit> InsertRowsEdit::apply()
{
    const Column before = m_Table.width();
    m_Table.insertRows(m_Indices, std::move(m_Rows), m_Width);
    return std::make_unique<RemoveRowsEdit>(m_Table, m_Kind, std::move(m_Indices), before);
}

std::size_t InsertRowsEdit::bytes() const
{
    return std::accumulate(m_Rows.begin(), m_Rows.end(),
                           sizeof(*this) + m_Indices.capacity() * sizeof(m_Indices[0]) +
                               m_Rows.capacity() * sizeof(m_Rows[0]),
                           [](std::size_t sum, const auto &row) { return sum + row->bytes(); });
}

void InsertRowsEdit::appendNeeded(std::vector<const Compound *> &out) const
{
    out.push_back(subject());
    for (const std::unique_ptr<AlignmentRow> &row : m_Rows)
        out.push_back(&row->sequence());
}

RemoveRowsEdit::RemoveRowsEdit(AlignmentTable &table, const char *kind,
                               std::vector<std::size_t> indices, Column width)
    : AlignmentEdit(table, kind), m_Indices(std::move(indices)), m_Width(width)
{ }

std::unique_ptr<Edit> RemoveRowsEdit::apply()
{
    const Column before = m_Table.width();
    AlignmentTable::Rows rows = m_Table.takeRows(m_Indices, m_Width);
    return std::make_unique<InsertRowsEdit>(m_Table, m_Kind, std::move(m_Indices), std::move(rows),
                                            before);
}

std::size_t RemoveRowsEdit::bytes() const
{
    return sizeof(*this) + m_Indices.capacity() * sizeof(m_Indices[0]);
}

// ---- Columns

ColumnEdit::RangeStep ColumnEdit::finishRange(const Range &before) const
{
    const bool isRepeated = m_RangeStep.isRepeated;
    if (isRepeated || (m_RangeStep.isWayBack && before == m_RangeStep.expected))
        m_Table.setRange(m_RangeStep.restored);
    return {true, false, m_Table.alignment().range(), isRepeated ? m_RangeStep.expected : before};
}

OpenColumnsEdit::OpenColumnsEdit(AlignmentTable &table, const char *kind, std::vector<GapRun> runs,
                                 const RangeStep &step)
    : ColumnEdit(table, kind, step), m_Runs(std::move(runs))
{ }

std::unique_ptr<Edit> OpenColumnsEdit::apply()
{
    const Range before = m_Table.alignment().range();
    m_Table.openColumns(m_Runs);
    return std::make_unique<CloseColumnsEdit>(m_Table, m_Kind, std::move(m_Runs),
                                              finishRange(before));
}

std::size_t OpenColumnsEdit::bytes() const
{
    return sizeof(*this) + m_Runs.capacity() * sizeof(GapRun);
}

CloseColumnsEdit::CloseColumnsEdit(AlignmentTable &table, const char *kind,
                                   std::vector<GapRun> runs, const RangeStep &step)
    : ColumnEdit(table, kind, step), m_Runs(std::move(runs))
{ }

std::unique_ptr<Edit> CloseColumnsEdit::apply()
{
    const Range before = m_Table.alignment().range();
    m_Table.closeColumns(m_Runs);
    return std::make_unique<OpenColumnsEdit>(m_Table, m_Kind, std::move(m_Runs),
                                             finishRange(before));
}

std::size_t CloseColumnsEdit::bytes() const
{
    return sizeof(*this) + m_Runs.capacity() * sizeof(GapRun);
}

std::unique_ptr<Edit> RemoveColumnsEdit::apply()
{
    const Range before = m_Table.alignment().range();
    const Column width = m_Table.width() - m_Count;
    const SplitLoop loop(m_Table.rowCount());
    std::vector<RestoreColumnsEdit::Cells> parts(loop.parts());
    ColumnProfiles::Counts counts = m_Table.keptCounts(m_Begin, m_Count);
    const bool isFew = m_Count > 0 && m_Count < OccupancyRow::kWordColumns;
    const auto change = [&](std::size_t part, std::size_t first, AlignmentTable::SomeRows rows) {
        RestoreColumnsEdit::Cells cells;
        // The first takes in those of the others.
        cells.bits.reserve((part == 0 ? m_Table.rowCount() : rows.size()) * m_Count);
        std::vector<ResidueRun> removed;
        for (std::size_t i = 0; i < rows.size(); ++i) {
            AlignmentRow &row = *rows[i];
            std::optional<OccupancyRow::Word> taken;
            if (isFew)
                taken = row.takeFew(m_Begin, unsigned(m_Count), removed);
            if (taken) {
                cells.bits.append(*taken, m_Count);
            } else {
                keepCells(row.cells(), m_Begin, m_Count, cells.bits);
                keepBreaks(row, first + i, {m_Begin, m_Begin + m_Count}, cells.breaks);
                row.removeColumns(m_Begin, m_Count, width, removed);
            }
            for (const ResidueRun &run : removed)
                cells.residues.push_back({std::uint32_t(first + i), run});
            removed.clear();
        }
        parts[part] = std::move(cells);
    };
    m_Table.changeColumns(m_Begin, m_Count, 0, loop, change);
    RestoreColumnsEdit::Cells cells = RestoreColumnsEdit::joined(std::move(parts));
    cells.counts = std::move(counts);
    return std::make_unique<RestoreColumnsEdit>(m_Table, m_Kind, m_Begin, m_Count, std::move(cells),
                                                finishRange(before));
}

// Those of rows one behind the other.
RestoreColumnsEdit::Cells RestoreColumnsEdit::joined(std::vector<Cells> parts)
{
    Cells all = std::move(parts.front());
    for (auto part = parts.begin() + 1; part != parts.end(); ++part) {
        all.bits.append(part->bits.words(), part->bits.size());
        all.residues.insert(all.residues.end(), part->residues.begin(), part->residues.end());
        std::ranges::move(part->breaks, std::back_inserter(all.breaks));
    }
    all.residues.shrink_to_fit();
    all.breaks.shrink_to_fit();
    return all;
}

RestoreColumnsEdit::RestoreColumnsEdit(AlignmentTable &table, const char *kind, Column begin,
                                       Column count, Cells cells, const RangeStep &step)
    : ColumnEdit(table, kind, step), m_Begin(begin), m_Count(count), m_Cells(std::move(cells))
{ }

std::unique_ptr<Edit> RestoreColumnsEdit::apply()
{
    const Range before = m_Table.alignment().range();
    const Column width = m_Table.width() + m_Count;
    const auto change = [&](std::size_t, std::size_t first, AlignmentTable::SomeRows rows) {
        auto next = std::ranges::lower_bound(m_Cells.residues, first, {}, &RowResidues::row);
        BreakRestorer breaks(m_Cells.breaks, first);
        const bool isFew = m_Count <= OccupancyRow::kWordColumns;
        std::vector<OccupancyRow::Word> bits(1);
        std::vector<ResidueRun> residues;
        for (std::size_t i = 0; i < rows.size(); ++i) {
            residues.clear();
            for (; next != m_Cells.residues.end() && next->row == first + i; ++next)
                residues.push_back(next->run);
            if (isFew)
                bits.front() = m_Cells.bits.word((first + i) * m_Count, m_Count);
            else
                m_Cells.bits.read((first + i) * m_Count, m_Count, bits);
            rows[i]->restoreColumns(m_Begin, bits, m_Count, width, residues);
            breaks.restore(*rows[i], first + i);
        }
    };
    m_Table.changeColumns(m_Begin, 0, m_Count, SplitLoop(m_Table.rowCount()), change);
    m_Table.setCounts(m_Begin, m_Cells.counts);
    return std::make_unique<RemoveColumnsEdit>(m_Table, m_Kind, m_Begin, m_Count,
                                               finishRange(before));
}

std::size_t RestoreColumnsEdit::bytes() const
{
    std::size_t sum = m_Cells.counts.capacity() * sizeof(m_Cells.counts[0]);
    for (const std::vector<std::uint32_t> &column : m_Cells.counts)
        sum += column.capacity() * sizeof(column[0]);
    return sizeof(*this) + sum + m_Cells.bits.bytes() +
           m_Cells.residues.capacity() * sizeof(RowResidues) + bytesOf(m_Cells.breaks);
}

std::unique_ptr<Edit> ColumnTextEdit::apply()
{
    std::vector<std::string> former = m_Table.annotation()->texts(m_Begin, m_Count);
    m_Table.setColumnTexts(m_Begin, m_Texts);
    return std::make_unique<ColumnTextEdit>(m_Table, m_Kind, m_Begin, m_Count, std::move(former));
}

std::size_t ColumnTextEdit::bytes() const
{
    std::size_t sum = sizeof(*this) + m_Texts.capacity() * sizeof(m_Texts[0]);
    for (const std::string &text : m_Texts)
        sum += text.capacity();
    return sum;
}

std::unique_ptr<Edit> AnnotationEdit::apply()
{
    const AlignmentAnnotation *const present = m_Table.annotation();
    auto former = present == nullptr ? nullptr : std::make_unique<AlignmentAnnotation>(*present);
    m_Table.presetAnnotation(std::move(m_Annotation));
    return std::make_unique<AnnotationEdit>(m_Table, m_Kind, std::move(former));
}

std::size_t AnnotationEdit::bytes() const
{
    return sizeof(*this) + (m_Annotation == nullptr ? 0 : m_Annotation->bytes());
}

ReplaceColumnsEdit::ReplaceColumnsEdit(AlignmentTable &table, const char *kind,
                                       const Stretch &stretch, BitBuffer bits,
                                       std::vector<RowBreaks> breaks, const RangeStep &step)
    : ColumnEdit(table, kind, step),
      m_Stretch(stretch),
      m_Bits(std::move(bits)),
      m_Breaks(std::move(breaks))
{ }

std::unique_ptr<Edit> ReplaceColumnsEdit::apply()
{
    const Range before = m_Table.alignment().range();
    const Stretch &stretch = m_Stretch;
    BitBuffer former;
    former.reserve(m_Table.rowCount() * stretch.oldCount);
    std::vector<RowBreaks> kept;
    BreakRestorer breaks(m_Breaks, 0);
    const Column width = m_Table.width() - stretch.oldCount + stretch.newCount;
    std::vector<OccupancyRow::Word> bits;
    const auto change = [&](std::size_t, std::size_t, AlignmentTable::SomeRows rows) {
        for (std::size_t index = 0; index < rows.size(); ++index) {
            AlignmentRow &row = *rows[index];
            keepCells(row.cells(), stretch.begin, stretch.oldCount, former);
            keepBreaks(row, index, {stretch.begin, stretch.begin + stretch.oldCount}, kept);
            m_Bits.read(index * stretch.newCount, stretch.newCount, bits);
            row.replaceColumns(stretch.begin, stretch.oldCount, bits, stretch.newCount, width);
            breaks.restore(row, index);
        }
    };
    // Another program has taken far longer before.
    const SplitLoop together(m_Table.rowCount(), 1);
    m_Table.changeColumns(stretch.begin, stretch.oldCount, stretch.newCount, together, change);
    return std::make_unique<ReplaceColumnsEdit>(
        m_Table, m_Kind, Stretch{stretch.begin, stretch.newCount, stretch.oldCount},
        std::move(former), std::move(kept), finishRange(before));
}

std::size_t ReplaceColumnsEdit::bytes() const
{
    return sizeof(*this) + m_Bits.bytes() + bytesOf(m_Breaks);
}

// ---- Columns in many places

namespace {

// Between two looks at the user. Each has about as many pieces as there are runs.
constexpr std::size_t kRowsOfAPass = 64;

// What a row needs of those of all rows, one row after the other.
class CellsOfRows
{
public:
    CellsOfRows(const RestoreColumnsEdit::Cells &cells, Column columns)
        : m_Cells(cells), m_Columns(columns), m_Next(cells.residues.begin()), m_Breaks(cells.breaks)
    { }

    void restore(AlignmentRow &row, std::size_t index, const std::vector<GapRun> &runs,
                 Column width)
    {
        m_Residues.clear();
        for (; m_Next != m_Cells.residues.end() && m_Next->row == index; ++m_Next)
            m_Residues.push_back(m_Next->run);
        m_Cells.bits.read(index * m_Columns, m_Columns, m_Bits);
        row.restoreRuns(runs, m_Bits, width, m_Residues);
        m_Breaks.restore(row, index);
    }

private:
    const RestoreColumnsEdit::Cells &m_Cells;
    Column m_Columns;
    std::vector<RestoreColumnsEdit::RowResidues>::const_iterator m_Next;
    BreakRestorer m_Breaks;
    std::vector<OccupancyRow::Word> m_Bits;
    std::vector<ResidueRun> m_Residues;
};

} // namespace

Column columnsIn(const std::vector<GapRun> &runs) noexcept
{
    Column sum = 0;
    for (const GapRun &run : runs)
        sum += run.count;
    return sum;
}

RemoveRunsEdit::RemoveRunsEdit(AlignmentTable &table, const char *kind, std::vector<GapRun> runs,
                               const RangeStep &step)
    : ColumnEdit(table, kind, step), m_Runs(std::move(runs))
{ }

std::unique_ptr<AlignmentRow> RemoveRunsEdit::rowWithout(std::size_t index, Cells &cells) const
{
    const AlignmentRow &row = m_Table.row(index);
    if (row.hasBreaks())
        cells.breaks.push_back({index, row.breakColumns()});
    auto made = std::make_unique<AlignmentRow>(row);
    std::vector<ResidueRun> removed;
    made->removeRuns(m_Runs, m_Table.width() - count(), cells.bits, removed);
    for (const ResidueRun &run : removed)
        cells.residues.push_back({std::uint32_t(index), run});
    return made;
}

bool RemoveRunsEdit::prepare(LongWork &work)
{
    const std::size_t rows = m_Table.rowCount();
    m_Rows.reserve(rows);
    m_Cells.bits.reserve(rows * count());
    for (std::size_t i = 0; i < rows; ++i) {
        if (i % kRowsOfAPass == 0 && !work.goesOnAt(i))
            return false;
        m_Rows.push_back(rowWithout(i, m_Cells));
    }
    m_Cells.residues.shrink_to_fit();
    m_Cells.breaks.shrink_to_fit();
    m_IsPrepared = true;
    return true;
}

std::unique_ptr<Edit> RemoveRunsEdit::apply()
{
    if (!m_IsPrepared) {
        LongWork work("Removing columns", m_Table.rowCount(), LongWork::Kind::Fixed);
        static_cast<void>(prepare(work));
    }
    const AlignmentTable::Range before = m_Table.alignment().range();
    m_Table.removeRuns(m_Runs, std::move(m_Rows));
    return std::make_unique<RestoreRunsEdit>(m_Table, m_Kind, std::move(m_Runs), std::move(m_Cells),
                                             finishRange(before));
}

std::size_t RemoveRunsEdit::bytes() const
{
    return sizeof(*this) + m_Runs.capacity() * sizeof(GapRun);
}

RestoreRunsEdit::RestoreRunsEdit(AlignmentTable &table, const char *kind, std::vector<GapRun> runs,
                                 Cells cells, const RangeStep &step)
    : ColumnEdit(table, kind, step), m_Runs(std::move(runs)), m_Cells(std::move(cells))
{ }

std::unique_ptr<Edit> RestoreRunsEdit::apply()
{
    const std::size_t count = m_Table.rowCount();
    const Column columns = columnsIn(m_Runs);
    const Column width = m_Table.width() + columns;
    LongWork work("Restoring columns", count, LongWork::Kind::Fixed);
    CellsOfRows cells(m_Cells, columns);
    AlignmentTable::Rows rows;
    rows.reserve(count);
    for (std::size_t i = 0; i < count; ++i) {
        if (i % kRowsOfAPass == 0)
            static_cast<void>(work.goesOnAt(i));
        rows.push_back(std::make_unique<AlignmentRow>(m_Table.row(i)));
        cells.restore(*rows.back(), i, m_Runs, width);
    }
    const AlignmentTable::Range before = m_Table.alignment().range();
    m_Table.restoreRuns(m_Runs, std::move(rows));
    return std::make_unique<RemoveRunsEdit>(m_Table, m_Kind, std::move(m_Runs),
                                            finishRange(before));
}

std::size_t RestoreRunsEdit::bytes() const
{
    return sizeof(*this) + m_Runs.capacity() * sizeof(GapRun) + m_Cells.bits.bytes() +
           m_Cells.residues.capacity() * sizeof(RestoreColumnsEdit::RowResidues) +
           bytesOf(m_Cells.breaks);
}

// ---- The same of another alignment

std::unique_ptr<Edit> GapEdit::copyFor(AlignmentTable &table) const
{
    return std::make_unique<GapEdit>(table, m_Kind, m_Move);
}

std::unique_ptr<Edit> RowMoveEdit::copyFor(AlignmentTable &table) const
{
    return std::make_unique<RowMoveEdit>(table, m_From, m_To);
}

std::unique_ptr<Edit> RowOrderEdit::copyFor(AlignmentTable &table) const
{
    return std::make_unique<RowOrderEdit>(table, m_Order);
}

std::unique_ptr<Edit> InsertRowsEdit::copyFor(AlignmentTable &table) const
{
    AlignmentTable::Rows rows;
    rows.reserve(m_Rows.size());
    for (const auto &row : m_Rows)
        rows.push_back(std::make_unique<AlignmentRow>(*row));
    return std::make_unique<InsertRowsEdit>(table, m_Kind, m_Indices, std::move(rows), m_Width);
}

std::unique_ptr<Edit> RemoveRowsEdit::copyFor(AlignmentTable &table) const
{
    return std::make_unique<RemoveRowsEdit>(table, m_Kind, m_Indices, m_Width);
}

std::unique_ptr<Edit> OpenColumnsEdit::copyFor(AlignmentTable &table) const
{
    return std::make_unique<OpenColumnsEdit>(table, m_Kind, m_Runs);
}

std::unique_ptr<Edit> CloseColumnsEdit::copyFor(AlignmentTable &table) const
{
    return std::make_unique<CloseColumnsEdit>(table, m_Kind, m_Runs, RangeStep{});
}

std::unique_ptr<Edit> RemoveColumnsEdit::copyFor(AlignmentTable &table) const
{
    return std::make_unique<RemoveColumnsEdit>(table, m_Kind, m_Begin, m_Count);
}

std::unique_ptr<Edit> RestoreColumnsEdit::copyFor(AlignmentTable &table) const
{
    return std::make_unique<RestoreColumnsEdit>(table, m_Kind, m_Begin, m_Count,
                                                Cells{m_Cells.bits, m_Cells.residues, {}, {}},
                                                RangeStep{});
}

std::unique_ptr<Edit> RemoveRunsEdit::copyFor(AlignmentTable &table) const
{
    return std::make_unique<RemoveRunsEdit>(table, m_Kind, m_Runs);
}

std::unique_ptr<Edit> RestoreRunsEdit::copyFor(AlignmentTable &table) const
{
    return std::make_unique<RestoreRunsEdit>(
        table, m_Kind, m_Runs, Cells{m_Cells.bits, m_Cells.residues, {}, {}}, RangeStep{});
}

std::unique_ptr<Edit> AnnotationEdit::copyFor(AlignmentTable &) const
{
    return nullptr;
}

std::unique_ptr<Edit> ColumnTextEdit::copyFor(AlignmentTable &) const
{
    return nullptr;
}

std::unique_ptr<Edit> ReplaceColumnsEdit::copyFor(AlignmentTable &table) const
{
    return std::make_unique<ReplaceColumnsEdit>(table, m_Kind, m_Stretch, m_Bits);
}

} // namespace TAMBO
