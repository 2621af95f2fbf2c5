// SPDX-License-Identifier: GPL-3.0-or-later
#include "SpreadSum.h"

#include "KeptColumns.h"

#include <gtest/gtest.h>

#include <chrono>
#include <limits>

namespace SpreadSumTest {

using companion::ColumnSpread;
using companion::SpreadSum;
using Clock = std::chrono::steady_clock;

TEST(SpreadOfAColumn, OfFewerThanTwoPositionsIsNone)
{
    SpreadSum sum;
    EXPECT_FALSE(sum.goOn(Clock::time_point::max()));
    EXPECT_EQ(sum.value(), (ColumnSpread{0, std::nullopt}));
    sum.add({1, 2, 3});
    EXPECT_FALSE(sum.goOn(Clock::time_point::max()));
    EXPECT_EQ(sum.value(), (ColumnSpread{1, std::nullopt}));
}

TEST(SpreadOfAColumn, IsTheMeanOverAllPairs)
{
    SpreadSum sum;
    sum.add({0, 0, 0});
    sum.add({3, 4, 0});
    sum.add({0, 0, 12});
    EXPECT_FALSE(sum.goOn(Clock::time_point::max()));
    // 5, 12 and 13.
    EXPECT_EQ(sum.value(), (ColumnSpread{3, 10.0}));
}

// Columns of places, and what numpy finds of them in double precision.
TEST(SpreadOfAColumn, AgreesWithAReferenceInPartsOfAnySize)
{
    std::ifstream file(TEST_DATA_DIR "/columns/spreads.tsv");
    std::string line;
    std::getline(file, line);
    std::size_t columns = 0;
    while (std::getline(file, line)) {
        const std::vector<std::string> fields = KeptColumns::fieldsOf(line);
        ASSERT_EQ(fields.size(), 3U) << line;
        SpreadSum sum;
        std::istringstream places(fields[2]);
        std::size_t count = 0;
        for (float x = 0, y = 0, z = 0; places >> x >> y >> z; ++count)
            sum.add({x, y, z});
        std::size_t parts = 1;
        while (sum.goOn(Clock::time_point::min()))
            ++parts;
        EXPECT_EQ(parts, count < 2 ? 1 : count - 1) << fields[0];
        EXPECT_EQ(sum.value().positions, count);
        ASSERT_EQ(sum.value().distance.has_value(), count > 1);
        if (count > 1)
            EXPECT_NEAR(*sum.value().distance, std::stod(fields[1]), 2e-6 * std::stod(fields[1]))
                << fields[0];
        ++columns;
    }
    EXPECT_GT(columns, 100U);
}

} // namespace SpreadSumTest
