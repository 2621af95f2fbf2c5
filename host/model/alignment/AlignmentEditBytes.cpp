// SPDX-License-Identifier: GPL-3.0-or-later
// Edits of an alignment made again of their bytes.
#include "AlignmentEditBytes.h"
#include "AlignmentEdits.h"

#include <utility>

namespace TAMBO {

using Column = AlignmentTable::Column;

void storeBreaks(const BreakColumns &columns, EditWriter &out)
{
    out.number(columns.size());
    for (const auto &column : columns)
        out.number(column ? *column + 1 : 0);
}

BreakColumns loadBreaks(EditReader &in)
{
    BreakColumns columns(in.count());
    for (auto &column : columns) {
        const std::uint64_t behind = in.number(AlignmentTable::kMostColumns);
        if (behind > 0)
            column = behind - 1;
    }
    return columns;
}

void storeRuns(const std::vector<GapRun> &runs, EditWriter &out)
{
    out.number(runs.size());
    for (const GapRun &run : runs) {
        out.number(run.column);
        out.number(run.count);
    }
}

std::vector<GapRun> loadRuns(EditReader &in)
{
    std::vector<GapRun> runs(in.count(2));
    Column last = 0;
    Column sum = 0;
    for (GapRun &run : runs) {
        run.column = in.number(AlignmentTable::kMostColumns);
        run.count = in.number(AlignmentTable::kMostColumns);
        sum += run.count;
        if ((&run != runs.data() && run.column <= last) || run.count == 0 ||
            sum > AlignmentTable::kMostColumns)
            in.fail("columns are out of order");
        last = run.column;
    }
    if (runs.empty())
        in.fail("there are no columns");
    return runs;
}

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

std::uint64_t bitsIn(const std::vector<BitBuffer::Word> &words)
{
    std::uint64_t sum = 0;
    for (const BitBuffer::Word word : words)
        sum += bits::count(word);
    return sum;
}

bool isOfItsSequence(const AlignmentRow &row)
{
    std::uint64_t behind = 0;
    for (const ResidueRun &run : row.residueRuns(0, row.cells().residues())) {
        if (run.index < behind)
            return false;
        behind = std::uint64_t(run.index) + run.count;
    }
    return behind <= row.sequence().residueCount();
}

bool areWithin(const AlignmentTable &table, Column begin, Column count)
{
    return begin <= table.width() && count <= table.width() - begin;
}

std::uint32_t residuesIn(const OccupancyRow &cells, Column begin, Column count)
{
    return cells.rank(begin + count) - cells.rank(begin);
}

void AlignmentEdit::storeHead(EditTag tag, EditWriter &out) const
{
    out.tag(tag);
    out.reference(m_Table.alignment());
    out.text(m_Kind);
}

LoadedEdit AlignmentEdit::load(EditTag tag, EditReader &in)
{
    auto *const alignment = in.reference<Alignment>();
    if (in.failed())
        return in.failure();
    AlignmentTable &table = alignment->table();
    const char *const kind = in.kind();
    std::unique_ptr<Edit> edit;
    if (tag == EditTag::Gap) {
        edit = GapEdit::load(table, kind, in);
    } else if (tag == EditTag::RowMove) {
        const std::size_t from = in.number();
        edit = std::make_unique<RowMoveEdit>(table, from, in.number());
    } else if (tag == EditTag::RowOrder) {
        edit = RowOrderEdit::load(table, in);
    } else if (tag == EditTag::InsertRows || tag == EditTag::RemoveRows) {
        edit = tag == EditTag::InsertRows ? InsertRowsEdit::load(table, kind, in)
                                          : RemoveRowsEdit::load(table, kind, in);
    } else if (tag == EditTag::ColumnText) {
        edit = ColumnTextEdit::load(table, kind, in);
    } else if (tag == EditTag::Annotation) {
        edit = AnnotationEdit::load(table, kind, in);
    } else {
        edit = ColumnEdit::load(tag, table, kind, in);
    }
    if (in.failed())
        return in.failure();
    return edit;
}

} // namespace TAMBO
