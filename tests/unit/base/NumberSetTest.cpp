// SPDX-License-Identifier: GPL-3.0-or-later
#include "NumberSet.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <numeric>
#include <random>
#include <set>
#include <vector>

namespace NumberSetTest {

using TAMBO::NumberSet;

constexpr std::uint32_t kHighest = std::numeric_limits<std::uint32_t>::max();

TEST(NumberSet, OneOfNothingHoldsNothing)
{
    const NumberSet set({});
    EXPECT_FALSE(set.contains(0));
    EXPECT_FALSE(set.contains(kHighest));
    EXPECT_EQ(set.rangeCount(), 0U);
}

TEST(NumberSet, AMillionInARowAreOneRange)
{
    std::vector<std::uint32_t> numbers(1'000'000);
    std::iota(numbers.begin(), numbers.end(), 17U);
    const NumberSet set(std::move(numbers));
    EXPECT_EQ(set.rangeCount(), 1U);
    EXPECT_FALSE(set.contains(16));
    EXPECT_TRUE(set.contains(17));
    EXPECT_TRUE(set.contains(1'000'016));
    EXPECT_FALSE(set.contains(1'000'017));
}

TEST(NumberSet, HoldsTheFirstAndTheLastThereIs)
{
    const NumberSet set({kHighest, 0, 0});
    EXPECT_TRUE(set.contains(0));
    EXPECT_FALSE(set.contains(1));
    EXPECT_FALSE(set.contains(kHighest - 1));
    EXPECT_TRUE(set.contains(kHighest));
    EXPECT_EQ(set.rangeCount(), 2U);
}

TEST(NumberSet, HoldsWhatASetOfTheLibraryHolds)
{
    std::mt19937 random(11); // NOLINT(cert-msc51-cpp): the same in each run
    for (int round = 0; round < 50; ++round) {
        std::vector<std::uint32_t> numbers(random() % 200);
        for (std::uint32_t &number : numbers)
            number = static_cast<std::uint32_t>(random() % 300);
        const std::set<std::uint32_t> expected(numbers.begin(), numbers.end());
        const NumberSet set(numbers);
        for (std::uint32_t number = 0; number < 310; ++number)
            EXPECT_EQ(set.contains(number), expected.contains(number)) << number;
    }
}

} // namespace NumberSetTest
