// SPDX-License-Identifier: GPL-3.0-or-later
#include "ColormapFile.h"

#include "Directories.h"

#include <QDir>
#include <QFile>

#include <gmock/gmock.h>

using namespace TAMBO::services;
using ::testing::Contains;
using ::testing::ElementsAre;

namespace ColormapFileTest {

std::string failureOf(std::string_view text)
{
    const auto stops = ColormapFile::parse(text, "x.cm");
    return stops ? "no failure" : stops.error().message();
}

void writeUserMap(const QString &name, const QByteArray &text)
{
    ASSERT_TRUE(QDir().mkpath(Directories::config() + "/colormaps"));
    QFile file(Directories::config() + "/colormaps/" + name);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(text);
}

TEST(ColormapFile, PositionsAreMappedToTheRangeFromZeroToOne)
{
    const auto map =
        ColormapFile::parse("# a map\n-5 0 0 0 # dark\n\n 0 1 2 3\r\n5 255 255 255\n", "x.cm");
    ASSERT_TRUE(map.has_value()) << map.error().message();
    EXPECT_TRUE(map.value().isBlended);
    const std::vector<ColorStop> &stops = map.value().stops;
    ASSERT_EQ(stops.size(), 3U);
    EXPECT_EQ(stops[0].position, 0.0);
    EXPECT_EQ(stops[1].position, 0.5);
    EXPECT_EQ(stops[1].green, 2.0);
    EXPECT_EQ(stops[2].position, 1.0);
}

TEST(ColormapFile, MalformedTextIsNamedByFileLineAndCause)
{
    const std::string numbers = "expected a position and three numbers from 0 to 255";
    EXPECT_EQ(failureOf("0 0 0 0\nnonsense\n"), "x.cm:2: " + numbers);
    EXPECT_EQ(failureOf("0 0 0\n"), "x.cm:1: " + numbers);
    EXPECT_EQ(failureOf("0 0 0 0 0\n"), "x.cm:1: " + numbers);
    EXPECT_EQ(failureOf("0 0 0 256\n"), "x.cm:1: " + numbers);
    EXPECT_EQ(failureOf("0 0 -1 0\n"), "x.cm:1: " + numbers);
    EXPECT_EQ(failureOf("inf 0 0 0\n"), "x.cm:1: " + numbers);
    EXPECT_EQ(failureOf("-1e308 0 0 0\n1e308 0 0 0\n"), "x.cm:1: " + numbers);
    EXPECT_EQ(failureOf("classes 5\n"), "x.cm:1: " + numbers);
    EXPECT_EQ(failureOf("0 0 0 nan\n"), "x.cm:1: " + numbers);
    EXPECT_EQ(failureOf("0 0 0 0\n0 1 1 1\n"), "x.cm:2: positions must ascend");
    EXPECT_EQ(failureOf("0 0 0 0\n"), "x.cm: a color map needs two colors or more");
    EXPECT_EQ(failureOf("classes\n0 0 0 0\n"), "x.cm: a color map needs two colors or more");
    EXPECT_EQ(failureOf(""), "x.cm: a color map needs two colors or more");
}

TEST(ColormapFile, NumbersMayBeSpelledAsStreamsReadThem)
{
    const auto spelled = ColormapFile::parse("-.5 1. +2 3e1\n0\t.25 0.1\v255\n.5-0 0 0\n", "x.cm");
    ASSERT_TRUE(spelled.has_value()) << spelled.error().message();
    const std::vector<ColorStop> &stops = spelled.value().stops;
    ASSERT_EQ(stops.size(), 3U);
    EXPECT_EQ(stops[0].red, 1.0);
    EXPECT_EQ(stops[0].green, 2.0);
    EXPECT_EQ(stops[0].blue, 30.0);
    EXPECT_EQ(stops[1].position, 0.5);
    EXPECT_EQ(stops[1].red, 0.25);
    EXPECT_EQ(stops[1].green, 0.1);
    EXPECT_EQ(stops[1].blue, 255.0);
    EXPECT_EQ(stops[2].position, 1.0);
    EXPECT_EQ(stops[2].red, 0.0);
}

TEST(ColormapFile, InterpolationHasTheColoursAtBothEndsOfEveryStep)
{
    const auto stops = ColormapFile::parse("0 0 0 0\n1 200 100 50\n", "x.cm").value();
    const std::vector<Color> colors = ColormapFile::interpolate(stops, 4);
    ASSERT_EQ(colors.size(), 5U);
    EXPECT_EQ(colors[0], Color(0x000000));
    EXPECT_EQ(colors[1], Color(0x32190d));
    EXPECT_EQ(colors[2], Color(0x643219));
    EXPECT_EQ(colors[4], Color(0xc86432));
}

TEST(ColormapFile, InterpolationMakesAtLeastOneStep)
{
    const auto stops = ColormapFile::parse("0 0 0 0\n1 200 100 50\n", "x.cm").value();
    for (const int steps : {1, 0, -7})
        EXPECT_EQ(ColormapFile::interpolate(stops, steps).size(), 2U);
}

TEST(ColormapFile, AStopBetweenTwoStepsIsPassedOver)
{
    const auto stops =
        ColormapFile::parse("0 0 0 0\n0.1 255 0 0\n0.2 0 255 0\n1 0 0 255\n", "x.cm").value();
    const std::vector<Color> colors = ColormapFile::interpolate(stops, 1);
    ASSERT_EQ(colors.size(), 2U);
    EXPECT_EQ(colors[0], Color(0x000000));
    EXPECT_EQ(colors[1], Color(0x0000ff));
}

TEST(ColormapFile, ClassesAreNotBlended)
{
    const auto map =
        ColormapFile::parse("\xef\xbb\xbf classes \r\n0 0 0 0\n2 0 255 0\n8 0 0 255\n", "x.cm");
    ASSERT_TRUE(map.has_value()) << map.error().message();
    EXPECT_FALSE(map.value().isBlended);
    const Color black(0x000000);
    const Color green(0x00ff00);
    const Color blue(0x0000ff);
    EXPECT_THAT(ColormapFile::interpolate(map.value(), 8),
                ElementsAre(black, green, green, green, green, blue, blue, blue, blue));
}

TEST(ColormapFile, AMapOfTheUserTakesThePlaceOfAnInstalledOne)
{
    const auto installed = ColormapFile::read("WhiteBlue.cm");
    ASSERT_TRUE(installed.has_value()) << installed.error().message();
    writeUserMap("WhiteBlue.cm", "0 9 9 9\n1 8 8 8\n");
    const auto own = ColormapFile::read("WhiteBlue.cm");
    ASSERT_TRUE(own.has_value()) << own.error().message();
    EXPECT_EQ(own.value().stops.front().red, 9.0);
    QFile::remove(Directories::config() + "/colormaps/WhiteBlue.cm");
}

TEST(ColormapFile, NamesHoldInstalledAndOwnMaps)
{
    writeUserMap("mine.cm", "0 9 9 9\n1 8 8 8\n");
    EXPECT_THAT(ColormapFile::names(), Contains("mine.cm"));
    EXPECT_THAT(ColormapFile::names(), Contains("BlueRed.cm"));
    QFile::remove(Directories::config() + "/colormaps/mine.cm");
}

TEST(ColormapFile, AnAbsolutePathIsTakenAsItIs)
{
    const QString path = Directories::shared() + "/colormaps/BlueRed.cm";
    EXPECT_EQ(ColormapFile::find(path.toStdString()), path);
    EXPECT_TRUE(ColormapFile::find("/nowhere/BlueRed.cm").isEmpty());
    EXPECT_TRUE(ColormapFile::find("nosuch.cm").isEmpty());
    EXPECT_TRUE(ColormapFile::find("").isEmpty());
}

} // namespace ColormapFileTest
