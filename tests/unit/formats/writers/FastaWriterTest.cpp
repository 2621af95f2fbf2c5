// SPDX-License-Identifier: GPL-3.0-or-later
// The text of FASTA, A2M and A3M files.
#include "RecordBuilder.h"
#include "support/Outcome.h"

#include <gtest/gtest.h>

namespace TAMBO::formats {
namespace FastaWriterTest {

using Texts = std::vector<std::string>;

std::string fastaOf(const AlignmentRecord &record)
{
    return textOf(record, optionsOf("fasta"), writeFasta);
}

// The rows' texts, one a line.
Texts insertionsOf(const AlignmentRecord &record, const std::string &format)
{
    const FittedAlignment fitted(record, optionsOf(format));
    Texts texts;
    for (std::size_t row = 0; row < fitted.rowCount(); ++row)
        texts.push_back(fitted.insertionText(row));
    return texts;
}

TEST(FastaWriter, ARowHasAHeaderAndLinesOfSixtyColumns)
{
    EXPECT_EQ(fastaOf(recordOf({{"a", std::string(60, 'A')}, {"b", std::string(61, '-')}})),
              ">a\n" + std::string(60, 'A') + "\n>b\n" + std::string(60, '-') + "\n-\n");
}

TEST(FastaWriter, ADescriptionFollowsTheName)
{
    AlignmentRecord record = recordOf({{"a", "Ac"}});
    record.rows[0].description = " Trypsin\tprecursor ";
    EXPECT_EQ(fastaOf(record), ">a Trypsin precursor\nAc\n");
}

TEST(FastaWriter, ATitleOfAPirFileThatSaysNothingIsLeftOut)
{
    AlignmentRecord record = recordOf({{"a", "AC"}, {"b", "AC"}});
    record.rows[0].description = "sequence:a: : : : ::::";
    record.rows[1].description = "structureX:1abc:1:A:2:A::::";
    EXPECT_EQ(fastaOf(record), ">a\nAC\n>b structureX:1abc:1:A:2:A::::\nAC\n");
    // A part of the row tells the range that it has.
    record.rows[1].link = StructureLink{"1abc", "A", "5", "6", "A"};
    EXPECT_EQ(fastaOf(record), ">a\nAC\n>b structureX:1abc:5:A:6:A::::\nAC\n");
}

TEST(FastaWriter, ANameWithBlanksOrLikeAPirRecordIsMadeFit)
{
    EXPECT_EQ(fastaOf(recordOf({{"a b", "A"}, {"P1;c", "A"}, {"", "A"}})),
              ">a_b\nA\n>P1_c\nA\n>row_3\nA\n");
}

TEST(FastaWriter, WhatIsNoLetterIsWrittenAsX)
{
    EXPECT_EQ(fastaOf(recordOf({{"a", "A*C/"}})), ">a\nAXCX\n");
}

TEST(A2mWriter, GapsInInsertionsAreDots)
{
    const AlignmentRecord record = recordOf({{"a", "AC--D-"}, {"b", "A-efDg"}, {"c", "-C-fD-"}});
    EXPECT_EQ(insertionsOf(record, "a2m"), (Texts{"AC..D.", "A-efDg", "-C.fD."}));
    EXPECT_EQ(textOf(record, optionsOf("a2m"), writeInsertions),
              ">a\nAC..D.\n>b\nA-efDg\n>c\n-C.fD.\n");
}

TEST(A2mWriter, SmallLettersBesideCapitalsBecomeCapitals)
{
    EXPECT_EQ(insertionsOf(recordOf({{"a", "ACD"}, {"b", "acd"}}), "a2m"), (Texts{"ACD", "ACD"}));
}

TEST(A2mWriter, WithoutACapitalThereAreNoInsertions)
{
    EXPECT_EQ(insertionsOf(recordOf({{"a", "ac-"}, {"b", "a-d"}}), "a2m"), (Texts{"AC-", "A-D"}));
}

TEST(A2mWriter, AColumnOfGapsIsNoInsertion)
{
    EXPECT_EQ(insertionsOf(recordOf({{"a", "A-c"}, {"b", "A--"}}), "a2m"), (Texts{"A-c", "A-."}));
}

TEST(A2mWriter, RowsAreBrokenOnlyWhenThatIsWanted)
{
    const AlignmentRecord record = recordOf({{"a", std::string(200, 'A')}});
    EXPECT_EQ(textOf(record, optionsOf("a2m"), writeInsertions),
              ">a\n" + std::string(200, 'A') + '\n');
    WriteOptions broken = optionsOf("a2m");
    broken.lineLength = 150;
    EXPECT_EQ(textOf(record, broken, writeInsertions),
              ">a\n" + std::string(150, 'A') + '\n' + std::string(50, 'A') + '\n');
}

TEST(A3mWriter, GapsInInsertionsAreLeftOut)
{
    EXPECT_EQ(insertionsOf(recordOf({{"a", "AC--D-"}, {"b", "A-efDg"}, {"c", "-C-fD-"}}), "a3m"),
              (Texts{"ACD", "A-efDg", "-CfD"}));
}

TEST(A3mWriter, RowsThatWouldPassForColumnsKeepTheirDots)
{
    EXPECT_EQ(insertionsOf(recordOf({{"a", "AcD-"}, {"b", "A-Dc"}}), "a3m"),
              (Texts{"AcD.", "A.Dc"}));
}

TEST(A3mWriter, InsertionsAreReadBackFromTheirLeft)
{
    const AlignmentRecord record = recordOf({{"a", "A--cD"}, {"b", "Aef-D"}, {"c", "A---D"}});
    const FittedAlignment fitted(record, optionsOf("a3m"));
    EXPECT_EQ(insertionsOf(record, "a3m"), (Texts{"AcD", "AefD", "AD"}));
    const AlignmentRecord packed = recordOf({{"a", "Ac-D"}, {"b", "AefD"}, {"c", "A--D"}});
    EXPECT_EQ(complaintOf(fitted.checkSame(packed)), "");
    EXPECT_EQ(complaintOf(fitted.checkSame(record)), "row 1, \"a\", has its gaps at other places");
}

} // namespace FastaWriterTest
} // namespace TAMBO::formats
