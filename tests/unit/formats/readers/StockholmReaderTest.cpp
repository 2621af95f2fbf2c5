// SPDX-License-Identifier: GPL-3.0-or-later
#include "TestFiles.h"

#include <gmock/gmock.h>

#include <algorithm>

namespace TAMBO::formats {
namespace StockholmReaderTest {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

const std::string kHeader = "# STOCKHOLM 1.0\n";

AlignmentRecord readWhole(const std::string &text)
{
    return alignmentOf("x.sto", text, "stockholm");
}

AlignmentRecord read(const std::string &body)
{
    return readWhole(kHeader + body + "//\n");
}

std::string message(const std::string &body)
{
    return messageOf("x.sto", kHeader + body + "//\n");
}

TEST(StockholmReader, RowsAreReadInOnePiece)
{
    const AlignmentRecord alignment = read("\na/1-3  AC.D\nb/5-7  A-cD\n");
    EXPECT_TRUE(alignment.isAligned);
    EXPECT_EQ(alignment.name, "x");
    EXPECT_THAT(rowNames(alignment), ElementsAre("a/1-3", "b/5-7"));
    EXPECT_THAT(rowTexts(alignment), ElementsAre("AC-D", "A-cD"));
    EXPECT_THAT(alignment.remarks, IsEmpty());
}

TEST(StockholmReader, BlocksAddUpToRows)
{
    EXPECT_THAT(rowTexts(read("a AC\nb A-\n\na DE\nb DE\n\na F\nb F\n")),
                ElementsAre("ACDEF", "A-DEF"));
    EXPECT_THAT(rowTexts(read("a AC\nb A-\na DE\nb DE\n")), ElementsAre("ACDE", "A-DE"));
    EXPECT_THAT(rowTexts(read("a AC\nb A-\n \nb DE\na DE\n")), ElementsAre("ACDE", "A-DE"));
}

TEST(StockholmReader, LongRowsMayComeInOnePieceOrInSeveral)
{
    std::vector<std::string> pieces;
    for (unsigned row = 0; row < 4; ++row)
        for (unsigned piece = 0; piece < 3; ++piece) {
            std::string &text = pieces.emplace_back();
            while (text.size() < (piece == 2 ? 70U : 5000U))
                text +=
                    (text.size() * (row + 3) + piece) % 7 < 2 ? '-' : char('A' + text.size() % 26);
        }
    std::string inOne;
    std::string inBlocks;
    std::vector<std::string> rows;
    for (unsigned row = 0; row < 4; ++row) {
        rows.push_back(pieces[3 * row] + pieces[3 * row + 1] + pieces[3 * row + 2]);
        inOne += "row" + std::to_string(row) + ' ' + rows.back() + '\n';
    }
    for (unsigned piece = 0; piece < 3; ++piece)
        for (unsigned row = 0; row < 4; ++row)
            inBlocks += "row" + std::to_string(row) + ' ' + pieces[3 * row + piece] + '\n';
    EXPECT_EQ(rowTexts(read(inOne)), rows);
    EXPECT_EQ(rowTexts(read(inBlocks)), rows);
    EXPECT_THAT(rowNames(read(inOne)), ElementsAre("row0", "row1", "row2", "row3"));
}

TEST(StockholmReader, EveryKindOfAnnotationIsKept)
{
    const AlignmentRecord alignment = read("#=GF ID   family\n"
                                           "#=GF CC   first line\n"
                                           "#=GF CC   second line\n"
                                           "#=GS b AC Q00001\n"
                                           "#=GS a AC P00001\n"
                                           "#=GS a DR PDB; 1abc A;\n"
                                           "#=GS a OS\n"
                                           "a         AC.D\n"
                                           "#=GR a SS HH.E\n"
                                           "#=GR a pAS ...*\n"
                                           "b         AC.D\n"
                                           "#=GC SS_cons HHxE\n"
                                           "#=GC RF xx.x\n");
    EXPECT_THAT(alignment.annotations,
                ElementsAre(Annotation{"ID", "family"}, Annotation{"CC", "first line"},
                            Annotation{"CC", "second line"}));
    EXPECT_THAT(alignment.columnAnnotations,
                ElementsAre(Annotation{"SS_cons", "HHxE"}, Annotation{"RF", "xx.x"}));
    EXPECT_THAT(rowNames(alignment), ElementsAre("a", "b"));
    EXPECT_THAT(alignment.rows[0].annotations,
                ElementsAre(Annotation{"AC", "P00001"}, Annotation{"DR", "PDB; 1abc A;"},
                            Annotation{"OS", ""}));
    EXPECT_THAT(alignment.rows[0].residueAnnotations,
                ElementsAre(Annotation{"SS", "HH.E"}, Annotation{"pAS", "...*"}));
    EXPECT_THAT(alignment.rows[1].annotations, ElementsAre(Annotation{"AC", "Q00001"}));
    EXPECT_THAT(alignment.rows[1].residueAnnotations, IsEmpty());
    EXPECT_THAT(alignment.remarks, IsEmpty());
}

TEST(StockholmReader, AnnotationOfColumnsAndResiduesIsReadInBlocksToo)
{
    const AlignmentRecord alignment = read("#=GC RF xx\na AC\n#=GR a SS HH\nb AC\n\n"
                                           "#=GC RF .x\na DE\n#=GR a SS EE\nb DE\n");
    EXPECT_THAT(alignment.columnAnnotations, ElementsAre(Annotation{"RF", "xx.x"}));
    EXPECT_THAT(alignment.rows[0].residueAnnotations, ElementsAre(Annotation{"SS", "HHEE"}));
}

TEST(StockholmReader, AnnotationOfResiduesMayStandAboveTheRow)
{
    const AlignmentRecord alignment = read("#=GR a SS HH\na AC\n#=GR b SS EE\nb AC\n");
    EXPECT_THAT(rowNames(alignment), ElementsAre("a", "b"));
    EXPECT_THAT(alignment.rows[0].residueAnnotations, ElementsAre(Annotation{"SS", "HH"}));
    EXPECT_THAT(alignment.rows[1].residueAnnotations, ElementsAre(Annotation{"SS", "EE"}));
}

TEST(StockholmReader, NothingIsSaidOfAGap)
{
    EXPECT_THAT(read("a A-C\n#=GR a SS HHH\n").rows[0].residueAnnotations,
                ElementsAre(Annotation{"SS", "H.H"}));
}

TEST(StockholmReader, DescriptionOfARowIsItsDescription)
{
    const RowRecord row =
        read("#=GS a AC P1\n#=GS a DE A protein\n#=GS a DE of two lines\na A\n").rows.at(0);
    EXPECT_EQ(row.description, "A protein");
    EXPECT_THAT(row.annotations,
                ElementsAre(Annotation{"AC", "P1"}, Annotation{"DE", "of two lines"}));
}

TEST(StockholmReader, CommentsAreLeftOut)
{
    EXPECT_THAT(rowTexts(read("# made by hand\n#\n#= odd\na AC\n")), ElementsAre("AC"));
}

TEST(StockholmReader, UnknownMarkupIsRemarkedOnOnce)
{
    EXPECT_THAT(read("#=GX a\n#=GY b\na AC\n").remarks,
                ElementsAre("x.sto:2: unknown markup \"#=GX\" was left out"));
}

TEST(StockholmReader, AnnotationOfRowsThatAreNotThereIsRemarkedOn)
{
    const AlignmentRecord alignment =
        read("#=GS gone AC P1\n#=GS gone OS x\na AC\n#=GR lost SS HH\n#=GR lost SA 12\n");
    EXPECT_THAT(rowNames(alignment), ElementsAre("a"));
    EXPECT_THAT(
        alignment.remarks,
        ElementsAre("x.sto:5: what is said of the residues of \"lost\" was left out, because there "
                    "is no such row",
                    "x.sto:6: what is said of the residues of \"lost\" was left out, because there "
                    "is no such row",
                    "x.sto:2: what is said of \"gone\" was left out, because there is no such "
                    "row"));
}

TEST(StockholmReader, SeveralAlignmentsAreNamedByTheirIdentifiers)
{
    const FileContents contents =
        contentsOf("x.sto", kHeader + "#=GF ID one\na AC\n//\n\n" + kHeader +
                                "#=GF ID two\n#=GC RF xxx\nb DEF\n//\n");
    ASSERT_EQ(contents.alignments.size(), 2U);
    EXPECT_EQ(contents.alignments[0].name, "one");
    EXPECT_EQ(contents.alignments[1].name, "two");
    EXPECT_THAT(rowTexts(contents.alignments[1]), ElementsAre("DEF"));
    EXPECT_THAT(contents.alignments[0].columnAnnotations, IsEmpty());
    EXPECT_EQ(contents.alignments[1].annotations.size(), 1U);
}

TEST(StockholmReader, SeveralAlignmentsOfOneIdentifierAreCounted)
{
    const FileContents contents = contentsOf("x.sto", kHeader + "#=GF ID one\na AC\n//\n" +
                                                          kHeader + "#=GF ID one\na AC\n//\n");
    ASSERT_EQ(contents.alignments.size(), 2U);
    EXPECT_EQ(contents.alignments[0].name, "x_1");
    EXPECT_EQ(contents.alignments[1].name, "x_2");
}

TEST(StockholmReader, HeaderIsFoundInEitherCase)
{
    EXPECT_THAT(rowTexts(readWhole("# Stockholm 1.0\na AC\n//\n")), ElementsAre("AC"));
}

TEST(StockholmReader, ForeignCharacterIsNamedWithLineAndRow)
{
    EXPECT_EQ(message("a AC\nb A1\n"), "x.sto:3: found \"1\" in row \"b\", expected a residue "
                                       "letter or a gap (\"-\" or \".\")");
}

TEST(StockholmReader, RowOfAnotherWidthIsNamed)
{
    EXPECT_EQ(message("a AC\nb ACD\n"), "x.sto:3: row \"b\" ends with 3 columns, row \"a\" has 2");
    EXPECT_EQ(message("a AC\nb AC\n\na D\n"),
              "x.sto:3: row \"b\" ends with 2 columns, row \"a\" has 3");
}

TEST(StockholmReader, AnnotationOfAnotherWidthIsNamed)
{
    EXPECT_EQ(message("a AC\n#=GC RF x\n"),
              "x.sto:3: #=GC \"RF\" ends with 1 column, the rows have 2");
    EXPECT_EQ(message("a AC\n#=GR a SS HHH\n"),
              "x.sto:3: #=GR \"a\" \"SS\" ends with 3 columns, the rows have 2");
}

TEST(StockholmReader, NameWithoutResiduesIsAnError)
{
    EXPECT_EQ(message("a AC\nb\n"),
              "x.sto:3: found no residues after \"b\", expected at least one");
}

TEST(StockholmReader, AlignmentWithoutItsEndIsAnError)
{
    EXPECT_EQ(messageOf("x.sto", kHeader + "a AC\n"),
              "x.sto:2: the file ends before the \"//\" that ends an alignment");
    EXPECT_EQ(messageOf("x.sto", kHeader + "a AC\n" + kHeader + "a AC\n//\n"),
              "x.sto:3: found another alignment, expected the \"//\" that ends the one before");
}

TEST(StockholmReader, RowsAfterTheEndAreAnError)
{
    EXPECT_EQ(messageOf("x.sto", kHeader + "a AC\n//\nb AC\n"),
              "x.sto:4: found \"b\", expected \"# STOCKHOLM 1.0\" before the rows");
    EXPECT_EQ(messageOf("x.sto", kHeader + "a AC\n//\n//\n"),
              "x.sto:4: found \"//\", expected \"# STOCKHOLM 1.0\"");
}

TEST(StockholmReader, RowsWithoutMarkupAreRead)
{
    EXPECT_THAT(rowTexts(readWhole("a/1-3   AC-DEFGHIK\nb/1-4   ACCDEFGHIK\n")),
                ElementsAre("AC-DEFGHIK", "ACCDEFGHIK"));
    EXPECT_THAT(rowTexts(readWhole("\na/1-3   AC-D\nb/1-4   ACCD\n\na/1-3   EF\nb/1-4   EF\n")),
                ElementsAre("AC-DEF", "ACCDEF"));
    EXPECT_EQ(messageOf("x", "a/1-3   AC-D\nb/1-4   ACCD\n\na/1-3   EF\n"),
              "x:2: row \"b/1-4\" ends with 4 columns, row \"a/1-3\" has 6");
}

TEST(StockholmReader, ProseIsNotTakenForRows)
{
    EXPECT_EQ(messageOf("x", "hello world\nother words\n"),
              "x: begins with \"hello world\"; " + kKnownFormats);
    EXPECT_EQ(messageOf("x", "title\n\nhello world\nother words\n"),
              "x: begins with \"title\"; " + kKnownFormats);
}

// A row longer than any buffer, and names that stand on its edge.
TEST(StockholmReader, RowsLongerThanTheBufferAreRead)
{
    std::string row;
    for (unsigned i = 0; i < 700000; ++i)
        row += i % 11 < 4 ? '.' : "ACDEFGHIKL"[i % 10];
    std::string text = row;
    std::replace(text.begin(), text.end(), '.', '-');
    for (const std::size_t shift : {0U, 1U, 63U, 64U, 4000U}) {
        const AlignmentRecord alignment =
            read(std::string(shift + 1, 'n') + ' ' + row + "\nb " + row + "\n#=GR b SS " + row +
                 "\n#=GC RF " + row + '\n');
        ASSERT_EQ(alignment.rows.size(), 2U);
        EXPECT_EQ(alignment.rows[0].name.size(), shift + 1);
        EXPECT_EQ(alignment.rows[0].sequence.text(), text);
        EXPECT_EQ(alignment.rows[1].sequence.text(), text);
        EXPECT_EQ(alignment.rows[1].residueAnnotations.at(0).text, row);
        EXPECT_EQ(alignment.columnAnnotations.at(0).text, row);
    }
}

TEST(StockholmReader, RealFamiliesKeepTheirAnnotation)
{
    const AlignmentRecord kinases =
        contentsOf(dataFile("alignments/stockholm/protein_kinases_seed.sto")).alignments.at(0);
    EXPECT_EQ(kinases.annotations.at(0), (Annotation{"ID", "Pkinase"}));
    ASSERT_EQ(kinases.columnAnnotations.size(), 2U);
    EXPECT_EQ(kinases.columnAnnotations[0].tag, "SS_cons");
    EXPECT_EQ(kinases.columnAnnotations[0].text.size(), 419U);
    ASSERT_EQ(kinases.rows.size(), 38U);
    for (const RowRecord &row : kinases.rows) {
        EXPECT_FALSE(row.annotations.empty());
        EXPECT_FALSE(row.residueAnnotations.empty());
    }
    const AlignmentRecord globins =
        contentsOf(dataFile("alignments/stockholm/globins45.sto")).alignments.at(0);
    for (const RowRecord &row : globins.rows) {
        ASSERT_EQ(row.residueAnnotations.size(), 1U);
        EXPECT_EQ(row.residueAnnotations[0].tag, "PP");
        EXPECT_EQ(row.residueAnnotations[0].text.size(), 156U);
    }
}

TEST(StockholmReader, StopsThatBecomeGapsAreRemarkedOn)
{
    const FileContents contents =
        contentsOf("x.sto", "# STOCKHOLM 1.0\na AC*\n//\n# STOCKHOLM 1.0\na ACD\n//\n");
    ASSERT_EQ(contents.alignments.size(), 2U);
    EXPECT_THAT(contents.alignments[0].remarks,
                ElementsAre("x.sto:2: a stop (\"*\") in row \"a\" was read as a gap"));
    EXPECT_THAT(contents.alignments[1].remarks, IsEmpty());
}

} // namespace StockholmReaderTest
} // namespace TAMBO::formats
