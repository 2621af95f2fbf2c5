// SPDX-License-Identifier: GPL-3.0-or-later
#include "Refit.h"

#include "DataPoint.h"
#include "LayoutChanges.h"
#include "PluginValues.h"
#include "Space.h"
#include "StepName.h"
#include "StructureDetails.h"

#include <algorithm>
#include <iterator>
#include <optional>

namespace companion {

using TAMBO::LayoutChange;
using TAMBO::LayoutChanges;
using TAMBO::StructureFits;
using TAMBO::StructureRow;

namespace {

constexpr char kRefitOf[] = "companion";
constexpr char kRefitKey[] = "refit";
constexpr char kRefitOn[] = "on";

// The rows in which nothing but gaps has moved; nothing when something else has happened.
std::optional<std::vector<unsigned long>>
rowsWithMovedGaps(const std::optional<std::vector<LayoutChange>> &changes)
{
    if (!changes)
        return std::nullopt;
    std::vector<unsigned long> rows;
    for (const LayoutChange &change : *changes) {
        if (change.kind == LayoutChange::Kind::GapsMoved)
            rows.push_back(change.row);
        else if (change.kind != LayoutChange::Kind::EndMoved)
            return std::nullopt;
    }
    return rows;
}

// All of them onto the first one.
void superpose(const TAMBO::Alignment &alignment, const std::vector<StructureRow> &rows)
{
    std::vector<unsigned long> others;
    for (const StructureRow &row : rows)
        if (&row != &rows.front())
            others.push_back(row.row);
    if (!others.empty())
        StructureFits::superpose(alignment, rows.front().row, others,
                                 StructureFits::lastChoice(alignment));
}

} // namespace

bool isRefitted(const TAMBO::Alignment &alignment)
{
    return PluginValues::Get(&alignment, kRefitOf, kRefitKey) == kRefitOn;
}

bool setRefitted(TAMBO::Alignment &alignment, bool isOn)
{
    const DataPoint<TAMBO::Alignment> change(nullptr, &alignment);
    if (!change.m_good)
        return false;
    const StepName name(isOn ? "Keep superposed" : "Keep superposed no longer");
    if (!isOn)
        return PluginValues::Remove(&alignment, kRefitOf, kRefitKey);
    if (!PluginValues::Set(&alignment, kRefitOf, kRefitKey, kRefitOn))
        return false;
    superpose(alignment, StructureFits::rows(alignment));
    return true;
}

Refit::Refit()
{
    lookForOthers();
}

Refit::~Refit() = default;

void Refit::stepEnds(const StepChanges &changes)
{
    for (const StepChange &change : changes.objects) {
        if (change.object->Kind() != TAMBO::CompoundKind::Alignment)
            continue;
        auto *const alignment = dynamic_cast<TAMBO::Alignment *>(change.object);
        if (alignment == nullptr)
            continue;
        if (!isRefitted(*alignment)) {
            if (m_Known.erase(alignment) > 0)
                m_Off.insert(alignment);
            continue;
        }
        m_Off.erase(alignment);
        // A copy lies as what it is a copy of.
        if (change.isNew)
            m_Known[alignment] = {LayoutChanges::revision(*alignment),
                                  0,
                                  {},
                                  StructureFits::lastChoice(*alignment),
                                  false};
        // Values are no reason to move anything.
        else if (!change.isDisplayOnly)
            follow(*alignment);
        else if (!m_Known.contains(alignment))
            m_Known[alignment] = knownOf(*alignment);
    }
}

Refit::Known Refit::knownOf(const TAMBO::Alignment &alignment)
{
    return {LayoutChanges::revision(alignment), TAMBO::StructureDetails::revision(),
            StructureFits::rows(alignment), StructureFits::lastChoice(alignment), false};
}

void Refit::follow(TAMBO::Alignment &alignment)
{
    const auto before = m_Known.find(&alignment);
    const std::uint64_t layout = LayoutChanges::revision(alignment);
    if (before != m_Known.end() && before->second.layout == layout && !before->second.isOwed)
        return;
    Known known = before == m_Known.end() ? Known() : before->second;
    if (before == m_Known.end()) {
        known.rows = StructureFits::rows(alignment);
        known.choice = StructureFits::lastChoice(alignment);
    }
    std::vector<unsigned long> rows;
    if (before == m_Known.end())
        std::ranges::transform(known.rows, std::back_inserter(rows), &StructureRow::row);
    else
        rows = concerned(alignment, known);
    if (known.rows.size() > 1) {
        const unsigned long fixed = known.rows.front().row;
        std::erase(rows, fixed);
        const DataPoint<TAMBO::Space> change(nullptr, TAMBO::Space::instance());
        // It is made up for with the next step.
        if (!change.m_good) {
            if (before == m_Known.end())
                m_Known[&alignment] = {layout, 0, {}, {}, true};
            else
                before->second.isOwed = true;
            return;
        }
        if (!rows.empty()) {
            StructureFits::superpose(alignment, fixed, rows, known.choice);
            m_Fits += rows.size();
        }
    }
    known.layout = layout;
    known.isOwed = false;
    known.structures = TAMBO::StructureDetails::revision();
    m_Known[&alignment] = std::move(known);
}

std::vector<unsigned long> Refit::concerned(const TAMBO::Alignment &alignment, Known &known)
{
    const auto moved = rowsWithMovedGaps(LayoutChanges::since(alignment, known.layout));
    const bool areRowsKnown = moved && known.structures == TAMBO::StructureDetails::revision();
    const std::vector<StructureRow> before = known.rows;
    if (!areRowsKnown)
        known.rows = StructureFits::rows(alignment);
    const bool isSameFirst =
        !before.empty() && !known.rows.empty() && before.front() == known.rows.front();
    const auto isMoved = [&moved](const StructureRow &row) {
        return std::ranges::find(*moved, row.row) != moved->end();
    };
    const TAMBO::FitChoice choice = StructureFits::lastChoice(alignment);
    const bool isEach =
        !moved || !isSameFirst || choice != known.choice || isMoved(known.rows.front());
    known.choice = choice;
    std::vector<unsigned long> rows;
    for (const StructureRow &row : known.rows)
        if (isEach || isMoved(row))
            rows.push_back(row.row);
    return rows;
}

void Refit::look()
{
    for (auto each = m_Known.begin(); each != m_Known.end();) {
        const TAMBO::Alignment &alignment = *each->first;
        if (!isRefitted(alignment)) {
            m_Off.insert(each->first);
            each = m_Known.erase(each);
            continue;
        }
        Known &known = each->second;
        ++each;
        if (known.isOwed || known.layout == LayoutChanges::revision(alignment))
            continue;
        // Where the structures are has been taken back with the cells.
        if (known.structures == TAMBO::StructureDetails::revision() &&
            rowsWithMovedGaps(LayoutChanges::since(alignment, known.layout)))
            known.layout = LayoutChanges::revision(alignment);
        else
            known = knownOf(alignment);
    }
    std::erase_if(m_Off, [this](TAMBO::Alignment *alignment) {
        const bool isOn = isRefitted(*alignment);
        if (isOn)
            m_Known[alignment] = knownOf(*alignment);
        return isOn;
    });
}

void Refit::commUpdate()
{
    look();
}

void Refit::commAdd()
{
    look();
    lookForOthers();
}

// Some come with it on: from a session, or back by undo.
void Refit::lookForOthers()
{
    for (TAMBO::Compound *const object : *TAMBO::Space::instance()) {
        if (object->Kind() != TAMBO::CompoundKind::Alignment)
            continue;
        auto *const alignment = dynamic_cast<TAMBO::Alignment *>(object);
        if (alignment != nullptr && !m_Known.contains(alignment) && isRefitted(*alignment))
            m_Known[alignment] = knownOf(*alignment);
    }
}

// Whoever has gone is there until all have been told.
void Refit::commDelete()
{
    std::erase_if(m_Known, [](const auto &each) { return each.first->Parent() == nullptr; });
    std::erase_if(m_Off, [](const auto *alignment) { return alignment->Parent() == nullptr; });
    look();
}

} // namespace companion
