// SPDX-License-Identifier: GPL-3.0-or-later
// The installed colour maps: those that are published are as published, and those that the
// settings choose can be told apart and read on by everybody.
#include "ColorVision.h"

#include "ColormapFile.h"
#include "ConfigStore.h"
#include "Directories.h"
#include "ResidueScales.h"

#include <QColor>

#include <gmock/gmock.h>

#include <cmath>
#include <fstream>
#include <sstream>

using namespace TAMBO::services;
using ::testing::Contains;

namespace InstalledMapsTest {

// Of a map without classes as many colours as a reader may tell apart in a legend.
constexpr int kSamples = 9;
// CIEDE2000, in every kind of vision.
constexpr double kSampleFloor = 2.0;
constexpr double kClassFloor = 10.0;
// What WCAG asks for text; BlueRed.cm, which is what it is, keeps the lower one for large text.
constexpr double kContrastFloor = 4.5;
constexpr double kBlueRedContrastFloor = 3.5;

ColormapContents mapNamed(const std::string &name)
{
    const auto map = ColormapFile::read(name);
    EXPECT_TRUE(map.has_value()) << (map ? "" : map.error().message());
    return map ? map.value() : ColormapContents{{{0, 0, 0, 0}, {1, 0, 0, 0}}};
}

// The maps that are used unless the user has chosen others.
std::set<std::string> defaultMaps()
{
    const ConfigStore defaults(Directories::shared() + "/defaults.ini", QString());
    const ResidueScales scales({Directories::shared() + "/scales"});
    std::set<std::string> names = {"BlueRed.cm"};
    for (const ResidueScale &scale : scales.scales())
        names.insert(defaults.value("KM2_Colormaps", "KM2_" + scale.name).value_or("(none)"));
    return names;
}

std::vector<Color> samples(const ColormapContents &map)
{
    const int count = map.isBlended ? kSamples : int(map.stops.size());
    return ColormapFile::interpolate(map, count - 1);
}

std::string textOf(Color color)
{
    return color.toQColor().name().toStdString();
}

std::vector<std::array<double, 3>> tableOf(const std::string &name)
{
    std::ifstream file(SOURCE_DIR "/tests/unit/services/colors/tables/" + name);
    std::vector<std::array<double, 3>> rows;
    for (std::string line; std::getline(file, line);) {
        std::istringstream fields(line);
        std::array<double, 3> row{};
        if (fields >> row[0] >> row[1] >> row[2])
            rows.push_back(row);
    }
    return rows;
}

class PublishedMap : public testing::TestWithParam<std::pair<const char *, const char *>>
{
};

TEST_P(PublishedMap, IsWithinOneStepOfItsTableEverywhere)
{
    const auto &[file, tableFile] = GetParam();
    const auto table = tableOf(tableFile);
    ASSERT_EQ(table.size(), 256U);
    const std::vector<Color> colors = ColormapFile::interpolate(mapNamed(file), 255);
    ASSERT_EQ(colors.size(), 256U);
    for (std::size_t i = 0; i < table.size(); ++i) {
        const QColor color = colors[i].toQColor();
        EXPECT_LE(std::abs(color.red() - std::lround(table[i][0] * 255)), 1) << i;
        EXPECT_LE(std::abs(color.green() - std::lround(table[i][1] * 255)), 1) << i;
        EXPECT_LE(std::abs(color.blue() - std::lround(table[i][2] * 255)), 1) << i;
    }
}

INSTANTIATE_TEST_SUITE_P(Maps, PublishedMap,
                         testing::Values(std::pair("Viridis.cm", "viridis.txt"),
                                         std::pair("Cividis.cm", "cividis.txt")),
                         [](const auto &info) {
                             const std::string file = info.param.first;
                             return file.substr(0, file.find('.'));
                         });

TEST(InstalledMaps, HoldThoseThatPeopleKnowByName)
{
    for (const char *name :
         {"BlueRed.cm", "Viridis.cm", "Cividis.cm", "Grey.cm", "Taylor.cm", "Zappo.cm"})
        EXPECT_THAT(ColormapFile::names(), Contains(name));
}

TEST(InstalledMaps, GreyIsGrey)
{
    for (const Color color : ColormapFile::interpolate(mapNamed("Grey.cm"), 100)) {
        EXPECT_EQ(color.toQColor().red(), color.toQColor().green());
        EXPECT_EQ(color.toQColor().green(), color.toQColor().blue());
    }
}

// A map that is cut at values of a scale is white where the scale is neutral.
TEST(InstalledMaps, ThoseMadeForAScaleAreWhiteAtItsNeutralValue)
{
    const auto shareOf = [](double value, double low, double high) {
        return (value - low) / (high - low);
    };
    const std::vector<std::tuple<const char *, double>> cases = {
        {"AcidBase.cm", shareOf(6.0, 2.77, 10.76)}, {"WaterFear.cm", shareOf(0, -2.53, 1.38)}};
    for (const auto &[name, share] : cases) {
        const auto colors = ColormapFile::interpolate(mapNamed(name), 1000);
        const Color neutral = colors[std::size_t(std::lround(share * 1000))];
        EXPECT_LT(colorDifference(seenBy(Vision::Normal, neutral),
                                  seenBy(Vision::Normal, Color(0xffffff))),
                  1.5)
            << name << " " << textOf(neutral);
    }
}

TEST(InstalledMaps, TheMapOfAClassScaleHasAColourForEachClass)
{
    const ConfigStore defaults(Directories::shared() + "/defaults.ini", QString());
    const ResidueScales scales({Directories::shared() + "/scales"});
    for (const ResidueScale &scale : scales.scales()) {
        if (scale.unit != "class")
            continue;
        std::set<float> classes;
        for (const auto &[letter, value] : scale.values)
            classes.insert(value);
        const ColormapContents map =
            mapNamed(defaults.value("KM2_Colormaps", "KM2_" + scale.name).value_or(""));
        EXPECT_FALSE(map.isBlended) << scale.name;
        EXPECT_EQ(map.stops.size(), classes.size()) << scale.name;
    }
}

TEST(DefaultMaps, TheirColoursDifferForEveryKindOfVision)
{
    for (const std::string &name : defaultMaps()) {
        const ColormapContents map = mapNamed(name);
        const std::vector<Color> colors = samples(map);
        const double floor = map.isBlended ? kSampleFloor : kClassFloor;
        for (const Vision vision : kVisions) {
            for (std::size_t i = 0; i < colors.size(); ++i) {
                for (std::size_t j = i + 1; j < colors.size(); ++j)
                    EXPECT_GE(colorDifference(seenBy(vision, colors[i]), seenBy(vision, colors[j])),
                              floor)
                        << name << ": " << textOf(colors[i]) << " and " << textOf(colors[j]) << ", "
                        << nameOf(vision);
            }
        }
    }
}

TEST(DefaultMaps, LettersCanBeReadOnEveryColour)
{
    for (const std::string &name : defaultMaps()) {
        const double floor = name == "BlueRed.cm" ? kBlueRedContrastFloor : kContrastFloor;
        for (const Color color : ColormapFile::interpolate(mapNamed(name), 100))
            EXPECT_GE(letterContrast(color), floor) << name << " " << textOf(color);
    }
}

// ---- The measure itself

// From the data that its authors published for checking implementations.
TEST(ColorVision, DifferencesAreThoseOfThePublishedPairs)
{
    struct Pair
    {
        LabColor first, second;
        double difference;
    };
    const Pair pairs[] = {
        {{50, 2.6772, -79.7751}, {50, 0, -82.7485}, 2.0425},
        {{50, -1.3802, -84.2814}, {50, 0, -82.7485}, 1.0000},
        {{50, 0, 0}, {50, -1, 2}, 2.3669},
        {{50, 2.49, -0.001}, {50, -2.49, 0.0009}, 7.1792},
        {{50, 2.5, 0}, {73, 25, -18}, 27.1492},
        {{60.2574, -34.0099, 36.2677}, {60.4626, -34.1751, 39.4387}, 1.2644},
        {{2.0776, 0.0795, -1.1350}, {0.9033, -0.0636, -0.5514}, 0.9082},
    };
    for (const Pair &pair : pairs) {
        EXPECT_NEAR(colorDifference(pair.first, pair.second), pair.difference, 0.00005);
        EXPECT_NEAR(colorDifference(pair.second, pair.first), pair.difference, 0.00005);
    }
}

TEST(ColorVision, ColoursThatPeopleConfuseAreNear)
{
    const auto difference = [](Vision vision, Color first, Color second) {
        return colorDifference(seenBy(vision, first), seenBy(vision, second));
    };
    // Magenta and a light blue: without the red of the one they are the same.
    EXPECT_GT(difference(Vision::Normal, Color(0xff00ff), Color(0x6464ff)), 20);
    EXPECT_LT(difference(Vision::Protanopia, Color(0xff00ff), Color(0x6464ff)), 2);
    for (const Vision vision : kVisions) {
        EXPECT_GT(difference(vision, Color(0x000000), Color(0xffffff)), 95) << nameOf(vision);
        EXPECT_LT(difference(vision, Color(0x777777), Color(0x777777)), 1e-9) << nameOf(vision);
    }
}

TEST(ColorVision, ContrastIsThatOfBlackOrWhiteInk)
{
    EXPECT_NEAR(letterContrast(Color(0xffffff)), 21, 0.001);
    EXPECT_NEAR(letterContrast(Color(0x000000)), 21, 0.001);
    EXPECT_NEAR(letterContrast(Color(0xff0000)), 4.0, 0.01);
    EXPECT_NEAR(letterContrast(Color(0x7e7e7e)), 4.05, 0.05);
    EXPECT_NEAR(letterContrast(Color(0x7f7f7f)), 5.24, 0.05);
}

} // namespace InstalledMapsTest
