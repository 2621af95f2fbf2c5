// SPDX-License-Identifier: GPL-3.0-or-later
#include "TestFiles.h"

#include <gmock/gmock.h>

namespace TAMBO::formats {
namespace PhylipReaderTest {

using ::testing::ElementsAre;

AlignmentRecord read(std::string_view text)
{
    return alignmentOf("x.phy", text, "phylip");
}

std::string message(std::string_view text)
{
    return messageOf("x.phy", text);
}

TEST(PhylipReader, NamesOfTenCharactersMayHoldBlanksAndTouchTheResidues)
{
    const AlignmentRecord alignment = read("2 4\nA long oneAC-D\nshort     A-CD\n");
    EXPECT_TRUE(alignment.isAligned);
    EXPECT_EQ(alignment.name, "x");
    EXPECT_THAT(rowNames(alignment), ElementsAre("A long one", "short"));
    EXPECT_THAT(rowTexts(alignment), ElementsAre("AC-D", "A-CD"));
}

TEST(PhylipReader, NamesOfOneWordMayBeLongerOrShorter)
{
    const AlignmentRecord alignment = read("2 4\na AC-D\nmuch_longer_than_ten A-CD\n");
    EXPECT_THAT(rowNames(alignment), ElementsAre("a", "much_longer_than_ten"));
    EXPECT_THAT(rowTexts(alignment), ElementsAre("AC-D", "A-CD"));
}

TEST(PhylipReader, BlocksOfRowsAreInterleaved)
{
    for (const char *text : {"2 6\na         AC-D\nb         A-CD\n\n          EF\n          -F\n",
                             "2 6\na AC-D\nb A-CD\n\nEF\n-F\n", "2 6\na AC-D\nb A-CD\nEF\n-F\n"}) {
        SCOPED_TRACE(text);
        const AlignmentRecord alignment = read(text);
        EXPECT_THAT(rowNames(alignment), ElementsAre("a", "b"));
        EXPECT_THAT(rowTexts(alignment), ElementsAre("AC-DEF", "A-CD-F"));
    }
}

TEST(PhylipReader, RowsOverSeveralLinesAreSequential)
{
    for (const char *text :
         {"2 6\na         AC-D\n          EF\nb         A-CD\n          -F\n",
          "2 6\na AC-D\n  EF\nb A-CD\n  -F\n", "2 6\na AC-D\nEF\nb A-CD\n-F\n",
          "2 6\na\nAC-D\nEF\nb\nA-CD\n-F\n", "2 6\n\na AC-D\nEF\n\nb A-CD\n-F\n\n"}) {
        SCOPED_TRACE(text);
        const AlignmentRecord alignment = read(text);
        EXPECT_THAT(rowNames(alignment), ElementsAre("a", "b"));
        EXPECT_THAT(rowTexts(alignment), ElementsAre("AC-DEF", "A-CD-F"));
    }
}

// Both ways fit: the first lines of two rows, or two lines of the first row.
TEST(PhylipReader, LineThatBeginsFurtherInIsNotTakenForAName)
{
    const AlignmentRecord alignment = read("2 8\n"
                                           "aaa  ACDE\n"
                                           "     FGH I\n"
                                           "bbb  KLMN\n"
                                           "     PQR S\n");
    EXPECT_THAT(rowNames(alignment), ElementsAre("aaa", "bbb"));
    EXPECT_THAT(rowTexts(alignment), ElementsAre("ACDEFGHI", "KLMNPQRS"));
}

TEST(PhylipReader, BlanksBetweenBlocksOfTenAreNoColumns)
{
    EXPECT_THAT(rowTexts(read(" 2  6 \na AC D-EF\nb A CDE-F\n")), ElementsAre("ACD-EF", "ACDE-F"));
}

TEST(PhylipReader, SeveralAlignmentsAreCounted)
{
    const FileContents contents =
        contentsOf("x.phy", "2 4\na AC-D\nb A-CD\n2 3\n\nc EF-\nd E-F\n\n\n1 1\ne A\n");
    ASSERT_EQ(contents.alignments.size(), 3U);
    EXPECT_EQ(contents.alignments[0].name, "x_1");
    EXPECT_EQ(contents.alignments[2].name, "x_3");
    EXPECT_THAT(rowTexts(contents.alignments[0]), ElementsAre("AC-D", "A-CD"));
    EXPECT_THAT(rowTexts(contents.alignments[1]), ElementsAre("EF-", "E-F"));
    EXPECT_THAT(rowTexts(contents.alignments[2]), ElementsAre("A"));
}

TEST(PhylipReader, DotsAreGapsWhenTheFirstRowHasSome)
{
    EXPECT_THAT(rowTexts(read("2 4\na AC.D\nb A.CD\n")), ElementsAre("AC-D", "A-CD"));
}

TEST(PhylipReader, DotsThatMayRepeatTheFirstRowAreRefused)
{
    EXPECT_EQ(message("2 4\na ACED\nb A.CD\n"),
              "x.phy:3: found \".\" in row \"b\", which may mean a gap or the residue of the first "
              "row; write \"-\" for gaps");
}

TEST(PhylipReader, UnknownResidueIsAnX)
{
    EXPECT_THAT(rowTexts(read("1 3\na A?C\n")), ElementsAre("AXC"));
}

TEST(PhylipReader, RowOfAnotherLengthIsNamed)
{
    EXPECT_EQ(message("2 4\na         ACDE\nb         ACDEF\n"),
              "x.phy:3: row \"b\" has 5 columns, expected 4");
    EXPECT_EQ(message("1 4\na         ACDEF\n"), "x.phy:2: row \"a\" has 5 columns, expected 4");
}

TEST(PhylipReader, ForeignCharacterIsNamedWithLineAndRow)
{
    EXPECT_EQ(message("2 4\na         ACDE\nb         AC+E\n"),
              "x.phy:3: found \"+\" in row \"b\", expected a residue letter or a gap (\"-\")");
}

TEST(PhylipReader, MissingRowsAreAnError)
{
    EXPECT_EQ(message("3 4\na ACDE\nb ACDE\n"),
              "x.phy:3: the file ends after 2 lines, expected 3 rows");
    EXPECT_EQ(message("1 8\na ACDE\n\n"),
              "x.phy:3: the file ends after 1 of 1 rows, the last one too short");
}

TEST(PhylipReader, MoreThanAnnouncedIsAnError)
{
    EXPECT_EQ(message("1 4\na         ACDE\nb         ACDE\n"),
              "x.phy:3: found \"b         ACDE\" after 1 row of 4 columns, expected the end");
}

TEST(PhylipReader, NumbersThatNoFileHoldsAreAnError)
{
    EXPECT_EQ(message("0 4\na ACDE\n"),
              "x.phy:1: found \"0 4\", expected the numbers of rows and columns");
    EXPECT_EQ(message("99999999999999999999 4\na ACDE\n"),
              "x.phy:2: the file ends after 1 line, expected 18446744073709551615 rows");
}

TEST(PhylipReader, StopsThatBecomeGapsAreRemarkedOn)
{
    EXPECT_THAT(read("1 3\na         AC*\n").remarks,
                ElementsAre("x.phy:2: a stop (\"*\") in row \"a\" was read as a gap"));
}

} // namespace PhylipReaderTest
} // namespace TAMBO::formats
