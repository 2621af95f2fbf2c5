// SPDX-License-Identifier: GPL-3.0-or-later
#include "RowOrders.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>
#include <random>

namespace RowOrdersTest {

using companion::RowMove;
using companion::RowOrder;

RowOrder plain(unsigned long rows)
{
    RowOrder order(rows);
    std::iota(order.begin(), order.end(), 0UL);
    return order;
}

TEST(RowOrders, RowsMoveToTheTopInTheirOrder)
{
    EXPECT_EQ(companion::moved(6, {1, 4, 5}, RowMove::ToTop), (RowOrder{1, 4, 5, 0, 2, 3}));
    EXPECT_EQ(companion::moved(3, {0, 1}, RowMove::ToTop), plain(3));
}

TEST(RowOrders, ARunOfRowsStepsOverOneRow)
{
    EXPECT_EQ(companion::moved(6, {2, 3}, RowMove::Up), (RowOrder{0, 2, 3, 1, 4, 5}));
    EXPECT_EQ(companion::moved(6, {2, 3}, RowMove::Down), (RowOrder{0, 1, 4, 2, 3, 5}));
    EXPECT_EQ(companion::moved(6, {1, 4}, RowMove::Up), (RowOrder{1, 0, 2, 4, 3, 5}));
    EXPECT_EQ(companion::moved(6, {1, 4}, RowMove::Down), (RowOrder{0, 2, 1, 3, 5, 4}));
}

TEST(RowOrders, ARunAtTheEndStaysAndTheOthersMove)
{
    EXPECT_EQ(companion::moved(5, {0, 1}, RowMove::Up), plain(5));
    EXPECT_EQ(companion::moved(5, {0, 1, 4}, RowMove::Up), (RowOrder{0, 1, 2, 4, 3}));
    EXPECT_EQ(companion::moved(5, {0, 3, 4}, RowMove::Down), (RowOrder{1, 0, 2, 3, 4}));
    EXPECT_EQ(companion::moved(5, plain(5), RowMove::Down), plain(5));
}

TEST(RowOrders, MovingKeepsTheOrderOfTheMovedAndOfTheOthers)
{
    std::mt19937 random(3);
    for (int turn = 0; turn < 300; ++turn) {
        const unsigned long rows = 1 + random() % 12;
        std::vector<unsigned long> chosen;
        for (unsigned long row = 0; row < rows; ++row)
            if (random() % 3 == 0)
                chosen.push_back(row);
        for (const RowMove move : {RowMove::ToTop, RowMove::Up, RowMove::Down}) {
            const RowOrder order = companion::moved(rows, chosen, move);
            RowOrder sorted = order;
            std::ranges::sort(sorted);
            ASSERT_EQ(sorted, plain(rows));
            RowOrder kept;
            RowOrder others;
            for (unsigned long place = 0; place < rows; ++place) {
                const unsigned long row = order[place];
                const bool isChosen = std::ranges::binary_search(chosen, row);
                (isChosen ? kept : others).push_back(row);
                const long step = long(row) - long(place);
                const long most = move == RowMove::Up ? 1 : -1;
                if (isChosen && move != RowMove::ToTop) {
                    ASSERT_TRUE(step == 0 || step == most);
                }
            }
            ASSERT_EQ(kept, chosen);
            ASSERT_TRUE(std::ranges::is_sorted(others));
        }
    }
}

TEST(RowOrders, AGroupComesTogetherAtThePlaceOfItsFirstRow)
{
    constexpr std::uint32_t none = companion::kNoGroup;
    EXPECT_EQ(companion::grouped({none, 0, none, 1, 0, 1, none}), (RowOrder{0, 1, 4, 2, 3, 5, 6}));
    EXPECT_EQ(companion::grouped({}), RowOrder{});
    EXPECT_EQ(companion::grouped({none, none}), plain(2));
}

TEST(RowOrders, GroupsAreThoseOfAPlainSearch)
{
    std::mt19937 random(5);
    for (int turn = 0; turn < 200; ++turn) {
        std::vector<std::uint32_t> groups(random() % 20);
        for (std::uint32_t &group : groups)
            group = random() % 4 == 0 ? companion::kNoGroup : std::uint32_t(random() % 5);
        RowOrder expected;
        for (unsigned long row = 0; row < groups.size(); ++row) {
            if (std::ranges::find(expected, row) != expected.end())
                continue;
            expected.push_back(row);
            for (unsigned long each = row + 1; each < groups.size(); ++each)
                if (groups[row] != companion::kNoGroup && groups[each] == groups[row])
                    expected.push_back(each);
        }
        ASSERT_EQ(companion::grouped(groups), expected);
    }
}

TEST(RowOrders, NamesAreInTheOrderOfTheirNumbers)
{
    const std::vector<std::string> names = {"",
                                            "2",
                                            "10",
                                            "A1",
                                            "a1b",
                                            "a2",
                                            "a10",
                                            "a10b2",
                                            "a10b10",
                                            "A11",
                                            "b",
                                            "seq9/1-20",
                                            "seq9/3-4",
                                            "seq10",
                                            "seq010_x",
                                            "seq11",
                                            "t007",
                                            "t8",
                                            "t99999999999999999999",
                                            "t100000000000000000000"};
    for (std::size_t i = 0; i + 1 < names.size(); ++i)
        EXPECT_LT(companion::naturalKey(names[i]), companion::naturalKey(names[i + 1]))
            << names[i] << " " << names[i + 1];
}

TEST(RowOrders, NamesThatDifferInZerosOrCapitalsAloneStandBesideEachOther)
{
    std::vector<std::string> names = {"b1", "A01", "a1", "a2", "A1", "a01"};
    std::ranges::sort(names, {}, companion::naturalKey);
    EXPECT_EQ(names, (std::vector<std::string>{"A01", "A1", "a01", "a1", "a2", "b1"}));
}

} // namespace RowOrdersTest
