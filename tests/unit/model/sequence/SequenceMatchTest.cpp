// SPDX-License-Identifier: GPL-3.0-or-later
#include "SequenceMatch.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>
#include <string>

using TAMBO::matchSequences;
using TAMBO::SequenceMatch;

namespace SequenceMatchTest {

// The second sequence under the first, '.' where a letter has no partner.
std::string partners(std::string_view first, std::string_view second,
                     const std::vector<std::size_t> &breaks = {})
{
    std::string text(first.size(), '.');
    for (const TAMBO::MatchRun &run : matchSequences(first, second, breaks).runs)
        text.replace(run.first, run.count, second.substr(run.second, run.count));
    return text;
}

std::string randomProtein(std::mt19937 &random, std::size_t length)
{
    std::string text;
    for (std::size_t i = 0; i < length; ++i)
        text += "ACDEFGHIKLMNPQRSTVWY"[random() % 20];
    return text;
}

TEST(SequenceMatch, EqualSequencesMatchLetterByLetter)
{
    const SequenceMatch match = matchSequences("ACDEFGHIKL", "ACDEFGHIKL", {});
    EXPECT_THAT(match.runs, testing::ElementsAre(TAMBO::MatchRun{0, 0, 10}));
    EXPECT_EQ(match.identical, 10U);
}

TEST(SequenceMatch, CaseDoesNotMatter)
{
    EXPECT_EQ(matchSequences("acdEF", "ACDEF", {}).identical, 5U);
}

TEST(SequenceMatch, LettersMissingAtTheEndsHaveNoPartner)
{
    EXPECT_EQ(partners("MKTAYIAKQR", "TAYIAK"), "..TAYIAK..");
    EXPECT_EQ(partners("TAYIAK", "MKTAYIAKQR"), "TAYIAK");
}

TEST(SequenceMatch, UnresolvedStretchInTheMiddleHasNoPartner)
{
    EXPECT_EQ(partners("MKTAYIAKQRQISFVNSHFSRQ", "MKTAYIAKSHFSRQ"), "MKTAYIAK........SHFSRQ");
}

TEST(SequenceMatch, ModifiedResidueKeepsItsPlace)
{
    EXPECT_EQ(partners("MKTAXIAKQR", "MKTAYIAKQR"), "MKTAYIAKQR");
    EXPECT_EQ(matchSequences("MKTAXIAKQR", "MKTAYIAKQR", {}).identical, 9U);
}

TEST(SequenceMatch, ResidueThatOnlyTheChainHasIsLeftOut)
{
    EXPECT_EQ(partners("MKTAYIAKQR", "MKTAYWIAKQR"), "MKTAYIAKQR");
}

TEST(SequenceMatch, GapStandsWhereTheNumberingJumps)
{
    // Without the jump either of the two glycines could be the missing one.
    EXPECT_EQ(partners("MKTAYGSSGIAKQR", "MKTAYGIAKQR", {5}), "MKTAY...GIAKQR");
    EXPECT_EQ(partners("MKTAYGSSGIAKQR", "MKTAYGIAKQR", {6}), "MKTAYG...IAKQR");
}

TEST(SequenceMatch, EmptySequencesMatchNothing)
{
    EXPECT_TRUE(matchSequences("", "ACD", {}).runs.empty());
    EXPECT_TRUE(matchSequences("ACD", "", {}).runs.empty());
    EXPECT_TRUE(matchSequences("", "", {}).runs.empty());
}

TEST(SequenceMatch, RepeatedSequencesMatchAllTheSame)
{
    const std::string poly(60, 'A');
    EXPECT_EQ(matchSequences(poly, poly, {}).identical, 60U);
    EXPECT_EQ(matchSequences(poly, poly.substr(10), {}).identical, 50U);
}

TEST(SequenceMatch, DamagedCopyIsFoundResidueByResidue)
{
    std::mt19937 random(7);
    for (int round = 0; round < 50; ++round) {
        const std::string full = randomProtein(random, 400);
        // The chain lacks three stretches, and its numbering says where.
        std::string chain = full;
        std::vector<std::size_t> breaks;
        std::string expected = full;
        for (const std::size_t begin : {300U, 180U, 60U}) {
            const std::size_t length = 1 + random() % 25;
            chain.erase(begin, length);
            expected.replace(begin, length, std::string(length, '.'));
        }
        std::size_t place = 0;
        for (std::size_t i = 0; i < expected.size(); ++i) {
            if (expected[i] != '.')
                ++place;
            else if (i > 0 && expected[i - 1] != '.')
                breaks.push_back(place);
        }
        EXPECT_EQ(partners(full, chain, breaks), expected) << "round " << round;
    }
}

TEST(SequenceMatch, VeryLongSequencesWithLongStretchesInCommonAreMatched)
{
    std::mt19937 random(11);
    const std::string full = randomProtein(random, 35000);
    std::string chain = full;
    chain.erase(20000, 700);
    chain.erase(100, 30);
    const SequenceMatch match = matchSequences(full, chain, {100, 19970});
    EXPECT_EQ(match.identical, chain.size());
    EXPECT_EQ(match.runs.size(), 3U);
}

TEST(SequenceMatch, RunsAscendInBothAndStayInBounds)
{
    std::mt19937 random(5);
    for (int round = 0; round < 200; ++round) {
        const std::string first = randomProtein(random, random() % 60);
        const std::string second = randomProtein(random, random() % 60);
        std::size_t nextFirst = 0;
        std::size_t nextSecond = 0;
        std::size_t matched = 0;
        const SequenceMatch match = matchSequences(first, second, {});
        for (const TAMBO::MatchRun &run : match.runs) {
            ASSERT_GT(run.count, 0U);
            ASSERT_GE(run.first, nextFirst);
            ASSERT_GE(run.second, nextSecond);
            nextFirst = run.first + run.count;
            nextSecond = run.second + run.count;
            matched += run.count;
        }
        ASSERT_LE(nextFirst, first.size());
        ASSERT_LE(nextSecond, second.size());
        EXPECT_EQ(match.matched, matched);
    }
}

} // namespace SequenceMatchTest
