// SPDX-License-Identifier: GPL-3.0-or-later
#include "ChosenRows.h"

#include "Alignment.h"
#include "AlignmentDetails.h"
#include "LayoutChanges.h"

#include <algorithm>
#include <utility>

namespace companion {

using TAMBO::Alignment;
using TAMBO::LayoutChange;
using TAMBO::LayoutChanges;

namespace {

// Where a row goes; nothing when it is the one that goes.
std::optional<unsigned long> moved(unsigned long row, const LayoutChange &change)
{
    using Kind = LayoutChange::Kind;
    if (change.kind == Kind::RowAdded)
        return row + (change.row <= row ? 1 : 0);
    if (change.kind == Kind::RowRemoved)
        return change.row == row ? std::nullopt : std::optional(row - (change.row < row ? 1 : 0));
    if (change.kind != Kind::RowMoved)
        return row;
    if (change.row == row)
        return change.to;
    if (change.row < row && row <= change.to)
        return row - 1;
    return change.to <= row && row < change.row ? row + 1 : row;
}

} // namespace

void ChosenRows::choose(const Alignment &alignment, const std::vector<unsigned long> &rows)
{
    m_Rows.clear();
    for (const unsigned long row : rows)
        if (row < alignment.height())
            m_Rows.push_back({alignment.GetSeq(row), row});
    m_Revision = LayoutChanges::revision(alignment);
}

void ChosenRows::giveUp(unsigned long row)
{
    std::erase_if(m_Rows, [row](const Row &each) { return each.place == row; });
}

void ChosenRows::follow(const Alignment &alignment)
{
    const std::uint64_t before = std::exchange(m_Revision, LayoutChanges::revision(alignment));
    if (m_Rows.empty() || before == m_Revision)
        return;
    const auto changes = LayoutChanges::since(alignment, before);
    const bool areKnown = changes && std::ranges::none_of(*changes, [](const LayoutChange &change) {
                              return change.kind == LayoutChange::Kind::RowsSorted;
                          });
    if (!areKnown)
        return findAll(alignment);
    bool areNew = false;
    for (const LayoutChange &change : *changes) {
        areNew = areNew || change.kind == LayoutChange::Kind::RowAdded;
        for (Row &row : m_Rows)
            if (row.place)
                row.place = moved(*row.place, change);
    }
    const bool isOneGone = std::ranges::any_of(m_Rows, [](const Row &row) { return !row.place; });
    if (areNew && isOneGone)
        findAll(alignment);
}

void ChosenRows::findAll(const Alignment &alignment)
{
    for (Row &row : m_Rows) {
        const bool isThere = row.place && *row.place < alignment.height() &&
                             alignment.GetSeq(*row.place) == row.sequence;
        if (!isThere)
            row.place.reset();
    }
    for (unsigned long place = 0; place < alignment.height(); ++place) {
        const TAMBO::Compound *const sequence = alignment.GetSeq(place);
        for (Row &row : m_Rows)
            if (!row.place && row.sequence == sequence)
                row.place = place;
    }
}

std::vector<unsigned long> ChosenRows::rows() const
{
    std::vector<unsigned long> rows;
    for (const Row &row : m_Rows)
        if (row.place)
            rows.push_back(*row.place);
    return rows;
}

std::vector<unsigned long> rowsWithSelection(const Alignment &alignment, std::size_t most)
{
    std::vector<unsigned long> rows;
    for (unsigned long row = 0; row < alignment.height() && rows.size() < most; ++row)
        if (TAMBO::AlignmentDetails::hasSelected(alignment, row))
            rows.push_back(row);
    return rows;
}

} // namespace companion
