// SPDX-License-Identifier: GPL-3.0-or-later
#include "KeptRegion.h"

#include "AlignmentWindow.h"
#include "DataPoint.h"
#include "Logger.h"
#include "PluginValues.h"
#include "StepName.h"
#include "Texts.h"

#include <algorithm>
#include <charconv>
#include <string>

namespace companion {

namespace {

constexpr char kKeptOf[] = "companion";
constexpr char kKeptColumns[] = "kept-columns";

std::string textOf(const ColumnRange &columns)
{
    return std::to_string(columns.first) + ' ' + std::to_string(columns.second);
}

// Nothing for what is no range: sessions are files, and anybody may write them.
std::optional<ColumnRange> rangeOf(const std::string &text)
{
    ColumnRange columns;
    const char *const end = text.data() + text.size();
    const auto [blank, error] = std::from_chars(text.data(), end, columns.first);
    if (error != std::errc() || blank == end || *blank != ' ')
        return std::nullopt;
    const auto [behind, secondError] = std::from_chars(blank + 1, end, columns.second);
    if (secondError != std::errc() || behind != end || columns.first >= columns.second)
        return std::nullopt;
    return columns;
}

std::optional<ColumnRange> storedColumns(const TAMBO::Alignment &alignment)
{
    const auto text = PluginValues::Get(&alignment, kKeptOf, kKeptColumns);
    return text ? rangeOf(*text) : std::nullopt;
}

bool store(TAMBO::Alignment &alignment, const ColumnRange &columns)
{
    return columns.first < columns.second
               ? PluginValues::Set(&alignment, kKeptOf, kKeptColumns, textOf(columns))
               : PluginValues::Remove(&alignment, kKeptOf, kKeptColumns);
}

void tellLost(const TAMBO::Alignment &alignment)
{
    Logger::Write(tr("The columns that were kept in %1 are not kept any more: too many columns "
                     "have come or gone at once to tell which they are now.")
                      .arg(QString::fromStdString(alignment.Name())));
}

} // namespace

std::optional<ColumnRange> keptColumns(const TAMBO::Alignment &alignment)
{
    std::optional<ColumnRange> columns = storedColumns(alignment);
    if (!columns || columns->first >= alignment.width())
        return std::nullopt;
    columns->second = std::min(columns->second, alignment.width());
    return columns;
}

bool keepColumns(TAMBO::Alignment &alignment, const ColumnRange &columns)
{
    const ColumnRange wanted{columns.first, std::min(columns.second, alignment.width())};
    if (wanted.first >= wanted.second || keptColumns(alignment) == wanted)
        return false;
    DataPoint<TAMBO::Alignment> change(nullptr, &alignment);
    if (!change.m_good)
        return false;
    const StepName name("Keep columns");
    return store(alignment, wanted);
}

bool keepNoColumns(TAMBO::Alignment &alignment)
{
    if (!storedColumns(alignment))
        return false;
    DataPoint<TAMBO::Alignment> change(nullptr, &alignment);
    if (!change.m_good)
        return false;
    const StepName name("Keep columns no longer");
    return store(alignment, {});
}

std::shared_ptr<KeptRegions> KeptRegions::shared()
{
    static std::weak_ptr<KeptRegions> kept;
    std::shared_ptr<KeptRegions> regions = kept.lock();
    if (regions == nullptr) {
        regions = std::make_shared<KeptRegions>();
        kept = regions;
    }
    return regions;
}

KeptRegions::KeptRegions()
{
    look();
}

KeptRegions::~KeptRegions() = default;

void KeptRegions::look()
{
    std::map<const TAMBO::Compound *, State> states;
    for (const TAMBO::AlignmentWindow *const window : TAMBO::AlignmentWindow::All()) {
        const TAMBO::Alignment *const alignment = window->alignment();
        if (alignment == nullptr || states.contains(alignment))
            continue;
        const auto columns = keptColumns(*alignment);
        if (!columns)
            continue;
        const std::uint64_t revision = TAMBO::LayoutChanges::revision(*alignment);
        const auto known = m_States.find(alignment);
        if (known != m_States.end() &&
            (known->second.revision == revision || known->second.isOwed) &&
            known->second.columns == *columns)
            states.insert(m_States.extract(known));
        else
            states.emplace(alignment,
                           State{revision, *columns, ColumnAnchors(*alignment, *columns), false});
    }
    m_States = std::move(states);
}

void KeptRegions::followCopy(TAMBO::Alignment &copy)
{
    const auto columns = storedColumns(copy);
    if (!columns)
        return;
    const auto edits = TAMBO::LayoutChanges::since(copy, 0);
    const ColumnRange there = edits ? followed(*columns, *edits) : ColumnRange{};
    if (there == *columns)
        return;
    DataPoint<TAMBO::Alignment> guard(nullptr, &copy);
    if (!guard.m_good)
        return;
    if (!edits)
        tellLost(copy);
    store(copy, there);
}

void KeptRegions::stepEnds(const StepChanges &changes)
{
    for (const StepChange &change : changes.objects) {
        if (change.object->Kind() != TAMBO::CompoundKind::Alignment)
            continue;
        const auto found = m_States.find(change.object);
        if (found == m_States.end() && !change.isNew)
            continue;
        auto *const alignment = dynamic_cast<TAMBO::Alignment *>(change.object);
        if (alignment == nullptr)
            continue;
        if (change.isNew) {
            followCopy(*alignment);
            continue;
        }
        State &state = found->second;
        // Others may have been chosen in this step.
        if (storedColumns(*alignment) != state.columns)
            continue;
        const auto edits = TAMBO::LayoutChanges::since(*alignment, state.revision);
        const std::optional<ColumnRange> columns =
            edits ? followed(state.columns, *edits) : state.anchors.find(*alignment);
        state.isOwed = false;
        if (columns == state.columns)
            continue;
        DataPoint<TAMBO::Alignment> guard(nullptr, alignment);
        // It is made up for with the next step.
        if (!guard.m_good) {
            state.isOwed = true;
            continue;
        }
        if (!columns)
            tellLost(*alignment);
        store(*alignment, columns.value_or(ColumnRange{}));
    }
}

} // namespace companion
