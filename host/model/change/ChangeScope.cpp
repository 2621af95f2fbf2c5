// SPDX-License-Identifier: GPL-3.0-or-later
#include "ChangeScope.h"

#include "ChangeSession.h"
#include "Compound.h"

#include <utility>

namespace TAMBO {

ChangeScope::ChangeScope() noexcept
{
    ChangeSession::get().open();
}

ChangeScope::ChangeScope(Publisher::ActionType action) noexcept : ChangeScope()
{
    ChangeSession::get().publishAtEnd(action);
}

ChangeScope::~ChangeScope()
{
    ChangeSession::get().close();
}

ArrivalScope::ArrivalScope()
{
    ChangeSession::get().interrupt();
}

ArrivalScope::~ArrivalScope()
{
    ChangeSession::get().resume();
}

ArrivalPause::ArrivalPause() noexcept
{
    ChangeSession::get().pauseArrivals();
}

ArrivalPause::~ArrivalPause()
{
    ChangeSession::get().endPause();
}

void whenNothingIsPublished(std::function<void()> task)
{
    ChangeSession::get().whenNothingIsPublished(std::move(task));
}

void recordInverse(std::unique_ptr<Edit> inverse)
{
    ChangeSession::get().record(std::move(inverse));
}

void publishAtEnd(Publisher::ActionType action) noexcept
{
    ChangeSession::get().publishAtEnd(action);
}

void releaseLater(std::unique_ptr<Edit> edit)
{
    if (isChanging())
        ChangeSession::get().releaseLater(std::move(edit));
}

bool isChanging() noexcept
{
    return ChangeSession::get().isOpen();
}

const Compound *lockOn(const Compound &object)
{
    for (const Compound *above = &object; above != nullptr; above = above->Parent()) {
        if (above->IsLocked())
            return above;
    }
    return nullptr;
}

bool mayChange(const Compound &object)
{
    const Compound *const locked = lockOn(object);
    if (locked == nullptr)
        return true;
    const std::string reason = "\"" + locked->GetFQName() + "\" is locked and was not changed.";
    writeLogOnce(reason, LogSeverity::Warning);
    // Inside a guard the refusal of a part is no news to the user, who sees what else was done.
    if (isChanging())
        ChangeSession::get().noteRefusal(reason, *locked);
    else if (modelHooks().refused)
        modelHooks().refused(*locked);
    return false;
}

void refuse(const std::string &reason)
{
    if (ChangeSession::get().writeLogOnce(reason, LogSeverity::Warning) && modelHooks().denied)
        modelHooks().denied(reason, nullptr);
}

void writeLogOnce(const std::string &message, LogSeverity severity)
{
    ChangeSession::get().writeLogOnce(message, severity);
}

} // namespace TAMBO
