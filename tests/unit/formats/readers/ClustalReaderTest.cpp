// SPDX-License-Identifier: GPL-3.0-or-later
#include "TestFiles.h"

#include <gmock/gmock.h>

namespace TAMBO::formats {
namespace ClustalReaderTest {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

const std::string kHeader = "CLUSTAL W (1.83) multiple sequence alignment\n\n\n";

AlignmentRecord readWhole(std::string_view text)
{
    return alignmentOf("x.aln", text, "clustal");
}

AlignmentRecord read(const std::string &body)
{
    return readWhole(kHeader + body);
}

std::string message(const std::string &body)
{
    return messageOf("x.aln", kHeader + body);
}

TEST(ClustalReader, BlocksAddUpToRows)
{
    const AlignmentRecord alignment = read("a    AC-D\n"
                                           "b    A-CD\n"
                                           "     *  :\n"
                                           "\n"
                                           "a    EF\n"
                                           "b    -F\n"
                                           "      *\n");
    EXPECT_TRUE(alignment.isAligned);
    EXPECT_EQ(alignment.name, "x");
    EXPECT_THAT(rowNames(alignment), ElementsAre("a", "b"));
    EXPECT_THAT(rowTexts(alignment), ElementsAre("AC-DEF", "A-CD-F"));
    EXPECT_THAT(alignment.remarks, IsEmpty());
}

TEST(ClustalReader, EveryProgramsFirstLineWillDo)
{
    const std::string rows = "a    ACDEFG-HIK\nb    ACDEFGHHIK\n     ****** ***\n";
    for (const char *header :
         {"CLUSTAL 2.1 multiple sequence alignment", "CLUSTAL O(1.2.4) multiple sequence alignment",
          "MUSCLE (3.8) multiple sequence alignment",
          "PROBCONS version 1.12 multiple sequence alignment",
          "CLUSTAL format alignment by MAFFT FFT-NS-i (v7.505)",
          "CLUSTAL FORMAT for T-COFFEE Version_13.45", "Kalign (3.3) alignment in ClustalW format",
          "Clustal", "my own aligner, version 2"}) {
        SCOPED_TRACE(header);
        EXPECT_THAT(rowTexts(readWhole(std::string(header) + "\n\n" + rows)),
                    ElementsAre("ACDEFG-HIK", "ACDEFGHHIK"));
        EXPECT_THAT(rowTexts(readWhole("\n \n" + std::string(header) + "\n\n\n\n" + rows)),
                    ElementsAre("ACDEFG-HIK", "ACDEFGHHIK"));
    }
}

TEST(ClustalReader, CountsOfResiduesAtLineEndsAreNoColumns)
{
    EXPECT_THAT(rowTexts(read("a AC-D 3\nb ----\n\na EF\t5\nb -F  1 \n")),
                ElementsAre("AC-DEF", "-----F"));
}

TEST(ClustalReader, BlanksBetweenBlocksOfTenAreNoColumns)
{
    EXPECT_THAT(rowTexts(read("a  AC DE-F\nb  ACDE FF\n")), ElementsAre("ACDE-F", "ACDEFF"));
}

TEST(ClustalReader, BlocksNeedNoEmptyLineAfterTheMarks)
{
    EXPECT_THAT(rowTexts(read("a AC\nb AC\n  **\na DE\nb DE\n")), ElementsAre("ACDE", "ACDE"));
}

TEST(ClustalReader, RowsOfOneNameStaySeparateByTheirPlace)
{
    const AlignmentRecord alignment = read("a AC\na DE\nb FG\n\na HI\na KL\nb MN\n");
    EXPECT_THAT(rowNames(alignment), ElementsAre("a", "a", "b"));
    EXPECT_THAT(rowTexts(alignment), ElementsAre("ACHI", "DEKL", "FGMN"));
}

TEST(ClustalReader, BlocksMayHaveTheirRowsInAnotherOrder)
{
    EXPECT_THAT(rowTexts(read("a AC\nb DE\n\nb FG\na HI\n")), ElementsAre("ACHI", "DEFG"));
}

TEST(ClustalReader, SeveralAlignmentsAreCounted)
{
    const FileContents contents =
        contentsOf("x.aln", kHeader + "a AC\nb AC\n\n\n" + kHeader + "c DEF\nd DEF\n  ***\n");
    ASSERT_EQ(contents.alignments.size(), 2U);
    EXPECT_EQ(contents.alignments[0].name, "x_1");
    EXPECT_EQ(contents.alignments[1].name, "x_2");
    EXPECT_THAT(rowTexts(contents.alignments[0]), ElementsAre("AC", "AC"));
    EXPECT_THAT(rowTexts(contents.alignments[1]), ElementsAre("DEF", "DEF"));
}

TEST(ClustalReader, RowMayBeCalledClustal)
{
    EXPECT_THAT(rowNames(read("a AC\nClustal_1 AC\n\na DE\nClustal_1 DE\n")),
                ElementsAre("a", "Clustal_1"));
}

TEST(ClustalReader, ForeignCharacterIsNamedWithLineAndRow)
{
    EXPECT_EQ(message("a AC\nb A#\n"), "x.aln:5: found \"#\" in row \"b\", expected a residue "
                                       "letter or a gap (\"-\")");
    EXPECT_EQ(message("a AC 12x\n"), "x.aln:4: found \"1\" in row \"a\", expected a residue letter "
                                     "or a gap (\"-\")");
}

TEST(ClustalReader, RowOfAnotherWidthInABlockIsNamed)
{
    EXPECT_EQ(message("a ACD\nb AC\n"),
              "x.aln:5: row \"b\" has 2 columns here, the first row of the block has 3");
}

TEST(ClustalReader, RowThatTheFirstBlockLacksIsNamed)
{
    EXPECT_EQ(message("a ACD\nb ACD\n\na AC\nc AC\n"),
              "x.aln:8: found row \"c\", which the first block does not have");
}

TEST(ClustalReader, BlockWithoutARowIsNamed)
{
    EXPECT_EQ(message("a ACD\nb ACD\n\na AC\n"),
              "x.aln:7: the block ends after 1 row, the first block has 2");
}

TEST(ClustalReader, RowTwiceInALaterBlockIsAnError)
{
    EXPECT_EQ(message("a ACD\nb ACD\n\na AC\na AC\n"),
              "x.aln:5: row \"b\" ends with 3 columns, row \"a\" has 7");
}

TEST(ClustalReader, ResiduesWithoutANameAreNotTakenForMarks)
{
    EXPECT_EQ(message("a ACD\nb ACD\n  ACD\n"),
              "x.aln:6: found \"ACD\" without a name before it, expected a row or a line of marks");
}

TEST(ClustalReader, NameWithoutResiduesIsAnError)
{
    EXPECT_EQ(message("a\nb AC\n"),
              "x.aln:4: found no residues after \"a\", expected at least one");
}

TEST(ClustalReader, FirstLineAloneIsNoAlignment)
{
    EXPECT_EQ(messageOf("x.aln", "CLUSTAL W\n"), "x.aln:1: the file ends before the first row");
    EXPECT_EQ(message(""), "x.aln:3: the file ends before the first row");
}

TEST(ClustalReader, StopsThatBecomeGapsAreRemarkedOn)
{
    const AlignmentRecord alignment = read("a AC*D\nb ACCD\n\na A*\nb AC\n");
    EXPECT_THAT(rowTexts(alignment), ElementsAre("AC-DA-", "ACCDAC"));
    EXPECT_THAT(alignment.remarks, ElementsAre("x.aln:4: a stop (\"*\") in row \"a\" was read as a "
                                               "gap; so were 1 more further down"));
}

} // namespace ClustalReaderTest
} // namespace TAMBO::formats
