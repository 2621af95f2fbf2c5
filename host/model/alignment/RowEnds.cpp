// SPDX-License-Identifier: GPL-3.0-or-later
#include "RowEnds.h"

namespace TAMBO {

RowEnds::Column RowEnds::lastOfOthers(const Rows &rows, Column own)
{
    if (!m_IsKnown) {
        for (const std::unique_ptr<AlignmentRow> &row : rows)
            ++m_Counts[row->cells().end()];
        m_IsKnown = true;
    }
    auto last = m_Counts.rbegin();
    if (last != m_Counts.rend() && last->first == own && last->second == 1)
        ++last;
    return last == m_Counts.rend() ? 0 : last->first;
}

void RowEnds::change(Column from, Column to)
{
    if (!m_IsKnown || from == to)
        return;
    const auto former = m_Counts.find(from);
    if (--former->second == 0)
        m_Counts.erase(former);
    ++m_Counts[to];
}

} // namespace TAMBO
