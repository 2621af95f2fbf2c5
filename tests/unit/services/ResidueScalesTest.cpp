// SPDX-License-Identifier: GPL-3.0-or-later
#include "ResidueScales.h"

#include "Directories.h"
#include "support/LogLines.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <cmath>
#include <numeric>

using namespace TAMBO::services;

namespace {

const std::string kAcids = "ARNDCQEGHILKMFPSTWYV";

std::string failureOf(std::string_view text)
{
    const auto scale = ResidueScales::parse(text, "x.scale");
    return scale ? "no failure" : scale.error().message;
}

void write(const QString &path, const QByteArray &text)
{
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(text);
}

std::map<char, float> installed(const std::string &name)
{
    const ResidueScales scales({Directories::shared() + "/scales"});
    const ResidueScale *scale = scales.find(name);
    EXPECT_NE(scale, nullptr) << name;
    return scale == nullptr ? std::map<char, float>() : scale->values;
}

} // namespace

TEST(ResidueScales, ReadsNameAndValues)
{
    const auto scale = ResidueScales::parse(
        "# Somebody (1999)\nname  My scale \nA 1.5 # small\n\nW\t-2e1\r\n", "x.scale");
    ASSERT_TRUE(scale.has_value()) << scale.error().message;
    EXPECT_EQ(scale.value().name, "My scale");
    EXPECT_EQ(scale.value().values, (std::map<char, float>{{'A', 1.5F}, {'W', -20.0F}}));
}

TEST(ResidueScales, MalformedTextIsNamedByFileLineAndCause)
{
    const std::string value = "expected a letter from A to Z and a number";
    EXPECT_EQ(failureOf("name N\nA\n"), "x.scale:2: " + value);
    EXPECT_EQ(failureOf("name N\nAB 1\n"), "x.scale:2: " + value);
    EXPECT_EQ(failureOf("name N\na 1\n"), "x.scale:2: " + value);
    EXPECT_EQ(failureOf("name N\nA 1 2\n"), "x.scale:2: " + value);
    EXPECT_EQ(failureOf("name N\nA one\n"), "x.scale:2: " + value);
    EXPECT_EQ(failureOf("name N\nA 1\nA 2\n"), "x.scale:3: the letter A has a value already");
    EXPECT_EQ(failureOf("A 1\n"), "x.scale: expected a line \"name\" with the name of the scale");
}

TEST(ResidueScales, StandInTheOrderOfTheirFilesAndOwnOnesReplaceInstalledOnes)
{
    const QTemporaryDir first;
    const QTemporaryDir second;
    write(first.filePath("1.scale"), "name Zeta\nA 1\n");
    write(first.filePath("2.scale"), "name Alpha\nA 2\n");
    write(first.filePath("readme.txt"), "no scale");
    write(second.filePath("1.scale"), "name Alpha\nA 22\n");
    write(second.filePath("2.scale"), "name Mine\nA 3\n");
    const ResidueScales scales({first.path(), second.path()});
    ASSERT_EQ(scales.scales().size(), 3U);
    EXPECT_EQ(scales.scales()[0].name, "Zeta");
    EXPECT_EQ(scales.scales()[1].name, "Alpha");
    EXPECT_EQ(scales.scales()[1].values.at('A'), 22.0F);
    EXPECT_EQ(scales.scales()[2].name, "Mine");
}

TEST(ResidueScales, ABadFileIsLeftOutWithOneLogLine)
{
    const QTemporaryDir directory;
    write(directory.filePath("1.scale"), "rubbish\nrubbish\n");
    write(directory.filePath("2.scale"), "name Good\nA 1\n");
    const LogLines log;
    const ResidueScales scales({directory.path(), "/no/such/directory"});
    EXPECT_EQ(scales.scales().size(), 1U);
    EXPECT_EQ(log.texts(),
              QStringList("A residue scale is left out: " + directory.filePath("1.scale") +
                          ":1: expected a letter from A to Z and a number"));
}

TEST(ResidueScales, EveryInstalledScaleHasAllTwentyAcidsAndNothingElse)
{
    const LogLines log;
    const ResidueScales scales({Directories::shared() + "/scales"});
    EXPECT_EQ(scales.scales().size(), 14U);
    for (const ResidueScale &scale : scales.scales()) {
        EXPECT_EQ(scale.values.size(), kAcids.size()) << scale.name;
        for (const char letter : kAcids)
            EXPECT_TRUE(scale.values.contains(letter)) << scale.name << " " << letter;
    }
    EXPECT_EQ(log.count(), 0);
}

TEST(ResidueScales, TheConsensusScaleIsNormalized)
{
    const auto values = installed("Hydrophobicity");
    double sum = 0;
    double squares = 0;
    for (const auto &[letter, value] : values) {
        sum += value;
        squares += double(value) * value;
    }
    EXPECT_NEAR(sum / 20, 0, 0.001);
    EXPECT_NEAR(std::sqrt(squares / 19), 1, 0.001);
}

TEST(ResidueScales, MolecularWeightsFollowFromTheFormulas)
{
    struct Formula
    {
        char letter;
        int carbon, hydrogen, nitrogen, oxygen, sulphur;
    };
    const std::vector<Formula> formulas = {
        {'A', 3, 7, 1, 2, 0},  {'R', 6, 14, 4, 2, 0}, {'N', 4, 8, 2, 3, 0},
        {'D', 4, 7, 1, 4, 0},  {'C', 3, 7, 1, 2, 1},  {'Q', 5, 10, 2, 3, 0},
        {'E', 5, 9, 1, 4, 0},  {'G', 2, 5, 1, 2, 0},  {'H', 6, 9, 3, 2, 0},
        {'I', 6, 13, 1, 2, 0}, {'L', 6, 13, 1, 2, 0}, {'K', 6, 14, 2, 2, 0},
        {'M', 5, 11, 1, 2, 1}, {'F', 9, 11, 1, 2, 0}, {'P', 5, 9, 1, 2, 0},
        {'S', 3, 7, 1, 3, 0},  {'T', 4, 9, 1, 3, 0},  {'W', 11, 12, 2, 2, 0},
        {'Y', 9, 11, 1, 3, 0}, {'V', 5, 11, 1, 2, 0}};
    const auto weights = installed("Molecular weight");
    for (const Formula &f : formulas) {
        const double weight = 12.011 * f.carbon + 1.008 * f.hydrogen + 14.007 * f.nitrogen +
                              15.999 * f.oxygen + 32.06 * f.sulphur;
        EXPECT_NEAR(weights.at(f.letter), weight, 0.02) << f.letter;
    }
}

TEST(ResidueScales, ChargesFollowFromTheAcidConstants)
{
    const std::map<char, double> acids = {{'D', 3.65}, {'E', 4.25}, {'C', 8.18}, {'Y', 10.07}};
    const std::map<char, double> bases = {{'H', 6.00}, {'K', 10.53}, {'R', 12.48}};
    for (const auto &[letter, value] : installed("Charge at pH 7")) {
        double charge = 0;
        if (acids.contains(letter))
            charge = -1 / (1 + std::pow(10, acids.at(letter) - 7));
        else if (bases.contains(letter))
            charge = 1 / (1 + std::pow(10, 7 - bases.at(letter)));
        EXPECT_NEAR(value, charge, 0.00005) << letter;
    }
}

// Landmarks of the published tables that a slipped line or a lost sign would break.
TEST(ResidueScales, PublishedValuesStandAtTheirLetters)
{
    const auto hydropathy = installed("Hydropathy");
    EXPECT_FLOAT_EQ(hydropathy.at('I'), 4.5F);
    EXPECT_FLOAT_EQ(hydropathy.at('R'), -4.5F);
    EXPECT_FLOAT_EQ(hydropathy.at('K'), -3.9F);
    EXPECT_FLOAT_EQ(hydropathy.at('W'), -0.9F);
    EXPECT_FLOAT_EQ(hydropathy.at('G'), -0.4F);
    EXPECT_NEAR(std::accumulate(hydropathy.begin(), hydropathy.end(), 0.0,
                                [](double sum, const auto &entry) { return sum + entry.second; }),
                -9.8, 0.001);
    const auto volume = installed("Volume");
    EXPECT_FLOAT_EQ(volume.at('G'), 60.1F);
    EXPECT_FLOAT_EQ(volume.at('W'), 227.8F);
    EXPECT_FLOAT_EQ(volume.at('I'), volume.at('L'));
    EXPECT_FLOAT_EQ(installed("Surface area").at('W'), 255.0F);
    EXPECT_FLOAT_EQ(installed("Isoelectric point").at('R'), 10.76F);
    EXPECT_FLOAT_EQ(installed("Isoelectric point").at('D'), 2.77F);
    EXPECT_FLOAT_EQ(installed("Polarity").at('D'), 13.0F);
    EXPECT_FLOAT_EQ(installed("Polarity").at('L'), 4.9F);
    EXPECT_FLOAT_EQ(installed("Hydrophilicity").at('W'), -3.4F);
    EXPECT_FLOAT_EQ(installed("Flexibility").at('G'), 0.544F);
    EXPECT_FLOAT_EQ(installed("Helix propensity").at('E'), 1.51F);
    EXPECT_FLOAT_EQ(installed("Helix propensity").at('P'), 0.57F);
    EXPECT_FLOAT_EQ(installed("Strand propensity").at('V'), 1.70F);
    EXPECT_FLOAT_EQ(installed("Strand propensity").at('E'), 0.37F);
    EXPECT_FLOAT_EQ(installed("Turn propensity").at('N'), 1.56F);
    EXPECT_FLOAT_EQ(installed("Turn propensity").at('I'), 0.47F);
    EXPECT_FLOAT_EQ(installed("Side-chain class").at('D'), installed("Side-chain class").at('E'));
}
