// SPDX-License-Identifier: GPL-3.0-or-later
// Columns of gaps that open or close, and what is said of columns, as bytes.
#include "AlignmentEditBytes.h"
#include "AlignmentEdits.h"
#include "Bits.h"

#include <algorithm>
#include <cstdint>
#include <utility>
#include <vector>

namespace TAMBO {

using Column = AlignmentTable::Column;
using Range = AlignmentTable::Range;

namespace {

constexpr Column kMost = AlignmentTable::kMostColumns;

// Columns before residues take memory in each row, and those before the end of a line of the
// annotation take more.
bool canOpenAll(const AlignmentTable &table, const std::vector<GapRun> &runs)
{
    constexpr std::uint64_t kColumnsOfByte = 8;
    std::vector<Column> sums(1, 0);
    for (const GapRun &run : runs)
        sums.push_back(sums.back() + run.count);
    std::uint64_t now = 0;
    std::uint64_t then = 0;
    for (std::size_t i = 0; i < table.rowCount(); ++i) {
        const Column end = table.row(i).cells().end();
        const auto behind = std::ranges::lower_bound(runs, end, {}, &GapRun::column);
        now += end / kColumnsOfByte;
        then += (end + sums[std::size_t(behind - runs.begin())]) / kColumnsOfByte;
    }
    return isAffordable(now, then) && canOpen(table.annotation(), runs.front().column, sums.back());
}

bool standsWithin(const Range &range, Column width)
{
    return range.first >= range.second || range.second <= width;
}

// Lines that are shorter grow up to there.
bool canWrite(const AlignmentAnnotation &annotation, std::size_t lines, Column end)
{
    return isAffordable(annotation.characters(), lines * end);
}

} // namespace

bool isAffordable(std::uint64_t now, std::uint64_t then)
{
    constexpr std::uint64_t kAlways = std::uint64_t(1) << 30;
    constexpr std::uint64_t kGrowth = 64;
    return then <= kAlways + kGrowth * now;
}

bool canOpen(const AlignmentAnnotation *annotation, Column column, Column count)
{
    return annotation == nullptr ||
           isAffordable(annotation->characters(), annotation->linesBehind(column) * count);
}

void ColumnEdit::storeRange(EditWriter &out) const
{
    const RangeStep &step = m_RangeStep;
    out.flag(step.isWayBack);
    out.flag(step.isRepeated);
    for (const Column column :
         {step.expected.first, step.expected.second, step.restored.first, step.restored.second})
        out.number(column);
}

void ColumnEdit::storeFormerRange(EditWriter &out) const
{
    out.flag(false);
    out.flag(true);
    for (const Column column : {m_RangeStep.restored.first, m_RangeStep.restored.second,
                                m_RangeStep.expected.first, m_RangeStep.expected.second})
        out.number(column);
}

ColumnEdit::RangeStep ColumnEdit::loadRange(EditReader &in)
{
    RangeStep step;
    step.isWayBack = in.flag();
    step.isRepeated = in.flag();
    for (Column *const column :
         {&step.expected.first, &step.expected.second, &step.restored.first, &step.restored.second})
        *column = in.number();
    return step;
}

bool ColumnEdit::fitsRange(Column widthAfter) const
{
    return (!m_RangeStep.isRepeated || standsWithin(m_RangeStep.expected, m_Table.width())) &&
           ((!m_RangeStep.isRepeated && !m_RangeStep.isWayBack) ||
            standsWithin(m_RangeStep.restored, widthAfter));
}

void OpenColumnsEdit::store(EditWriter &out) const
{
    storeHead(EditTag::OpenColumns, out);
    storeRuns(m_Runs, out);
    storeRange(out);
}

void OpenColumnsEdit::storeInverse(EditWriter &out) const
{
    storeHead(EditTag::CloseColumns, out);
    storeRuns(m_Runs, out);
    storeFormerRange(out);
}

bool OpenColumnsEdit::fits() const
{
    Column width = m_Table.width();
    for (const GapRun &run : m_Runs)
        width += run.count;
    return m_Runs.back().column <= m_Table.width() && width <= kMost && fitsRange(width) &&
           canOpenAll(m_Table, m_Runs);
}

void CloseColumnsEdit::store(EditWriter &out) const
{
    storeHead(EditTag::CloseColumns, out);
    storeRuns(m_Runs, out);
    storeRange(out);
}

void CloseColumnsEdit::storeInverse(EditWriter &out) const
{
    storeHead(EditTag::OpenColumns, out);
    storeRuns(m_Runs, out);
    storeFormerRange(out);
}

// Each row is gone through once, however many runs there are.
bool CloseColumnsEdit::fits() const
{
    Column end = 0;
    for (std::size_t i = 0; i < m_Table.rowCount(); ++i)
        end = std::max(end, m_Table.row(i).cells().end());
    std::vector<OccupancyRow::Word> closing(bits::wordsFor(end), 0);
    Column closed = 0;
    for (const GapRun &run : m_Runs) {
        const Column begin = run.column + closed;
        if (!areWithin(m_Table, begin, run.count))
            return false;
        bits::forEachMask(
            std::min(begin, end), std::min(begin + run.count, end),
            [&](std::size_t word, OccupancyRow::Word mask) { closing[word] |= mask; });
        closed += run.count;
    }
    for (std::size_t i = 0; i < m_Table.rowCount(); ++i) {
        const auto words = m_Table.row(i).cells().allWords();
        for (std::size_t word = 0; word < words.size(); ++word) {
            if ((words[word] & closing[word]) != 0)
                return false;
        }
    }
    return fitsRange(m_Table.width() - closed);
}

void ColumnTextEdit::store(EditWriter &out) const
{
    storeHead(EditTag::ColumnText, out);
    storeTexts(m_Texts, out);
}

void ColumnTextEdit::storeTexts(const std::vector<std::string> &texts, EditWriter &out) const
{
    out.number(m_Begin);
    out.number(m_Count);
    out.number(texts.size());
    for (const std::string &text : texts)
        out.text(text);
}

void ColumnTextEdit::storeInverse(EditWriter &out) const
{
    storeHead(EditTag::ColumnText, out);
    storeTexts(m_Table.annotation()->texts(m_Begin, m_Count), out);
}

bool ColumnTextEdit::fits() const
{
    return areWithin(m_Table, m_Begin, m_Count) && m_Table.annotation() != nullptr &&
           m_Table.annotation()->texts(0, 0).size() == m_Texts.size() &&
           canWrite(*m_Table.annotation(), m_Texts.size(), m_Begin + m_Count);
}

void AnnotationEdit::store(EditWriter &out) const
{
    storeAnnotation(m_Annotation.get(), out);
}

void AnnotationEdit::storeInverse(EditWriter &out) const
{
    storeAnnotation(m_Table.annotation(), out);
}

void AnnotationEdit::storeAnnotation(const AlignmentAnnotation *annotation, EditWriter &out) const
{
    storeHead(EditTag::Annotation, out);
    out.flag(annotation != nullptr);
    if (annotation != nullptr)
        annotation->write(out);
}

bool AnnotationEdit::fits() const
{
    return m_Annotation == nullptr || m_Annotation->linesBehind(m_Table.width()) == 0;
}

std::unique_ptr<Edit> AnnotationEdit::load(AlignmentTable &table, const char *kind, EditReader &in)
{
    return std::make_unique<AnnotationEdit>(table, kind,
                                            in.flag() ? AlignmentAnnotation::read(in) : nullptr);
}

std::unique_ptr<Edit> ColumnEdit::load(EditTag tag, AlignmentTable &table, const char *kind,
                                       EditReader &in)
{
    if (tag == EditTag::RestoreRuns)
        return RestoreRunsEdit::load(table, kind, in);
    if (tag != EditTag::OpenColumns && tag != EditTag::CloseColumns && tag != EditTag::RemoveRuns)
        return loadCells(tag, table, kind, in);
    std::vector<GapRun> runs = loadRuns(in);
    const RangeStep step = loadRange(in);
    if (tag == EditTag::OpenColumns)
        return std::make_unique<OpenColumnsEdit>(table, kind, std::move(runs), step);
    if (tag == EditTag::RemoveRuns)
        return std::make_unique<RemoveRunsEdit>(table, kind, std::move(runs), step);
    return std::make_unique<CloseColumnsEdit>(table, kind, std::move(runs), step);
}

std::unique_ptr<Edit> ColumnTextEdit::load(AlignmentTable &table, const char *kind, EditReader &in)
{
    const Column begin = in.number(kMost);
    const Column count = in.number(kMost);
    std::vector<std::string> texts(in.count());
    for (std::string &text : texts) {
        text = in.text();
        if (text.size() != count)
            in.fail("the texts of columns are too short or too long");
    }
    return std::make_unique<ColumnTextEdit>(table, kind, begin, count, std::move(texts));
}

} // namespace TAMBO
