// SPDX-License-Identifier: GPL-3.0-or-later
#include "HeaderItems.h"

#include "Alignment.h"
#include "Check.h"
#include "ColItem.h"
#include "IdItem.h"

HeaderItems::HeaderItems(TAMBO::Alignment *alignment, const Measures &measures)
    : m_Target(alignment),
      m_Columns(alignment->width()),
      m_Measures(measures),
      m_Reach(QCanvasText::farthest(measures.font, 1, Qt::AlignHCenter))
{ }

HeaderItems::~HeaderItems() = default;

SlotRange HeaderItems::slotsIn(const QRect &rect) const
{
    const SlotRange columns =
        placesIn(rect.left() - m_Reach, rect.right() + m_Reach, m_Measures.cellWidth, m_Columns);
    return {2 * columns.begin, 2 * columns.end};
}

QCanvasItem *HeaderItems::makeItem(QCanvas &canvas, unsigned long slot)
{
    const unsigned long col = slot / 2;
    const int x = centreOf(col, m_Measures.cellWidth);
    const int line = m_Measures.lineHeight;
    if (slot % 2 == 0) {
        auto *consensus = new IdItem(m_Target, col, m_Measures.font, &canvas, x, 2.0 * line);
        TAMBO_CHECK_PTR(consensus, "KalmoIO", 95);
        place(*consensus, col, 2);
        return consensus;
    }
    auto *mark = new ColItem(m_Target, col, m_Measures.font, &canvas, x, 3.0 * line);
    TAMBO_CHECK_PTR(mark, "KalmoIO", 98);
    place(*mark, col, 3);
    mark->setZ(3.0);
    return mark;
}

int HeaderItems::centreOf(unsigned long col, int cellWidth)
{
    return static_cast<int>((static_cast<double>(col) + 0.5) * cellWidth);
}

void HeaderItems::place(PlacedText &item, unsigned long col, int line) const
{
    if (m_Measures.isOwnSize)
        return;
    const int width = m_Measures.cellWidth;
    const int height = m_Measures.lineHeight;
    item.setPlace(QRect(static_cast<int>(col) * width, line * height, width, height),
                  m_Measures.hasLetters);
}
