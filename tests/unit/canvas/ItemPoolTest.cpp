// SPDX-License-Identifier: GPL-3.0-or-later
#include "ItemPool.h"

#include <gtest/gtest.h>

#include <cstring>
#include <set>
#include <vector>

namespace ItemPoolTest {

TEST(ItemPool, BlocksDoNotOverlap)
{
    std::vector<void *> blocks;
    for (int i = 0; i < 300; ++i) {
        blocks.push_back(ItemPool::take(100));
        std::memset(blocks.back(), i % 251, 100);
    }
    for (int i = 0; i < 300; ++i) {
        const auto *bytes = static_cast<const unsigned char *>(blocks[static_cast<size_t>(i)]);
        EXPECT_EQ(bytes[0], i % 251);
        EXPECT_EQ(bytes[99], i % 251);
    }
    for (void *block : blocks)
        ItemPool::giveBack(block, 100);
}

TEST(ItemPool, FreedBlocksOfASizeAreGivenOutAgain)
{
#if defined(__SANITIZE_ADDRESS__)
    SUCCEED() << "the pool is off where deleted items must be found out";
#else
    void *first = ItemPool::take(200);
    ItemPool::giveBack(first, 200);
    EXPECT_EQ(ItemPool::take(200), first);
    ItemPool::giveBack(first, 200);
#endif
}

TEST(ItemPool, LargeBlocksAreServedToo)
{
    void *block = ItemPool::take(5000);
    std::memset(block, 1, 5000);
    ItemPool::giveBack(block, 5000);
}

} // namespace ItemPoolTest
