// SPDX-License-Identifier: GPL-3.0-or-later
#include "ReplayCost.h"

#include <numeric>
#include <variant>

namespace TAMBO::sessions {

void ReplayCost::add(const StoreEntry &entry)
{
    if (const auto *const part = std::get_if<StatePart>(&entry)) {
        m_NextState.push_back(part->content.size() * kByte);
    } else if (const auto *const record = std::get_if<Record>(&entry)) {
        m_Records += kRecord + record->content.size() * kByte;
    } else if (const auto *const begin = std::get_if<StateBegin>(&entry)) {
        m_NextState.resize(std::min(m_NextState.size(), begin->kept));
    } else if (std::holds_alternative<StateSwitch>(entry)) {
        m_State = std::accumulate(m_NextState.begin(), m_NextState.end(), std::uint64_t(0));
        m_NextState.clear();
        m_Records = 0;
    }
}

} // namespace TAMBO::sessions
