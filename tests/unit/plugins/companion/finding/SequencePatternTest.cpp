// SPDX-License-Identifier: GPL-3.0-or-later
#include "SequencePattern.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <tuple>

namespace SequencePatternTest {

using companion::Match;
using companion::PatternLanguage;
using companion::SequencePattern;
using Matches = std::vector<Match>;

TEST(PlainPattern, IsFoundLargeOrSmallAndOverlapping)
{
    const SequencePattern pattern("aCa", PatternLanguage::Plain);
    EXPECT_EQ(pattern.matchesIn("xACAcAx"), (Matches{{1, 4}, {3, 6}}));
    EXPECT_EQ(pattern.matchesIn("AC"), Matches{});
    EXPECT_TRUE(pattern.isIn("macaque"));
    EXPECT_FALSE(pattern.isIn("mac"));
}

TEST(PlainPattern, MayHaveMismatches)
{
    const SequencePattern pattern("ACDE", PatternLanguage::Plain, 1);
    EXPECT_EQ(pattern.matchesIn("ACDFACDEGGDE"), (Matches{{0, 4}, {4, 8}}));
}

TEST(PlainPattern, OfAsManyMismatchesAsLettersIsRefused)
{
    EXPECT_FALSE(SequencePattern("AC", PatternLanguage::Plain, 2).isGood());
    EXPECT_EQ(SequencePattern("AC", PatternLanguage::Plain, 2).matchesIn("AAAA"), Matches{});
}

TEST(PlainPattern, OfNothingIsNowhere)
{
    EXPECT_EQ(SequencePattern("", PatternLanguage::Plain).matchesIn("ACDE"), Matches{});
    EXPECT_FALSE(SequencePattern("", PatternLanguage::Plain).isIn("name"));
}

TEST(ExpressionPattern, IsFoundOneBehindTheOther)
{
    const SequencePattern pattern("g.{2,3}s", PatternLanguage::Expression);
    EXPECT_EQ(pattern.matchesIn("GAASGAAASG"), (Matches{{0, 4}, {4, 9}}));
}

TEST(ExpressionPattern, ThatMatchesNothingAtAllHasNoEmptyMatches)
{
    EXPECT_EQ(SequencePattern("A*", PatternLanguage::Expression).matchesIn("CAAC"),
              (Matches{{1, 3}}));
}

TEST(ExpressionPattern, MistakesAreToldWithTheirPlace)
{
    const SequencePattern pattern("A(C", PatternLanguage::Expression);
    EXPECT_TRUE(pattern.mistake().startsWith("Character 4: ")) << pattern.mistake().toStdString();
    EXPECT_FALSE(SequencePattern("A+", PatternLanguage::Expression, 1).isGood());
}

TEST(PrositePattern, GlycosylationSitesAreFound)
{
    // PS00001: N-{P}-[ST]-{P}.
    const SequencePattern pattern("N-{P}-[ST]-{P}.", PatternLanguage::Prosite);
    EXPECT_EQ(pattern.matchesIn("NGSANPTANATPNNSS"), (Matches{{0, 4}, {12, 16}}));
}

TEST(PrositePattern, RepetitionsMayBeOfSeveralLengths)
{
    // PS00028 in short: a zinc finger.
    const SequencePattern pattern("C-x(2,4)-C-x(3)-[LIVMFYWC]", PatternLanguage::Prosite);
    EXPECT_EQ(pattern.matchesIn("AACPECGKSFS"), (Matches{{2, 10}}));
}

TEST(PrositePattern, EndsOfTheSequenceCanBeAsked)
{
    EXPECT_EQ(SequencePattern("<M-x", PatternLanguage::Prosite).matchesIn("MAMA"),
              (Matches{{0, 2}}));
    EXPECT_EQ(SequencePattern("[KR]-D-E-L>.", PatternLanguage::Prosite).matchesIn("KDELKDEL"),
              (Matches{{4, 8}}));
}

TEST(PrositePattern, OfOneLengthMayHaveMismatches)
{
    EXPECT_EQ(SequencePattern("A-C-D", PatternLanguage::Prosite, 1).matchesIn("GCD"),
              (Matches{{0, 3}}));
    EXPECT_FALSE(SequencePattern("A-x(1,2)-D", PatternLanguage::Prosite, 1).isGood());
}

class BadProsite : public ::testing::TestWithParam<std::tuple<const char *, const char *>>
{
};

TEST_P(BadProsite, IsRefusedWithThePlace)
{
    const auto &[text, mistake] = GetParam();
    EXPECT_EQ(SequencePattern(text, PatternLanguage::Prosite).mistake(), mistake);
}

INSTANTIATE_TEST_SUITE_P(
    All, BadProsite,
    ::testing::Values(std::tuple("A-", "Character 3: expected a letter, x, [ or {."),
                      std::tuple("AC", "Character 2: expected \"-\"."),
                      std::tuple("[A", "Character 3: expected a letter or \"]\"."),
                      std::tuple("[]", "Character 3: expected a letter."),
                      std::tuple("A(", "Character 3: expected a number of letters."),
                      std::tuple("A(3", "Character 4: expected \")\"."),
                      std::tuple("A(3,2)",
                                 "Character 7: the second number is smaller than the first, or 0."),
                      std::tuple("A(99999999999)", "Character 14: expected a number of letters."),
                      std::tuple("A>-C", "Character 3: nothing may follow the end."),
                      std::tuple("", "Character 1: expected a letter.")));

// The two ways of matching agree.
TEST(PrositePattern, OfOneLengthFindsWhatItsExpressionFinds)
{
    std::mt19937 random(5); // NOLINT(cert-msc51-cpp): the same in each run
    const auto letter = [&random] { return "ACDG"[random() % 4]; };
    for (int round = 0; round < 200; ++round) {
        std::string letters;
        for (int i = 0; i < 40; ++i)
            letters += letter();
        const char first = letter();
        const char second = letter();
        const char third = letter();
        const std::string prosite = std::string(1, first) + "-{" + second + "}-[" + third + "A]";
        const std::string expression =
            std::string("(?=") + first + "[^" + second + "][" + third + "A])...";
        const Matches found =
            SequencePattern(QString::fromStdString(prosite), PatternLanguage::Prosite)
                .matchesIn(letters);
        for (std::size_t i = 0; i + 3 <= letters.size(); ++i) {
            const bool isMatch = !SequencePattern(QString::fromStdString("^" + expression),
                                                  PatternLanguage::Expression)
                                      .matchesIn(std::string_view(letters).substr(i, 3))
                                      .empty();
            EXPECT_EQ(std::ranges::count(found, Match{i, i + 3}), isMatch ? 1 : 0);
        }
    }
}

} // namespace SequencePatternTest
