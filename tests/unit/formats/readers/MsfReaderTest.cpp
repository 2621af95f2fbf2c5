// SPDX-License-Identifier: GPL-3.0-or-later
#include "TestFiles.h"

#include <gmock/gmock.h>

namespace TAMBO::formats {
namespace MsfReaderTest {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

const std::string kText = "PileUp\n\n  MSF: 6 Type: P  Check: 0 ..\n\n";

AlignmentRecord read(const std::string &rows)
{
    return alignmentOf("x.msf", kText + rows, "msf");
}

std::string message(const std::string &rows)
{
    return messageOf("x.msf", kText + rows);
}

TEST(MsfReader, BlocksAddUpToRows)
{
    const AlignmentRecord alignment = read(" Name: a oo Len: 6 Check: 0 Weight: 10.0\n"
                                           " Name: b    Len: 6 Check: 0 Weight: 10.0\n"
                                           "\n//\n\n"
                                           "    1   4\n"
                                           "a   AC .D\n"
                                           "  b ~-  CD\n"
                                           "\n"
                                           "    5 6\n"
                                           "a   EF\n"
                                           "  b -F\n");
    EXPECT_TRUE(alignment.isAligned);
    EXPECT_EQ(alignment.name, "x");
    EXPECT_THAT(rowNames(alignment), ElementsAre("a", "b"));
    EXPECT_THAT(rowTexts(alignment), ElementsAre("AC-DEF", "--CD-F"));
    EXPECT_THAT(alignment.remarks, IsEmpty());
}

TEST(MsfReader, RowsOfOneNameStaySeparateByTheirPlace)
{
    const AlignmentRecord alignment = read("Name: a Len: 4\nName: a Len: 4\nName: b Len: 4\n//\n"
                                           "a AC\na DE\nb FG\n\na HI\na KL\nb MN\n");
    EXPECT_THAT(rowTexts(alignment), ElementsAre("ACHI", "DEKL", "FGMN"));
}

TEST(MsfReader, RowMayBeCalledByANumber)
{
    EXPECT_THAT(rowTexts(read("Name: 12 Len: 2\nName: b Len: 2\n//\n  1 2\n12 AC\nb AC\n")),
                ElementsAre("AC", "AC"));
}

TEST(MsfReader, ChecksumThatFitsIsNotRemarkedOn)
{
    // 65 + 2 * 67 + 3 * 46 with the gap, 65 + 2 * 67 without it.
    for (const char *sum : {"337", "199"})
        EXPECT_THAT(read(std::string("Name: a Len: 3 Check: ") + sum + "\n//\na ac.\n").remarks,
                    IsEmpty());
}

TEST(MsfReader, WrongChecksumIsARemarkAndNoError)
{
    const AlignmentRecord alignment =
        read("Name: a Len: 3 Check: 338\nName: b Len: 3 Check: 1\n//\na AC.\nb AC.\n");
    EXPECT_THAT(rowTexts(alignment), ElementsAre("AC-", "AC-"));
    EXPECT_THAT(alignment.remarks,
                ElementsAre("x.msf: the checksum of 2 rows does not fit the residues, first of "
                            "\"a\"; the file may have been changed by hand"));
}

TEST(MsfReader, RowThatEndsEarlyAsAnnouncedIsFilledWithGaps)
{
    const AlignmentRecord alignment =
        read("Name: a Len: 4\nName: b Len: 2\n//\na AC\nb AC\n\na DE\n");
    EXPECT_THAT(rowTexts(alignment), ElementsAre("ACDE", "AC--"));
    EXPECT_THAT(alignment.remarks,
                ElementsAre("x.msf: 1 row that ends early was filled with gaps"));
}

TEST(MsfReader, RowThatEndsEarlyWithoutNoticeIsAnError)
{
    EXPECT_EQ(message("Name: a Len: 4\nName: b Len: 4\n//\na AC\nb AC\n\na DE\n"),
              "x.msf:9: row \"b\" ends with 2 columns, expected 4");
    EXPECT_EQ(message("Name: a\nName: b\n//\na AC\nb AC\n\na DE\n"),
              "x.msf:9: row \"b\" ends with 2 columns, expected 4");
}

TEST(MsfReader, RowsThatAreAllLongerThanAnnouncedAreRemarkedOn)
{
    EXPECT_THAT(read("Name: a Len: 4\nName: b Len: 4\n//\na ACD\nb ACD\n").remarks,
                ElementsAre("x.msf: \"Len:\" does not fit the columns of 2 rows"));
}

TEST(MsfReader, ForeignCharacterIsNamedWithLineAndRow)
{
    EXPECT_EQ(message("Name: a Len: 3\n//\na A1C\n"),
              "x.msf:7: found \"1\" in row \"a\", expected a residue letter or a gap (\".\" or "
              "\"~\")");
}

TEST(MsfReader, RowThatWasNotAnnouncedIsNamed)
{
    EXPECT_EQ(message("Name: a Len: 2\n//\na AC\nb AC\n"),
              "x.msf:8: found row \"b\", which no \"Name:\" line announces");
}

TEST(MsfReader, AnnouncedRowThatIsMissingIsNamed)
{
    EXPECT_EQ(message("Name: a Len: 2\nName: b Len: 2\n//\na AC\n"),
              "x.msf:8: the file ends without residues of row \"b\"");
}

TEST(MsfReader, FileWithoutNamesIsAnError)
{
    EXPECT_EQ(message("//\na AC\n"),
              "x.msf:5: found no row, expected lines like \"Name: a Len: 100 Check: 1234 Weight: "
              "1.00\" and \"//\"");
    EXPECT_EQ(message("Name:\n//\n"), "x.msf:5: found a row without a name");
}

TEST(MsfReader, StopsThatBecomeGapsAreRemarkedOn)
{
    EXPECT_THAT(read(" Name: a Len: 3\n\n//\n\na AC*\n").remarks,
                ElementsAre("x.msf:9: a stop (\"*\") in row \"a\" was read as a gap"));
}

} // namespace MsfReaderTest
} // namespace TAMBO::formats
