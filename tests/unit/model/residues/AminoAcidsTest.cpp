// SPDX-License-Identifier: GPL-3.0-or-later
#include "AminoAcids.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <set>
#include <string>

namespace AminoAcidsTest {

using Lab = std::array<double, 3>;
using Matrix = std::array<std::array<double, 3>, 3>;

constexpr Matrix kFullVision{{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}};
// Without the long-wave, the middle-wave and the short-wave cones, in linear light.
constexpr Matrix kProtanopia{{{0.152286, 1.052583, -0.204868},
                              {0.114503, 0.786281, 0.099216},
                              {-0.003882, -0.048116, 1.051998}}};
constexpr Matrix kDeuteranopia{{{0.367322, 0.860646, -0.227968},
                                {0.280085, 0.672501, 0.047413},
                                {-0.011820, 0.042940, 0.968881}}};

double linear(unsigned channel)
{
    const double value = channel / 255.0;
    return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
}

Lab labOf(Color color, const Matrix &vision)
{
    const std::array<double, 3> light{linear(color.rgb() >> 16), linear(color.rgb() >> 8 & 0xff),
                                      linear(color.rgb() & 0xff)};
    std::array<double, 3> seen{};
    for (std::size_t i = 0; i < 3; ++i) {
        for (std::size_t k = 0; k < 3; ++k)
            seen[i] += vision[i][k] * light[k];
        seen[i] = std::clamp(seen[i], 0.0, 1.0);
    }
    const double x = (0.4124 * seen[0] + 0.3576 * seen[1] + 0.1805 * seen[2]) / 0.9505;
    const double y = 0.2126 * seen[0] + 0.7152 * seen[1] + 0.0722 * seen[2];
    const double z = (0.0193 * seen[0] + 0.1192 * seen[1] + 0.9505 * seen[2]) / 1.089;
    const auto f = [](double t) { return t > 0.008856 ? std::cbrt(t) : 7.787 * t + 16.0 / 116; };
    return {116 * f(y) - 16, 500 * (f(x) - f(y)), 200 * (f(y) - f(z))};
}

double distance(Color a, Color b, const Matrix &vision)
{
    const Lab first = labOf(a, vision);
    const Lab second = labOf(b, vision);
    return std::hypot(first[0] - second[0], first[1] - second[1], first[2] - second[2]);
}

// One letter for each property.
constexpr std::string_view kGroups = "GLFCPSNDKH";

TEST(AminoAcids, TwentyLettersHaveTheirThreeLetterNames)
{
    const std::pair<char, const char *> names[] = {
        {'A', "ALA"}, {'R', "ARG"}, {'N', "ASN"}, {'D', "ASP"}, {'C', "CYS"},
        {'Q', "GLN"}, {'E', "GLU"}, {'G', "GLY"}, {'H', "HIS"}, {'I', "ILE"},
        {'L', "LEU"}, {'K', "LYS"}, {'M', "MET"}, {'F', "PHE"}, {'P', "PRO"},
        {'S', "SER"}, {'T', "THR"}, {'W', "TRP"}, {'Y', "TYR"}, {'V', "VAL"},
        {'U', "SEC"}, {'O', "PYL"}, {'B', "ASX"}, {'Z', "GLX"}, {'X', "UNK"}};
    for (const auto &[letter, name] : names) {
        EXPECT_EQ(TAMBO::aminoAcidName(letter), name);
        EXPECT_EQ(TAMBO::aminoAcidName(char(letter - 'A' + 'a')), name);
    }
}

TEST(AminoAcids, AnyOtherByteIsUnknown)
{
    for (const char letter : {'*', '-', '1', ' ', '\0', '\x7f', '\xe9', '@', '['}) {
        EXPECT_EQ(TAMBO::aminoAcidName(letter), "UNK");
        EXPECT_EQ(TAMBO::aminoAcidColor(letter), TAMBO::aminoAcidColor('X'));
    }
}

TEST(AminoAcids, LowerCaseHasTheColourOfUpperCase)
{
    for (char letter = 'A'; letter <= 'Z'; ++letter)
        EXPECT_EQ(TAMBO::aminoAcidColor(char(letter - 'A' + 'a')), TAMBO::aminoAcidColor(letter));
}

TEST(AminoAcids, AcidsAreRedAndBasesBlue)
{
    const unsigned acid = TAMBO::aminoAcidColor('D').rgb();
    EXPECT_GT(acid >> 16, (acid >> 8 & 0xff) + 80);
    const unsigned base = TAMBO::aminoAcidColor('K').rgb();
    EXPECT_GT(base & 0xff, (base >> 16) + 80);
    EXPECT_EQ(TAMBO::aminoAcidColor('E'), TAMBO::aminoAcidColor('D'));
    EXPECT_EQ(TAMBO::aminoAcidColor('R'), TAMBO::aminoAcidColor('K'));
}

TEST(AminoAcids, PropertiesAreToldApartWithAndWithoutFullColourVision)
{
    for (const char first : kGroups) {
        for (const char second : kGroups) {
            if (first >= second)
                continue;
            const Color a = TAMBO::aminoAcidColor(first);
            const Color b = TAMBO::aminoAcidColor(second);
            const std::string pair{first, ' ', second};
            EXPECT_GT(distance(a, b, kFullVision), 20) << pair;
            EXPECT_GT(distance(a, b, kDeuteranopia), 12) << pair << " without green";
            EXPECT_GT(distance(a, b, kProtanopia), 12) << pair << " without red";
        }
    }
}

TEST(AminoAcids, NoColourIsTakenForAGapOrForTheSelection)
{
    for (char letter = 'A'; letter <= 'Z'; ++letter) {
        const Color color = TAMBO::aminoAcidColor(letter);
        EXPECT_GT(distance(color, Color(0xffffffU), kFullVision), 10) << letter;
        EXPECT_GT(distance(color, Color(0xffff00U), kFullVision), 30) << letter;
    }
}

TEST(AminoAcids, BlackOrWhiteLettersStandOutOnEveryColour)
{
    for (char letter = 'A'; letter <= 'Z'; ++letter) {
        const unsigned rgb = TAMBO::aminoAcidColor(letter).rgb();
        const unsigned red = rgb >> 16;
        const unsigned green = rgb >> 8 & 0xff;
        const unsigned blue = rgb & 0xff;
        const double light = 0.2126 * linear(red) + 0.7152 * linear(green) + 0.0722 * linear(blue);
        const bool isWhite = (11 * red + 16 * green + 5 * blue) >> 5 <= 126;
        const double contrast = isWhite ? 1.05 / (light + 0.05) : (light + 0.05) / 0.05;
        EXPECT_GT(contrast, 3.5) << letter;
    }
}

} // namespace AminoAcidsTest
