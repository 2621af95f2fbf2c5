// SPDX-License-Identifier: GPL-3.0-or-later
#include "SavedMarks.h"

#include "FreedObjects.h"

#include <algorithm>

namespace TAMBO {

std::size_t SavedMarks::stepsOf(const Compound &object) const
{
    const auto found = m_Marks.find(&object);
    return found == m_Marks.end() ? 0 : found->second.steps;
}

std::optional<SavedMarks::Mark> SavedMarks::find(const Compound &object) const
{
    const auto found = m_Marks.find(&object);
    return found == m_Marks.end() ? std::nullopt : std::optional(found->second);
}

std::size_t SavedMarks::latest() const noexcept
{
    std::size_t steps = 0;
    for (const auto &[object, mark] : m_Marks)
        steps = std::max(steps, mark.steps);
    return steps;
}

void SavedMarks::addLost(const Compound &object, EditPart part)
{
    const auto found = m_Marks.find(&object);
    if (found != m_Marks.end())
        found->second.lost.add(part);
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

void SavedMarks::forget(const FreedObjects &freed)
{
    std::erase_if(m_Marks, [&freed](const auto &entry) { return freed.holds(*entry.first); });
}

} // namespace TAMBO
