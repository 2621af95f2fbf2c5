// SPDX-License-Identifier: GPL-3.0-or-later
// What a failure says, and that results carry it on.
#include "Result.h"

#include <gtest/gtest.h>

#include <memory>

namespace TAMBO {
namespace ResultTest {

TEST(Failure, SaysTheCauseAndItsPlace)
{
    EXPECT_EQ((Failure{FailureKind::BadInput, "found \"#\""}.message()), "found \"#\"");
    EXPECT_EQ((Failure{FailureKind::BadInput, "is a folder", {"x.ali"}}.message()),
              "x.ali: is a folder");
    EXPECT_EQ((Failure{FailureKind::BadInput, "found \"#\"", {"x.ali", 7}}.message()),
              "x.ali:7: found \"#\"");
}

Result<int> half(int number)
{
    if (number % 2 != 0)
        return Failure{FailureKind::Refused, "is odd"};
    return number / 2;
}

Result<void> checkEven(int number)
{
    if (const Result<int> found = half(number); !found)
        return found.error();
    return {};
}

TEST(Result, IsAValueOrTheReasonWhyThereIsNone)
{
    const Result<int> three = half(6);
    ASSERT_TRUE(three);
    EXPECT_EQ(three.value(), 3);
    const Result<int> none = half(5);
    ASSERT_FALSE(none);
    EXPECT_EQ(none.error().kind, FailureKind::Refused);
    EXPECT_EQ(none.error().cause, "is odd");
}

TEST(Result, OfNoValueTellsWhetherItWasDone)
{
    EXPECT_TRUE(checkEven(6));
    EXPECT_TRUE(checkEven(6).has_value());
    const Result<void> odd = checkEven(5);
    ASSERT_FALSE(odd);
    EXPECT_EQ(odd.error().kind, FailureKind::Refused);
    EXPECT_EQ(odd.error().message(), "is odd");
}

TEST(Result, AValueCanBeMovedOut)
{
    Result<std::unique_ptr<int>> result(std::make_unique<int>(7));
    const std::unique_ptr<int> taken = std::move(result).value();
    EXPECT_EQ(*taken, 7);
}

} // namespace ResultTest
} // namespace TAMBO
