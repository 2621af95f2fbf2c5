// SPDX-License-Identifier: GPL-3.0-or-later
#include "ResidueNumbers.h"

#include <gtest/gtest.h>

#include <random>
#include <vector>

using TAMBO::ResidueNumbers;
using TAMBO::SequenceNumber;

namespace ResidueNumbersTest {

std::string text(const ResidueNumbers &numbers, std::size_t count)
{
    std::string result;
    for (std::size_t i = 0; i < count; ++i)
        result += (i == 0 ? "" : " ") + numbers.at(i).getValue();
    return result;
}

TEST(ResidueNumbers, CountFromOneWithoutAnything)
{
    EXPECT_EQ(text({}, 4), "1 2 3 4");
}

TEST(ResidueNumbers, SettingOneLeavesTheOthers)
{
    ResidueNumbers numbers;
    numbers.set(2, SequenceNumber("60A"), 5);
    EXPECT_EQ(text(numbers, 5), "1 2 60A 4 5");
}

TEST(ResidueNumbers, InsertionLetterIsFollowedByTheNextInteger)
{
    ResidueNumbers numbers;
    numbers.append(0, SequenceNumber("60A"));
    EXPECT_EQ(text(numbers, 3), "60A 61 62");
}

TEST(ResidueNumbers, SettingTheRuleBackNeedsNoStorage)
{
    ResidueNumbers numbers;
    numbers.set(0, SequenceNumber(7), 3);
    numbers.set(1, SequenceNumber(8), 3);
    EXPECT_FALSE(numbers.isDefault());

    numbers.set(0, SequenceNumber(1), 3);
    numbers.set(1, SequenceNumber(2), 3);

    EXPECT_TRUE(numbers.isDefault());
    EXPECT_EQ(text(numbers, 3), "1 2 3");
}

TEST(ResidueNumbers, RenumberingAWholeChainInOrderKeepsOneRun)
{
    ResidueNumbers numbers;
    constexpr std::size_t kCount = 5000;
    for (std::size_t i = 0; i < kCount; ++i)
        numbers.set(i, SequenceNumber(int(i) + 100), kCount);
    EXPECT_EQ(numbers.at(kCount - 1).getValue(), "5099");
    EXPECT_LT(numbers.bytes(), 256U);
}

TEST(ResidueNumbers, AnySequenceOfChangesReadsBackAsSet)
{
    std::mt19937 random(4711);
    constexpr std::size_t kCount = 40;
    ResidueNumbers numbers;
    std::vector<SequenceNumber> expected;
    for (std::size_t i = 0; i < kCount; ++i)
        expected.emplace_back(int(i) + 1);
    for (int round = 0; round < 3000; ++round) {
        const std::size_t index = random() % kCount;
        const char code = random() % 4 == 0 ? char('A' + random() % 3) : ' ';
        // Close to the rule, so that runs merge as often as they split.
        const SequenceNumber number(int(index) + int(random() % 3), code);
        numbers.set(index, number, kCount);
        expected[index] = number;
        for (std::size_t i = 0; i < kCount; ++i)
            ASSERT_EQ(numbers.at(i), expected[i]) << "round " << round << ", residue " << i;
    }
}

} // namespace ResidueNumbersTest
