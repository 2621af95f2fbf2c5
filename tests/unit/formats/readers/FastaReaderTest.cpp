// SPDX-License-Identifier: GPL-3.0-or-later
#include "TestFiles.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cctype>

namespace TAMBO::formats {
namespace FastaReaderTest {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

AlignmentRecord read(std::string_view text)
{
    return alignmentOf("x.fasta", text, "fasta");
}

TEST(FastaReader, RowsOfOneLengthAreAnAlignment)
{
    const AlignmentRecord alignment = read(">a\nAC-D\n>b\nA-CD\n");
    EXPECT_TRUE(alignment.isAligned);
    EXPECT_THAT(rowNames(alignment), ElementsAre("a", "b"));
    EXPECT_THAT(rowTexts(alignment), ElementsAre("AC-D", "A-CD"));
    EXPECT_THAT(alignment.remarks, IsEmpty());
}

TEST(FastaReader, RowsOfOtherLengthsAreSequences)
{
    const AlignmentRecord alignment = read(">a\nACD\n>b\nACDE\n");
    EXPECT_FALSE(alignment.isAligned);
    EXPECT_THAT(alignment.remarks, IsEmpty());
}

TEST(FastaReader, UnevenRowsWithGapsAreRemarkedOn)
{
    const AlignmentRecord alignment = read(">a\nAC-D\n>b\nACDEF\n");
    EXPECT_FALSE(alignment.isAligned);
    EXPECT_THAT(alignment.remarks,
                ElementsAre("x.fasta: the rows have from 4 to 5 columns, so they were read as "
                            "sequences, not as an alignment"));
}

TEST(FastaReader, NameEndsAtTheFirstBlankAndTheRestIsTheDescription)
{
    const AlignmentRecord alignment = read(">  sp|P1\t  some protein  \nAC\n>b\nAC\n");
    EXPECT_EQ(alignment.rows[0].name, "sp|P1");
    EXPECT_EQ(alignment.rows[0].description, "some protein");
    EXPECT_EQ(alignment.rows[1].description, "");
}

TEST(FastaReader, EveryGapCharacterIsAGap)
{
    EXPECT_THAT(rowTexts(read(">a\n-A.C~\n")), ElementsAre("-A-C-"));
}

TEST(FastaReader, LowerCaseIsKept)
{
    EXPECT_THAT(rowTexts(read(">a\nacDE\n")), ElementsAre("acDE"));
}

TEST(FastaReader, BlanksBetweenResiduesAndEmptyLinesMeanNothing)
{
    EXPECT_THAT(rowTexts(read("\n>a\n\nAC DE\t-F \n\n\n>b\nACDE-F\n\n")),
                ElementsAre("ACDE-F", "ACDE-F"));
}

TEST(FastaReader, LinesNeedNoEnd)
{
    EXPECT_THAT(rowTexts(read(">a\nAC\n>b\nAD")), ElementsAre("AC", "AD"));
}

TEST(FastaReader, LineEndsOfEverySystemAreRead)
{
    for (const char *text : {">a x\r\nAC\r\nDE\r\n>b\r\nACDE\r\n", ">a x\rAC\rDE\r>b\rACDE\r",
                             ">a x\nAC\rDE\n>b\r\nACDE"}) {
        const AlignmentRecord alignment = read(text);
        EXPECT_THAT(rowNames(alignment), ElementsAre("a", "b"));
        EXPECT_THAT(rowTexts(alignment), ElementsAre("ACDE", "ACDE"));
        EXPECT_EQ(alignment.rows[0].description, "x");
    }
}

TEST(FastaReader, ByteOrderMarkIsNoPartOfTheText)
{
    const AlignmentRecord alignment =
        contentsOf(dataFile("malformed/alignments/fasta_utf8_bom_unequal_lengths.fasta"))
            .alignments.at(0);
    EXPECT_THAT(rowNames(alignment), ElementsAre("a", "b", "c"));
    EXPECT_THAT(rowTexts(alignment), ElementsAre("MKV-LAT", "MKVLA", "MKV-LATGG"));
    EXPECT_FALSE(alignment.isAligned);
}

TEST(FastaReader, NamesThatAreNotUtf8AreTakenForLatin1)
{
    EXPECT_EQ(read(">gl\xf6\xdf\nAC\n").rows[0].name, "gl\xc3\xb6\xc3\x9f");
    EXPECT_EQ(read(">gl\xc3\xb6\nAC\n").rows[0].name, "gl\xc3\xb6");
}

TEST(FastaReader, SemicolonLinesAreComments)
{
    EXPECT_THAT(rowTexts(read(";first\n>a\n; 12 residues\nAC\n;more\nDE\n")), ElementsAre("ACDE"));
}

TEST(FastaReader, TextBeforeTheFirstRecordIsLeftOutWithARemark)
{
    const AlignmentRecord alignment = read("Some header\nand more\n>a\nAC\n");
    EXPECT_THAT(rowTexts(alignment), ElementsAre("AC"));
    EXPECT_THAT(alignment.remarks,
                ElementsAre("x.fasta:1: text before the first \">\" was left out"));
}

TEST(FastaReader, SequenceWithoutANameIsRemarkedOn)
{
    const AlignmentRecord alignment = read(">\nAC\n");
    EXPECT_THAT(rowNames(alignment), ElementsAre(""));
    EXPECT_THAT(alignment.remarks, ElementsAre("x.fasta:1: a sequence without a name"));
}

TEST(FastaReader, NamesMayRepeat)
{
    EXPECT_THAT(rowNames(read(">a\nAC\n>a\nAD\n")), ElementsAre("a", "a"));
}

TEST(FastaReader, StopInsideARowKeepsItsColumn)
{
    const AlignmentRecord alignment = read(">a\nA*CD*\n>b\nAECDE\n");
    EXPECT_TRUE(alignment.isAligned);
    EXPECT_THAT(rowTexts(alignment), ElementsAre("A-CD-", "AECDE"));
    EXPECT_THAT(alignment.remarks, ElementsAre("x.fasta:2: a stop (\"*\") in row \"a\" was read as "
                                               "a gap; so were 1 more further down"));
}

TEST(FastaReader, StopsThatBecomeGapsAreRemarkedOnWhereTheFirstOneStands)
{
    EXPECT_THAT(read(">a\nAECDE\n>b\nAEC\nD*\n").remarks,
                ElementsAre("x.fasta:5: a stop (\"*\") in row \"b\" was read as a gap"));
    EXPECT_THAT(read(">a\nAECD*\n>b\nA*C\nD*\n").remarks,
                ElementsAre("x.fasta:4: a stop (\"*\") in row \"b\" was read as a gap"));
    EXPECT_THAT(read(">a\nACD*\n>b\nACDEF\n").remarks,
                Contains("x.fasta:2: a stop (\"*\") in row \"a\" was read as a gap"));
}

TEST(FastaReader, StopAtTheEndOfEveryRowIsNoColumn)
{
    const AlignmentRecord alignment = read(">a\nACD*\n>b\nA-D*\n");
    EXPECT_THAT(rowTexts(alignment), ElementsAre("ACD", "A-D"));
    EXPECT_THAT(alignment.remarks, IsEmpty());
    const std::string columns(64, 'A');
    const AlignmentRecord wide = read(">a\n" + columns + "*\n");
    EXPECT_EQ(wide.rows[0].sequence.width, 64U);
    EXPECT_EQ(wide.rows[0].sequence.occupancy.size(), 1U);
}

TEST(FastaReader, UnknownResidueIsAnX)
{
    EXPECT_THAT(rowTexts(read(">a\nA?C\n")), ElementsAre("AXC"));
}

TEST(FastaReader, OtherCharactersAreAnErrorWithTheirLine)
{
    const std::string expected = ", expected a residue letter or a gap (\"-\", \".\" or \"~\")";
    EXPECT_EQ(messageOf("x.fasta", ">a\nAC\nA1C\n"), "x.fasta:3: found \"1\"" + expected);
    EXPECT_EQ(messageOf("x.fasta", std::string_view(">a\nA\0C\n", 7)),
              "x.fasta:2: found byte 0x00" + expected);
    EXPECT_EQ(messageOf("x.fasta", ">a\nAC\n\xc3\x85\n"), "x.fasta:3: found byte 0xc3" + expected);
    EXPECT_EQ(messageOf("x.fasta", ">a\rAC\rA_C\r"), "x.fasta:3: found \"_\"" + expected);
}

TEST(FastaReader, RecordWithoutResiduesIsAnErrorWithItsLine)
{
    EXPECT_EQ(messageOf("x.fasta", ">a\nAC\n>b c\n>d\nAC\n"),
              "x.fasta:3: found no residues after \">b\", expected at least one");
    EXPECT_EQ(messageOf("x.fasta", ">a\nAC\n>b"),
              "x.fasta:3: found no residues after \">b\", expected at least one");
}

TEST(FastaReader, A2mWithItsDotsIsAnAlignment)
{
    const AlignmentRecord alignment = read(">a\nACde\n>b\nA-.f\n");
    EXPECT_THAT(rowTexts(alignment), ElementsAre("ACde", "A--f"));
}

TEST(FastaReader, RealA2mWithoutDotsEqualsTheAlignedFile)
{
    const AlignmentRecord a2m =
        contentsOf(dataFile("alignments/fasta/easel_a2m_1.a2m")).alignments.at(0);
    const AlignmentRecord aligned =
        contentsOf(dataFile("alignments/fasta/easel_afa_1.fasta")).alignments.at(0);
    EXPECT_TRUE(a2m.isAligned);
    EXPECT_EQ(rowNames(a2m), rowNames(aligned));
    std::vector<std::string> texts = rowTexts(a2m);
    for (std::string &text : texts)
        std::transform(text.begin(), text.end(), text.begin(),
                       [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
    EXPECT_EQ(texts, rowTexts(aligned));
    const std::string all = a2m.rows[0].sequence.letters + a2m.rows[1].sequence.letters +
                            a2m.rows[2].sequence.letters + a2m.rows[3].sequence.letters;
    EXPECT_EQ(
        std::count_if(all.begin(), all.end(), [](unsigned char c) { return std::islower(c); }), 13);
}

TEST(FastaReader, LowerCaseSequencesAreNoA2m)
{
    EXPECT_FALSE(read(">a\nacd\n>b\nacdef\n").isAligned);
}

// Rows that are longer than any buffer, and lines that end on its edge.
TEST(FastaReader, RowsLongerThanTheBufferAreRead)
{
    std::string row;
    for (unsigned i = 0; i < 1500000; ++i)
        row += i % 11 < 4 ? '-' : "ACDEFGHIKL"[i % 10];
    for (const std::size_t shift : {0U, 1U, 63U, 64U, 4000U}) {
        const std::string text =
            '>' + std::string(shift + 1, 'n') + '\n' + row + "\n>b\n" + row + '\n';
        const AlignmentRecord alignment = read(text);
        ASSERT_EQ(alignment.rows.size(), 2U);
        EXPECT_EQ(alignment.rows[0].sequence.text(), row);
        EXPECT_EQ(alignment.rows[1].sequence.text(), row);
        EXPECT_EQ(alignment.rows[0].name.size(), shift + 1);
    }
}

TEST(FastaReader, ManyShortLinesAreReadAcrossEveryEdgeOfTheBuffer)
{
    std::string text;
    for (unsigned i = 0; i < 60000; ++i)
        text += ">s" + std::to_string(i) + "\nACD-\r\nE-FG\r\n";
    const AlignmentRecord alignment = read(text);
    ASSERT_EQ(alignment.rows.size(), 60000U);
    for (unsigned i = 0; i < 60000; ++i) {
        ASSERT_EQ(alignment.rows[i].name, 's' + std::to_string(i));
        ASSERT_EQ(alignment.rows[i].sequence.text(), "ACD-E-FG");
    }
}

TEST(FastaReader, RowsHoldNoRoomToSpare)
{
    const AlignmentRecord alignment =
        contentsOf(dataFile("alignments/fasta/dhfr_large.a2m")).alignments.at(0);
    for (const RowRecord &row : alignment.rows) {
        EXPECT_LE(row.sequence.letters.capacity(), row.sequence.letters.size() + 16);
        EXPECT_EQ(row.sequence.occupancy.capacity(), 3U);
    }
}

TEST(FastaReader, RowThatIsReadAsAnnotationIsRemarkedOn)
{
    const AlignmentRecord alignment = read(">a\nACD\n>ss_pred\nCHE\n>b\nA-D\n");
    EXPECT_THAT(rowNames(alignment), ElementsAre("a", "b"));
    EXPECT_THAT(alignment.columnAnnotations, ElementsAre(Annotation{"ss_pred", "CHE"}));
    EXPECT_THAT(
        alignment.remarks,
        ElementsAre("x.fasta:3: \"ss_pred\" was read as annotation of the columns, not as a "
                    "row"));
}

TEST(FastaReader, AnnotationOfSequencesWithoutColumnsIsLeftOutWithARemark)
{
    const AlignmentRecord alignment = read(">ss_pred\nCHE\n>a\nACD\n>b\nACDEF\n");
    EXPECT_FALSE(alignment.isAligned);
    EXPECT_THAT(alignment.columnAnnotations, IsEmpty());
    EXPECT_THAT(alignment.remarks,
                ElementsAre("x.fasta:1: \"ss_pred\" was left out: it is annotation of columns, and "
                            "there are none"));
}

} // namespace FastaReaderTest
} // namespace TAMBO::formats
