// SPDX-License-Identifier: GPL-3.0-or-later
#include "ReplayCost.h"

#include <variant>

namespace TAMBO::sessions {

void ReplayCost::add(const StoreEntry &entry)
{
    if (const auto *const part = std::get_if<StatePart>(&entry)) {
        m_NextState += part->content.size() * kByte;
    } else if (const auto *const record = std::get_if<Record>(&entry)) {
        m_Records += kRecord + record->content.size() * kByte;
    } else if (std::holds_alternative<StateBegin>(entry)) {
        m_NextState = 0;
    } else if (std::holds_alternative<StateSwitch>(entry)) {
        m_State = m_NextState;
        m_Records = 0;
    }
}

} // namespace TAMBO::sessions
