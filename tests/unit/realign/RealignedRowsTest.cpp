// SPDX-License-Identifier: GPL-3.0-or-later
// What is sent to an aligner, and what is believed of its answer.
#include "RealignedRows.h"

#include "AppFixture.h"

namespace RealignedRowsTest {

using TAMBO::Alignment;
using TAMBO::OccupancyRow;
using TAMBO::realign::RealignedRows;

class RealignedRowsTest : public AppFixture
{
protected:
    // As text, 'x' for a residue.
    static std::vector<std::string> cells(const RealignedRows::Columns &columns)
    {
        std::vector<std::string> texts;
        for (const OccupancyRow &row : columns.rows) {
            std::string text;
            for (unsigned long col = 0; col < columns.count; ++col)
                text += row.isResidue(col) ? 'x' : '-';
            texts.push_back(text);
        }
        return texts;
    }
    static std::string refusal(const RealignedRows &rows, std::string_view answer)
    {
        const auto columns = rows.read(answer);
        return columns ? "believed" : columns.error().message();
    }
};

TEST_F(RealignedRowsTest, SendsTheResiduesOfTheRangeUnderNamesOfItsOwn)
{
    const Alignment &ali = alignment("a", {"AC-DEF", "A---EF", "ACD-EF"});
    const RealignedRows rows(ali, {1, 4});
    EXPECT_EQ(rows.count(), 2U);
    EXPECT_EQ(rows.letters(), 4U);
    EXPECT_EQ(rows.fasta(), ">r0\nCD\n>r1\nCD\n");
}

TEST_F(RealignedRowsTest, LettersThatAlignersDoNotKnowAreSentAsX)
{
    const RealignedRows rows(alignment("a", {"aBZUXJO", "ACDEFGH"}), {0, 7});
    EXPECT_EQ(rows.fasta(), ">r0\nAXXXXXX\n>r1\nACDEFGH\n");
}

TEST_F(RealignedRowsTest, ReadsRowsInAnyOrderAndOnSeveralLines)
{
    const RealignedRows rows(alignment("a", {"ACD", "---", "AD-"}), {0, 3});
    const auto columns = rows.read(">r1 two\r\nA-\r\nD\r\n>r0\nAC\nD\n");
    ASSERT_TRUE(columns);
    EXPECT_EQ(cells(columns.value()), (std::vector<std::string>{"xxx", "---", "x-x"}));
}

TEST_F(RealignedRowsTest, ColumnsWithoutAResidueAreLeftOut)
{
    const RealignedRows rows(alignment("a", {"ACD", "AD-"}), {0, 3});
    const auto columns = rows.read(">r0\n-AC--D\n>r1\n-A---D\n");
    ASSERT_TRUE(columns);
    EXPECT_EQ(cells(columns.value()), (std::vector<std::string>{"xxx", "x-x"}));
}

TEST_F(RealignedRowsTest, RowsThatAreNotChosenKeepTheirCells)
{
    const RealignedRows rows(alignment("a", {"WAC-D", "WA--D", "WA-CD", "WA---"}), {1, 5},
                             {true, true, false, false});
    EXPECT_EQ(rows.fasta(), ">r0\nACD\n>r1\nAD\n");
    const auto same = rows.read(">r0\nACD\n>r1\nA-D\n");
    ASSERT_TRUE(same);
    EXPECT_EQ(cells(same.value()), (std::vector<std::string>{"xxx-", "x-x-", "x-xx", "x---"}));
    const auto wider = rows.read(">r0\n--AC-D\n>r1\n--A--D\n");
    ASSERT_TRUE(wider);
    EXPECT_EQ(cells(wider.value()), (std::vector<std::string>{"-xxx", "-x-x", "xxx-", "x---"}));
}

TEST_F(RealignedRowsTest, LowerCaseAnswersAreTheSameResidues)
{
    const RealignedRows rows(alignment("a", {"aC", "AC"}), {0, 2});
    EXPECT_TRUE(rows.read(">r0\nac\n>r1\nac\n"));
}

TEST_F(RealignedRowsTest, LiesAreNotBelieved)
{
    const RealignedRows rows(alignment("a", {"ACD", "AD-"}), {0, 3});
    EXPECT_EQ(refusal(rows, ">r0\nACD\n"), "its answer lacks a sequence");
    EXPECT_EQ(refusal(rows, ""), "its answer lacks a sequence");
    EXPECT_EQ(refusal(rows, ">r0\nACD\n>r1\nA-D\n>r1\nA-D\n"),
              "it answered with one sequence twice");
    EXPECT_EQ(refusal(rows, ">r0\nACD\n>r1\nA-D\n>r2\nA-D\n"),
              "it answered with a sequence that it was not given");
    EXPECT_EQ(refusal(rows, ">r0\nACD\n>other\nA-D\n"),
              "it answered with a sequence that it was not given");
    EXPECT_EQ(refusal(rows, ">r0\nACD\n>r1\nAD\n"), "the rows of its answer differ in length");
    EXPECT_EQ(refusal(rows, ">r0\nADC\n>r1\nA-D\n"), "it changed the residues of a sequence");
    EXPECT_EQ(refusal(rows, ">r0\nACDD\n>r1\nA-D-\n"), "it changed the residues of a sequence");
    EXPECT_EQ(refusal(rows, ">r0\nA-D\n>r1\nA-D\n"), "it changed the residues of a sequence");
    EXPECT_EQ(refusal(rows, ">r0\nACD\n>r1\nA*D\n"), "it changed the residues of a sequence");
    EXPECT_EQ(refusal(rows, "CLUSTAL W\n\nr0 ACD\nr1 A-D\n"), "its answer is no FASTA");
    EXPECT_EQ(refusal(rows, ">r99999999999999999999\nACD\n"),
              "it answered with a sequence that it was not given");
    EXPECT_EQ(refusal(rows, ">\nACD\n"), "it answered with a sequence that it was not given");
}

} // namespace RealignedRowsTest
