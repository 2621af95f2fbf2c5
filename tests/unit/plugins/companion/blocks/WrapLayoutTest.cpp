// SPDX-License-Identifier: GPL-3.0-or-later
#include "WrapLayout.h"

#include "Ruler.h"

#include <gtest/gtest.h>

#include <map>
#include <random>

namespace WrapLayoutTest {

using companion::rulerMarks;
using companion::rulerStep;
using companion::rulerText;
using companion::WrapLayout;
using companion::WrapLine;
using Kind = WrapLine::Kind;

TEST(WrapLayout, BlocksStandBelowEachOtherWithRulerRowsAndAnEmptyLine)
{
    const WrapLayout layout(2, 25, 10, 1);
    EXPECT_EQ(layout.blocks(), 3U);
    EXPECT_EQ(layout.lines(), 11U);
    const std::vector<Kind> kinds = {Kind::Ruler, Kind::Row, Kind::Row, Kind::Empty};
    for (std::uint64_t line = 0; line < layout.lines(); ++line)
        EXPECT_EQ(layout.at(line).kind, kinds[line % 4]) << line;
    EXPECT_EQ(layout.at(9).row, 0U);
    EXPECT_EQ(layout.at(9).colBegin, 20U);
    EXPECT_EQ(layout.at(9).colEnd, 25U);
    EXPECT_EQ(layout.at(11).kind, Kind::Empty);
}

TEST(WrapLayout, EveryCellStandsInExactlyOneLine)
{
    std::mt19937 random(7);
    const auto upTo = [&random](unsigned long most) {
        return std::uniform_int_distribution<unsigned long>(1, most)(random);
    };
    for (int i = 0; i < 200; ++i) {
        const WrapLayout layout(upTo(30), upTo(200), upTo(70), upTo(4));
        std::map<std::pair<unsigned long, unsigned long>, int> seen;
        for (std::uint64_t line = 0; line < layout.lines(); ++line) {
            const WrapLine found = layout.at(line);
            for (unsigned long col = found.colBegin; col < found.colEnd; ++col) {
                if (found.kind != Kind::Row)
                    continue;
                ++seen[{found.row, col}];
                ASSERT_EQ(layout.lineOf({found.row, col}), line);
            }
        }
        ASSERT_EQ(seen.size(), layout.rows() * layout.columns());
    }
}

TEST(WrapLayout, NothingHasNoLines)
{
    EXPECT_EQ(WrapLayout().lines(), 0U);
    EXPECT_EQ(WrapLayout(0, 10, 5, 1).lines(), 0U);
    EXPECT_EQ(WrapLayout(10, 0, 5, 1).lines(), 0U);
    EXPECT_EQ(WrapLayout(0, 10, 5, 1).at(0).kind, Kind::Empty);
}

TEST(Ruler, NumbersStandAboveEveryTenthColumn)
{
    EXPECT_EQ(rulerText(0, 25), "        10        20     ");
    EXPECT_EQ(rulerText(25, 45), "   30        40     ");
}

TEST(Ruler, NumbersThatWouldBeginBeforeTheFirstColumnAreLeftOut)
{
    EXPECT_EQ(rulerText(98, 111), "         110 ");
    EXPECT_TRUE(rulerMarks(9, 10, 10, 1, 1).empty());
}

TEST(Ruler, NarrowColumnsHaveFewerNumbers)
{
    EXPECT_EQ(rulerStep(7, 1), 10U);
    EXPECT_EQ(rulerStep(30, 3), 20U);
    EXPECT_EQ(rulerStep(30, 1), 50U);
    EXPECT_EQ(rulerStep(60, 1), 100U);
}

} // namespace WrapLayoutTest
