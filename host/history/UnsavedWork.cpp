// SPDX-License-Identifier: GPL-3.0-or-later
// What the history knows of changes that are in no file.
#include "AlignmentTable.h"
#include "History.h"
#include "ObjectSpace.h"
#include "Peptide.h"
#include "Structure.h"

#include <algorithm>
#include <set>

namespace TAMBO {

ChangedParts History::changedParts() const
{
    ChangedParts changed = m_ForgottenParts;
    for (std::size_t i = 0; i < m_Steps.size(); ++i)
        changed.add(m_Steps[i], m_Forgotten + i, i < m_Position);
    return changed;
}

EditParts History::partsOf(const Compound &object, const ChangedParts &changed) const
{
    const std::optional<SavedMarks::Mark> mark = m_Saved.find(object);
    EditParts parts = changed.of(object, mark ? mark->steps : 0);
    if (!mark)
        return parts;
    parts.add(mark->lost);
    if (const auto *const alignment = dynamic_cast<const Alignment *>(&object))
        parts.add(changed.ofRows(*alignment, mark->steps));
    return parts;
}

// With the sequences that the object shows: they are in its file.
void History::save(const Compound &object, const SavedMarks::Mark &mark)
{
    m_Saved.mark(object, mark);
    if (const auto *const alignment = dynamic_cast<const Alignment *>(&object)) {
        for (const Compound *const changed : changedParts().objects()) {
            const auto *const sequence = dynamic_cast<const Peptide *>(changed);
            if (sequence != nullptr && alignment->table().holds(*sequence))
                m_Saved.mark(*sequence, mark);
        }
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
}

void History::acceptWritten(const Compound &object)
{
    if (const std::optional<SavedMarks::Mark> mark = m_Written.find(object))
        save(object, *mark);
}

EditParts History::unsavedParts(const Compound &object) const
{
    return partsOf(object, changedParts());
}

bool History::isModified(const Compound &object) const
{
    return !unsavedParts(object).empty();
}

std::vector<UnsavedObject> History::unsavedObjects() const
{
    const ChangedParts changed = changedParts();
    std::set<const Compound *> candidates = changed.objects();
    for (const auto &[object, mark] : m_Saved.all())
        candidates.insert(object);
    std::vector<UnsavedObject> unsaved;
    for (Compound *const object : *Space::instance()) {
        if (!candidates.contains(object))
            continue;
        const EditParts parts = partsOf(*object, changed);
        if (!parts.empty())
            unsaved.push_back({object, parts});
    }
    std::vector<const Alignment *> followed;
    for (const Alignment *const alignment : ObjectSpace::get().referrers<Alignment>()) {
        if (m_Saved.find(*alignment) ||
            std::ranges::find(unsaved, alignment, &UnsavedObject::object) != unsaved.end())
            followed.push_back(alignment);
    }
    std::erase_if(unsaved, [&followed](const UnsavedObject &found) {
        const auto *const sequence = dynamic_cast<const Peptide *>(found.object);
        return sequence != nullptr &&
               std::ranges::any_of(followed, [sequence](const Alignment *alignment) {
                   return alignment->table().holds(*sequence);
               });
    });
    return unsaved;
}

std::vector<const Structure *> History::renumberedStructures(const Alignment &alignment) const
{
    const ChangedParts changed = changedParts();
    std::vector<const Structure *> structures;
    const auto look = [&](const Peptide &chain) {
        const auto *const structure = dynamic_cast<const Structure *>(chain.Parent());
        // No file of an alignment names a model.
        if (structure == nullptr || structure->isModel() ||
            std::ranges::find(structures, structure) != structures.end())
            return;
        const SavedMarks::Mark mark = m_Saved.of(*structure);
        if (mark.lost.has(EditPart::Numbers) || changed.has(chain, EditPart::Numbers, mark.steps))
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

void History::losePathsBehind(std::size_t first)
{
    if (first == m_Steps.size())
        return;
    ChangedParts dropped;
    for (std::size_t i = first; i < m_Steps.size(); ++i)
        dropped.add(m_Steps[i], m_Forgotten + i, false);
    const auto lostOf = [&dropped](const Compound &object, std::size_t saved) {
        EditParts parts = dropped.of(object, saved);
        if (const auto *const alignment = dynamic_cast<const Alignment *>(&object))
            parts.add(dropped.ofRows(*alignment, saved));
        return parts;
    };
    m_Saved.dropBehind(m_Forgotten + first, lostOf);
    m_Written.dropBehind(m_Forgotten + first, lostOf);
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
    const std::set<const Compound *> freed(owned.begin(), owned.end());
    m_ForgottenParts.forget(freed);
    m_Saved.forget(freed);
    m_Written.forget(freed);
    if (m_FreeCallback)
        m_FreeCallback(freed);
}

} // namespace TAMBO
