// SPDX-License-Identifier: GPL-3.0-or-later
#include "ItemIndex.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

constexpr int kChunkWidth = 256;
constexpr int kChunkHeight = 64;
constexpr int kFar = 4096;
// The place of items that hang in no chunk.
constexpr int kFarPlace = 0;

int whole(double position) noexcept
{
    return static_cast<int>(std::floor(position));
}

int chunksFor(int length, int chunk) noexcept
{
    return std::max(1, length / chunk + 1);
}

} // namespace

void ItemIndex::setSize(const QSize &size)
{
    m_Size = size;
    if (m_Count == 0)
        m_Chunks.clear();
    if (!m_Chunks.empty())
        spread();
}

// Hangs all items into chunks of the present size.
void ItemIndex::spread()
{
    const std::vector<QCanvasItem *> old = std::exchange(m_Chunks, {});
    m_Columns = chunksFor(m_Size.width(), kChunkWidth);
    m_Rows = chunksFor(m_Size.height(), kChunkHeight);
    m_Chunks.assign(static_cast<std::size_t>(m_Columns) * static_cast<std::size_t>(m_Rows),
                    nullptr);
    for (QCanvasItem *item : old) {
        while (item != nullptr) {
            QCanvasItem *next = item->m_IndexAfter;
            hang(*item, chunkAt(whole(item->m_X), whole(item->m_Y)));
            item = next;
        }
    }
}

void ItemIndex::insert(QCanvasItem &item)
{
    if (m_Count == 0) {
        m_Reach = {};
        m_Chunks.clear();
    }
    if (m_Chunks.empty())
        spread();
    ++m_Count;
    const QPoint at(whole(item.m_X), whole(item.m_Y));
    const QRect reach = item.reach();
    const QMargins around(at.x() - reach.left(), at.y() - reach.top(), reach.right() - at.x(),
                          reach.bottom() - at.y());
    const int most = std::max({around.left(), around.top(), around.right(), around.bottom()});
    if (most > kFar) {
        hang(item, kFarPlace);
        return;
    }
    m_Reach = {std::max(m_Reach.left(), around.left()), std::max(m_Reach.top(), around.top()),
               std::max(m_Reach.right(), around.right()),
               std::max(m_Reach.bottom(), around.bottom())};
    hang(item, chunkAt(at.x(), at.y()));
}

void ItemIndex::remove(QCanvasItem &item) noexcept
{
    if (item.m_IndexPlace < 0)
        return;
    if (item.m_IndexBefore != nullptr)
        item.m_IndexBefore->m_IndexAfter = item.m_IndexAfter;
    else
        head(item.m_IndexPlace) = item.m_IndexAfter;
    if (item.m_IndexAfter != nullptr)
        item.m_IndexAfter->m_IndexBefore = item.m_IndexBefore;
    item.m_IndexPlace = -1;
    --m_Count;
}

void ItemIndex::collect(const QRect &rect, QCanvasItemList &out) const
{
    if (m_Count == 0 || rect.isEmpty())
        return;
    collectFrom(m_Far, rect, out);
    const int left = columnAt(rect.left() - m_Reach.right());
    const int right = columnAt(rect.right() + m_Reach.left());
    const int top = rowAt(rect.top() - m_Reach.bottom());
    const int bottom = rowAt(rect.bottom() + m_Reach.top());
    for (int row = top; row <= bottom; ++row) {
        for (int column = left; column <= right; ++column)
            collectFrom(m_Chunks[static_cast<std::size_t>(row) * m_Columns + column], rect, out);
    }
}

void ItemIndex::collectFrom(QCanvasItem *item, const QRect &rect, QCanvasItemList &out)
{
    for (; item != nullptr; item = item->m_IndexAfter) {
        if (item->reach().intersects(rect))
            out.append(item);
    }
}

void ItemIndex::hang(QCanvasItem &item, int place) noexcept
{
    QCanvasItem *&first = head(place);
    item.m_IndexPlace = place;
    item.m_IndexBefore = nullptr;
    item.m_IndexAfter = first;
    if (first != nullptr)
        first->m_IndexBefore = &item;
    first = &item;
}

QCanvasItem *&ItemIndex::head(int place) noexcept
{
    return place == kFarPlace ? m_Far : m_Chunks[static_cast<std::size_t>(place) - 1];
}

// Positions outside the canvas belong to the chunk at its edge.
int ItemIndex::columnAt(int x) const noexcept
{
    return x < 0 ? 0 : std::min(x / kChunkWidth, m_Columns - 1);
}

int ItemIndex::rowAt(int y) const noexcept
{
    return y < 0 ? 0 : std::min(y / kChunkHeight, m_Rows - 1);
}

int ItemIndex::chunkAt(int x, int y) const noexcept
{
    return rowAt(y) * m_Columns + columnAt(x) + 1;
}
