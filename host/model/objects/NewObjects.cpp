// SPDX-License-Identifier: GPL-3.0-or-later
#include "NewObjects.h"

#include "Compound.h"
#include "StoredObject.h"

#include <string>

namespace TAMBO {

NewObjects::~NewObjects()
{
    for (const auto &[object, identity] : m_Objects)
        m_Known.erase(identity);
}

bool NewObjects::add(StoredObject &object, StoredHead head)
{
    if (!m_Known.insert(head.identity, object.asCompound()))
        return false;
    m_Objects.emplace_back(&object, head.identity);
    if (CompoundState *const state = object.ownState()) {
        state->color = head.color;
        state->isSelected = head.isSelected;
        state->isLocked = head.isLocked;
    }
    if (!head.values.empty())
        m_Values.emplace_back(&object, std::move(head.values));
    return true;
}

Result<void> NewObjects::complete(const GoesOn &goesOn)
{
    constexpr std::size_t kStride = 4096;
    std::size_t looks = 0;
    const auto isGivenUp = [&] { return ++looks % kStride == 0 && goesOn && !goesOn(); };
    const Failure givenUp(FailureKind::Cancelled, "cancelled");
    for (const auto &link : m_Links) {
        if (isGivenUp())
            return givenUp;
        if (Result<void> done = link(); !done)
            return done;
    }
    for (const auto &[object, identity] : m_Objects) {
        if (isGivenUp())
            return givenUp;
        if (!object->restoreIdentity(identity))
            return Failure(FailureKind::BadInput,
                           "no object can have the number " + std::to_string(identity));
    }
    for (auto &[object, values] : m_Values)
        ValueStore::get().restore(object->identity(), std::move(values));
    m_Objects.clear();
    m_Values.clear();
    m_Links.clear();
    return {};
}

} // namespace TAMBO
