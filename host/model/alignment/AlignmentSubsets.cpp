// SPDX-License-Identifier: GPL-3.0-or-later
// The plug-ins' door to copies of an alignment and of parts of it, and to taking many rows or
// columns out at once.
#include "Alignment.h"

#include "AlignmentEdits.h"
#include "AlignmentTable.h"
#include "ChangeScope.h"
#include "LongWork.h"
#include "ObjectSpace.h"
#include "ValueStore.h"

#include <algorithm>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace TAMBO {

namespace {

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

std::vector<bool> opposite(std::vector<bool> flags, std::size_t count)
{
    flags.resize(count);
    flags.flip();
    return flags;
}

// From the last one on, so that those before stay where the flags say.
bool removeFlagged(Alignment &alignment, const std::vector<bool> &columns, LongWork &work)
{
    const std::size_t end = std::min<std::size_t>(columns.size(), alignment.width());
    for (std::size_t behind = end; behind > 0;) {
        if (!work.goesOnAt(end - behind + 1))
            return false;
        if (!columns[behind - 1]) {
            --behind;
            continue;
        }
        std::size_t begin = behind - 1;
        while (begin > 0 && columns[begin - 1])
            --begin;
        alignment.remove(Alignment::Range(begin, behind));
        behind = begin;
    }
    return true;
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
    AlignmentTable::Rows copies;
    for (std::size_t i = 0; i < std::min<std::size_t>(rows.size(), height()); ++i)
        if (rows[i])
            copies.push_back(std::make_unique<AlignmentRow>(m_Table->row(i)));
    LongWork work("Copying", m_Width, LongWork::Kind::Changing);
    const ChangeScope scope;
    if (!work.goesOnAt(0))
        return nullptr;
    auto copy = copyOf(*this, freeName(name), std::move(copies));
    Alignment *const result = copy.get();
    ObjectSpace::get().add(std::move(copy), EditPart::Whole);
    return removeFlagged(*result, opposite(columns, m_Width), work) ? result : nullptr;
}

bool Alignment::removeColumns(const std::vector<bool> &columns)
{
    const auto end = columns.begin() + long(std::min<std::size_t>(columns.size(), m_Width));
    if (std::find(columns.begin(), end, true) == end || !mayChange(*this))
        return true;
    LongWork work("Removing columns", m_Width, LongWork::Kind::Changing);
    const ChangeScope scope;
    return removeFlagged(*this, columns, work);
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
