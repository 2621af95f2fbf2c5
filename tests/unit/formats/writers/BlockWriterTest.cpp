// SPDX-License-Identifier: GPL-3.0-or-later
// The text of Clustal, Stockholm, MSF, PHYLIP and NEXUS files.
#include "RecordBuilder.h"
#include "TestFiles.h"
#include "support/Outcome.h"

#include <gtest/gtest.h>

namespace TAMBO::formats {
namespace BlockWriterTest {

TEST(ClustalWriter, BlocksHaveAllRowsAndALineOfMarks)
{
    EXPECT_EQ(
        textOf(recordOf({{"a", "ACD-E"}, {"bcd", "SCE-F"}}), optionsOf("clustal"), writeClustal),
        "CLUSTAL multiple sequence alignment\n"
        "\n"
        "\n"
        "a               ACD-E\n"
        "bcd             SCE-F\n"
        "                :*:  \n");
}

TEST(ClustalWriter, MarksTellIdenticalStrongAndWeakColumns)
{
    EXPECT_EQ(textOf(recordOf({{"a", "WMCaFG"}, {"b", "WLSAHD"}, {"c", "wIA-YN"}}),
                     optionsOf("clustal"), writeClustal),
              "CLUSTAL multiple sequence alignment\n"
              "\n"
              "\n"
              "a               WMCaFG\n"
              "b               WLSAHD\n"
              "c               wIA-YN\n"
              "                *:. ..\n");
}

TEST(ClustalWriter, AnExactMultipleOfTheBlockHasNoEmptyBlock)
{
    const std::string text =
        textOf(recordOf({{"a", std::string(120, 'A')}}), optionsOf("clustal"), writeClustal);
    const std::string block = "\na               " + std::string(60, 'A') + "\n                " +
                              std::string(60, '*') + '\n';
    EXPECT_EQ(text, "CLUSTAL multiple sequence alignment\n\n" + block + block);
}

TEST(ClustalWriter, LongNamesMoveTheColumns)
{
    EXPECT_EQ(textOf(recordOf({{"a_name_of_20_letters", "A"}, {"b", "A"}}), optionsOf("clustal"),
                     writeClustal),
              "CLUSTAL multiple sequence alignment\n\n\n"
              "a_name_of_20_letters A\n"
              "b                    A\n"
              "                     *\n");
}

TEST(StockholmWriter, EveryKindOfAnnotationHasItsPlace)
{
    AlignmentRecord record = recordOf({{"a", "AC-D"}, {"bc", "ACCD"}});
    record.annotations = {{"ID", "globin"}, {"CC", "one"}, {"CC", "two"}};
    record.columnAnnotations = {{"SS_cons", "HH.E"}};
    record.rows[0].description = "first";
    record.rows[0].annotations = {{"OS", "a bug"}, {"DR", "PDB; 1abc A;"}};
    record.rows[1].residueAnnotations = {{"SS", "HHHE"}};
    EXPECT_EQ(textOf(record, optionsOf("stockholm"), writeStockholm), "# STOCKHOLM 1.0\n"
                                                                      "#=GF ID globin\n"
                                                                      "#=GF CC one\n"
                                                                      "#=GF CC two\n"
                                                                      "#=GS a DE first\n"
                                                                      "#=GS a OS a bug\n"
                                                                      "#=GS a DR PDB; 1abc A;\n"
                                                                      "\n"
                                                                      "a            AC-D\n"
                                                                      "bc           ACCD\n"
                                                                      "#=GR bc SS   HHHE\n"
                                                                      "#=GC SS_cons HH.E\n"
                                                                      "//\n");
}

// As databases have it; the file was read before rows came or went.
TEST(StockholmWriter, TheNumberOfSequencesIsThatOfTheRows)
{
    AlignmentRecord record = recordOf({{"a", "AC"}, {"b", "AC"}});
    record.annotations = {{"SQ", "1000"}, {"SQ", "many"}};
    EXPECT_EQ(textOf(record, optionsOf("stockholm"), writeStockholm),
              "# STOCKHOLM 1.0\n#=GF SQ 2\n#=GF SQ many\n\na AC\nb AC\n//\n");
}

TEST(StockholmWriter, RowsAreInOnePiece)
{
    EXPECT_EQ(
        textOf(recordOf({{"a", std::string(500, 'A')}}), optionsOf("stockholm"), writeStockholm),
        "# STOCKHOLM 1.0\n\na " + std::string(500, 'A') + "\n//\n");
}

// The sums are those that other programs wrote into their files.
TEST(MsfWriter, ChecksumsCountCapitalsByTheirColumns)
{
    // A = 65, C = 67, '.' = 46: 65 + 2 * 67 + 3 * 46 = 337; 2 * 65 + ... of the second row alike.
    EXPECT_EQ(textOf(recordOf({{"a", "Ac-"}, {"long", "-AA"}}), optionsOf("msf"), writeMsf),
              "!!AA_MULTIPLE_ALIGNMENT 1.0\n"
              "\n"
              " MSF: 3  Type: P  Check: 708 ..\n"
              "\n"
              " Name: a     Len:     3  Check:  337  Weight:  1.00\n"
              " Name: long  Len:     3  Check:  371  Weight:  1.00\n"
              "\n"
              "//\n"
              "\n"
              "a     Ac.\n"
              "long  .AA\n");
}

TEST(MsfWriter, BlocksHaveFiftyColumnsInGroupsOfTen)
{
    const std::string text =
        textOf(recordOf({{"a", std::string(61, 'A')}}), optionsOf("msf"), writeMsf);
    const std::string ten = ' ' + std::string(10, 'A');
    EXPECT_TRUE(text.ends_with("//\n\na " + ten + ten + ten + ten + ten + "\n\na " + ten + " A\n"))
        << text;
}

TEST(PhylipWriter, NamesStandInTheFirstBlockOnly)
{
    EXPECT_EQ(textOf(recordOf({{"a", std::string(70, 'A')}, {"a name", std::string(70, '-')}}),
                     optionsOf("phylip"), writePhylip),
              " 2 70\n"
              "a          AAAAAAAAAA AAAAAAAAAA AAAAAAAAAA AAAAAAAAAA AAAAAAAAAA AAAAAAAAAA\n"
              "a name     ---------- ---------- ---------- ---------- ---------- ----------\n"
              "\n"
              "           AAAAAAAAAA\n"
              "           ----------\n");
}

TEST(PhylipWriter, SequentialRowsAreInOnePiece)
{
    EXPECT_EQ(textOf(recordOf({{"a", std::string(70, 'A')}, {"b", std::string(70, '-')}}),
                     optionsOf("phylip-sequential"), writePhylip),
              " 2 70\n"
              "a          " +
                  std::string(70, 'A') +
                  "\n"
                  "b          " +
                  std::string(70, '-') + '\n');
}

TEST(PhylipWriter, RelaxedNamesAreWholeAndWithoutBlanks)
{
    EXPECT_EQ(textOf(recordOf({{"a long name (1)", "AC"}, {"b", "A-"}}),
                     optionsOf("phylip-relaxed"), writePhylip),
              " 2 2\n"
              "a_long_name__1_ AC\n"
              "b               A-\n");
    EXPECT_EQ(textOf(recordOf({{"a long name (1)", "AC"}, {"b", "A-"}}),
                     optionsOf("phylip-relaxed-sequential"), writePhylip),
              " 2 2\n"
              "a_long_name__1_ AC\n"
              "b               A-\n");
}

// Two bytes each in the file, one place in the line.
TEST(BlockWriter, NamesAreAsWideAsTheirCharacters)
{
    const AlignmentRecord record = recordOf({{"M\xc3\xbcller_\xc3\xa9t\xc3\xa9_2026_x", "AC"},
                                             {"b", "A-"},
                                             {"\xce\xb1\xce\xb2", "AC"}});
    EXPECT_EQ(textOf(record, optionsOf("clustal"), writeClustal),
              "CLUSTAL multiple sequence alignment\n\n\n"
              "M\xc3\xbcller_\xc3\xa9t\xc3\xa9_2026_x AC\n"
              "b                 A-\n"
              "\xce\xb1\xce\xb2                AC\n"
              "                  * \n");
    const std::string msf = textOf(record, optionsOf("msf"), writeMsf);
    EXPECT_NE(msf.find("\n Name: M\xc3\xbcller_\xc3\xa9t\xc3\xa9_2026_x  Len:     2"),
              std::string::npos);
    EXPECT_NE(msf.find("\n Name: \xce\xb1\xce\xb2                 Len:     2"), std::string::npos);
    EXPECT_NE(msf.find("\nM\xc3\xbcller_\xc3\xa9t\xc3\xa9_2026_x  AC\n"
                       "b                  A.\n"
                       "\xce\xb1\xce\xb2                 AC\n"),
              std::string::npos)
        << msf;
    AlignmentRecord annotated = recordOf({{"\xce\xb1", "AC"}, {"bc", "A-"}});
    annotated.rows[0].residueAnnotations = {{"SS", "HH"}};
    annotated.columnAnnotations = {{"\xce\xb2\xce\xb3", "HH"}};
    EXPECT_EQ(textOf(annotated, optionsOf("stockholm"), writeStockholm),
              "# STOCKHOLM 1.0\n\n"
              "\xce\xb1         AC\n"
              "#=GR \xce\xb1 SS HH\n"
              "bc        A-\n"
              "#=GC \xce\xb2\xce\xb3   HH\n"
              "//\n");
}

TEST(BlockWriter, NamesOfAnyCharactersReadBack)
{
    const AlignmentRecord record =
        recordOf({{"M\xc3\xbcller", "AC"}, {"\xe8\x9b\x8b\xe7\x99\xbd", "A-"}, {"b", "AC"}});
    for (const char *format : {"clustal", "msf", "stockholm"}) {
        const TemporaryFile file("x", "");
        ASSERT_EQ(complaintOf(writeFile(file.path(), std::span(&record, 1), optionsOf(format))),
                  "");
        EXPECT_EQ(rowNames(contentsOf(file.path()).alignments.at(0)), rowNames(record)) << format;
    }
}

TEST(NexusWriter, NamesThatWouldMeanSomethingElseAreQuoted)
{
    EXPECT_EQ(textOf(recordOf({{"P1.2|x", "AC-"}, {"a_b", "ACD"}, {"it's", "acd"}, {"12", "---"}}),
                     optionsOf("nexus"), writeNexus),
              "#NEXUS\n"
              "\n"
              "BEGIN DATA;\n"
              "    DIMENSIONS NTAX=4 NCHAR=3;\n"
              "    FORMAT DATATYPE=PROTEIN MISSING=? GAP=-;\n"
              "    MATRIX\n"
              "P1.2|x  AC-\n"
              "'a_b'   ACD\n"
              "'it''s' acd\n"
              "'12'    ---\n"
              "    ;\n"
              "END;\n");
}

TEST(NexusWriter, WideAlignmentsAreInterleaved)
{
    EXPECT_EQ(textOf(recordOf({{"a", std::string(61, 'A')}, {"b", std::string(61, 'C')}}),
                     optionsOf("nexus"), writeNexus),
              "#NEXUS\n\nBEGIN DATA;\n    DIMENSIONS NTAX=2 NCHAR=61;\n"
              "    FORMAT DATATYPE=PROTEIN MISSING=? GAP=- INTERLEAVE;\n    MATRIX\n"
              "a " +
                  std::string(60, 'A') + "\nb " + std::string(60, 'C') +
                  "\n\na A\nb C\n    ;\nEND;\n");
}

} // namespace BlockWriterTest
} // namespace TAMBO::formats
