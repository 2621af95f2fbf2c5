// SPDX-License-Identifier: GPL-3.0-or-later
#include "TableChanges.h"

#include "AlignmentEdits.h"
#include "CarriedColumns.h"
#include "ChangeScope.h"

#include <algorithm>
#include <memory>
#include <numeric>
#include <string>
#include <utility>

namespace TAMBO {

namespace {

using Column = AlignmentTable::Column;
using Range = AlignmentTable::Range;

void recordTexts(AlignmentTable &table, const char *kind, Column begin,
                 std::vector<std::string> texts)
{
    if (texts.empty() || texts == table.annotation()->texts(begin, texts.front().size()))
        return;
    const Column count = texts.front().size();
    ColumnTextEdit edit(table, kind, begin, count, std::move(texts));
    recordInverse(edit.apply());
}

// What the annotation says of columns that replace the range.
std::vector<std::string> carriedTexts(const AlignmentTable &table, const Range &range,
                                      const std::vector<OccupancyRow> &rows, Column count)
{
    const auto carried = carriedColumns(table, range, rows, count);
    const auto former = table.annotation()->texts(range.first, range.second - range.first);
    std::vector<std::string> texts(former.size(),
                                   std::string(count, AlignmentAnnotation::kNothing));
    for (Column column = 0; column < count; ++column) {
        for (std::size_t line = 0; carried[column] && line < texts.size(); ++line)
            texts[line][column] = former[line][*carried[column]];
    }
    return texts;
}

bool fit(const AlignmentTable &table, const Range &range, const std::vector<OccupancyRow> &rows,
         Column count)
{
    bool fits = range.first < range.second && range.second <= table.width() &&
                rows.size() == table.rowCount() &&
                count <= AlignmentTable::kMostColumns - table.width();
    for (std::size_t i = 0; fits && i < rows.size(); ++i) {
        const OccupancyRow &cells = table.row(i).cells();
        fits = rows[i].end() <= count &&
               rows[i].residues() == cells.rank(range.second) - cells.rank(range.first);
    }
    return fits;
}

} // namespace

void removeRowsOf(AlignmentTable &table, const Peptide &sequence)
{
    PointerSet<Peptide> only;
    only.insert(&sequence);
    removeRowsOf(table, only);
}

bool removeRowsOf(AlignmentTable &table, const PointerSet<Peptide> &sequences)
{
    std::vector<std::size_t> indices;
    for (std::size_t i = 0; i < table.rowCount(); ++i) {
        if (sequences.contains(&table.row(i).sequence()))
            indices.push_back(i);
    }
    if (indices.empty())
        return false;
    const ChangeScope scope;
    RemoveRowsEdit edit(table, "remove row", std::move(indices), table.width());
    recordInverse(edit.apply());
    return true;
}

void addRowsTo(AlignmentTable &table, AlignmentTable::Rows rows)
{
    if (!mayChange(table.alignment()) || rows.empty())
        return;
    std::vector<std::size_t> indices(rows.size());
    std::iota(indices.begin(), indices.end(), table.rowCount());
    Column width = table.width();
    for (const auto &row : rows)
        width = std::max<Column>(width, row->cells().end());
    const ChangeScope scope;
    InsertRowsEdit edit(table, "add sequences", std::move(indices), std::move(rows), width);
    recordInverse(edit.apply());
}

RowLabel labelOf(const AlignmentRow &row)
{
    if (const RowLabel *const label = row.label())
        return *label;
    RowLabel label;
    label.firstResidue = row.cells().residues() == 0 ? 0 : row.residueIndex(0);
    return label;
}

// The row comes back as another one, so that the edits are those that sessions know.
void relabelRow(AlignmentTable &table, std::size_t row, RowLabel label, const char *kind)
{
    if (!mayChange(table.alignment()))
        return;
    AlignmentTable::Rows rows;
    rows.push_back(std::make_unique<AlignmentRow>(table.row(row)));
    rows.back()->presetLabel(std::move(label));
    const Column width = table.width();
    const ChangeScope scope;
    RemoveRowsEdit removal(table, kind, {row}, width);
    recordInverse(removal.apply());
    InsertRowsEdit insertion(table, kind, {row}, std::move(rows), width);
    recordInverse(insertion.apply());
}

void rewriteColumns(AlignmentTable &table, Column begin, std::vector<std::string> texts)
{
    if (table.annotation() == nullptr || !mayChange(table.alignment()))
        return;
    const ChangeScope scope;
    recordTexts(table, "annotate columns", begin, std::move(texts));
}

void annotate(AlignmentTable &table, std::vector<Annotation> remarks, std::vector<Annotation> lines,
              const char *kind)
{
    const AlignmentAnnotation *const present = table.annotation();
    const bool isSame = present == nullptr ? remarks.empty() && lines.empty()
                                           : remarks == present->remarks() &&
                                                 lines == present->lines(table.width());
    if (isSame || !mayChange(table.alignment()))
        return;
    const ChangeScope scope;
    std::unique_ptr<AlignmentAnnotation> annotation;
    if (!remarks.empty() || !lines.empty())
        annotation = std::make_unique<AlignmentAnnotation>(std::move(remarks), std::move(lines));
    AnnotationEdit edit(table, kind, std::move(annotation));
    recordInverse(edit.apply());
}

bool replaceColumns(AlignmentTable &table, const Range &range,
                    const std::vector<OccupancyRow> &rows, Column count, const char *kind)
{
    if (!mayChange(table.alignment()))
        return false;
    if (!fit(table, range, rows, count)) {
        writeLog("The columns to be put into " + table.name() + " do not fit its sequences.",
                 LogSeverity::Error);
        return false;
    }
    const Column oldCount = range.second - range.first;
    BitBuffer bits;
    bits.reserve(rows.size() * count);
    bool isSame = count == oldCount;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const auto words = rows[i].columns(0, count);
        isSame = isSame && words == table.row(i).cells().columns(range.first, oldCount);
        bits.append(words, count);
    }
    if (isSame)
        return true;
    const ChangeScope scope;
    std::vector<std::string> texts;
    if (table.annotation() != nullptr) {
        texts = carriedTexts(table, range, rows, count);
        clearColumnTexts(table, kind, range.first, oldCount);
    }
    ReplaceColumnsEdit edit(table, kind, {range.first, oldCount, count}, std::move(bits));
    recordInverse(edit.apply());
    if (table.annotation() != nullptr)
        recordTexts(table, kind, range.first, std::move(texts));
    return true;
}

void replaceCells(AlignmentTable &table, const char *kind, const Range &range, BitBuffer cells)
{
    const Column count = range.second - range.first;
    std::vector<std::string> texts;
    if (table.annotation() != nullptr) {
        texts = table.annotation()->texts(range.first, count);
        clearColumnTexts(table, kind, range.first, count);
    }
    ReplaceColumnsEdit edit(table, kind, {range.first, count, count}, std::move(cells));
    recordInverse(edit.apply());
    if (table.annotation() != nullptr)
        recordTexts(table, kind, range.first, std::move(texts));
}

void clearColumnTexts(AlignmentTable &table, const char *kind, Column begin, Column count)
{
    if (table.annotation() != nullptr)
        recordTexts(table, kind, begin,
                    std::vector<std::string>(table.annotation()->texts(begin, 0).size(),
                                             std::string(count, AlignmentAnnotation::kNothing)));
}

void clearColumnTexts(AlignmentTable &table, const char *kind, const std::vector<GapRun> &runs)
{
    if (table.annotation() == nullptr || runs.empty())
        return;
    const Column begin = runs.front().column;
    const Column end = runs.back().column + columnsIn(runs);
    std::vector<std::string> texts = table.annotation()->texts(begin, end - begin);
    Column before = 0;
    for (const GapRun &run : runs) {
        for (std::string &text : texts)
            text.replace(run.column + before - begin, run.count, run.count,
                         AlignmentAnnotation::kNothing);
        before += run.count;
    }
    recordTexts(table, kind, begin, std::move(texts));
}

} // namespace TAMBO
