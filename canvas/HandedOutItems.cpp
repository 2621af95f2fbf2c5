// SPDX-License-Identifier: GPL-3.0-or-later
#include "HandedOutItems.h"

#include "QCanvasItem.h"

#include <algorithm>
#include <utility>

HandedOutItems::HandedOutItems(HandedOutItems *&holder) : m_Holder(holder)
{
    m_Holder = this;
    deleteLater();
}

HandedOutItems::~HandedOutItems()
{
    m_Holder = nullptr;
    buryAll();
    for (QCanvasItem *item : m_Buried)
        delete item;
}

QCanvasItem *HandedOutItems::find(unsigned long cell) const
{
    const auto found = m_Cells.find(cell);
    return found == m_Cells.end() ? nullptr : found->second;
}

void HandedOutItems::add(unsigned long cell, QCanvasItem *item)
{
    m_Cells.emplace(cell, item);
}

void HandedOutItems::bury(QCanvasItem *item)
{
    item->m_Host = nullptr;
    m_Buried.push_back(item);
}

void HandedOutItems::buryAll()
{
    for (const auto &[cell, item] : std::exchange(m_Cells, {}))
        bury(item);
}

void HandedOutItems::disown(const QCanvasItem *item)
{
    std::erase_if(m_Cells, [item](const auto &entry) { return entry.second == item; });
}
