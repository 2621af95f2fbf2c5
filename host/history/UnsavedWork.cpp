// SPDX-License-Identifier: GPL-3.0-or-later
// What the history knows of changes that are in no file. Nothing of it is kept up to date: a
// question costs what the steps in between have changed, and an edit nothing.
#include "Alignment.h"
#include "AlignmentTable.h"
#include "FreedObjects.h"
#include "History.h"
#include "KeptState.h"
#include "LongWork.h"
#include "ObjectSpace.h"
#include "Peptide.h"
#include "PointerMap.h"
#include "PointerSet.h"
#include "RowChanges.h"
#include "StepJournal.h"
#include "Structure.h"

#include <algorithm>
#include <map>
#include <set>
#include <unordered_map>
#include <vector>

namespace TAMBO {

namespace {

using Objects = PointerSet<Compound>;

constexpr std::size_t kManyEdits = 1000;

// The one below Space that the object is or is a part of; null when it is out of the tree.
const Compound *topOf(const Compound &object)
{
    const Compound *top = &object;
    while (top->Parent() != nullptr && top->Parent() != Space::instance())
        top = top->Parent();
    return top->Parent() != nullptr ? top : nullptr;
}

// Calls visit(sequence) for those of the objects that the alignment shows.
template <typename Visit>
void forEachShown(const Objects &objects, const Alignment &alignment, const Visit &visit)
{
    const AlignmentTable &table = alignment.table();
    for (std::size_t row = 0; !objects.empty() && row < table.rowCount(); ++row) {
        const Peptide &sequence = table.row(row).sequence();
        if (objects.contains(&sequence))
            visit(sequence);
    }
}

// What is changed of a top-level object.
struct Changed
{
    EditParts parts;
    // An alignment that is saved, or unsaved itself, shows it: it is saved with that.
    bool isFollower = false;
};
using ChangedObjects = PointerMap<Compound, Changed>;

bool holdsSequences(const ChangedObjects &changed)
{
    bool isOneFound = false;
    changed.forEachWhile([&](const Compound &object, const Changed &) {
        isOneFound = dynamic_cast<const Peptide *>(&object) != nullptr;
        return !isOneFound;
    });
    return isOneFound;
}

// All that are saved are among the objects.
void markFollowers(ChangedObjects &changed, LongWork &work)
{
    if (!holdsSequences(changed))
        return;
    for (const Alignment *const alignment : ObjectSpace::get().referrers<Alignment>()) {
        if (changed.find(*alignment) == nullptr)
            continue;
        const AlignmentTable &table = alignment->table();
        for (std::size_t row = 0; row < table.rowCount(); ++row) {
            static_cast<void>(work.goesOn());
            if (Changed *const found = changed.find(table.row(row).sequence()))
                found->isFollower = true;
        }
    }
}

} // namespace

void History::forEachChangeSince(std::size_t saved, const HistoryStep::ChangeVisitor &visit) const
{
    m_ForgottenChanges.forEach([&](const Compound &holder, EditPart part, std::size_t index) {
        if (index >= saved)
            visit(holder, part);
    });
    const std::size_t mark = saved - std::min(saved, m_Forgotten);
    forEachChangeOf(std::min(mark, m_Position), std::max(mark, m_Position), visit);
}

void History::forEachChangeOf(std::size_t first, std::size_t end,
                              const HistoryStep::ChangeVisitor &visit) const
{
    for (std::size_t i = first; i < end; ++i)
        m_Steps[i].forEachChange(visit);
}

void History::forEachUnsavedChange(const UnsavedVisitor &visit) const
{
    const auto look = [&](const Compound &holder, EditPart part, std::size_t index, bool isDone) {
        const Compound *const top = topOf(holder);
        if (top != nullptr && isUnsaved(*top, index, isDone))
            visit(*top, holder, part);
    };
    m_ForgottenChanges.forEach([&](const Compound &holder, EditPart part, std::size_t index) {
        look(holder, part, index, true);
    });
    // Nobody has saved a state behind that.
    const std::size_t latest = m_Saved.latest();
    const std::size_t end = std::max(m_Position, latest - std::min(latest, m_Forgotten));
    for (std::size_t i = 0; i < end; ++i) {
        m_Steps[i].forEachChange([&](const Compound &holder, EditPart part) {
            look(holder, part, m_Forgotten + i, i < m_Position);
        });
    }
}

EditParts History::partsByRows(const Compound &object, std::size_t saved) const
{
    const auto *const alignment = dynamic_cast<const Alignment *>(&object);
    if (alignment == nullptr)
        return {};
    RowChanges changes;
    forEachChangeSince(saved, changes.adder());
    return changes.of(*alignment);
}

// With the sequences that the object shows: they are in its file.
void History::save(const Compound &object, const SavedMarks::Mark &mark)
{
    m_Saved.mark(object, mark);
    tellMark(object, {true, mark.steps, mark.lost});
    if (const auto *const alignment = dynamic_cast<const Alignment *>(&object)) {
        Objects changed;
        const auto collect = [&](const Compound &holder, EditPart, std::size_t = 0) {
            const Compound *const top = topOf(holder);
            if (dynamic_cast<const Peptide *>(top) != nullptr)
                changed.insert(top);
        };
        m_ForgottenChanges.forEach(collect);
        for (const HistoryStep &step : m_Steps)
            step.forEachChange(collect);
        forEachShown(changed, *alignment,
                     [&](const Peptide &sequence) { m_Saved.mark(sequence, mark); });
    }
    tellChange();
}

void History::markSaved(const Compound &object)
{
    save(object, {stepsDone(), {}});
}

void History::markWritten(const Compound &object)
{
    m_Written.mark(object, {stepsDone(), {}});
    tellMark(object, {false, stepsDone(), {}});
}

void History::acceptWritten(const Compound &object)
{
    if (const std::optional<SavedMarks::Mark> mark = m_Written.find(object))
        save(object, *mark);
}

std::size_t History::keepState(const Compound &object)
{
    m_Kept[++m_LastKept].mark(object, {stepsDone(), {}});
    return m_LastKept;
}

void History::markSaved(const KeptState &state)
{
    for (const auto &[object, mark] : std::unordered_map(m_Kept[state.number()].all()))
        save(*object, mark);
}

void History::markWritten(const KeptState &state)
{
    for (const auto &[object, mark] : m_Kept[state.number()].all()) {
        m_Written.mark(*object, mark);
        tellMark(*object, {false, mark.steps, mark.lost});
    }
}

void History::tellMark(const Compound &object, const StateMark &mark) const
{
    if (StepJournal *const journal = this->journal())
        journal->marked(object, mark);
}

EditParts History::unsavedParts(const Compound &object) const
{
    const std::optional<SavedMarks::Mark> mark = m_Saved.find(object);
    EditParts parts;
    forEachChangeSince(mark ? mark->steps : 0, [&](const Compound &holder, EditPart part) {
        if (!parts.has(part) && topOf(holder) == &object)
            parts.add(part);
    });
    if (mark) {
        parts.add(mark->lost);
        parts.add(partsByRows(object, mark->steps));
    }
    return parts;
}

std::vector<bool> History::areAsInState(const std::vector<const Compound *> &objects,
                                        std::uint64_t state) const
{
    std::vector<bool> same(objects.size(), false);
    const std::optional<std::size_t> steps = stepsTo(state);
    if (!steps)
        return same;
    Objects changed;
    RowChanges rows;
    const auto addRow = rows.adder();
    forEachChangeSince(*steps, [&](const Compound &holder, EditPart part) {
        if (const Compound *const top = topOf(holder))
            changed.insert(top);
        addRow(holder, part);
    });
    for (std::size_t i = 0; i < objects.size(); ++i) {
        const auto *const alignment = dynamic_cast<const Alignment *>(objects[i]);
        same[i] =
            !changed.contains(objects[i]) && (alignment == nullptr || rows.of(*alignment).empty());
    }
    return same;
}

bool History::isModified(const Compound &object) const
{
    return !unsavedParts(object).empty();
}

std::vector<UnsavedObject> History::unsavedObjects() const
{
    // A million sequences may have got other names.
    std::size_t edits = 0;
    for (const HistoryStep &step : m_Steps)
        edits += step.editCount();
    const std::size_t objects = Space::instance()->ChildCount();
    LongWork work("Looking for changes", edits + 2 * objects, LongWork::Kind::Fixed);
    ChangedObjects changed;
    forEachUnsavedChange([&](const Compound &top, const Compound &, EditPart part) {
        static_cast<void>(work.goesOn());
        changed[top].parts.add(part);
    });
    for (const auto &[object, mark] : m_Saved.all())
        changed[*object].parts.add(mark.lost);
    std::vector<UnsavedObject> unsaved;
    if (changed.empty())
        return unsaved;
    markFollowers(changed, work);
    for (Compound *const object : *Space::instance()) {
        static_cast<void>(work.goesOn());
        const Changed *const found = changed.find(*object);
        if (found == nullptr || found->isFollower)
            continue;
        EditParts parts = found->parts;
        if (const std::optional<SavedMarks::Mark> mark = m_Saved.find(*object))
            parts.add(partsByRows(*object, mark->steps));
        if (!parts.empty())
            unsaved.push_back({object, parts});
    }
    return unsaved;
}

std::size_t History::unsavedSteps() const
{
    std::set<std::size_t> forgotten;
    m_ForgottenChanges.forEach([&](const Compound &holder, EditPart, std::size_t index) {
        const Compound *const top = topOf(holder);
        if (top != nullptr && isUnsaved(*top, index, true))
            forgotten.insert(index);
    });
    std::size_t count = forgotten.size();
    const std::size_t latest = m_Saved.latest();
    const std::size_t end = std::max(m_Position, latest - std::min(latest, m_Forgotten));
    for (std::size_t i = 0; i < end; ++i) {
        const bool isDone = i < m_Position;
        bool isCounted = false;
        if (isDone && m_Forgotten + i >= latest && m_Steps[i].editCount() > kManyEdits)
            isCounted = true;
        else
            m_Steps[i].forEachChange([&](const Compound &holder, EditPart) {
                const Compound *const top = isCounted ? nullptr : topOf(holder);
                isCounted |= top != nullptr && isUnsaved(*top, m_Forgotten + i, isDone);
            });
        count += isCounted ? 1 : 0;
    }
    return count;
}

std::vector<const Structure *> History::renumberedStructures(const Alignment &alignment) const
{
    Objects renumbered;
    forEachUnsavedChange([&](const Compound &, const Compound &holder, EditPart part) {
        if (part == EditPart::Numbers)
            renumbered.insert(&holder);
    });
    const auto hasLostNumbers = [](const auto &entry) {
        return entry.second.lost.has(EditPart::Numbers);
    };
    std::vector<const Structure *> structures;
    if (renumbered.empty() && std::ranges::none_of(m_Saved.all(), hasLostNumbers))
        return structures;
    const auto look = [&](const Peptide &chain) {
        const auto *const structure = dynamic_cast<const Structure *>(chain.Parent());
        // No file of an alignment names a model.
        if (structure == nullptr || structure->isModel() ||
            std::ranges::find(structures, structure) != structures.end())
            return;
        const std::optional<SavedMarks::Mark> mark = m_Saved.find(*structure);
        if (renumbered.contains(&chain) || (mark && mark->lost.has(EditPart::Numbers)))
            structures.push_back(structure);
    };
    const AlignmentTable &table = alignment.table();
    for (std::size_t row = 0; row < table.rowCount(); ++row) {
        const Peptide &sequence = table.row(row).sequence();
        look(sequence);
        if (sequence.hasTies())
            sequence.forEachTiedChain(look);
    }
    return structures;
}

// Mostly what is dropped was never saved.
void History::losePathsBehind(std::size_t first)
{
    std::vector<SavedMarks *> all = {&m_Saved, &m_Written};
    for (auto &[number, mark] : m_Kept)
        all.push_back(&mark);
    for (SavedMarks *const marks : all) {
        const std::size_t latest = marks->latest();
        if (latest <= m_Forgotten + first)
            continue;
        for (std::size_t i = first; m_Forgotten + i < latest; ++i) {
            m_Steps[i].forEachChange([&](const Compound &holder, EditPart part) {
                const Compound *const top = topOf(holder);
                if (top != nullptr && marks->stepsOf(*top) > m_Forgotten + i)
                    marks->addLost(*top, part);
            });
        }
        marks->dropBehind(m_Forgotten + first, [&](const Compound &object, std::size_t saved) {
            const auto *const alignment = dynamic_cast<const Alignment *>(&object);
            if (alignment == nullptr)
                return EditParts();
            RowChanges changes;
            forEachChangeOf(first, saved - m_Forgotten, changes.adder());
            return changes.of(*alignment);
        });
    }
}

void History::forgetOwned(std::vector<HistoryStep>::iterator first,
                          std::vector<HistoryStep>::iterator last)
{
    std::vector<const Compound *> owned;
    for (auto step = first; step != last; ++step)
        step->appendOwned(owned);
    if (owned.empty())
        return;
    // Another object may come to stand at the address of one that is gone.
    const FreedObjects freed(std::move(owned));
    m_ForgottenChanges.forget(freed);
    m_Saved.forget(freed);
    m_Written.forget(freed);
    for (auto &[number, mark] : m_Kept)
        mark.forget(freed);
    if (m_FreeCallback)
        m_FreeCallback(freed);
}

} // namespace TAMBO
