// SPDX-License-Identifier: GPL-3.0-or-later
#include "PointerMap.h"

#include <gtest/gtest.h>

#include <map>
#include <random>
#include <vector>

namespace PointerMapTest {

using TAMBO::PointerMap;

TEST(PointerMap, OneOfNothingHoldsNothing)
{
    const int object = 0;
    const PointerMap<int, int> map;
    EXPECT_TRUE(map.empty());
    EXPECT_EQ(map.find(object), nullptr);
    map.forEachWhile([](const int &, int) {
        ADD_FAILURE();
        return true;
    });
}

TEST(PointerMap, AValueIsMadeWhenItIsFirstAskedFor)
{
    const std::vector<int> objects(3);
    PointerMap<int, int> map;
    EXPECT_EQ(map[objects[1]], 0);
    map[objects[1]] += 7;
    EXPECT_FALSE(map.insert(objects[1]).second);
    EXPECT_TRUE(map.insert(objects[2]).second);
    ASSERT_NE(map.find(objects[1]), nullptr);
    EXPECT_EQ(*map.find(objects[1]), 7);
    EXPECT_EQ(map.find(objects[0]), nullptr);
    EXPECT_EQ(map.size(), 2U);
}

TEST(PointerMap, VisitingEndsWhenItIsTold)
{
    const std::vector<int> objects(9);
    PointerMap<int, int> map;
    for (const int &object : objects)
        map[object] = 1;
    int visits = 0;
    map.forEachWhile([&](const int &, int) { return ++visits < 4; });
    EXPECT_EQ(visits, 4);
}

TEST(PointerMap, HoldsAsAnyOtherMapHoweverItHasGrown)
{
    std::mt19937 random(1);
    const std::vector<int> objects(5000);
    for (const std::size_t expected : {0U, 10U, 5000U}) {
        PointerMap<int, int> map(expected);
        std::map<const int *, int> other;
        for (int i = 0; i < 4000; ++i) {
            const int &object = objects[random() % objects.size()];
            map[object] += i;
            other[&object] += i;
        }
        ASSERT_EQ(map.size(), other.size());
        std::map<const int *, int> visited;
        map.forEachWhile([&](const int &object, int value) {
            visited[&object] = value;
            return true;
        });
        ASSERT_EQ(visited, other);
        for (const auto &[object, value] : other)
            ASSERT_EQ(*map.find(*object), value);
    }
}

} // namespace PointerMapTest
