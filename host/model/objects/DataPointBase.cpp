// SPDX-License-Identifier: GPL-3.0-or-later
#include "DataPointBase.h"

#include "ChangeScope.h"
#include "ChangeSession.h"
#include "StoredObject.h"

#include <exception>

namespace {

bool mayBegin() noexcept
{
    if (!Publisher::isPublishing())
        return true;
    try {
        if (TAMBO::modelHooks().denied)
            TAMBO::modelHooks().denied("Nothing can be changed while another change is shown.",
                                       nullptr);
    } catch (const std::exception &) {
        return false;
    }
    return false;
}

bool showsAdded(const TAMBO::Compound *object) noexcept
{
    const TAMBO::StoredObject *const stored = TAMBO::StoredObject::from(object);
    return stored != nullptr && stored->showsAdded();
}

// Never throws: a guard that cannot tell refuses.
bool isGranted(const TAMBO::Compound *object) noexcept
{
    if (object == nullptr || !mayBegin())
        return false;
    try {
        const TAMBO::Compound *const locked = TAMBO::lockOn(*object);
        if (locked != nullptr && TAMBO::modelHooks().refused)
            TAMBO::modelHooks().refused(*locked);
        return locked == nullptr;
    } catch (const std::exception &) {
        return false;
    }
}

} // namespace

DataPointBase::DataPointBase(Subscriber *originator, Publisher::ActionType action)
    : m_good(mayBegin()), m_Originator(originator), m_Action(action)
{
    if (m_good) {
        TAMBO::ChangeSession::get().open();
        TAMBO::ChangeSession::get().noteGuard(m_Action, m_Originator);
    }
}

DataPointBase::DataPointBase(Subscriber *originator, Publisher::ActionType action,
                             const TAMBO::Compound *object)
    : m_good(isGranted(object)), m_Originator(originator), m_Action(action)
{
    if (!m_good)
        return;
    TAMBO::ChangeSession &session = TAMBO::ChangeSession::get();
    session.open();
    session.noteGuard(m_Action, m_Originator);
    if (m_Action == Publisher::Add && showsAdded(object))
        session.noteGuard(Publisher::Update, m_Originator);
}

DataPointBase::~DataPointBase()
{
    if (m_good)
        TAMBO::ChangeSession::get().close();
}
