// SPDX-License-Identifier: GPL-3.0-or-later
// A series of a canvas with those of its items that have been made. They stay until the series
// goes, as if all had been made with it; when they become very many, those that nobody holds or has
// changed go earlier. Belongs to the canvas.
#pragma once

#include "ItemSeries.h"
#include "QCanvasItem.h"

#include <functional>
#include <memory>
#include <unordered_map>

class HandedOutItems;
class ItemIndex;

class SeriesItems
{
public:
    // More than the largest screens show.
    static constexpr std::size_t kMostKept = 16384;

    // Has the series make the item of a slot, and lists it nowhere.
    using Maker = std::function<QCanvasItem *(ItemSeries &series, unsigned long slot)>;

    // The items are numbered from firstSerial on.
    SeriesItems(std::unique_ptr<ItemSeries> series, unsigned long firstSerial, Maker maker);
    ~SeriesItems();
    SeriesItems(const SeriesItems &) = delete;
    SeriesItems &operator=(const SeriesItems &) = delete;

    [[nodiscard]] const ItemSeries *series() const noexcept { return m_Series.get(); }
    [[nodiscard]] bool has(const QCanvasItem &item) const noexcept;

    // Appends those that may draw into the rectangle, but for those that the index has.
    void collect(const QRect &rect, QCanvasItemList &out);
    // Appends all.
    void collectAll(QCanvasItemList &out);
    // After painting the rectangle.
    void trim(const QRect &painted, const HandedOutItems *handedOut);
    // All items leave the canvas and its index; those that are handed out live on.
    void bury(ItemIndex &index, HandedOutItems *handedOut);
    // The item is being deleted by somebody else.
    void disown(const QCanvasItem &item);

private:
    [[nodiscard]] QCanvasItem *itemIn(unsigned long slot);

    std::unique_ptr<ItemSeries> m_Series;
    unsigned long m_FirstSerial;
    Maker m_Maker;
    // By slot; null where there is none.
    std::unordered_map<unsigned long, QCanvasItem *> m_Items;
};
