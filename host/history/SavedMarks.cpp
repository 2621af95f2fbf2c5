// SPDX-License-Identifier: GPL-3.0-or-later
#include "SavedMarks.h"

#include "HistoryStep.h"

#include <algorithm>

namespace TAMBO {

namespace {

bool anyConcerns(const SavedMarks::Steps &steps, std::size_t begin, std::size_t end,
                 const Compound &object)
{
    return std::any_of(steps.begin() + std::ptrdiff_t(begin), steps.begin() + std::ptrdiff_t(end),
                       [&](const HistoryStep &step) { return step.concerns(object); });
}

} // namespace

std::optional<std::size_t> SavedMarks::position(const Compound &object) const
{
    const auto found = m_Positions.find(&object);
    return found == m_Positions.end() ? 0 : found->second;
}

void SavedMarks::appendUnreachable(std::vector<const Compound *> &out) const
{
    for (const auto &[object, position] : m_Positions) {
        if (!position)
            out.push_back(object);
    }
}

void SavedMarks::dropFirst(const Steps &steps)
{
    std::vector<const Compound *> subjects;
    steps.front().appendSubjects(subjects);
    for (const Compound *const subject : subjects)
        m_Positions.try_emplace(subject, std::size_t(0));
    for (auto &[object, position] : m_Positions) {
        if (!position)
            continue;
        if (*position > 0)
            --*position;
        else if (std::ranges::find(subjects, object) != subjects.end())
            position.reset();
    }
}

void SavedMarks::dropFrom(std::size_t size, const Steps &steps)
{
    for (auto &[object, position] : m_Positions) {
        if (!position || *position <= size)
            continue;
        if (anyConcerns(steps, size, *position, *object))
            position.reset();
        else
            position = size;
    }
}

} // namespace TAMBO
