// SPDX-License-Identifier: GPL-3.0-or-later
#include "SeriesItems.h"

#include "HandedOutItems.h"
#include "ItemIndex.h"

#include <utility>

SeriesItems::SeriesItems(std::unique_ptr<ItemSeries> series, unsigned long firstSerial, Maker maker)
    : m_Series(std::move(series)), m_FirstSerial(firstSerial), m_Maker(std::move(maker))
{ }

SeriesItems::~SeriesItems() = default;

bool SeriesItems::has(const QCanvasItem &item) const noexcept
{
    return item.m_Serial >= m_FirstSerial && item.m_Serial - m_FirstSerial < m_Series->slotCount();
}

void SeriesItems::collect(const QRect &rect, QCanvasItemList &out)
{
    const SlotRange range = m_Series->slotsIn(rect);
    for (unsigned long slot = range.begin; slot < range.end; ++slot) {
        QCanvasItem *item = itemIn(slot);
        if (item != nullptr && item->m_Visible && item->m_IndexPlace < 0 &&
            item->reach().intersects(rect))
            out.append(item);
    }
}

void SeriesItems::collectAll(QCanvasItemList &out)
{
    const unsigned long count = m_Series->slotCount();
    for (unsigned long slot = 0; slot < count; ++slot) {
        if (QCanvasItem *item = itemIn(slot))
            out.append(item);
    }
}

QCanvasItem *SeriesItems::itemIn(unsigned long slot)
{
    const auto [place, isNew] = m_Items.try_emplace(slot, nullptr);
    if (!isNew)
        return place->second;
    QCanvasItem *item = m_Maker(*m_Series, slot);
    if (item == nullptr)
        return nullptr;
    item->m_Serial = m_FirstSerial + slot;
    item->m_Visible = true;
    m_Items[slot] = item;
    return item;
}

void SeriesItems::trim(const QRect &painted, const HandedOutItems *handedOut)
{
    if (m_Items.size() <= kMostKept)
        return;
    const SlotRange range = m_Series->slotsIn(painted);
    const bool keepsPainted = range.end - range.begin <= kMostKept;
    std::erase_if(m_Items, [&](const auto &entry) {
        const auto [slot, item] = entry;
        if (keepsPainted && slot >= range.begin && slot < range.end)
            return false;
        if (item == nullptr)
            return true;
        const bool isHeld = item->m_HandedOut && handedOut != nullptr;
        if (isHeld || item->m_IsChanged || !item->m_Visible)
            return false;
        m_Series->itemGoes(item);
        item->m_Host = nullptr;
        delete item;
        return true;
    });
}

void SeriesItems::bury(ItemIndex &index, HandedOutItems *handedOut)
{
    for (const auto &[slot, item] : std::exchange(m_Items, {})) {
        if (item == nullptr)
            continue;
        index.remove(*item);
        if (item->m_HandedOut && handedOut != nullptr) {
            handedOut->bury(item);
        } else {
            item->m_Host = nullptr;
            delete item;
        }
    }
}

void SeriesItems::disown(const QCanvasItem &item)
{
    QCanvasItem *&made = m_Items[item.m_Serial - m_FirstSerial];
    m_Series->itemGoes(std::exchange(made, nullptr));
}
