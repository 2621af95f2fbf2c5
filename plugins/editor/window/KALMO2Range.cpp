// SPDX-License-Identifier: GPL-3.0-or-later
// The commands that act on the column range.
#include "DataPoint.h"
#include "KALMO2.h"
#include "View.h"

namespace ZEP {

void KALMO2::RangeFull()
{
    if (m_Data == nullptr)
        return;
    const DataPoint<TAMBO::Alignment> guard(this, m_Data);
    if (!guard.m_good)
        return;
    guard->rangeAll();
    m_Header->SetRange(m_Data->range().first, m_Data->range().second);
    commUpdate();
}

void KALMO2::RangeSelect()
{
    if (m_Data == nullptr)
        return;
    const DataPoint<TAMBO::Alignment> guard(this, m_Data);
    if (!guard.m_good)
        return;
    guard->select(m_Data->range(), true);
    commUpdate();
}

// Kept: instead of removing every column, the window stops showing the alignment, which stays as it
// is.
void KALMO2::RangeRemove()
{
    if (m_Data == nullptr)
        return;
    const TAMBO::Alignment::Range range = m_Data->range();
    if (range.first >= range.second)
        return;
    if (range.first == 0 && range.second == m_Data->width()) {
        Clear();
        commUpdate();
        return;
    }
    const DataPoint<TAMBO::Alignment> guard(this, m_Data);
    if (!guard.m_good)
        return;
    guard->remove(range);
    ReCreate();
}

} // namespace ZEP
