// SPDX-License-Identifier: GPL-3.0-or-later
#include "TestFiles.h"

#include <gmock/gmock.h>

#include <random>

namespace TAMBO::formats {
namespace NexusReaderTest {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

const std::string kStart = "#NEXUS\nBEGIN DATA;\n";
const std::string kFormat = "FORMAT DATATYPE=PROTEIN MISSING=? GAP=-;\n";

// A file with a matrix of so many rows and columns.
std::string fileOf(const std::string &matrix, const std::string &size,
                   const std::string &format = kFormat)
{
    return kStart + "DIMENSIONS " + size + ";\n" + format + "MATRIX\n" + matrix + ";\nEND;\n";
}

AlignmentRecord read(const std::string &text)
{
    return alignmentOf("x.nex", text, "nexus");
}

std::string message(const std::string &text)
{
    return messageOf("x.nex", text);
}

TEST(NexusReader, RowsMayGoOnInTheNextLines)
{
    const AlignmentRecord alignment =
        read(fileOf("a AC-\n  DE\nb\nAC D\n\nE ?\n", "NTAX=2 NCHAR=5"));
    EXPECT_TRUE(alignment.isAligned);
    EXPECT_EQ(alignment.name, "x");
    EXPECT_THAT(rowNames(alignment), ElementsAre("a", "b"));
    EXPECT_THAT(rowTexts(alignment), ElementsAre("AC-DE", "ACDEX"));
    EXPECT_THAT(alignment.remarks, IsEmpty());
}

TEST(NexusReader, BlocksOfRowsAddUp)
{
    EXPECT_THAT(rowTexts(read(fileOf("a AC-\nb -CD\n\na DE\nb EF", "NTAX=2 NCHAR=5",
                                     "FORMAT DATATYPE=PROTEIN GAP=- INTERLEAVE;\n"))),
                ElementsAre("AC-DE", "-CDEF"));
    EXPECT_THAT(rowTexts(read(
                    fileOf("a AC\nb\nCD", "NCHAR=2", "FORMAT DATATYPE=PROTEIN INTERLEAVE=NO;\n"))),
                ElementsAre("AC", "CD"));
}

TEST(NexusReader, CommentsMayStandAnywhereAndInEachOther)
{
    const AlignmentRecord alignment =
        read("#NEXUS [one [two] ; ]\n[BEGIN DATA;]\nbegin[x] data;\nDimensions[x]nchar[x]=[x]4;\n"
             "Matrix [a row: x ACDE]\na[x]AC[x\n;D]DE\n[ ' ] b [1] ACDE;\nend;\n");
    EXPECT_THAT(rowNames(alignment), ElementsAre("a", "b"));
    EXPECT_THAT(rowTexts(alignment), ElementsAre("ACDE", "ACDE"));
}

TEST(NexusReader, NamesKeepTheirUnderscoresAndHaveBlanksInQuotationMarks)
{
    EXPECT_THAT(rowNames(read(fileOf("Homo_sapiens A\n'Mus musculus' A\n'a_b' A\n'it''s' A\n"
                                     "O'Brien A\nsp|P1/1-50 A\n\"x y\" A\n'' A\n",
                                     "NTAX=8 NCHAR=1"))),
                ElementsAre("Homo_sapiens", "Mus musculus", "a_b", "it's", "O'Brien", "sp|P1/1-50",
                            "x y", ""));
}

TEST(NexusReader, FormatSaysWhatCharactersMean)
{
    const auto rows = [](const std::string &format, const std::string &matrix) {
        return rowTexts(read(fileOf(matrix, "NCHAR=4", format)));
    };
    EXPECT_THAT(rows("FORMAT GAP=. MISSING=#;\n", "a A.C#\nb -?~D\n"), ElementsAre("A-CX", "-X-D"));
    EXPECT_THAT(rows("FORMAT GAP=-MISSING=?MATCHCHAR=.;\n", "a A-Cd\nb ..E.\n"),
                ElementsAre("A-Cd", "A-Ed"));
    EXPECT_THAT(rows("FORMAT MISSING=n GAP='x' MATCHCHAR=\"!\";\n", "a NnxA\nb X!!!\n"),
                ElementsAre("XX-A", "-X-A"));
    EXPECT_THAT(rows("FORMAT RESPECTCASE MISSING=n;\n", "a NnAA\n"), ElementsAre("NXAA"));
    EXPECT_THAT(rows("FORMAT EQUATE=\"1=A 2=(DN) 3={E Q} B=(DN) 4=-\" SYMBOLS=\"A~Z\";\n",
                     "a 123B\nb 4AAA\n"),
                ElementsAre("AXXB", "-AAA"));
    EXPECT_THAT(rows("FORMAT INTERLEAVE MATCHCHAR=.;\n", "a AC\nb .D\na DE\nb .F\n"),
                ElementsAre("ACDE", "ADDF"));
}

TEST(NexusReader, SetsOfResiduesAreUnknownOnesAndRemarkedOn)
{
    const AlignmentRecord alignment = read(fileOf("a A{DN}(E Q)C\nb ACDE\n", "NCHAR=4"));
    EXPECT_THAT(rowTexts(alignment), ElementsAre("AXXC", "ACDE"));
    EXPECT_THAT(alignment.remarks,
                ElementsAre("x.nex:6: 2 sets of several residues were read as \"X\""));
}

TEST(NexusReader, StopsAreGapsAndRemarkedOn)
{
    const AlignmentRecord alignment = read(fileOf("a ACD*\nb ACDE\n", "NCHAR=4"));
    EXPECT_THAT(rowTexts(alignment), ElementsAre("ACD-", "ACDE"));
    EXPECT_THAT(alignment.remarks,
                ElementsAre("x.nex:6: a stop (\"*\") in row \"a\" was read as a gap"));
}

const std::string kTaxa = "#NEXUS\nBEGIN TAXA;\nTITLE t;\nDIMENSIONS NTAX=2;\n"
                          "TAXLABELS a_1 'b';\nEND;\nBEGIN CHARACTERS;\nDIMENSIONS NCHAR=2;\n";

TEST(NexusReader, RowsMayBeCalledAsOrByThePlaceInTaxlabels)
{
    EXPECT_THAT(rowNames(read(kTaxa + "MATRIX 'a 1' AC\n2 AC\n;END;")), ElementsAre("a_1", "b"));
    EXPECT_THAT(rowNames(read(kTaxa + "MATRIX B AC\nA_1 AC\n;END;")), ElementsAre("B", "A_1"));
    EXPECT_EQ(message(kTaxa + "MATRIX a_1 AC\nc AC\n;END;"),
              "x.nex:10: found row \"c\", which TAXLABELS does not have");
    EXPECT_EQ(message(kTaxa + "MATRIX a_1 AC\n;END;"),
              "x.nex:10: the matrix ends after 1 row, expected 2");
}

TEST(NexusReader, RowsMayBringNamesOfTheirOwn)
{
    const std::string taxa = "#NEXUS\nBEGIN TAXA;\nDIMENSIONS NTAX=2;\nTAXLABELS a b;\nEND;\n";
    for (const char *head : {"DATA;\nDIMENSIONS NTAX=1 NCHAR=2;\n",
                             "CHARACTERS;\nDIMENSIONS NEWTAXA NTAX=1 NCHAR=2;\n"})
        EXPECT_THAT(rowNames(read(taxa + "BEGIN " + head + "MATRIX c AC;\nEND;\n")),
                    ElementsAre("c"));
    EXPECT_EQ(message(taxa + "BEGIN CHARACTERS;\nDIMENSIONS NCHAR=2;\nMATRIX c AC;\nEND;\n"),
              "x.nex:8: found row \"c\", which TAXLABELS does not have");
}

TEST(NexusReader, RowsWithoutNamesHaveThoseOfTaxlabels)
{
    const AlignmentRecord alignment = read(kTaxa + "FORMAT NOLABELS;\nMATRIX\nA\nC\nDE;\nEND;");
    EXPECT_THAT(rowNames(alignment), ElementsAre("a_1", "b"));
    EXPECT_THAT(rowTexts(alignment), ElementsAre("AC", "DE"));
    EXPECT_THAT(rowTexts(read(kTaxa + "FORMAT NOLABELS INTERLEAVE;\nMATRIX\nA\nD\n\nC\nE;\nEND;")),
                ElementsAre("AC", "DE"));
    EXPECT_EQ(message(kTaxa + "FORMAT NOLABELS;\nMATRIX\nAC\nDE\nFG;\nEND;"),
              "x.nex:13: found more rows than the 2 names of TAXLABELS");
    EXPECT_EQ(message(kStart + "DIMENSIONS NCHAR=2;\nFORMAT NOLABELS;\nMATRIX\nAC;\nEND;"),
              "x.nex:5: found MATRIX without names of its rows (NOLABELS), expected TAXLABELS "
              "before it");
}

TEST(NexusReader, OtherBlocksAndCommandsArePassedOver)
{
    EXPECT_THAT(rowTexts(read("#NEXUS\nBEGIN TREES;\nTREE a=(b'c,'d;end;',O'e:1);\nEND;\n" +
                              kStart.substr(7) +
                              "TITLE t;\nDIMENSIONS NCHAR=2;\nOPTIONS GAPMODE=MISSING;\n"
                              "CHARSTATELABELS 1 'x;y', 2 z;\nMATRIX a AC;\nEND;\n"
                              "BEGIN MRBAYES;\nset autoclose=yes;\nEND;\n")),
                ElementsAre("AC"));
}

TEST(NexusReader, SeveralMatricesAreSeveralAlignments)
{
    const std::string matrix = "DIMENSIONS NCHAR=2;\nMATRIX a AC;\nEND;\n";
    const FileContents contents =
        contentsOf("x.nex", kStart + matrix + "BEGIN CHARACTERS;\nTITLE 'the other';\n" + matrix);
    ASSERT_EQ(contents.alignments.size(), 2U);
    EXPECT_EQ(contents.alignments[0].name, "x_1");
    EXPECT_EQ(contents.alignments[1].name, "x_the other");
}

TEST(NexusReader, MatrixOfAnotherKindIsLeftOutBesideOneOfProteins)
{
    const std::string other =
        "BEGIN CHARACTERS;\nDIMENSIONS NCHAR=2;\nFORMAT DATATYPE=STANDARD;\nMATRIX a 01;\nEND;\n";
    const std::string ours = "BEGIN DATA;\nDIMENSIONS NCHAR=2;\nMATRIX a AC;\nEND;\n";
    for (const std::string &text : {other + ours, ours + other}) {
        const AlignmentRecord alignment = read("#NEXUS\n" + text);
        EXPECT_THAT(rowTexts(alignment), ElementsAre("AC"));
        ASSERT_EQ(alignment.remarks.size(), 1U);
        EXPECT_THAT(alignment.remarks[0],
                    testing::EndsWith("the matrix of the block \"CHARACTERS\" has "
                                      "DATATYPE=STANDARD, expected PROTEIN; it was left out"));
    }
    EXPECT_EQ(message("#NEXUS\n" + other),
              "x.nex:4: the matrix of the block \"CHARACTERS\" has DATATYPE=STANDARD, expected "
              "PROTEIN");
}

TEST(NexusReader, NucleotidesAreReadAsLettersAndRemarkedOn)
{
    const AlignmentRecord alignment = read(fileOf("a ACGT\n", "NCHAR=4", "FORMAT DATATYPE=dna;\n"));
    EXPECT_THAT(rowTexts(alignment), ElementsAre("ACGT"));
    EXPECT_THAT(alignment.remarks,
                ElementsAre("x.nex:4: DATATYPE is DNA, so the letters are no amino acids"));
}

TEST(NexusReader, FileThatOnlyLacksTheLastEndIsReadWithARemark)
{
    EXPECT_THAT(read(kStart + "DIMENSIONS NCHAR=2;\nMATRIX a AC;\n").remarks,
                ElementsAre("x.nex:4: the file ends without the \"END;\" of the block \"DATA\""));
}

struct Defect
{
    const char *name;
    std::string text;
    const char *message;
};

void PrintTo(const Defect &defect, std::ostream *out)
{
    *out << defect.name;
}

class NexusDefect : public testing::TestWithParam<Defect>
{
};

TEST_P(NexusDefect, IsToldWithItsLine)
{
    EXPECT_EQ(message(GetParam().text), GetParam().message);
}

const Defect kDefects[] = {
    {"NoMatrix", "#NEXUS\nBEGIN TREES;\nEND;\n",
     "x.nex:3: the file ends without a matrix, expected a block \"DATA\" or \"CHARACTERS\"; found "
     "\"TREES\""},
    {"NothingElse", "#NEXUS\n",
     "x.nex:1: the file ends without a matrix, expected a block \"DATA\" or \"CHARACTERS\""},
    {"NoBlock", "#NEXUS\na ACD\n",
     "x.nex:2: found \"a\", expected \"BEGIN\" and the name of a block"},
    {"Transpose", fileOf("a AC\n", "NCHAR=2", "FORMAT TRANSPOSE;\n"),
     "x.nex:4: the matrix of the block \"DATA\" has TRANSPOSE, expected a row for each sequence"},
    {"Tokens", fileOf("a AC\n", "NCHAR=2", "FORMAT TOKENS;\n"),
     "x.nex:4: the matrix of the block \"DATA\" has TOKENS, expected a letter for each residue"},
    {"Mixed", fileOf("a AC\n", "NCHAR=2", "FORMAT DATATYPE=MIXED(PROTEIN:1-2);\n"),
     "x.nex:4: the matrix of the block \"DATA\" has DATATYPE=MIXED(PROTEIN:1-2), expected "
     "PROTEIN"},
    {"NoColumns", kStart + "DIMENSIONS NTAX=1;\nMATRIX a AC;\nEND;\n",
     "x.nex:4: found MATRIX, expected DIMENSIONS with NCHAR, the number of columns, before it"},
    {"NumberThatIsNone", fileOf("a AC\n", "NTAX=many NCHAR=2"),
     "x.nex:3: found \"many\" for NTAX, expected a number from 1 on"},
    {"NumberZero", fileOf("a AC\n", "NCHAR=0"),
     "x.nex:3: found \"0\" for NCHAR, expected a number from 1 on"},
    {"NumberTooLarge", fileOf("a AC\n", "NCHAR=99999999999999999999"),
     "x.nex:3: found \"99999999999999999999\" for NCHAR, expected a number from 1 on"},
    {"NumberMissing", fileOf("a AC\n", "NCHAR"),
     "x.nex:3: found no value of \"NCHAR\", expected \"=\" and one"},
    {"GapMissing", fileOf("a AC\n", "NCHAR=2", "FORMAT GAP;\n"),
     "x.nex:4: found no character for GAP, expected \"=\" and one"},
    {"Equate", fileOf("a AC\n", "NCHAR=2", "FORMAT EQUATE=\"a=(DN\";\n"),
     "x.nex:4: found \"a=(DN\" for EQUATE, expected symbols and what they stand for, like \"x=A "
     "y=(DN)\""},
    {"RowTooShort", fileOf("a ACD\nb AC\n", "NTAX=2 NCHAR=3"),
     "x.nex:7: row \"b\" ends with 2 columns, DIMENSIONS says NCHAR=3"},
    {"RowTooLong", fileOf("a ACD\nb ACDE\n", "NTAX=2 NCHAR=3"),
     "x.nex:7: row \"b\" has 4 columns up to here, DIMENSIONS says NCHAR=3"},
    {"RowTooLongInSeveralLines", fileOf("a AC\nb ACDE\n", "NTAX=2 NCHAR=3"),
     "x.nex:7: row \"a\", which begins in line 6, has 7 columns up to here, DIMENSIONS says "
     "NCHAR=3"},
    {"RowMissing", fileOf("a ACD\n", "NTAX=2 NCHAR=3"),
     "x.nex:7: the matrix ends after 1 row, expected 2"},
    {"NoRows", fileOf("", "NCHAR=3"),
     "x.nex:6: the matrix ends after 0 rows, expected at least one"},
    {"RowTwice", fileOf("a AC\na AC\n", "NCHAR=2"),
     "x.nex:7: found row \"a\" a second time, first in line 6"},
    {"RowTwiceInABlock", fileOf("a AC\nb AC\nb AC\n", "NCHAR=4", "FORMAT INTERLEAVE;\n"),
     "x.nex:8: found row \"b\" a second time, first in line 7"},
    {"UnknownRowInALaterBlock",
     fileOf("a AC\nb AC\na AC\nc AC\n", "NCHAR=4", "FORMAT INTERLEAVE;\n"),
     "x.nex:9: found row \"c\", which the first block of rows does not have"},
    {"UnevenBlocks", fileOf("a AC\nb AC\na AC\n", "NCHAR=4", "FORMAT INTERLEAVE;\n"),
     "x.nex:7: row \"b\" ends with 2 columns, DIMENSIONS says NCHAR=4"},
    {"Digit", fileOf("a A1\n", "NCHAR=2"),
     "x.nex:6: found \"1\" in row \"a\", expected a residue letter or a gap (\"-\")"},
    {"DotWithoutMeaning", fileOf("a AC\nb A.\n", "NCHAR=2"),
     "x.nex:7: found \".\" in row \"b\", of which FORMAT says neither GAP=. nor MATCHCHAR=."},
    {"MatchInTheFirstRow", fileOf("a A.\n", "NCHAR=2", "FORMAT MATCHCHAR=.;\n"),
     "x.nex:6: found \".\" in row \"a\", where the first row has nothing that it could stand for"},
    {"SetWithoutEnd", fileOf("a A{DN\n", "NCHAR=2"),
     "x.nex:6: found \"{\" in row \"a\" without its end in the same line"},
    {"CommentWithoutEnd", fileOf("a A[DN\n", "NCHAR=2"),
     "x.nex:6: the file ends within the comment that begins here, expected \"]\""},
    {"NameWithoutEnd", fileOf("'a AC\n", "NCHAR=2"),
     "x.nex:6: found \"'a AC\", which does not end in its line, expected \"'\""},
    {"MatrixWithoutEnd", kStart + "DIMENSIONS NCHAR=2;\nMATRIX\na AC\n",
     "x.nex:5: the file ends within the matrix, expected \";\" behind the last row"},
    {"MatrixCutInARow", kStart + "DIMENSIONS NCHAR=2;\nMATRIX\na A",
     "x.nex:5: the file ends within the matrix, expected \";\" behind the last row"},
    {"BlockWithoutEnd", kStart + "DIMENSIONS NCHAR=2;\n",
     "x.nex:3: the file ends within the block \"DATA\", expected \"END;\""},
    {"NameTwiceInTaxlabels", "#NEXUS\nBEGIN TAXA;\nTAXLABELS a\nA;\nEND;\n",
     "x.nex:4: found \"A\" a second time in TAXLABELS"},
    {"TaxlabelsWithoutEnd", "#NEXUS\nBEGIN TAXA;\nTAXLABELS a\n",
     "x.nex:3: the file ends within TAXLABELS, expected \";\""},
};

INSTANTIATE_TEST_SUITE_P(NexusReader, NexusDefect, testing::ValuesIn(kDefects),
                         [](const auto &info) { return std::string(info.param.name); });

// Random rows in one of the many ways in which the format lets one write them.
class Writing
{
public:
    explicit Writing(unsigned seed) : m_Random(seed) { }

    struct Made
    {
        std::string text;
        std::vector<std::string> rows;
        std::vector<std::string> names;
    };

    Made file()
    {
        Made made;
        const std::size_t rows = 1 + roll(9);
        const std::size_t width = 1 + roll(200);
        for (std::size_t row = 0; row < rows; ++row) {
            made.names.push_back((roll(2) == 0 ? "row_" : "it's ") + std::to_string(row));
            std::string cells;
            for (std::size_t column = 0; column < width; ++column)
                cells +=
                    roll(4) == 0 && row > 0 ? made.rows[0][column] : "ACDEFGHIklmnpq-X"[roll(16)];
            made.rows.push_back(cells);
        }
        m_Gap = "-.:"[roll(3)];
        m_Missing = "?#n"[roll(3)];
        m_HasMatch = roll(2) == 0;
        const bool isInterleaved = roll(2) == 0;
        made.text = "#NEXUS" + blank() + "Begin" + blank() + "data;" + blank() +
                    "dimensions NTAX=" + std::to_string(rows) + blank() + "nchar" + blank() + "=" +
                    std::to_string(width) + ";format datatype=protein" + blank() + "gap=" + m_Gap +
                    "missing=" + m_Missing + (m_HasMatch ? " matchchar=+" : "") +
                    (isInterleaved ? " interleave" : "") + ";matrix\n";
        const std::size_t block = isInterleaved ? 1 + roll(width) : width;
        for (std::size_t begin = 0; begin < width; begin += block) {
            for (std::size_t row = 0; row < rows; ++row) {
                made.text += comment() + name(made.names[row]) + ' ';
                for (std::size_t column = begin; column < std::min(begin + block, width); ++column)
                    made.text +=
                        cell(made.rows, row, column) + (roll(30) == 0 ? comment() : std::string()) +
                        (!isInterleaved && column > begin && roll(40) == 0 && column + 1 < width
                             ? "\n"
                             : "");
                made.text += '\n';
            }
            made.text += roll(2) == 0 ? "\n" : "";
        }
        made.text += ";end;\n";
        return made;
    }

private:
    std::size_t roll(std::size_t sides) { return m_Random() % sides; }
    std::string comment() { return roll(3) > 0 ? "" : roll(2) == 0 ? "[x]" : "[a [;]' \n b]"; }
    std::string blank() { return roll(3) == 0 ? "\n" : roll(3) == 0 ? " [x]\t" : " "; }

    std::string name(const std::string &name)
    {
        if (name.starts_with("row_") && roll(2) == 0)
            return name;
        std::string quoted = "'";
        for (const char character : name)
            quoted += character == '\'' ? "''" : std::string(1, character);
        return quoted + '\'';
    }

    std::string cell(const std::vector<std::string> &rows, std::size_t row, std::size_t column)
    {
        const char here = rows[row][column];
        if (m_HasMatch && row > 0 && here == rows[0][column] && roll(2) == 0)
            return "+";
        if (here == '-')
            return std::string(1, roll(2) == 0 ? '-' : m_Gap);
        if (here == 'X')
            return std::string(1, roll(2) == 0 ? 'X' : m_Missing);
        return std::string(1, here);
    }

    std::mt19937 m_Random;
    char m_Gap = '-';
    char m_Missing = '?';
    bool m_HasMatch = false;
};

TEST(NexusReader, RandomRowsAreTheSameInWhateverWayTheyAreWritten)
{
    for (unsigned seed = 0; seed < 600; ++seed) {
        SCOPED_TRACE(seed);
        Writing::Made made = Writing(seed).file();
        if (made.text.find("missing=n") != std::string::npos) {
            for (std::string &row : made.rows)
                std::replace(row.begin(), row.end(), 'n', 'X');
        }
        const AlignmentRecord alignment = read(made.text);
        EXPECT_EQ(rowTexts(alignment), made.rows) << made.text;
        EXPECT_EQ(rowNames(alignment), made.names);
    }
}

} // namespace NexusReaderTest
} // namespace TAMBO::formats
