// SPDX-License-Identifier: GPL-3.0-or-later
#include "DataPointBase.h"

#include "Alignment.h"
#include "ChangeScope.h"
#include "ChangeSession.h"

#include <exception>

namespace {

// Never throws: a guard that cannot tell refuses.
bool isGranted(const TAMBO::Compound *object) noexcept
{
    if (object == nullptr || Publisher::isPublishing())
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
    : m_good(!Publisher::isPublishing()), m_Originator(originator), m_Action(action)
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
    // What is added inside an alignment changes what its windows show.
    if (m_Action == Publisher::Add && dynamic_cast<const TAMBO::Alignment *>(object) != nullptr)
        session.noteGuard(Publisher::Update, m_Originator);
}

DataPointBase::~DataPointBase()
{
    if (m_good)
        TAMBO::ChangeSession::get().close();
}
