// SPDX-License-Identifier: GPL-3.0-or-later
#include "ItemIndex.h"

#include "QCanvasRectangle.h"

#include <gtest/gtest.h>

#include <memory>
#include <random>
#include <set>
#include <vector>

namespace ItemIndexTest {

using Items = std::vector<std::unique_ptr<QCanvasRectangle>>;

std::set<QCanvasItem *> found(const ItemIndex &index, const QRect &rect)
{
    QCanvasItemList items;
    index.collect(rect, items);
    const std::set<QCanvasItem *> unique(items.begin(), items.end());
    EXPECT_EQ(unique.size(), static_cast<size_t>(items.size())) << "an item came twice";
    return unique;
}

std::set<QCanvasItem *> expected(const Items &items, const QRect &rect)
{
    std::set<QCanvasItem *> result;
    for (const auto &item : items) {
        if (item->boundingRect().intersects(rect))
            result.insert(item.get());
    }
    return result;
}

// Also with positions and sizes that chunk edges, the canvas's edge and far-reaching items meet.
Items randomItems(ItemIndex &index, unsigned int seed)
{
    std::mt19937 random(seed);
    std::uniform_int_distribution<int> place(-300, 2300);
    std::uniform_int_distribution<int> length(1, 300);
    Items items;
    for (int i = 0; i < 400; ++i) {
        const int width = i % 50 == 0 ? 100000 : length(random);
        items.push_back(std::make_unique<QCanvasRectangle>(place(random), place(random), width,
                                                           length(random), nullptr));
        index.insert(*items.back());
    }
    return items;
}

const QRect kSearches[] = {QRect(0, 0, 1, 1),           QRect(255, 63, 2, 2),
                           QRect(500, 100, 700, 900),   QRect(-400, -400, 500, 500),
                           QRect(1990, 1990, 400, 400), QRect(50000, 100, 10, 2000)};

TEST(ItemIndex, FindsExactlyTheItemsThatReachTheRectangle)
{
    ItemIndex index;
    index.setSize({2000, 2000});
    const Items items = randomItems(index, 1);
    for (const QRect &rect : kSearches)
        EXPECT_EQ(found(index, rect), expected(items, rect));
}

TEST(ItemIndex, ItemsStayFindableWhenTheCanvasChangesItsSize)
{
    ItemIndex index;
    const Items items = randomItems(index, 2);
    for (const QSize &size : {QSize(2000, 2000), QSize(10, 5000), QSize(0, 0)}) {
        index.setSize(size);
        for (const QRect &rect : kSearches)
            EXPECT_EQ(found(index, rect), expected(items, rect));
    }
}

TEST(ItemIndex, RemovedItemsAreNotFound)
{
    ItemIndex index;
    index.setSize({2000, 2000});
    Items items = randomItems(index, 3);
    for (size_t i = 0; i < items.size(); i += 2) {
        index.remove(*items[i]);
        items[i].reset();
    }
    std::erase(items, nullptr);
    for (const QRect &rect : kSearches)
        EXPECT_EQ(found(index, rect), expected(items, rect));
    for (const auto &item : items)
        index.remove(*item);
    EXPECT_TRUE(found(index, QRect(-1000, -1000, 200000, 10000)).empty());
}

TEST(ItemIndex, RemovingAnItemThatIsNotInItDoesNothing)
{
    ItemIndex index;
    QCanvasRectangle in(0, 0, 5, 5, nullptr);
    QCanvasRectangle out(0, 0, 5, 5, nullptr);
    index.insert(in);
    index.remove(out);
    EXPECT_EQ(found(index, QRect(0, 0, 5, 5)).size(), 1U);
    index.remove(in);
}

} // namespace ItemIndexTest
