// SPDX-License-Identifier: GPL-3.0-or-later
// Items of a canvas that stand in a row or a column and are made when somebody asks for them: the
// names beside a grid, the marks over it.
#pragma once

class QCanvas;
class QCanvasItem;
class QRect;

// Half-open.
struct SlotRange
{
    unsigned long begin = 0;
    unsigned long end = 0;

    friend constexpr bool operator==(const SlotRange &, const SlotRange &) = default;
};

// Each item has a slot, by which they are ordered as if made one after the other. A slot may be
// empty.
class ItemSeries
{
public:
    ItemSeries() = default;
    virtual ~ItemSeries();
    ItemSeries(const ItemSeries &) = delete;
    ItemSeries &operator=(const ItemSeries &) = delete;

    [[nodiscard]] virtual unsigned long slotCount() const = 0;
    // A range that holds every slot whose item may draw into the rectangle. It may be too large,
    // but must be found without looking at the other slots.
    [[nodiscard]] virtual SlotRange slotsIn(const QRect &rect) const = 0;
    // A new item of this canvas, which becomes visible; null for an empty slot.
    [[nodiscard]] virtual QCanvasItem *makeItem(QCanvas &canvas, unsigned long slot) = 0;
    // An item of the series is about to go while the series stays.
    virtual void itemGoes(QCanvasItem *item);

protected:
    // The places that share a pixel with [from, to], when each has so many pixels and the first
    // begins at 0.
    [[nodiscard]] static SlotRange placesIn(int from, int to, int size, unsigned long count);
};
