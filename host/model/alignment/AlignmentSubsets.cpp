// SPDX-License-Identifier: GPL-3.0-or-later
// The plug-ins' door to copies of an alignment and of parts of it, and to taking many rows or
// columns out at once.
#include "Alignment.h"

#include "AlignmentEdits.h"
#include "AlignmentTable.h"
#include "ChangeScope.h"
#include "LongWork.h"
#include "ObjectSpace.h"
#include "TableChanges.h"
#include "ValueStore.h"

#include <algorithm>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace TAMBO {

namespace {

constexpr std::size_t kRowsOfALook = 64;

bool isTaken(const std::string &name)
{
    return std::any_of(Space::instance()->begin(), Space::instance()->end(),
                       [&name](const Compound *object) { return object->Name() == name; });
}

std::string freeName(const std::string &wanted)
{
    std::string name = wanted;
    for (int number = 2; isTaken(name); ++number)
        name = wanted + ' ' + std::to_string(number);
    return name;
}

// A copy of some rows is another alignment than the whole one, and two of them can be told apart.
std::string nameOfPart(const std::string &whole, std::size_t rows)
{
    const std::string count = rows == 1 ? "row" : std::to_string(rows) + " rows";
    return freeName(whole + (rows == 0 ? " (no rows)" : " (first " + count + ')'));
}

// Not in the tree yet.
std::unique_ptr<Alignment> copyOf(const Alignment &alignment, const std::string &name,
                                  AlignmentTable::Rows rows)
{
    auto copy = AlignmentTable::make(name, std::move(rows), alignment.width());
    const AlignmentAnnotation *const annotation = alignment.table().annotation();
    if (annotation != nullptr)
        copy->table().presetAnnotation(std::make_unique<AlignmentAnnotation>(*annotation));
    copy->table().restoreRange(alignment.range());
    ValueStore::get().copy(alignment, *copy);
    return copy;
}

// The columns for which the flags say so, of so many; those behind the flags' end are no.
std::vector<GapRun> runsOf(const std::vector<bool> &flags, bool wanted, unsigned long width)
{
    std::vector<GapRun> runs;
    unsigned long before = 0;
    for (unsigned long col = 0; col < width;) {
        const unsigned long begin = col;
        while (col < width && (col < flags.size() && flags[col]) == wanted)
            ++col;
        if (col > begin)
            runs.push_back({begin - before, col - begin});
        before += col - begin;
        while (col < width && (col < flags.size() && flags[col]) != wanted)
            ++col;
    }
    return runs;
}

} // namespace

Alignment *Alignment::duplicate(unsigned long n) const
{
    AlignmentTable::Rows rows;
    const std::size_t count = std::min<std::size_t>(n, m_Table->rowCount());
    rows.reserve(count);
    for (std::size_t i = 0; i < count; ++i)
        rows.push_back(std::make_unique<AlignmentRow>(m_Table->row(i)));
    const bool isWhole = count == m_Table->rowCount();
    auto copy = copyOf(*this, isWhole ? Name() : nameOfPart(Name(), count), std::move(rows));
    Alignment *const result = copy.get();
    const ChangeScope scope;
    // Some rows are copied for a program to read, which the user does not miss.
    ObjectSpace::get().add(std::move(copy), isWhole ? EditPart::Whole : EditPart::Arrival);
    return result;
}

Alignment *Alignment::duplicate(const std::vector<bool> &rows, const std::vector<bool> &columns,
                                const std::string &name) const
{
    const std::vector<GapRun> runs = runsOf(columns, false, m_Width);
    LongWork work("Copying", height(), LongWork::Kind::Reading);
    AlignmentTable::Rows copies;
    for (std::size_t i = 0; i < height(); ++i) {
        if (i % kRowsOfALook == 0 && !work.goesOnAt(i))
            return nullptr;
        if (i >= rows.size() || !rows[i])
            continue;
        auto copy = std::make_unique<AlignmentRow>(m_Table->row(i));
        if (!runs.empty()) {
            BitBuffer cells;
            std::vector<ResidueRun> removed;
            copy->removeRuns(runs, m_Width - columnsIn(runs), cells, removed);
        }
        copies.push_back(std::move(copy));
    }
    // What is known of all columns comes along, and goes with them.
    auto copy = copyOf(*this, freeName(name), {});
    copy->table().removeRuns(runs, std::move(copies));
    Alignment *const result = copy.get();
    const ChangeScope scope;
    ObjectSpace::get().add(std::move(copy), EditPart::Whole);
    return result;
}

bool Alignment::removeColumns(const std::vector<bool> &columns)
{
    std::vector<GapRun> runs = runsOf(columns, true, m_Width);
    if (runs.empty() || !mayChange(*this))
        return true;
    const ChangeScope scope;
    if (runs.size() == 1) {
        remove(Range(runs.front().column, runs.front().column + runs.front().count));
        return true;
    }
    RemoveRunsEdit edit(*m_Table, "remove columns", runs);
    LongWork work("Removing columns", m_Table->rowCount(), LongWork::Kind::Reading);
    if (!edit.prepare(work))
        return false;
    clearColumnTexts(*m_Table, "remove columns", runs);
    recordInverse(edit.apply());
    return true;
}

void Alignment::removeRows(const std::vector<bool> &rows)
{
    std::vector<std::size_t> indices;
    for (std::size_t i = 0; i < std::min<std::size_t>(rows.size(), height()); ++i)
        if (rows[i])
            indices.push_back(i);
    if (!indices.empty() && mayChange(*this)) {
        const ChangeScope scope;
        recordInverse(RemoveRowsEdit(*m_Table, "remove rows", std::move(indices), m_Width).apply());
    }
}

} // namespace TAMBO
