// SPDX-License-Identifier: GPL-3.0-or-later
#include "NameItems.h"

#include "Alignment.h"
#include "Check.h"
#include "RowItem.h"

NameItems::NameItems(TAMBO::Alignment *alignment, unsigned long rows, const Measures &measures)
    : m_Target(alignment),
      m_Rows(rows),
      m_Measures(measures),
      m_Reach(QCanvasText::farthest(measures.font, 1, 0))
{ }

NameItems::~NameItems() = default;

SlotRange NameItems::slotsIn(const QRect &rect) const
{
    return placesIn(rect.top() - m_Reach, rect.bottom() + m_Reach, m_Measures.cellHeight, m_Rows);
}

QCanvasItem *NameItems::makeItem(QCanvas &canvas, unsigned long slot)
{
    const int height = m_Measures.cellHeight;
    const int y = static_cast<int>(slot) * height;
    auto *item = new RowItem(m_Target, slot, m_Measures.font, &canvas, m_Measures.right, y);
    TAMBO_CHECK_PTR(item, "KalmoIO", 118);
    if (!m_Measures.isOwnSize)
        item->setPlace(QRect(0, y, m_Measures.right, height), m_Measures.hasLetters);
    item->setZ(3.0);
    return item;
}
