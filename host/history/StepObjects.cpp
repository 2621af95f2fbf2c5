// SPDX-License-Identifier: GPL-3.0-or-later
#include "StepObjects.h"

#include "Compound.h"
#include "HistoryStep.h"
#include "ObjectsEdit.h"

#include <algorithm>

namespace TAMBO {

namespace {

// Maybe another one than users see: a session is looked into before it is opened.
bool isSpace(const Compound &object)
{
    return object.Kind() == CompoundKind::Space;
}

} // namespace

StepObjects::StepObjects(const std::vector<HistoryStep> &steps) : m_Steps(steps)
{
    for (std::size_t i = 0; i < m_Steps.size(); ++i) {
        m_Members.clear();
        m_Steps[i].appendOwned(m_Members);
        for (const Compound *const object : m_Members)
            m_Owned[*object] = {nullptr, i};
    }
}

bool StepObjects::areInOrder(std::size_t position)
{
    bool isInOrder = true;
    const auto begin = [this] {
        m_Moved = {};
        m_LastMove = nullptr;
    };
    begin();
    for (std::size_t i = position; isInOrder && i > 0; --i)
        isInOrder = pass(i - 1);
    begin();
    for (std::size_t i = position; isInOrder && i < m_Steps.size(); ++i)
        isInOrder = pass(i);
    return isInOrder;
}

bool StepObjects::holds(const Compound &object) const
{
    const Compound &top = topOf(object);
    return isSpace(top) || m_Owned.find(top) != nullptr;
}

bool StepObjects::pass(std::size_t step)
{
    return m_Steps[step].forEachEditWhile([&](const Edit &edit) {
        noteMove();
        m_Needed.clear();
        edit.appendNeeded(m_Needed);
        const bool isFit = std::ranges::all_of(
            m_Needed, [&](const Compound *object) { return isThereFor(step, *object); });
        m_LastMove = dynamic_cast<const ObjectsEdit *>(&edit);
        m_LastStep = step;
        return isFit && (m_LastMove == nullptr || canMove(*m_LastMove));
    });
}

bool StepObjects::canMove(const ObjectsEdit &edit)
{
    const Compound &container = edit.container();
    m_Members.clear();
    edit.appendSubjects(m_Members);
    if (edit.isRemoval()) {
        // Of a million objects each is a wait for memory, unless it has been asked for before.
        constexpr std::size_t kAhead = 16;
        for (std::size_t i = 0; i < m_Members.size(); ++i) {
            if (i + kAhead < m_Members.size())
                __builtin_prefetch(m_Members[i + kAhead]);
            if (containerOf(*m_Members[i]) != &container)
                return false;
        }
        return true;
    }
    // Nothing comes to stand in itself.
    return std::ranges::find(m_Members, &topOf(container)) == m_Members.end();
}

void StepObjects::noteMove()
{
    if (m_LastMove == nullptr)
        return;
    m_Members.clear();
    m_LastMove->appendSubjects(m_Members);
    const Compound *const container = m_LastMove->isRemoval() ? nullptr : &m_LastMove->container();
    for (const Compound *const object : m_Members)
        m_Moved[*object] = {container, m_LastStep};
}

const StepObjects::Place *StepObjects::placeOf(const Compound &object) const
{
    const Place *const moved = m_Moved.find(object);
    return moved != nullptr ? moved : m_Owned.find(object);
}

const Compound *StepObjects::containerOf(const Compound &object) const
{
    const Place *const place = placeOf(object);
    return place != nullptr ? place->container : object.Parent();
}

const Compound &StepObjects::topOf(const Compound &object) const
{
    const Compound *top = &object;
    while (const Compound *const above = containerOf(*top))
        top = above;
    return *top;
}

bool StepObjects::isThereFor(std::size_t step, const Compound &object) const
{
    const Compound &top = topOf(object);
    if (isSpace(top))
        return true;
    const Place *const place = placeOf(top);
    return place != nullptr && place->step == step;
}

} // namespace TAMBO
