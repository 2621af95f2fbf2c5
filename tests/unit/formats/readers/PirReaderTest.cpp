// SPDX-License-Identifier: GPL-3.0-or-later
#include "TestFiles.h"

#include <gmock/gmock.h>

namespace TAMBO::formats {
namespace PirReaderTest {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

AlignmentRecord read(std::string_view text)
{
    return alignmentOf("x.ali", text, "pir");
}

TEST(PirReader, RecordHasANameATitleAndResiduesUpToTheStar)
{
    const AlignmentRecord alignment = read(">P1;a\nfirst one\nAC-D*\n>P1;b\nsecond\nA-CD*\n");
    EXPECT_TRUE(alignment.isAligned);
    EXPECT_THAT(rowNames(alignment), ElementsAre("a", "b"));
    EXPECT_THAT(rowTexts(alignment), ElementsAre("AC-D", "A-CD"));
    EXPECT_EQ(alignment.rows[0].description, "first one");
    EXPECT_EQ(alignment.rows[0].link->structure, "");
    EXPECT_THAT(alignment.remarks, IsEmpty());
}

TEST(PirReader, EveryTypeCodeIsRead)
{
    for (const char *code : {"P1", "F1", "DL", "DC", "RL", "RC", "N1", "N3", "XX", "p1"})
        EXPECT_THAT(rowNames(read(std::string(">") + code + ";a\n\nACD*\n")), ElementsAre("a"));
}

TEST(PirReader, StructureLineTiesTheRowToAChain)
{
    const RowRecord row =
        read(">P1;5fd1\nstructureX:5fd1:1    :A:106  :B:ferredoxin:Azotobacter: 1.90: 0.19\nAF*\n")
            .rows.at(0);
    EXPECT_EQ(row.link->structure, "5fd1");
    EXPECT_EQ(row.link->first, "1");
    EXPECT_EQ(row.link->chain, "A");
    EXPECT_EQ(row.link->last, "106");
    EXPECT_EQ(row.link->lastChain, "B");
    EXPECT_EQ(row.description,
              "structureX:5fd1:1    :A:106  :B:ferredoxin:Azotobacter: 1.90: 0.19");
}

TEST(PirReader, EveryKindOfStructureLineIsRead)
{
    for (const char *kind : {"structure", "structureX", "structureN", "structureM"}) {
        const RowRecord row =
            read(std::string(">P1;a\n") + kind + ":x.pdb:FIRST:@:LAST:@::::\nAC*\n").rows.at(0);
        EXPECT_EQ(row.link->structure, "x.pdb");
        EXPECT_EQ(row.link->first, "FIRST");
        EXPECT_EQ(row.link->chain, "@");
    }
}

TEST(PirReader, StructureLineMayEndEarly)
{
    const AlignmentRecord alignment =
        contentsOf(dataFile("malformed/alignments/pir_duplicate_names.pir")).alignments.at(0);
    EXPECT_EQ(alignment.rows[0].link->structure, "256bb");
    EXPECT_EQ(alignment.rows[1].link->structure, "duplicated");
    EXPECT_EQ(alignment.rows[1].link->chain, "");
    EXPECT_EQ(alignment.rows[1].link->last, "");
}

TEST(PirReader, StructureLineWithoutACodeMeansTheRowsName)
{
    EXPECT_EQ(read(">P1;1abc\nstructureX::1:A:2:A::::\nAC*\n").rows.at(0).link->structure, "1abc");
}

TEST(PirReader, SequenceLineNamesNoStructureButKeepsItsNumbers)
{
    const RowRecord row = read(">P1;a\nsequence:a:5: :6: ::::\nAC*\n").rows.at(0);
    EXPECT_EQ(row.link->structure, "");
    EXPECT_EQ(row.link->first, "5");
    EXPECT_EQ(row.link->last, "6");
    EXPECT_EQ(row.link->chain, "");
    const RowRecord empty =
        contentsOf(dataFile("families/g6pd/g6pd_target_only.ali")).alignments.at(0).rows.at(0);
    EXPECT_EQ(empty.link->structure, "");
    EXPECT_EQ(empty.sequence.letters.size(), 515U);
}

TEST(PirReader, TitleWithAColonIsNoLink)
{
    EXPECT_EQ(read(">P1;a\nstructures of: many\nAC*\n").rows.at(0).link->first, "");
    EXPECT_EQ(read(">P1;a\nstructureless:x:1:A:2:A\nAC*\n").rows.at(0).link->structure, "");
    EXPECT_EQ(read(">P1;a\nprotein: 5fd1:1:A\nAC*\n").rows.at(0).link->structure, "");
}

TEST(PirReader, ChainBreakIsAGapColumnAndItsPlaceIsKept)
{
    const AlignmentRecord alignment =
        contentsOf(dataFile("alignments/pir/antibody_two_chains.ali")).alignments.at(0);
    ASSERT_EQ(alignment.rows.size(), 2U);
    for (const RowRecord &row : alignment.rows) {
        ASSERT_EQ(row.chainBreaks.size(), 1U);
        EXPECT_EQ(row.sequence.text().find('-'), row.chainBreaks[0].letters);
        EXPECT_EQ(row.sequence.text().find('-'), row.chainBreaks[0].column);
        EXPECT_EQ(row.sequence.letters.size(), 437U);
        EXPECT_EQ(row.sequence.width, 438U);
    }
    const StructureLink &link = *alignment.rows[0].link;
    EXPECT_EQ(link.structure, "newpdb");
    EXPECT_EQ(link.chain, "H");
    EXPECT_EQ(link.lastChain, "L");
    EXPECT_TRUE(alignment.isAligned);
}

TEST(PirReader, ChainBreaksCountLettersAndKeepTheirColumns)
{
    EXPECT_THAT(read(">P1;a\n\nA-C/D--/*\n").rows.at(0).chainBreaks,
                ElementsAre(ChainBreak{2, 3}, ChainBreak{3, 7}));
}

TEST(PirReader, StarMayStandOnALineOfItsOwnOrBeMissing)
{
    EXPECT_THAT(rowTexts(read(">P1;a\n\nAC\n*\n>P1;b\n\nAC\n>P1;c\n\nA\nC")),
                ElementsAre("AC", "AC", "AC"));
}

TEST(PirReader, BlanksBlocksAndEmptyLinesMeanNothing)
{
    EXPECT_THAT(rowTexts(read("\n>P1;a\n\n ACDEF GHIKL\n\n MN*\n\n")), ElementsAre("ACDEFGHIKLMN"));
}

TEST(PirReader, CommentAndAnnotationLinesAreNotResidues)
{
    const AlignmentRecord alignment =
        contentsOf(dataFile("malformed/alignments/pir_annotation_lines_before_sequence.pir"))
            .alignments.at(0);
    ASSERT_EQ(alignment.rows.size(), 1U);
    const RowRecord &row = alignment.rows[0];
    EXPECT_EQ(row.name, "CCHU");
    EXPECT_EQ(row.description, "cytochrome c - human");
    EXPECT_EQ(row.sequence.letters.size(), 105U);
    EXPECT_TRUE(row.sequence.letters.starts_with("MGDVEKGKKI"));
    EXPECT_TRUE(row.sequence.letters.ends_with("AYLKKATNE"));
    EXPECT_THAT(alignment.remarks, IsEmpty());
}

TEST(PirReader, AnnotationMayFollowTheStar)
{
    EXPECT_THAT(read(">P1;a\n\nAC*\nC;Species: man\nF;1-2/Domain: all\n").remarks, IsEmpty());
}

TEST(PirReader, PunctuationKeepsItsColumnsAsGaps)
{
    const AlignmentRecord alignment = read(">P1;a\n\nA(C,D)=E.F*\n");
    EXPECT_THAT(rowTexts(alignment), ElementsAre("A-C-D--E-F"));
    EXPECT_THAT(alignment.remarks,
                ElementsAre("x.ali:3: punctuation between residues was read as gaps"));
}

TEST(PirReader, TextAfterTheStarIsLeftOutWithARemark)
{
    const AlignmentRecord alignment =
        contentsOf(dataFile("malformed/alignments/pir_unicode_and_case.ali")).alignments.at(0);
    EXPECT_THAT(rowNames(alignment), ElementsAre("\xc3\x85ngstr\xc3\xb6m-\xce\xb2_globin",
                                                 "row with blanks | and ; marks", "third"));
    EXPECT_THAT(rowTexts(alignment), ElementsAre("mvlsPADk-TNV", "MVL-PA-K-TNV", "MVLS"));
    EXPECT_EQ(alignment.rows[1].link->structure, "none.pdb");
    EXPECT_THAT(
        alignment.remarks,
        ElementsAre("pir_unicode_and_case.ali:8: \"trailing prose after the star\" after the "
                    "\"*\" that ends \"row with blanks | and ; marks\" was left out",
                    "pir_unicode_and_case.ali:11: \"ADK-TNV*\" after the \"*\" that ends "
                    "\"third\" was left out",
                    "pir_unicode_and_case.ali: the rows have from 4 to 12 columns, so they were "
                    "read as sequences, not as an alignment"));
}

TEST(PirReader, TitleThatLooksLikeResiduesIsRemarkedOn)
{
    const std::string residues(40, 'A');
    const AlignmentRecord alignment = read(">P1;a\n" + residues + '\n' + residues + "*\n");
    EXPECT_THAT(rowTexts(alignment), ElementsAre(residues));
    EXPECT_THAT(alignment.remarks,
                ElementsAre("x.ali:2: the title of \"a\" looks like residues; it was read as the "
                            "title"));
}

TEST(PirReader, OtherCharactersAreAnErrorWithTheirLine)
{
    const std::string expected =
        ", expected a residue letter, a gap (\"-\", \".\" or \"~\") or \"*\"";
    EXPECT_EQ(messageOf("x.ali", ">P1;a\n\nAC\nA1C*\n"), "x.ali:4: found \"1\"" + expected);
    EXPECT_EQ(messageOf("x.ali", ">P1;a\r\n\r\nAC\r\nA:C*\r\n"), "x.ali:4: found \":\"" + expected);
    EXPECT_EQ(messageOf("x.ali", std::string_view(">P1;a\n\nA\0*\n", 11)),
              "x.ali:3: found byte 0x00" + expected);
}

TEST(PirReader, RecordOfAnotherFormatIsAnErrorWithItsLine)
{
    EXPECT_EQ(messageOf("x.ali", ">P1;a\n\nAC*\n>b\nAC\n"),
              "x.ali:4: found \">b\", expected the start of a record like \">P1;name\"");
}

TEST(PirReader, RecordThatIsCutShortIsAnErrorWithItsLine)
{
    EXPECT_EQ(messageOf("x.ali", ">P1;a\n\nAC*\n>P1;b"),
              "x.ali:4: the file ends after \">P1;b\", expected a title line and residues");
    EXPECT_EQ(messageOf("x.ali", ">P1;a\n\nAC*\n>P1;b\ntitle\n"),
              "x.ali:4: found no residues for \"b\", expected at least one");
    EXPECT_EQ(messageOf("x.ali", ">P1;a\n>P1;b\n\nAC*\n"),
              "x.ali:2: found \">P1;b\", expected the title line of \">P1;a\"");
    EXPECT_EQ(messageOf("x.ali", ">P1;a\nACDE*\n"),
              "x.ali:1: found no residues for \"a\", expected at least one");
}

TEST(PirReader, NamesKeepTheirBlanksAndStars)
{
    const AlignmentRecord alignment =
        contentsOf(dataFile("malformed/alignments/pir_missing_terminators.pir")).alignments.at(0);
    EXPECT_THAT(rowNames(alignment),
                ElementsAre("name", "name", "name*", "name*", "name*", "name*", "name*"));
    for (const std::string &text : rowTexts(alignment))
        EXPECT_EQ(text, "ABCDEFGH");
}

TEST(PirReader, TextBeforeTheFirstRecordIsLeftOutWithARemark)
{
    EXPECT_THAT(read("written by hand\nC; comment\n>P1;a\n\nAC*\n").remarks,
                ElementsAre("x.ali:1: text before the first record was left out"));
}

} // namespace PirReaderTest
} // namespace TAMBO::formats
