// SPDX-License-Identifier: GPL-3.0-or-later
// The text of PIR files: headers with structure links, breaks between chains, line ends.
#include "RecordBuilder.h"
#include "TestFiles.h"

#include <gtest/gtest.h>

#include <random>

namespace TAMBO::formats {
namespace PirWriterTest {

std::string pirOf(const AlignmentRecord &record, std::size_t lineLength = 0)
{
    WriteOptions options;
    options.lineLength = lineLength;
    return textOf(record, options, writePir);
}

AlignmentRecord linked(const std::string &description)
{
    AlignmentRecord record = recordOf({{"row", "ACD"}});
    record.rows[0].description = description;
    record.rows[0].link = {"1abc", "A", "16", "18B", "A"};
    return record;
}

TEST(PirWriter, ARowWithoutAStructureIsASequence)
{
    EXPECT_EQ(pirOf(recordOf({{"a", "AC-D"}, {"b", "ACCD"}})), ">P1;a\n"
                                                               "sequence:a::::::::\n"
                                                               "AC-D*\n\n"
                                                               ">P1;b\n"
                                                               "sequence:b::::::::\n"
                                                               "ACCD*\n\n");
}

TEST(PirWriter, ATiedRowNamesStructureResiduesAndChains)
{
    EXPECT_EQ(pirOf(linked("")), ">P1;row\n"
                                 "structureX:1abc:16:A:18B:A::::\n"
                                 "ACD*\n\n");
}

TEST(PirWriter, ATitleFromAFileKeepsItsFieldsAndTheirBlanks)
{
    const std::string title = "structureN:1abc.pdb: 16 :A:18B :A:ferredoxin:Some bug: 1.90: 0.19:x";
    EXPECT_EQ(pirOf(linked(title)), ">P1;row\n" + title + "\nACD*\n\n");
}

TEST(PirWriter, TheRangeFollowsWhatTheRowHoldsNow)
{
    EXPECT_EQ(pirOf(linked("structureX:1abc.pdb:1 :A:99 :B:ferredoxin:::")),
              ">P1;row\n"
              "structureX:1abc.pdb:16:A:18B:A:ferredoxin:::\n"
              "ACD*\n\n");
}

TEST(PirWriter, ATiedRowWithATextForATitleKeepsTheTextInTheHeader)
{
    EXPECT_EQ(pirOf(linked("Trypsin: chain A")), ">P1;row\n"
                                                 "structureX:1abc:16:A:18B:A:Trypsin  chain A:::\n"
                                                 "ACD*\n\n");
}

TEST(PirWriter, ATiedRowThatWasASequenceBecomesAStructure)
{
    EXPECT_EQ(pirOf(linked("sequence:row::::::::")), ">P1;row\n"
                                                     "structureX:1abc:16:A:18B:A::::\n"
                                                     "ACD*\n\n");
}

TEST(PirWriter, ATextForATitleIsKept)
{
    AlignmentRecord record = recordOf({{"row", "ACD"}});
    record.rows[0].description = "structured proteins: 5 % of them";
    EXPECT_EQ(pirOf(record), ">P1;row\nstructured proteins: 5 % of them\nACD*\n\n");
}

TEST(PirWriter, ATitleThatLooksLikeARecordDoesNotBeginOne)
{
    AlignmentRecord record = recordOf({{"row", "ACD"}});
    record.rows[0].description = ">P1;another";
    EXPECT_EQ(pirOf(record), ">P1;row\n >P1;another\nACD*\n\n");
}

TEST(PirWriter, LineEndsAndColonsInNamesBreakNothing)
{
    EXPECT_EQ(pirOf(recordOf({{"a:b\nc", "ACD"}})), ">P1;a:b c\n"
                                                    "sequence:a b c::::::::\n"
                                                    "ACD*\n\n");
}

TEST(PirWriter, BreaksBetweenChainsStandInTheirColumns)
{
    AlignmentRecord record = recordOf({{"row", "--AC--D-E---"}});
    record.rows[0].chainBreaks = {{0, 1}, {2, 5}, {3, 7}, {4, 9}, {4, 11}};
    EXPECT_EQ(pirOf(record), ">P1;row\nsequence:row::::::::\n-/AC-/D/E/-/*\n\n");
}

TEST(PirWriter, ABreakWithoutAGapMovesNoResidue)
{
    AlignmentRecord record = recordOf({{"row", "ACDE"}});
    record.rows[0].chainBreaks = {{2, std::nullopt}};
    EXPECT_EQ(pirOf(record), ">P1;row\nsequence:row::::::::\nACDE*\n\n");
}

TEST(PirWriter, LongRowsAreBroken)
{
    const std::string text = pirOf(recordOf({{"x", std::string(160, 'A')}}));
    EXPECT_EQ(text, ">P1;x\nsequence:x::::::::\n" + std::string(75, 'A') + '\n' +
                        std::string(75, 'A') + '\n' + std::string(10, 'A') + "*\n\n");
}

TEST(PirWriter, AFullLastLineIsEndedOnALineOfItsOwn)
{
    EXPECT_EQ(pirOf(recordOf({{"x", std::string(75, 'A')}})),
              ">P1;x\nsequence:x::::::::\n" + std::string(75, 'A') + "\n*\n\n");
}

TEST(PirWriter, LinesAreAsLongAsTheyAreWanted)
{
    EXPECT_EQ(pirOf(recordOf({{"x", "AC-DE"}}), 2), ">P1;x\nsequence:x::::::::\nAC\n-D\nE*\n\n");
}

TEST(PirWriter, RowsOfSeveralChainsComeBackAsTheyWere)
{
    std::mt19937 random(11);
    for (int round = 0; round < 200; ++round) {
        const std::size_t width = 1 + random() % 200;
        const unsigned gaps = random() % 10;
        std::string text;
        for (std::size_t row = 0; row < 1 + random() % 5; ++row) {
            text += ">P1;row" + std::to_string(row) + "\ntitle\n";
            for (std::size_t i = 1; i <= width; ++i) {
                const bool isGap = random() % 10 < gaps;
                text += isGap ? "---/"[random() % 4] : "ACDEFGHIKLMNPQRSTVWYX"[random() % 21];
                text += i % 75 == 0 ? "\n" : "";
            }
            text += "*\n\n";
        }
        EXPECT_EQ(pirOf(contentsOf("x.ali", text).alignments.at(0)), text);
    }
}

} // namespace PirWriterTest
} // namespace TAMBO::formats
