// SPDX-License-Identifier: GPL-3.0-or-later
#include "PointerSet.h"

#include <gtest/gtest.h>

#include <random>
#include <set>
#include <vector>

namespace PointerSetTest {

using TAMBO::PointerSet;

TEST(PointerSet, OneOfNothingHoldsNothing)
{
    const int object = 0;
    const PointerSet<int> set;
    EXPECT_TRUE(set.empty());
    EXPECT_FALSE(set.contains(&object));
    EXPECT_FALSE(set.contains(nullptr));
    EXPECT_FALSE(PointerSet<int>(100).contains(&object));
}

TEST(PointerSet, HoldsWhatWasPutInOnce)
{
    const std::vector<int> objects(3);
    PointerSet<int> set;
    EXPECT_TRUE(set.insert(&objects[1]));
    EXPECT_FALSE(set.insert(&objects[1]));
    EXPECT_EQ(set.size(), 1U);
    EXPECT_FALSE(set.contains(&objects[0]));
    EXPECT_TRUE(set.contains(&objects[1]));
}

TEST(PointerSet, HoldsNullAsAnyOther)
{
    PointerSet<int> set;
    EXPECT_TRUE(set.insert(nullptr));
    EXPECT_FALSE(set.insert(nullptr));
    EXPECT_TRUE(set.contains(nullptr));
    EXPECT_EQ(set.size(), 1U);
    EXPECT_FALSE(set.empty());
}

TEST(PointerSet, IsMadeOfARange)
{
    const std::vector<int> objects(3);
    const std::vector<const int *> some = {&objects[0], &objects[2], &objects[0]};
    const PointerSet<int> set(some.begin(), some.end());
    EXPECT_EQ(set.size(), 2U);
    EXPECT_FALSE(set.contains(&objects[1]));
    EXPECT_TRUE(set.contains(&objects[2]));
}

TEST(PointerSet, HoldsAsAnyOtherSetHoweverItHasGrown)
{
    std::mt19937 random(1);
    const std::vector<int> objects(5000);
    for (const std::size_t expected : {0U, 10U, 5000U}) {
        PointerSet<int> set(expected);
        std::set<const int *> other;
        for (int i = 0; i < 4000; ++i) {
            const int *object = &objects[random() % objects.size()];
            ASSERT_EQ(set.insert(object), other.insert(object).second);
        }
        ASSERT_EQ(set.size(), other.size());
        for (const int &object : objects)
            ASSERT_EQ(set.contains(&object), other.contains(&object));
    }
}

} // namespace PointerSetTest
