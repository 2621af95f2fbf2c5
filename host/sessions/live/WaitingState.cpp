// SPDX-License-Identifier: GPL-3.0-or-later
#include "WaitingState.h"

#include <utility>

namespace TAMBO::sessions {

StoreEntry WaitingState::next(std::size_t bytes)
{
    if (const std::optional<StateBegin> begin = std::exchange(m_Begin, std::nullopt))
        return *begin;
    if (std::optional<StatePart> part = m_Parts.next(bytes))
        return std::move(*part);
    m_IsDone = true;
    return StateSwitch();
}

void WaitingState::goBack()
{
    const std::size_t lasting = m_Parts.goBack();
    // Before anything was handed over nothing has to be taken back.
    if (!m_Begin)
        m_Begin = StateBegin{lasting};
}

} // namespace TAMBO::sessions
