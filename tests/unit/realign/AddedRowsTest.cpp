// SPDX-License-Identifier: GPL-3.0-or-later
// What is sent of rows that are to be aligned to others, and what is believed of the answer.
#include "AddedRows.h"

#include "AppFixture.h"

#include <gmock/gmock.h>

using testing::IsEmpty;

namespace AddedRowsTest {

using TAMBO::realign::AddedRows;

class AddedRowsTest : public RecordedFixture
{
protected:
    // The last row is to be aligned to the first two.
    const TAMBO::Alignment &m_Family = alignment("family", {"AC--DE-", "A-C-DEF", "WXuDEFG"});
    const AddedRows m_Rows{m_Family, {2}};

    std::string refusal(const std::string &answer) const
    {
        const auto layout = m_Rows.read(answer);
        return layout ? "none" : layout.error().message();
    }
};

TEST_F(AddedRowsTest, ColumnsWithoutResiduesOfTheOthersAreNotSent)
{
    EXPECT_EQ(m_Rows.othersAsFasta(), ">r0\nAC-DE-\n>r1\nA-CDEF\n");
    EXPECT_EQ(m_Rows.addedAsFasta(), ">r2\nWXXDEFG\n");
    EXPECT_EQ(m_Rows.others(), 2U);
    EXPECT_EQ(m_Rows.added(), 1U);
}

TEST_F(AddedRowsTest, RowsWithoutResiduesTakeNoPart)
{
    const TAMBO::Alignment &family = alignment("gaps", {"AC", "--", "--", "DE"});
    const AddedRows rows(family, {2, 3});
    EXPECT_EQ(rows.others(), 1U);
    EXPECT_EQ(rows.added(), 1U);
    EXPECT_EQ(rows.addedAsFasta(), ">r1\nDE\n");
}

TEST_F(AddedRowsTest, NewColumnsComeBehindTheirNeighborsAndEmptiedOnesAreKnown)
{
    // New columns at both ends; the one of gaps alone is none.
    auto layout = m_Rows.read(">r2\nW.XX--DEFG\n>r0\n-..AC-DE--\n>r1\n-..A-CDEF-\n");
    ASSERT_TRUE(layout) << layout.error().message();
    ASSERT_EQ(layout->inserted.size(), 2U);
    EXPECT_EQ(layout->inserted[0].column, 0U);
    EXPECT_EQ(layout->inserted[0].count, 2U);
    EXPECT_EQ(layout->inserted[1].column, 7U);
    EXPECT_EQ(layout->inserted[1].count, 1U);
    ASSERT_EQ(layout->rows.size(), 1U);
    EXPECT_EQ(layout->rows[0].first, 2U);
    std::string cells;
    for (std::size_t col = 0; col < 10; ++col)
        cells += layout->rows[0].second.isResidue(col) ? 'x' : '-';
    // The fourth column of the alignment, which nothing but the row had filled, is the sixth.
    EXPECT_EQ(cells, "xxx---xxxx");
    std::vector<bool> emptied(10, false);
    emptied[5] = true;
    EXPECT_EQ(layout->isEmptied, emptied);
    EXPECT_THAT(layout->leftOut, IsEmpty());
}

TEST_F(AddedRowsTest, ResiduesThatWereDroppedAreCounted)
{
    const auto layout = m_Rows.read(">r0\nAC-DE-\n>r1\nA-CDEF\n>r2\nX-XDEF\n");
    ASSERT_TRUE(layout);
    EXPECT_EQ(layout.value().leftOut, (std::vector<std::pair<unsigned long, std::size_t>>{{2, 2}}));
    EXPECT_THAT(layout.value().rows, IsEmpty());
}

TEST_F(AddedRowsTest, AnAnswerThatIsNotWhatWasSentIsRefused)
{
    const std::string torn = "it tore the columns of the other rows apart";
    const std::string changed = "it changed the residues of a sequence";
    EXPECT_EQ(refusal(">r0\nA-CDE--\n>r1\nA-CDEF-\n>r2\nWXXDEFG\n"), torn);
    EXPECT_EQ(refusal(">r0\nAC-D-E-\n>r1\nA-CDE-F\n>r2\nWXXDEFG\n"), torn);
    EXPECT_EQ(refusal(">r0\nAC-DEF-\n>r1\nA-CDEF-\n>r2\nWXXDEFG\n"), changed);
    EXPECT_EQ(refusal(">r0\nAC-DE--\n>r1\nA-CDEF-\n>r2\nWXXDEGF\n"), changed);
    EXPECT_EQ(refusal(">r0\nAC-DE--\n>r1\nA-CDEF-\n>r2\nWXXDEFGG\n"),
              "the rows of its answer differ in length");
    EXPECT_EQ(refusal(">r0\nAC-DE--\n>r1\nA-CDEF-\n"), "its answer lacks a sequence");
    EXPECT_EQ(refusal(""), "its answer lacks a sequence");
    EXPECT_EQ(refusal(">r3\nAC\n"), "it answered with a sequence that it was not given");
}

} // namespace AddedRowsTest
