// SPDX-License-Identifier: GPL-3.0-or-later
#include "AlignmentTable.h"

#include "ChangeScope.h"
#include "FileName.h"
#include "MarkFollower.h"
#include "ObjectMarks.h"
#include "Revisions.h"
#include "StoredObject.h"
#include "TextBytes.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace TAMBO {

namespace {

using Column = AlignmentTable::Column;
using Range = AlignmentTable::Range;

constexpr Column kBehindAll = std::numeric_limits<Column>::max();
// Counting anew is cheaper than following this many whole rows.
constexpr std::size_t kManyRows = 16;
// From here on a column's letters take less memory, counted, than its cells as bits.
constexpr std::size_t kRowsWorthCounts = 1000;
// A gigabyte of cells.
constexpr std::uint64_t kMostTaken = std::uint64_t(8) << 30;

// The only kind of alignment there is; the interface leaves making one to the workbench.
class StoredAlignment final : public Alignment, public StoredObject
{
public:
    explicit StoredAlignment(std::unique_ptr<AlignmentTable> table)
        : Alignment(std::move(table)) { }

    [[nodiscard]] Compound &asCompound() noexcept override { return *this; }
    [[nodiscard]] CompoundState *ownState() noexcept override { return &table().state(); }
    [[nodiscard]] const CompoundState *ownState() const noexcept override
    {
        return &table().state();
    }
    void storeName(const std::string &name) override { table().setName(name); }
    [[nodiscard]] std::size_t bytes() const noexcept override { return table().bytes(); }
    [[nodiscard]] std::size_t partCount() const noexcept override { return table().partCount(); }
    void writePart(std::size_t part, ObjectWriter &out) const override
    {
        table().writePart(part, *this, out);
    }
    // The editor offers an alignment's name for its files, as it is.
    [[nodiscard]] std::string allowedName(const std::string &wanted) const override
    {
        return fileNameOf(wanted);
    }
    void collectMarks(ObjectMarks &out) const override
    {
        StoredObject::collectMarks(out);
        out.range = range();
    }
    void restoreMarks(const ObjectMarks &marks) override
    {
        StoredObject::restoreMarks(marks);
        if (marks.range)
            table().restoreRange(*marks.range);
    }
    [[nodiscard]] bool marksFollowSteps() const noexcept override { return true; }
    [[nodiscard]] bool showsAdded() const noexcept override { return true; }
    [[nodiscard]] bool refersToOthers() const noexcept override { return true; }
    void forEachOther(const OtherVisitor &visit) const override
    {
        for (std::size_t i = 0; i < table().rowCount(); ++i)
            visit(table().row(i).sequence());
    }
};

// Where the bounds of the current range go when columns give way to others.
Range mapped(const Range &range, Column begin, Column oldCount, Column newCount)
{
    const auto shifted = [&](Column bound) {
        return bound >= begin + oldCount ? bound - oldCount + newCount
                                         : std::min(bound, begin + newCount);
    };
    const bool isEmpty = range.first >= range.second;
    // Columns that come directly before the range are not part of it, nor are those directly
    // behind.
    const bool staysBefore = oldCount > 0;
    const auto first = range.first < begin || (staysBefore && range.first == begin)
                           ? range.first
                           : shifted(range.first);
    if (isEmpty && range.first == range.second)
        return {first, first};
    const auto second = range.second <= begin ? range.second : shifted(range.second);
    return {first, second};
}

} // namespace

std::unique_ptr<Alignment> AlignmentTable::make(const std::string &name, Rows rows, Column width)
{
    std::erase_if(rows, [](const auto &row) {
        const bool isBad = !row->isWithinSequence();
        if (isBad)
            writeLog(std::string("A row of ") + row->sequence().Name() +
                         " has more residues than it.",
                     LogSeverity::Error);
        return isBad;
    });
    for (const auto &row : rows)
        width = std::max<Column>(width, row->cells().end());
    std::unique_ptr<AlignmentTable> table(new AlignmentTable(name, std::move(rows)));
    AlignmentTable &made = *table;
    auto alignment = std::make_unique<StoredAlignment>(std::move(table));
    made.setWidth(width);
    return alignment;
}

AlignmentTable::Rows AlignmentTable::rowsOf(const std::vector<Compound *> &sequences)
{
    Rows rows;
    rows.reserve(sequences.size());
    for (Compound *const sequence : sequences) {
        Peptide *const peptide = Peptide::from(sequence);
        if (peptide != nullptr)
            rows.push_back(std::make_unique<AlignmentRow>(
                *peptide, OccupancyRow::filled(peptide->residueCount())));
        else if (sequence == nullptr)
            refuse("A missing sequence was not added to the alignment.");
        else
            refuse(sequence->GetFQName() + " is no sequence and was not added to the alignment.");
    }
    return rows;
}

AlignmentTable::AlignmentTable(const std::string &name, Rows rows) : m_Rows(std::move(rows))
{
    // The editor offers the name for the alignment's files, as it is.
    m_Name = fileNameOf(name);
}

void AlignmentTable::setWidth(Column width) noexcept
{
    const Column before = m_Alignment->m_Width;
    if (width < before) {
        m_Profiles.removeColumns(width, before - width);
        m_SelectedColumns.removeColumns(width, before - width);
        if (m_Annotation != nullptr)
            m_Annotation->removeColumns(width, before - width);
        Range &range = m_Alignment->m_Range;
        if (range.first < range.second)
            range = {std::min(range.first, width), std::min(range.second, width)};
    }
    m_Alignment->m_Width = width;
    m_Alignment->m_RowCount = m_Rows.size();
    noteLayout();
    noteRange();
}

void AlignmentTable::setRange(const Range &range)
{
    m_Alignment->m_Range = range;
    noteRange();
}

void AlignmentTable::restoreRange(const Range &range) noexcept
{
    const bool isEmpty = range.first >= range.second;
    if (isEmpty || range.first < width())
        m_Alignment->m_Range =
            isEmpty ? range : Range(range.first, std::min(range.second, width()));
}

void AlignmentTable::noteRange()
{
    if (m_State.parent != nullptr)
        noteMarks(*m_Alignment);
}

void AlignmentTable::noteLayout() noexcept
{
    ++m_LayoutRevision;
    m_Letters.clear();
}

void AlignmentTable::logColumns(Column begin, Column oldCount, Column newCount)
{
    m_LayoutLog.add({.kind = LayoutChange::Kind::ColumnsReplaced,
                     .from = begin,
                     .oldCount = oldCount,
                     .newCount = newCount});
}

void AlignmentTable::logWidth(Column width)
{
    const Column before = m_Alignment->m_Width;
    if (width == before)
        return;
    m_LayoutLog.add({.kind = LayoutChange::Kind::EndMoved,
                     .from = std::min(width, before),
                     .oldCount = before - std::min(width, before),
                     .newCount = width - std::min(width, before)});
}

// ---- Reading

bool AlignmentTable::holds(const Peptide &sequence) const noexcept
{
    return std::ranges::any_of(m_Rows,
                               [&](const auto &row) { return &row->sequence() == &sequence; });
}

// Both counters only grow, so their sum never comes back to a former value.
unsigned long AlignmentTable::layoutRevision() const noexcept
{
    return m_LayoutRevision + numberingRevision();
}

void AlignmentTable::readColumn(Column column, std::vector<char> &out) const
{
    m_Letters.append(m_Rows, width(), column, out);
}

AlignmentMajority AlignmentTable::majority(Column column) const
{
    return m_Profiles.majority(m_Rows, width(), column);
}

std::vector<AlignmentMajority> AlignmentTable::majorities() const
{
    return m_Profiles.majorities(m_Rows, width());
}

bool AlignmentTable::isColumnSelected(Column column) const
{
    return m_SelectedColumns.isSelected(m_Rows, width(), column);
}

bool AlignmentTable::hasRoomFor(Column columns) const
{
    const bool hasRoom = columns <= kMostColumns - width();
    if (!hasRoom)
        refuse("The alignment " + m_Name + " would become too wide.");
    return hasRoom;
}

bool AlignmentTable::takesColumns(long more) const
{
    const std::uint64_t former = m_TakenColumns;
    const auto less = std::uint64_t(more < 0 ? -more : 0);
    m_TakenColumns = more < 0 ? former - std::min(former, less) : former + std::uint64_t(more);
    const bool takes = m_TakenColumns <= kMostTaken;
    if (!takes)
        m_TakenColumns = former;
    return takes;
}

std::size_t AlignmentTable::bytes() const noexcept
{
    std::size_t sum = sizeof(*this) + sizeof(StoredAlignment) + textBytes(m_Name) +
                      m_Rows.capacity() * sizeof(m_Rows[0]) + m_Letters.bytes() +
                      m_Profiles.bytes() + m_SelectedColumns.bytes() + m_LayoutLog.bytes();
    if (m_Annotation != nullptr)
        sum += m_Annotation->bytes();
    for (const auto &row : m_Rows)
        sum += row->bytes();
    return sum;
}

// ---- Plain changes

void AlignmentTable::moveGaps(std::size_t row, Column from, Column count, Column to, long growth)
{
    if (growth > 0) {
        logWidth(width() + Column(growth));
        setWidth(width() + Column(growth));
    }
    m_LayoutLog.add({.kind = LayoutChange::Kind::GapsMoved,
                     .row = row,
                     .from = from,
                     .count = count,
                     .to = to});
    AlignmentRow &changed = *m_Rows[row];
    const Column begin = std::min(from, to);
    const Column end = std::max(from, to) + count;
    m_Profiles.subtract(changed, begin, end);
    m_SelectedColumns.subtract(changed, begin, end);
    const Column endBefore = changed.cells().end();
    changed.moveGaps(from, count, to, growth < 0 ? width() - Column(-growth) : width());
    m_RowEnds.change(endBefore, changed.cells().end());
    m_Profiles.add(changed, begin, end);
    m_SelectedColumns.add(changed, begin, end);
    const Column widthAfter = growth < 0 ? width() - Column(-growth) : width();
    logWidth(widthAfter);
    setWidth(widthAfter);
}

void AlignmentTable::openColumns(const std::vector<GapRun> &runs)
{
    if (runs.empty())
        return;
    Column added = 0;
    for (const GapRun &run : runs)
        added += run.count;
    changeRows(SplitLoop(m_Rows.size()), [&](std::size_t, std::size_t, SomeRows rows) {
        for (const auto &row : rows)
            row->openGaps(runs, width() + added);
    });
    followOpened(runs, added);
}

void AlignmentTable::followOpened(const std::vector<GapRun> &runs, Column added)
{
    m_Profiles.openColumns(runs);
    m_SelectedColumns.openColumns(runs);
    if (m_Annotation != nullptr)
        m_Annotation->openColumns(runs);
    for (auto run = runs.rbegin(); run != runs.rend(); ++run) {
        m_Alignment->m_Range = mapped(m_Alignment->m_Range, run->column, 0, run->count);
        logColumns(run->column, 0, run->count);
    }
    setWidth(width() + added);
}

void AlignmentTable::closeColumns(const std::vector<GapRun> &runs)
{
    if (runs.empty())
        return;
    Column removed = 0;
    for (const GapRun &run : runs)
        removed += run.count;
    changeRows(SplitLoop(m_Rows.size()), [&](std::size_t, std::size_t, SomeRows rows) {
        for (const auto &row : rows)
            row->closeGaps(runs, width() - removed);
    });
    followClosed(runs, removed);
}

void AlignmentTable::removeRuns(const std::vector<GapRun> &runs, Rows rows)
{
    Column removed = 0;
    for (const GapRun &run : runs)
        removed += run.count;
    m_RowEnds.clear();
    m_Rows = std::move(rows);
    followClosed(runs, removed);
}

void AlignmentTable::restoreRuns(const std::vector<GapRun> &runs, Rows rows)
{
    m_RowEnds.clear();
    m_Rows = std::move(rows);
    Column added = 0;
    for (const GapRun &run : runs)
        added += run.count;
    followOpened(runs, added);
    // They are no columns of gaps.
    Column before = 0;
    for (const GapRun &run : runs) {
        const Column begin = run.column + before;
        before += run.count;
        m_Profiles.forget(begin, begin + run.count);
        m_SelectedColumns.forget(begin, begin + run.count);
    }
}

void AlignmentTable::followClosed(const std::vector<GapRun> &runs, Column removed)
{
    m_Profiles.closeColumns(runs);
    m_SelectedColumns.closeColumns(runs);
    if (m_Annotation != nullptr)
        m_Annotation->closeColumns(runs);
    // Each run stands where it counts once those before it are gone.
    for (const GapRun &run : runs) {
        m_Alignment->m_Range = mapped(m_Alignment->m_Range, run.column, run.count, 0);
        logColumns(run.column, run.count, 0);
    }
    setWidth(width() - removed);
}

void AlignmentTable::moveRow(std::size_t from, std::size_t to)
{
    const auto begin = m_Rows.begin();
    if (from < to)
        std::rotate(begin + std::ptrdiff_t(from), begin + std::ptrdiff_t(from) + 1,
                    begin + std::ptrdiff_t(to) + 1);
    else
        std::rotate(begin + std::ptrdiff_t(to), begin + std::ptrdiff_t(from),
                    begin + std::ptrdiff_t(from) + 1);
    m_LayoutLog.add({.kind = LayoutChange::Kind::RowMoved, .row = from, .to = to});
    noteLayout();
}

void AlignmentTable::reorderRows(std::span<const std::uint32_t> order)
{
    Rows ordered;
    ordered.reserve(m_Rows.size());
    for (const std::uint32_t place : order)
        ordered.push_back(std::move(m_Rows[place]));
    m_Rows = std::move(ordered);
    m_LayoutLog.add({.kind = LayoutChange::Kind::RowsSorted});
    noteLayout();
}

void AlignmentTable::insertRows(const std::vector<std::size_t> &indices, Rows rows, Column width)
{
    if (rows.size() < kManyRows) {
        for (const auto &row : rows)
            m_Profiles.add(*row, 0, kBehindAll);
    } else {
        m_Profiles.clear();
    }
    logWidth(width);
    if (rows.size() < kManyRows) {
        for (const std::size_t index : indices)
            m_LayoutLog.add({.kind = LayoutChange::Kind::RowAdded, .row = index});
    } else {
        m_LayoutLog.forget();
    }
    m_SelectedColumns.addRows(rows);
    m_RowEnds.clear();
    Rows merged;
    merged.reserve(m_Rows.size() + rows.size());
    auto old = m_Rows.begin();
    for (std::size_t i = 0; i < rows.size(); ++i) {
        while (merged.size() < indices[i])
            merged.push_back(std::move(*old++));
        merged.push_back(std::move(rows[i]));
    }
    std::move(old, m_Rows.end(), std::back_inserter(merged));
    m_Rows = std::move(merged);
    setWidth(width);
}

AlignmentTable::Rows AlignmentTable::takeRows(const std::vector<std::size_t> &indices, Column width)
{
    Rows taken;
    taken.reserve(indices.size());
    for (const std::size_t index : indices)
        taken.push_back(std::move(m_Rows[index]));
    std::erase(m_Rows, nullptr);
    if (taken.size() < kManyRows) {
        for (const auto &row : taken)
            m_Profiles.subtract(*row, 0, kBehindAll);
    } else {
        m_Profiles.clear();
    }
    // From the last one on each still stands where it stood.
    if (taken.size() < kManyRows) {
        for (auto index = indices.rbegin(); index != indices.rend(); ++index)
            m_LayoutLog.add({.kind = LayoutChange::Kind::RowRemoved, .row = *index});
    } else {
        m_LayoutLog.forget();
    }
    m_SelectedColumns.takeRows();
    m_RowEnds.clear();
    logWidth(width);
    setWidth(width);
    return taken;
}

ColumnProfiles::Counts AlignmentTable::keptCounts(Column begin, Column count) const
{
    return m_Rows.size() < kRowsWorthCounts ? ColumnProfiles::Counts()
                                            : m_Profiles.counts(begin, count);
}

// A million rows are more than one processor changes before the next picture is due. No row knows
// of another, and nobody else looks at any meanwhile.
void AlignmentTable::changeRows(const SplitLoop &loop, const ChangeRows &change)
{
    m_RowEnds.clear();
    loop.run([&](std::size_t part) {
        const std::size_t first = loop.begin(part);
        change(part, first, SomeRows(m_Rows).subspan(first, loop.end(part) - first));
    });
}

void AlignmentTable::changeColumns(Column begin, Column oldCount, Column newCount,
                                   const SplitLoop &loop, const ChangeRows &change)
{
    changeRows(loop, change);
    m_Profiles.removeColumns(begin, oldCount);
    m_Profiles.insertColumns(begin, newCount);
    m_Profiles.forget(begin, begin + newCount);
    m_SelectedColumns.removeColumns(begin, oldCount);
    m_SelectedColumns.insertColumns(begin, newCount);
    m_SelectedColumns.forget(begin, begin + newCount);
    if (m_Annotation != nullptr) {
        m_Annotation->removeColumns(begin, oldCount);
        m_Annotation->insertColumns(begin, newCount);
    }
    m_Alignment->m_Range = mapped(m_Alignment->m_Range, begin, oldCount, newCount);
    logColumns(begin, oldCount, newCount);
    setWidth(width() - oldCount + newCount);
}

} // namespace TAMBO
