// SPDX-License-Identifier: GPL-3.0-or-later
#include "WaitingState.h"

#include <utility>

namespace TAMBO::sessions {

std::optional<StoreEntry> WaitingState::next(std::size_t bytes)
{
    if (!std::exchange(m_HasBegun, true))
        return StoreEntry(StateBegin());
    if (m_IsDone)
        return std::nullopt;
    if (std::optional<StatePart> part = m_Parts.next(bytes))
        return StoreEntry(std::move(*part));
    m_IsDone = true;
    return StoreEntry(StateSwitch());
}

} // namespace TAMBO::sessions
