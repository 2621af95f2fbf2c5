// SPDX-License-Identifier: GPL-3.0-or-later
// The values of the installed scales against what others have, and against what they follow from.
#include "ResidueScales.h"

#include "Directories.h"
#include "ScaleReferences.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <ranges>

using namespace TAMBO::services;

namespace ScaleSourcesTest {

std::map<char, float> installed(const std::string &name)
{
    const ResidueScales scales({Directories::shared() + "/scales"});
    const ResidueScale *scale = scales.find(name);
    EXPECT_NE(scale, nullptr) << name;
    return scale == nullptr ? std::map<char, float>() : scale->values;
}

// The letters of a class, in alphabetical order.
std::string lettersWith(const std::map<char, float> &values, float value)
{
    std::string letters;
    for (const auto &[letter, its] : values) {
        if (its == value)
            letters += letter;
    }
    return letters;
}

// As rounded as the handbook's, from which ours differ in the last digit at most.
constexpr double kWeightTolerance = 0.0101;
constexpr double kExact = 1e-6;

class ScaleSource : public testing::TestWithParam<ScaleReference>
{
};

TEST_P(ScaleSource, HasTheSameValueForEveryLetter)
{
    const ScaleReference &reference = GetParam();
    const auto values = installed(reference.scale);
    const double tolerance =
        std::string(reference.scale) == "Molecular weight" ? kWeightTolerance : kExact;
    for (std::size_t i = 0; i < kReferenceLetters.size(); ++i)
        EXPECT_NEAR(values.at(kReferenceLetters[i]), reference.values[i], tolerance)
            << reference.scale << " " << kReferenceLetters[i] << ", " << reference.source;
}

INSTANTIATE_TEST_SUITE_P(Sources, ScaleSource, testing::ValuesIn(kScaleReferences),
                         [](const auto &info) {
                             std::string name = std::string(info.param.scale) + info.param.source;
                             std::erase_if(name, [](unsigned char c) { return !std::isalnum(c); });
                             return name;
                         });

TEST(ScaleSources, EveryInstalledScaleSaysItsUnitAndItsSource)
{
    const ResidueScales scales({Directories::shared() + "/scales"});
    for (const ResidueScale &scale : scales.scales()) {
        EXPECT_FALSE(scale.unit.empty()) << scale.name;
        EXPECT_GT(scale.source.size(), 40U) << scale.name;
    }
}

TEST(ScaleSources, EveryScaleIsHeldAgainstAnother)
{
    const std::vector<std::string> byThemselves = {"Volume", "Charge at pH 7", "Side-chain class",
                                                   "Physico-chemical class", "Residue type"};
    const ResidueScales scales({Directories::shared() + "/scales"});
    for (const ResidueScale &scale : scales.scales()) {
        const bool has = std::ranges::any_of(
            kScaleReferences, [&](const auto &other) { return other.scale == scale.name; });
        EXPECT_NE(has, std::ranges::find(byThemselves, scale.name) != byThemselves.end())
            << scale.name;
    }
}

TEST(ScaleSources, TheConsensusScaleIsNormalized)
{
    double sum = 0;
    double squares = 0;
    for (const auto &[letter, value] : installed("Hydrophobicity")) {
        sum += value;
        squares += double(value) * value;
    }
    EXPECT_NEAR(sum / 20, 0, 0.001);
    EXPECT_NEAR(std::sqrt(squares / 19), 1, 0.001);
}

TEST(ScaleSources, MolecularWeightsFollowFromTheFormulas)
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
        EXPECT_NEAR(weights.at(f.letter), weight, 0.0051) << f.letter;
    }
}

TEST(ScaleSources, VolumesAreThoseOfTheResiduesInSolution)
{
    const auto values = installed("Volume");
    const std::map<char, float> published = {
        {'G', 60.1F},  {'A', 88.6F},  {'S', 89.0F},  {'C', 108.5F}, {'D', 111.1F},
        {'P', 112.7F}, {'N', 114.1F}, {'T', 116.1F}, {'E', 138.4F}, {'V', 140.0F},
        {'Q', 143.8F}, {'H', 153.2F}, {'M', 162.9F}, {'I', 166.7F}, {'L', 166.7F},
        {'K', 168.6F}, {'R', 173.4F}, {'F', 189.9F}, {'Y', 193.6F}, {'W', 227.8F}};
    EXPECT_EQ(values, published);
    // The other table is of the same measurements, differently corrected: 10 % apart for
    // asparagine, 8 % for proline, 5 % or less for all others.
    for (std::size_t i = 0; i < kReferenceLetters.size(); ++i) {
        const char letter = kReferenceLetters[i];
        const double share = letter == 'N' || letter == 'P' ? 0.10 : 0.05;
        EXPECT_NEAR(values.at(letter), kSolutionVolumes[i], share * values.at(letter)) << letter;
    }
}

TEST(ScaleSources, ChargesFollowFromTheAcidConstants)
{
    const auto charge = [](char letter, const std::map<char, double> &acids,
                           const std::map<char, double> &bases) {
        if (acids.contains(letter))
            return -1 / (1 + std::pow(10, acids.at(letter) - 7));
        return bases.contains(letter) ? 1 / (1 + std::pow(10, 7 - bases.at(letter))) : 0.0;
    };
    const auto values = installed("Charge at pH 7");
    for (std::size_t i = 0; i < kReferenceLetters.size(); ++i) {
        const char letter = kReferenceLetters[i];
        const double ours = values.at(letter);
        EXPECT_NEAR(ours,
                    charge(letter, {{'D', 3.65}, {'E', 4.25}, {'C', 8.18}, {'Y', 10.07}},
                           {{'H', 6.00}, {'K', 10.53}, {'R', 12.48}}),
                    0.00005)
            << letter;
        // The constants of Solomon, as seqinr has them.
        EXPECT_NEAR(ours,
                    charge(letter, {{'D', 3.9}, {'E', 4.3}, {'C', 8.3}, {'Y', 10.1}},
                           {{'H', 6.0}, {'K', 10.5}, {'R', 12.5}}),
                    0.015)
            << letter;
        EXPECT_EQ(std::round(ours), kNetCharges[i]) << letter;
    }
}

// As EMBOSS' Eamino.dat has them, where histidine counts as aromatic, too, and cysteine as
// nonpolar.
TEST(ScaleSources, ClassesHoldTheLettersOfTheirChemistry)
{
    const auto side = installed("Side-chain class");
    EXPECT_EQ(lettersWith(side, 1), "DE");
    EXPECT_EQ(lettersWith(side, 2), "HKR");
    EXPECT_EQ(lettersWith(side, 3), "CNQST");
    EXPECT_EQ(lettersWith(side, 4), "FWY");
    EXPECT_EQ(lettersWith(side, 5), "AGILMPV");
    const auto chemistry = installed("Physico-chemical class");
    EXPECT_EQ(lettersWith(chemistry, 1), "AILMV");
    EXPECT_EQ(lettersWith(chemistry, 2), "FWY");
    EXPECT_EQ(lettersWith(chemistry, 3), "HKR");
    EXPECT_EQ(lettersWith(chemistry, 4), "DE");
    EXPECT_EQ(lettersWith(chemistry, 5), "NQST");
    EXPECT_EQ(lettersWith(chemistry, 6), "GP");
    EXPECT_EQ(lettersWith(chemistry, 7), "C");
}

TEST(ScaleSources, ResidueTypesStandOnceEachInTheOrderOfTheWheel)
{
    const auto values = installed("Residue type");
    std::string order;
    for (int place = 1; place <= 20; ++place)
        order += lettersWith(values, float(place));
    EXPECT_EQ(order, "HRKNQEDSTGPCAVILMFYW");
}

// Who colours by a scale takes a value for the lowest only once it has met a higher one; in this
// order of letters every scale gets its true bounds so.
TEST(ScaleSources, NoScaleHasItsLowestValueBeforeAnyHigherOne)
{
    const ResidueScales scales({Directories::shared() + "/scales"});
    for (const ResidueScale &scale : scales.scales()) {
        const float lowest = std::ranges::min(scale.values | std::views::values);
        float highest = scale.values.at('A');
        bool isMet = false;
        for (const char letter : kReferenceLetters) {
            const float value = scale.values.at(letter);
            highest = std::max(highest, value);
            isMet = isMet || (value == lowest && highest > value);
        }
        EXPECT_TRUE(isMet) << scale.name;
    }
}

} // namespace ScaleSourcesTest
