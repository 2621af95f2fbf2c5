// SPDX-License-Identifier: GPL-3.0-or-later
// The plug-ins' door to an alignment: checks what it is given, then leaves reading to the rows and
// changing to the edits.
#include "Alignment.h"

#include "AlignmentEdits.h"
#include "AlignmentTable.h"
#include "ChangeScope.h"
#include "ObjectOperations.h"
#include "ObjectSpace.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace TAMBO {

namespace {

constexpr Color kPlain(0xc8c8c8);

// One change, as a step of its own unless a guard or another operation is around it.
void perform(AlignmentEdit &&edit)
{
    const ChangeScope scope;
    recordInverse(edit.apply());
}

// The gaps [from, from + count) of a row are put in at to.
void moveGaps(AlignmentTable &table, unsigned long row, unsigned long from, unsigned long count,
              unsigned long to)
{
    const OccupancyRow &cells = table.row(row).cells();
    // Gaps among gaps: no cell would change, so there is nothing to undo either.
    if (cells.rank(std::min(from, to)) == cells.rank(std::max(from, to) + count))
        return;
    perform(GapEdit(table, "move gap", {row, from, count, to, 0}));
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

Alignment::Alignment(std::unique_ptr<AlignmentTable> table) : m_Table(std::move(table))
{
    m_Table->m_Alignment = this;
}

Alignment::~Alignment() = default;

// ---- Reading

Compound *Alignment::getItem(unsigned long row, unsigned long col) const
{
    if (row >= height() || col >= m_Width)
        return nullptr;
    const AlignmentRow &line = m_Table->row(row);
    if (!line.cells().isResidue(col))
        return nullptr;
    return line.sequence().residue(line.residueIndex(line.cells().rank(col)));
}

std::vector<Compound *> Alignment::getCol(unsigned long col) const
{
    std::vector<Compound *> result;
    if (col >= m_Width)
        return result;
    result.reserve(height());
    for (unsigned long row = 0; row < height(); ++row)
        result.push_back(getItem(row, col));
    return result;
}

std::vector<std::vector<Compound *>> Alignment::columns() const
{
    std::vector<std::vector<Compound *>> result(m_Width, std::vector<Compound *>(height()));
    for (unsigned long row = 0; row < height(); ++row) {
        const AlignmentRow &line = m_Table->row(row);
        line.forEachResidue(0, m_Width, [&](unsigned long col, std::uint32_t index) {
            result[col][row] = line.sequence().residue(index);
        });
    }
    return result;
}

Compound *Alignment::GetSeq(unsigned long row) const
{
    return row < height() ? &m_Table->row(row).sequence() : nullptr;
}

std::string Alignment::GetSeqName(unsigned long row) const
{
    return row < height() ? m_Table->row(row).name() : std::string();
}

std::string Alignment::GetSequence(unsigned long row, bool withoutGaps) const
{
    std::string result;
    if (row >= height())
        return result;
    const AlignmentRow &line = m_Table->row(row);
    if (withoutGaps)
        result.reserve(line.cells().residues());
    else
        result.assign(m_Width, '-');
    line.forEachResidue(0, m_Width, [&](unsigned long col, std::uint32_t index) {
        if (withoutGaps)
            result.push_back(line.sequence().letter(index));
        else
            result[col] = line.sequence().letter(index);
    });
    return result;
}

char Alignment::letterAt(unsigned long row, unsigned long col) const
{
    if (row >= height() || col >= m_Width)
        return '\0';
    const AlignmentRow &line = m_Table->row(row);
    if (!line.cells().isResidue(col))
        return '\0';
    return line.sequence().letter(line.residueIndex(line.cells().rank(col)));
}

void Alignment::readRow(unsigned long row, unsigned long begin, unsigned long end,
                        std::vector<AlignmentCell> &out) const
{
    end = std::min(end, m_Width);
    if (row >= height() || begin >= end)
        return;
    const AlignmentRow &line = m_Table->row(row);
    const std::size_t first = out.size();
    out.resize(first + (end - begin));
    line.forEachResidue(begin, end, [&](unsigned long col, std::uint32_t index) {
        out[first + (col - begin)] = {line.sequence().letter(index),
                                      line.sequence().displayColor(index)};
    });
}

void Alignment::readColumn(unsigned long col, std::vector<char> &out) const
{
    if (col < m_Width)
        m_Table->readColumn(col, out);
}

AlignmentMajority Alignment::majority(unsigned long col) const
{
    return col < m_Width ? m_Table->majority(col) : AlignmentMajority();
}

bool Alignment::isRowSelected(unsigned long row) const
{
    if (row >= height())
        return false;
    const AlignmentRow &line = m_Table->row(row);
    const std::size_t selected = line.sequence().selectedCount();
    if (selected == line.sequence().residueCount() || line.cells().residues() == 0)
        return true;
    if (selected == 0 || line.isComplete())
        return false;
    for (const ResidueRun &run : line.residueRuns(0, line.cells().residues())) {
        for (std::uint32_t index = run.index; index < run.index + run.count; ++index) {
            if (!line.sequence().isSelected(index))
                return false;
        }
    }
    return true;
}

bool Alignment::isColumnSelected(unsigned long col) const
{
    return col < m_Width && m_Table->isColumnSelected(col);
}

unsigned long Alignment::layoutRevision() const noexcept
{
    return m_Table->layoutRevision();
}

// ---- Editing

Alignment *Alignment::duplicate(unsigned long n) const
{
    AlignmentTable::Rows rows;
    const std::size_t count = std::min<std::size_t>(n, m_Table->rowCount());
    rows.reserve(count);
    for (std::size_t i = 0; i < count; ++i)
        rows.push_back(std::make_unique<AlignmentRow>(m_Table->row(i)));
    auto copy = AlignmentTable::make(Name(), std::move(rows), m_Width);
    Alignment *const result = copy.get();
    result->m_Range = m_Range;
    const ChangeScope scope;
    ObjectSpace::get().add(std::move(copy));
    return result;
}

void Alignment::range(const Range &range)
{
    const bool isEmpty = range.first >= range.second;
    if ((!isEmpty && range.second > m_Width) || range == m_Range || !mayChange(*this))
        return;
    const ChangeScope scope;
    m_Range = range;
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
    if (isRange(range, m_Width) && mayChange(*this))
        perform(
            RemoveColumnsEdit(*m_Table, "remove columns", range.first, range.second - range.first));
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
        insertGaps(*m_Table, "insert gap", row, col, 1);
}

void Alignment::moveGap(unsigned long row, unsigned long from, unsigned long to, bool point)
{
    if (row >= height() || from >= m_Width || to >= m_Width || from == to || !mayChange(*this))
        return;
    const OccupancyRow &cells = m_Table->row(row).cells();
    if (cells.isResidue(from)) {
        slideResidue(*m_Table, row, from, to);
    } else if (point) {
        moveGaps(*m_Table, row, from, 1, to);
    } else {
        const unsigned long begin = cells.gapRunBegin(from);
        const unsigned long end = cells.gapRunEnd(from, m_Width);
        const unsigned long target = to < from ? begin - std::min(begin, from - to)
                                               : begin + std::min(m_Width - end, to - from);
        moveGaps(*m_Table, row, begin, end - begin, target);
    }
}

void Alignment::bubbleRow(unsigned long from, unsigned long to)
{
    if (from < height() && to < height() && from != to && mayChange(*this))
        perform(RowMoveEdit(*m_Table, from, to));
}

void Alignment::addRows(const std::vector<Compound *> &sequences)
{
    if (!mayChange(*this))
        return;
    AlignmentTable::Rows rows = AlignmentTable::rowsOf(sequences);
    if (rows.empty())
        return;
    std::vector<std::size_t> indices(rows.size());
    std::iota(indices.begin(), indices.end(), m_Table->rowCount());
    unsigned long width = m_Width;
    for (const auto &row : rows)
        width = std::max<unsigned long>(width, row->cells().end());
    perform(InsertRowsEdit(*m_Table, "add sequences", std::move(indices), std::move(rows), width));
}

// ---- Compound

std::string Alignment::Name() const
{
    return m_Table->state().name;
}

char Alignment::TypeCode() const
{
    return '\0';
}

std::string Alignment::TypeName() const
{
    return "alignment";
}

Compound *Alignment::Parent() const
{
    return m_Table->state().parent;
}

// The sequences are not below the alignment: they live on when it is deleted.
std::size_t Alignment::ChildCount() const
{
    return 0;
}

Compound *Alignment::Child(std::size_t) const
{
    return nullptr;
}

bool Alignment::IsLocked() const
{
    return m_Table->state().isLocked;
}

Vertex Alignment::Position() const
{
    return {};
}

Color Alignment::OwnColor() const
{
    return m_Table->state().color.value_or(kPlain);
}

void Alignment::AssignColor(const Color &color)
{
    assignColor(*this, m_Table->state().color, color);
}

void Alignment::SetSelected(bool selected)
{
    assignSelected(m_Table->state().isSelected, selected);
}

bool Alignment::IsSelected() const
{
    return m_Table->state().isSelected;
}

} // namespace TAMBO
