// SPDX-License-Identifier: GPL-3.0-or-later
#include "MarkedObjects.h"

#include "ChangeScope.h"
#include "Compound.h"
#include "ObjectMarks.h"
#include "ObjectSpace.h"
#include "Revisions.h"
#include "StoredObject.h"

#include <algorithm>

namespace TAMBO::sessions {

void MarkedObjects::note(StoredObject &object)
{
    ++m_Revision;
    // It will be looked at with all others.
    if (m_AreMany && m_Next == 0)
        return;
    m_Noted.add(object);
    if (m_Noted.size() < kMany)
        return;
    m_AreMany = true;
    m_Next = 0;
    m_Noted.clear();
}

bool MarkedObjects::prepare()
{
    return lookOn();
}

std::string MarkedObjects::store() const
{
    while (lookOn())
        ;
    std::vector<const StoredObject *> objects;
    m_Noted.forEach(
        [&](const Compound &object) { objects.push_back(StoredObject::from(&object)); });
    m_List.update(objects);
    m_Noted.clear();
    return m_List.bytes();
}

bool MarkedObjects::lookOn() const
{
    if (!m_AreMany)
        return false;
    if (m_Next > 0 && m_Space.object(m_Next - 1) != m_Last)
        m_Next = 0;
    std::vector<const StoredObject *> objects;
    if (m_Next == 0 && m_Space.marksFollowSteps() == m_FollowsSteps)
        objects.push_back(&m_Space);
    const std::size_t end = std::min(m_Next + kMany, m_Space.objectCount());
    for (; m_Next < end && objects.size() < kMany; ++m_Next)
        collect(*StoredObject::from(m_Space.object(m_Next)), objects);
    m_Last = m_Next == 0 ? nullptr : m_Space.object(m_Next - 1);
    m_List.update(objects);
    m_AreMany = m_Next < m_Space.objectCount();
    if (!m_AreMany)
        m_Next = 0;
    return m_AreMany;
}

void MarkedObjects::collect(StoredObject &object, std::vector<const StoredObject *> &out) const
{
    if (object.marksFollowSteps() == m_FollowsSteps)
        out.push_back(&object);
    const auto *const container = dynamic_cast<const ObjectContainer *>(&object);
    const std::size_t count = container == nullptr ? 0 : container->objectCount();
    for (std::size_t i = 0; i < count; ++i)
        collect(*StoredObject::from(container->object(i)), out);
}

Result<void> MarkedObjects::load(std::string_view content, const ObjectIndex &objects)
{
    // All of it is good before anything changes.
    if (Result<void> good = MarkList::forEach(content, [](std::uint32_t, const ObjectMarks &) {});
        !good)
        return good;
    const ChangeScope scope(Publisher::Update);
    Result<void> done =
        MarkList::forEach(content, [&](std::uint32_t identity, const ObjectMarks &marks) {
            StoredObject *const object = StoredObject::from(objects.find(identity));
            if (object == nullptr || object->marksFollowSteps() != m_FollowsSteps)
                return;
            object->restoreMarks(marks);
            note(*object);
        });
    growSelectionRevision();
    return done;
}

void MarkedObjects::clear()
{
    ++m_Revision;
    m_List.clear();
    m_Noted.clear();
    m_AreMany = false;
    m_Next = 0;
}

} // namespace TAMBO::sessions
