// SPDX-License-Identifier: GPL-3.0-or-later
// FASTA whose rows only make an alignment when small letters are taken for insertions.
#include "TestFiles.h"

#include <gmock/gmock.h>

namespace TAMBO::formats {
namespace A3mTest {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

AlignmentRecord read(std::string_view text, const std::string &format = "a3m")
{
    return alignmentOf("x.a3m", text, format);
}

TEST(A3m, RowsGetTheirInsertColumnsBack)
{
    const AlignmentRecord alignment = read(">a\nACD\n>b\nnA-cdeD\n>c\nAfCDgg\n");
    EXPECT_TRUE(alignment.isAligned);
    EXPECT_THAT(rowTexts(alignment), ElementsAre("-A-C---D--", "nA--cdeD--", "-AfC---Dgg"));
    EXPECT_THAT(alignment.remarks, IsEmpty());
}

TEST(A3m, RealFileIsNamedSo)
{
    EXPECT_EQ(contentsOf(dataFile("alignments/fasta/easel_a2m_1.a2m")).format, "a3m");
}

TEST(A3m, RowsOfOneLengthAreFastaUnlessTheFileSaysOtherwise)
{
    EXPECT_THAT(rowTexts(read(">a\nAaC-\n>b\nA-Cc\n", "fasta")), ElementsAre("AaC-", "A-Cc"));
    EXPECT_THAT(rowTexts(read("#A3M#\n>a\nAaC-\n>b\nA-Cc\n")), ElementsAre("AaC--", "A--Cc"));
}

TEST(A3m, MarkIsNoTextThatWasLeftOut)
{
    const AlignmentRecord alignment = read("#A3M#\n>a\nACD\n>b\nA-D\n");
    EXPECT_THAT(rowTexts(alignment), ElementsAre("ACD", "A-D"));
    EXPECT_THAT(alignment.remarks, IsEmpty());
}

TEST(A3m, UnevenColumnsBesideTheInsertionsMakeSequences)
{
    const AlignmentRecord alignment = read(">a\nACD\n>b\nACfD-E\n", "fasta");
    EXPECT_FALSE(alignment.isAligned);
    EXPECT_EQ(alignment.remarks.size(), 1U);
}

TEST(A3m, DotsMeanThatNothingIsToBeOpened)
{
    EXPECT_FALSE(read(">a\nAC.D\n>b\nACfgD\n", "fasta").isAligned);
}

TEST(A3m, SecondaryStructureIsSaidOfColumnsNotARow)
{
    const AlignmentRecord alignment =
        read(">ss_pred PSIPRED\nCH\nE\n>ss_conf values\n98 7\n>a\nACD\n>b\nAnnC-\n");
    EXPECT_THAT(rowNames(alignment), ElementsAre("a", "b"));
    EXPECT_THAT(rowTexts(alignment), ElementsAre("A--CD", "AnnC-"));
    EXPECT_THAT(alignment.columnAnnotations,
                ElementsAre(Annotation{"ss_pred", "C..HE"}, Annotation{"ss_conf", "9..87"}));
    EXPECT_THAT(alignment.remarks, IsEmpty());
}

TEST(A3m, SecondaryStructureOfAnotherLengthIsLeftOutWithARemark)
{
    const AlignmentRecord alignment = read(">ss_dssp\nCHEE\n>a\nACD\n>b\nAnC-\n");
    EXPECT_THAT(alignment.columnAnnotations, IsEmpty());
    EXPECT_THAT(alignment.remarks,
                ElementsAre("x.a3m:1: \"ss_dssp\" was left out, because it has 4 characters for 3 "
                            "columns"));
}

TEST(A3m, SecondaryStructureAloneIsNoAlignment)
{
    EXPECT_EQ(messageOf("x.a3m", ">ss_pred\nCHE\n"), "x.a3m: holds no sequences");
}

} // namespace A3mTest
} // namespace TAMBO::formats
