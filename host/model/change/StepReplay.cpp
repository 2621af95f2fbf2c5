// SPDX-License-Identifier: GPL-3.0-or-later
#include "StepReplay.h"

#include "ChangeSession.h"

namespace TAMBO {

StepReplay::StepReplay(const std::string &name) : m_Scope(Publisher::Update)
{
    ChangeSession::get().beginReplay(name);
}

void StepReplay::apply(Edit &edit)
{
    recordInverse(edit.apply());
}

void StepReplay::endOwn() noexcept
{
    ChangeSession::get().endOwn();
}

void StepReplay::takeBack()
{
    ChangeSession::get().discard();
}

} // namespace TAMBO
