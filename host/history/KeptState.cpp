// SPDX-License-Identifier: GPL-3.0-or-later
#include "KeptState.h"

#include "History.h"

namespace TAMBO {

KeptState::KeptState(History &history, const Compound &object)
    : m_History(history), m_Number(history.keepState(object))
{ }

KeptState::~KeptState()
{
    m_History.dropState(m_Number);
}

} // namespace TAMBO
