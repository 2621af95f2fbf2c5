// SPDX-License-Identifier: GPL-3.0-or-later
#include "SavedMarks.h"

namespace TAMBO {

SavedMarks::Mark SavedMarks::of(const Compound &object) const
{
    return find(object).value_or(Mark());
}

std::optional<SavedMarks::Mark> SavedMarks::find(const Compound &object) const
{
    const auto found = m_Marks.find(&object);
    return found == m_Marks.end() ? std::nullopt : std::optional(found->second);
}

void SavedMarks::dropBehind(std::size_t steps, const LostParts &lostOf)
{
    for (auto &[object, mark] : m_Marks) {
        if (mark.steps <= steps)
            continue;
        mark.lost.add(lostOf(*object, mark.steps));
        mark.steps = steps;
    }
}

void SavedMarks::forget(const std::set<const Compound *> &freed)
{
    std::erase_if(m_Marks, [&freed](const auto &entry) { return freed.contains(entry.first); });
}

} // namespace TAMBO
