// SPDX-License-Identifier: GPL-3.0-or-later
// Finds items by place. Items hang in the chunk of the canvas that holds their position; a search
// goes over the chunks from which the farthest-reaching item could get into the searched rectangle.
#pragma once

#include "QCanvasItem.h"

#include <QMargins>
#include <QSize>

#include <vector>

class ItemIndex
{
public:
    // Items stay in the index, also those outside.
    void setSize(const QSize &size);
    // The item must not be in the index.
    void insert(QCanvasItem &item);
    // Ignores an item that is not in the index.
    void remove(QCanvasItem &item) noexcept;
    // Appends every item whose reach meets the rectangle, in no particular order.
    void collect(const QRect &rect, QCanvasItemList &out) const;

private:
    void spread();
    void hang(QCanvasItem &item, int place) noexcept;
    [[nodiscard]] int chunkAt(int x, int y) const noexcept;
    [[nodiscard]] int columnAt(int x) const noexcept;
    [[nodiscard]] int rowAt(int y) const noexcept;
    [[nodiscard]] QCanvasItem *&head(int place) noexcept;
    static void collectFrom(QCanvasItem *item, const QRect &rect, QCanvasItemList &out);

    QSize m_Size;
    int m_Columns = 0;
    int m_Rows = 0;
    int m_Count = 0;
    // Made with the first item: a canvas that is all lattice needs none.
    std::vector<QCanvasItem *> m_Chunks;
    // Items that reach so far that they would widen every search.
    QCanvasItem *m_Far = nullptr;
    QMargins m_Reach;
};
