// SPDX-License-Identifier: GPL-3.0-or-later
#include "MarkFollower.h"

#include "StoredObject.h"

namespace TAMBO {

namespace {

MarkFollower *s_MarkFollower = nullptr;

} // namespace

void setMarkFollower(MarkFollower *follower) noexcept
{
    s_MarkFollower = follower;
}

MarkFollower *markFollower() noexcept
{
    return s_MarkFollower;
}

void noteMarks(Compound &object)
{
    if (s_MarkFollower == nullptr)
        return;
    if (StoredObject *const stored = StoredObject::from(&object))
        s_MarkFollower->marksChanged(*stored);
}

void noteStoredMarks(StoredObject &object)
{
    if (s_MarkFollower != nullptr)
        s_MarkFollower->marksChanged(object);
}

} // namespace TAMBO
