// SPDX-License-Identifier: GPL-3.0-or-later
// A selected residue can be told from the same residue before, and from every other colour of its
// scheme, whatever scheme that is.
#include "ColorVision.h"

#include "AminoAcids.h"
#include "ColormapFile.h"
#include "Hooks.h"
#include "SelectionColor.h"

#include <QColor>

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <map>
#include <string>
#include <vector>

using namespace TAMBO::services;

namespace SelectionVisionTest {

// As many as the editor makes of a map.
constexpr int kSteps = 100;
// CIEDE2000, in every kind of vision.
constexpr double kOwnFloor = 20.0;
constexpr unsigned kYellow = 0xffff00;
constexpr unsigned kWhite = 0xffffff;

struct Scheme
{
    std::string name;
    std::vector<Color> colors;
};

Scheme startColors()
{
    Scheme start{"start", {}};
    for (char letter = 'A'; letter <= 'Z'; ++letter)
        start.colors.push_back(TAMBO::aminoAcidColor(letter));
    return start;
}

std::vector<Scheme> schemes()
{
    std::vector<Scheme> all = {startColors()};
    for (const std::string &name : ColormapFile::names()) {
        const auto map = ColormapFile::read(name);
        EXPECT_TRUE(map.has_value()) << name;
        if (!map)
            continue;
        const int steps = map.value().isBlended ? kSteps : int(map.value().stops.size()) - 1;
        all.push_back({name, ColormapFile::interpolate(map.value(), steps)});
    }
    return all;
}

std::string textOf(Color color)
{
    return color.toQColor().name().toStdString();
}

double difference(Vision vision, Color first, Color second)
{
    return colorDifference(seenBy(vision, first), seenBy(vision, second));
}

std::vector<LabColor> seenColors(const Scheme &scheme)
{
    std::vector<LabColor> seen;
    for (const Color color : scheme.colors)
        seen.push_back(seenBy(Vision::Normal, color));
    // The residues that a scheme has no value for, and gaps.
    seen.push_back(seenBy(Vision::Normal, Color(kWhite)));
    return seen;
}

double distanceTo(const std::vector<LabColor> &colors, const LabColor &color)
{
    double least = std::numeric_limits<double>::infinity();
    for (const LabColor &other : colors)
        least = std::min(least, colorDifference(other, color));
    return least;
}

// How near any selected residue of the scheme comes to any colour of it.
double leastDistance(const Scheme &scheme)
{
    const std::vector<LabColor> colors = seenColors(scheme);
    double least = distanceTo(colors, seenBy(Vision::Normal, TAMBO::selectedColor(Color(kWhite))));
    for (const Color color : scheme.colors)
        least = std::min(least,
                         distanceTo(colors, seenBy(Vision::Normal, TAMBO::selectedColor(color))));
    return least;
}

class SelectionVision : public testing::Test
{
protected:
    void SetUp() override { TAMBO::setSelectionColor(Color(kYellow)); }
    void TearDown() override { TAMBO::setSelectionColor(Color(kYellow)); }
};

TEST_F(SelectionVision, ASelectedResidueDiffersFromItselfInEverySchemeForEveryKindOfVision)
{
    for (const Scheme &scheme : schemes()) {
        for (const Color color : scheme.colors) {
            const Color selected = TAMBO::selectedColor(color);
            for (const Vision vision : kVisions)
                EXPECT_GE(difference(vision, color, selected), kOwnFloor)
                    << scheme.name << ": " << textOf(color) << " selected " << textOf(selected)
                    << ", " << nameOf(vision);
        }
    }
}

// The figures of docs/coloring.md. A new map needs one of its own.
TEST_F(SelectionVision, ASelectedResidueDiffersFromEveryColourOfItsScheme)
{
    const std::map<std::string, double> figures = {
        {"start", 29.4},         {"AcidBase.cm", 49.6},    {"BlueOrange.cm", 53.6},
        {"BlueRed.cm", 47.4},    {"Chemistry.cm", 48.1},   {"Cividis.cm", 27.8},
        {"Classes.cm", 48.6},    {"Ember.cm", 49.6},       {"GreenPurple.cm", 55.8},
        {"Grey.cm", 42.5},       {"Meadow.cm", 52.0},      {"OrangeBlue.cm", 53.6},
        {"RedBlue.cm", 49.6},    {"Taylor.cm", 45.8},      {"Viridis.cm", 28.7},
        {"WaterFear.cm", 53.6},  {"WhiteBlue.cm", 56.5},   {"WhiteGold.cm", 46.8},
        {"WhiteGreen.cm", 53.4}, {"WhiteOrange.cm", 56.5}, {"WhitePurple.cm", 56.8},
        {"WhiteRed.cm", 50.1},   {"WhiteTeal.cm", 52.0},   {"Zappo.cm", 46.3}};
    for (const Scheme &scheme : schemes()) {
        ASSERT_TRUE(figures.contains(scheme.name)) << scheme.name;
        EXPECT_NEAR(leastDistance(scheme), figures.at(scheme.name), 0.06) << scheme.name;
    }
}

// White stands in every scheme, so how far it can get from all of them at once is a bound for any
// rule that goes by the residue's colour alone.
TEST_F(SelectionVision, ASelectedWhiteResidueIsNearlyAsFarFromAllSchemesAsCanBeReached)
{
    std::vector<std::vector<LabColor>> all;
    for (const Scheme &scheme : schemes())
        all.push_back(seenColors(scheme));
    const auto distanceToAll = [&](Color color, double enough) {
        const LabColor seen = seenBy(Vision::Normal, color);
        double least = std::numeric_limits<double>::infinity();
        for (const std::vector<LabColor> &colors : all) {
            least = std::min(least, distanceTo(colors, seen));
            if (least < enough)
                break;
        }
        return least;
    };
    double best = 0;
    constexpr unsigned kStep = 16;
    for (unsigned red = 0; red < 256; red += kStep) {
        for (unsigned green = 0; green < 256; green += kStep) {
            for (unsigned blue = 0; blue < 256; blue += kStep)
                best = std::max(best, distanceToAll(Color(red << 16 | green << 8 | blue), best));
        }
    }
    EXPECT_GT(best, 30);
    EXPECT_GE(distanceToAll(TAMBO::selectedColor(Color(kWhite)), 0), 0.85 * best);
}

TEST_F(SelectionVision, ASelectedResidueDiffersFromItselfWhateverSelectionColourIsSet)
{
    for (const unsigned selection : {0xff0000U, 0x00ff00U, 0x0000ffU, 0x00ffffU, 0xff00ffU,
                                     0xffffffU, 0x000000U, 0x808080U, 0xff8000U, 0x3daee9U}) {
        TAMBO::setSelectionColor(Color(selection));
        for (const Scheme &scheme : schemes()) {
            for (const Color color : scheme.colors)
                EXPECT_GE(difference(Vision::Normal, color, TAMBO::selectedColor(color)), kOwnFloor)
                    << scheme.name << ": " << textOf(color) << ", " << textOf(Color(selection));
        }
    }
}

TEST_F(SelectionVision, EveryColourThatCanBePickedChangesWhenItIsSelected)
{
    constexpr unsigned kStep = 15;
    for (unsigned red = 0; red < 256; red += kStep) {
        for (unsigned green = 0; green < 256; green += kStep) {
            for (unsigned blue = 0; blue < 256; blue += kStep) {
                const Color color(red << 16 | green << 8 | blue);
                EXPECT_GE(difference(Vision::Normal, color, TAMBO::selectedColor(color)), 15)
                    << textOf(color);
            }
        }
    }
}

TEST_F(SelectionVision, ATransparentColourIsSelectedAsTheCellShowsIt)
{
    const Color white = TAMBO::selectedColor(Color(kWhite));
    EXPECT_EQ(TAMBO::selectedColor(Color(QColor(0, 0, 0, 0))), white);
    EXPECT_EQ(TAMBO::selectedColor(Color(QColor(0, 0, 0, 127))),
              TAMBO::selectedColor(Color(0x808080)));
    EXPECT_TRUE(TAMBO::selectedColor(Color(QColor(255, 0, 0, 10))).isOpaque());
}

TEST_F(SelectionVision, TheSelectionColourOfTheSettingsIsTheOneMixedIn)
{
    const auto hue = [](unsigned selection, unsigned own) {
        TAMBO::setSelectionColor(Color(selection));
        return TAMBO::selectedColor(Color(own)).toQColor().hsvHue();
    };
    for (const unsigned selection : {0xff0000U, 0x00ff00U, 0x0000ffU, 0xffff00U}) {
        const int wanted = QColor(QRgb(selection)).hsvHue();
        EXPECT_EQ(hue(selection, kWhite), wanted);
        // A dark residue gets the opposite hue.
        EXPECT_EQ(hue(selection, 0), (wanted + 180) % 360);
    }
}

TEST_F(SelectionVision, LettersCanBeReadOnSelectedResidues)
{
    for (const Scheme &scheme : schemes()) {
        for (const Color color : scheme.colors)
            EXPECT_GE(letterContrast(TAMBO::selectedColor(color)), 7)
                << scheme.name << ": " << textOf(color);
    }
}

} // namespace SelectionVisionTest
