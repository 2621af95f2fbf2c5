// SPDX-License-Identifier: GPL-3.0-or-later
#include "ColumnCounts.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

namespace ColumnCountsTest {

using namespace companion;
using namespace std::string_literals;

TEST(ColumnCounts, EachLetterCountsForItsAminoAcidWhateverItsCase)
{
    const ColumnCounts counts("AaVvvW"s);
    EXPECT_EQ(counts.ofLetter('A'), 2U);
    EXPECT_EQ(counts.ofLetter('v'), 3U);
    EXPECT_EQ(counts.of(kAminoAcids.find('W')), 1U);
    EXPECT_EQ(counts.aminoAcids(), 6U);
    EXPECT_EQ(counts.rows(), 6U);
}

TEST(ColumnCounts, EveryAminoAcidHasAPlaceOfItsOwn)
{
    for (std::size_t i = 0; i < kAminoAcidCount; ++i) {
        const ColumnCounts counts(kAminoAcids.substr(i, 1));
        for (std::size_t k = 0; k < kAminoAcidCount; ++k)
            EXPECT_EQ(counts.of(k), i == k ? 1U : 0U) << kAminoAcids[i];
        EXPECT_EQ(counts.others() + counts.gaps(), 0U) << kAminoAcids[i];
    }
}

TEST(ColumnCounts, LettersThatNameNoAminoAcidAreOthersAndNoGaps)
{
    const ColumnCounts counts("BZXUOJ*bzx?\xe4"s);
    EXPECT_EQ(counts.others(), 12U);
    EXPECT_EQ(counts.aminoAcids(), 0U);
    EXPECT_EQ(counts.residues(), 12U);
    EXPECT_EQ(counts.gaps(), 0U);
}

TEST(ColumnCounts, NoLetterIsAGapAndSoAreTheGapsOfFiles)
{
    const ColumnCounts counts("\0-.~\0A"s);
    EXPECT_EQ(counts.gaps(), 5U);
    EXPECT_EQ(counts.residues(), 1U);
    EXPECT_EQ(counts.rows(), 6U);
}

TEST(ColumnCounts, WhatHasBeenTakenOutIsNotCounted)
{
    ColumnCounts counts("AAX\0"s);
    EXPECT_TRUE(counts.remove('a'));
    EXPECT_TRUE(counts.remove('B'));
    EXPECT_TRUE(counts.remove('\0'));
    EXPECT_EQ(counts, ColumnCounts("A"s));
}

TEST(ColumnCounts, TakingOutWhatIsNotThereChangesNothing)
{
    ColumnCounts counts("AC"s);
    EXPECT_FALSE(counts.remove('W'));
    EXPECT_FALSE(counts.remove('\0'));
    EXPECT_EQ(counts, ColumnCounts("AC"s));
}

TEST(ColumnCounts, TheSumCountsTheRowsOfBoth)
{
    ColumnCounts counts("AC-"s);
    counts += ColumnCounts("cX"s);
    EXPECT_EQ(counts, ColumnCounts("ACC-X"s));
}

TEST(ColumnCounts, RowsComeAndGoInTheColumnsThatBothHave)
{
    std::vector<ColumnCounts> columns(3);
    addRow(columns, "ACD"s);
    addRow(columns, "GG"s);
    addRow(columns, "WWWWW"s);
    EXPECT_EQ(columns[0], ColumnCounts("AGW"s));
    EXPECT_EQ(columns[2], ColumnCounts("DW"s));
    removeRow(columns, "ACD"s);
    EXPECT_EQ(columns[1], ColumnCounts("GW"s));
    EXPECT_EQ(columns[2], ColumnCounts("W"s));
}

// Whatever the edits, the counts are those of the letters that are there in the end.
TEST(ColumnCounts, EditsLeaveWhatCountingAnewGives)
{
    std::mt19937 chance(3);
    const std::string letters = "ARNDCQEGHILKMFPSTWYVarnvBXZ*-"s + '\0';
    std::string rows;
    ColumnCounts counts;
    for (int step = 0; step < 5000; ++step) {
        const char letter = letters[chance() % letters.size()];
        switch (chance() % 3) {
        case 0:
            rows += letter;
            counts.add(letter);
            break;
        case 1:
            if (!rows.empty()) {
                char &edited = rows[chance() % rows.size()];
                EXPECT_TRUE(counts.remove(edited));
                edited = letter;
                counts.add(letter);
            }
            break;
        default:
            if (rows.size() > 20) {
                EXPECT_TRUE(counts.remove(rows.back()));
                rows.pop_back();
            }
        }
        ASSERT_EQ(counts, ColumnCounts(rows)) << step;
    }
    EXPECT_GT(rows.size(), 0U);
}

} // namespace ColumnCountsTest
