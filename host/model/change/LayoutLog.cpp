// SPDX-License-Identifier: GPL-3.0-or-later
#include "LayoutLog.h"

namespace TAMBO {

// An alignment that nobody edits keeps none, one that is edited has room for a few at first.
void LayoutLog::add(const LayoutChange &change)
{
    ++m_Revision;
    if (m_Kept.size() < LayoutChanges::kMostKept && m_First == 0 && m_Count == m_Kept.size()) {
        m_Kept.push_back(change);
        ++m_Count;
        return;
    }
    m_Kept[(m_First + m_Count) % m_Kept.size()] = change;
    if (m_Count < m_Kept.size())
        ++m_Count;
    else
        m_First = (m_First + 1) % m_Kept.size();
}

void LayoutLog::forget() noexcept
{
    ++m_Revision;
    m_First = 0;
    m_Count = 0;
}

std::optional<std::vector<LayoutChange>> LayoutLog::since(std::uint64_t revision) const
{
    if (revision > m_Revision || m_Revision - revision > m_Count)
        return std::nullopt;
    const auto count = std::size_t(m_Revision - revision);
    std::vector<LayoutChange> changes;
    changes.reserve(count);
    for (std::size_t i = m_Count - count; i < m_Count; ++i)
        changes.push_back(m_Kept[(m_First + i) % m_Kept.size()]);
    return changes;
}

} // namespace TAMBO
