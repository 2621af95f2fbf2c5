// SPDX-License-Identifier: GPL-3.0-or-later
#include "ColumnScores.h"

#include "Blosum62.h"
#include "KeptColumns.h"

#include <cmath>

namespace ColumnScoresTest {

using namespace companion;
using namespace std::string_literals;

TEST(ColumnScores, AreThoseOfTheReference)
{
    for (const KeptColumns::Column &column : KeptColumns::all()) {
        const ColumnCounts counts(column.letters);
        EXPECT_NEAR(conservation(counts), column.conservation, 1e-6) << column.name;
        EXPECT_NEAR(occupancy(counts), column.occupancy, 1e-6) << column.name;
    }
}

// Of one letter alone, but for the pseudocounts: with p its frequency anywhere,
// (log2(2 / (1 + p)) + p log2(2 p / (1 + p)) + what the other letters have) / 2.
TEST(ColumnScores, AColumnOfOneLetterHasTheConservationOfItsFormula)
{
    for (std::size_t i = 0; i < kAminoAcidCount; ++i) {
        const double p = kBackgroundFrequencies[i];
        const double rest = 1.001 - p;
        const double expected =
            (std::log2(2 / (1 + p)) + p * std::log2(2 * p / (1 + p)) + rest) / 2;
        const ColumnCounts counts(std::string(100000, kAminoAcids[i]));
        EXPECT_NEAR(conservation(counts), expected, 1e-6) << kAminoAcids[i];
    }
}

TEST(ColumnScores, ARareLetterIsMoreConservedThanAFrequentOne)
{
    EXPECT_GT(conservation(ColumnCounts("WWWW"s)), conservation(ColumnCounts("LLLL"s)));
    EXPECT_GT(conservation(ColumnCounts("LLLL"s)), conservation(ColumnCounts("LLLV"s)));
}

TEST(ColumnScores, AColumnAsAnyProteinIsNotConserved)
{
    ColumnCounts counts;
    for (std::size_t i = 0; i < kAminoAcidCount; ++i)
        for (int k = 0; k < std::lround(kBackgroundFrequencies[i] * 1000); ++k)
            counts.add(kAminoAcids[i]);
    EXPECT_NEAR(conservation(counts), 0, 1e-6);
    EXPECT_GE(conservation(counts), 0);
}

TEST(ColumnScores, GapsAndLettersThatTellNothingLowerConservationByTheirShare)
{
    const double full = conservation(ColumnCounts("WWWW"s));
    EXPECT_DOUBLE_EQ(conservation(ColumnCounts("WWWW----"s)), full / 2);
    EXPECT_DOUBLE_EQ(conservation(ColumnCounts("WWWWXBZU"s)), full / 2);
    EXPECT_DOUBLE_EQ(conservation(ColumnCounts("WWWWX---"s)), full / 2);
}

TEST(ColumnScores, WhatHasNoAminoAcidIsNotConserved)
{
    for (const std::string &letters : {""s, "----"s, "XXXX"s, "X--*"s})
        EXPECT_EQ(conservation(ColumnCounts(letters)), 0) << letters;
}

TEST(ColumnScores, EveryLetterOccupiesItsRow)
{
    EXPECT_EQ(occupancy(ColumnCounts("AX*-"s)), 0.75);
    EXPECT_EQ(occupancy(ColumnCounts("----"s)), 0);
    EXPECT_EQ(occupancy(ColumnCounts()), 0);
}

} // namespace ColumnScoresTest
