// SPDX-License-Identifier: GPL-3.0-or-later
#include "OutputLines.h"

#include <gtest/gtest.h>

#include <string>

namespace OutputLinesTest {

using namespace TAMBO::app;
using Lines = std::deque<OutputLine>;

constexpr auto kOut = LineKind::Output;
constexpr auto kErr = LineKind::Error;

TEST(OutputLines, PartsOfALineAreOneLine)
{
    OutputLines lines(10);
    lines.write("a", kOut);
    lines.write("b\nc", kOut);
    const OutputLines::News news = lines.take();
    EXPECT_FALSE(news.replacesLast);
    EXPECT_EQ(news.lines, (Lines{{"ab", kOut}, {"c", kOut}}));
}

TEST(OutputLines, ALineThatGoesOnTakesThePlaceOfWhatWasTaken)
{
    OutputLines lines(10);
    lines.write("half", kOut);
    EXPECT_EQ(lines.take().lines, (Lines{{"half", kOut}}));
    EXPECT_FALSE(lines.hasNews());
    lines.write(" and half\nnext\n", kOut);
    const OutputLines::News news = lines.take();
    EXPECT_TRUE(news.replacesLast);
    EXPECT_EQ(news.lines, (Lines{{"half and half", kOut}, {"next", kOut}}));
    lines.write("last\n", kOut);
    EXPECT_FALSE(lines.take().replacesLast);
}

TEST(OutputLines, ErrorsBeginOnALineOfTheirOwn)
{
    OutputLines lines(10);
    lines.write("reading", kOut);
    lines.write("warning\n", kErr);
    lines.write("\n", kErr);
    EXPECT_EQ(lines.take().lines, (Lines{{"reading", kOut}, {"warning", kErr}, {"", kErr}}));
}

TEST(OutputLines, ACharacterMayComeInTwoParts)
{
    OutputLines lines(10);
    const std::string text = "Å";
    lines.write(text.substr(0, 1), kOut);
    lines.write(text.substr(1) + "\n", kOut);
    EXPECT_EQ(lines.take().lines, (Lines{{"Å", kOut}}));
}

TEST(OutputLines, AReturnBeginsTheLineAnewAsOnATerminal)
{
    OutputLines lines(10);
    lines.write("10 %\r20 %", kErr);
    EXPECT_EQ(lines.take().lines, (Lines{{"20 %", kErr}}));
    lines.write("\r100 %\r\ndone\r\n", kErr);
    const OutputLines::News news = lines.take();
    EXPECT_TRUE(news.replacesLast);
    EXPECT_EQ(news.lines, (Lines{{"100 %", kErr}, {"done", kErr}}));
}

TEST(OutputLines, ColorsOfATerminalAreLeftOut)
{
    OutputLines lines(10);
    lines.write("\x1b[1;31mred\x1b[0m\n", kOut);
    EXPECT_EQ(lines.take().lines, (Lines{{"red", kOut}}));
}

TEST(OutputLines, OfTooManyLinesTheFirstAreLeftOut)
{
    OutputLines lines(3);
    lines.write("open", kOut);
    static_cast<void>(lines.take());
    for (int i = 0; i < 100; ++i)
        lines.write(std::to_string(i) + '\n', kOut);
    const OutputLines::News news = lines.take();
    // What was open has gone with them.
    EXPECT_FALSE(news.replacesLast);
    EXPECT_EQ(news.lines, (Lines{{"97", kOut}, {"98", kOut}, {"99", kOut}}));
}

TEST(OutputLines, ALongLineIsBroken)
{
    OutputLines lines(10);
    const auto longest = std::size_t(OutputLines::kLongest);
    lines.write(std::string(2 * longest + 5, 'x') + '\n', kOut);
    const Lines taken = lines.take().lines;
    ASSERT_EQ(taken.size(), 3U);
    EXPECT_EQ(taken[0].text.size(), OutputLines::kLongest);
    EXPECT_EQ(taken[2].text, "xxxxx");
}

TEST(OutputLines, LinesOfTheirOwnDoNotContinueWhatIsOpen)
{
    OutputLines lines(10);
    lines.write("no end", kOut);
    static_cast<void>(lines.take());
    lines.addLines("one\ntwo", LineKind::Notice);
    const OutputLines::News news = lines.take();
    EXPECT_TRUE(news.replacesLast);
    EXPECT_EQ(news.lines,
              (Lines{{"no end", kOut}, {"one", LineKind::Notice}, {"two", LineKind::Notice}}));
}

} // namespace OutputLinesTest
