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
    } else {
        edit = ColumnEdit::load(tag, table, kind, in);
    }
    if (in.failed())
        return in.failure();
    return edit;
}

} // namespace TAMBO
