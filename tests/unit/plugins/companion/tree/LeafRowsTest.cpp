// SPDX-License-Identifier: GPL-3.0-or-later
#include "LeafRows.h"

#include "unit/model/AlignmentFixture.h"

#include <numeric>

namespace LeafRowsTest {

using companion::kNoRow;
using companion::LeafRow;
using companion::LeafRows;
using State = LeafRows::State;

class LeavesOfRows : public AlignmentFixture
{
protected:
    static LeafRows leavesOf(const TAMBO::Alignment &rows)
    {
        std::vector<LeafRow> leaves;
        for (unsigned long row = 0; row < rows.height(); ++row)
            leaves.push_back(companion::leafRowOf(rows, row, rows.GetSequence(row, false)));
        return LeafRows(std::move(leaves));
    }
    // All at once.
    static State look(LeafRows &leaves, const TAMBO::Alignment &rows)
    {
        leaves.begin();
        while (leaves.goOn(rows, std::chrono::hours(1))) {
        }
        return leaves.state();
    }
    static std::vector<unsigned long> rowsOf(const LeafRows &leaves)
    {
        std::vector<unsigned long> rows;
        for (std::size_t leaf = 0; leaf < leaves.size(); ++leaf)
            rows.push_back(leaves.rowOf(leaf));
        return rows;
    }
};

TEST_F(LeavesOfRows, AreTheRowsWhereverTheyHaveMoved)
{
    TAMBO::Alignment &rows = alignment({"AC-", "-DE", "F--"});
    LeafRows leaves = leavesOf(rows);
    EXPECT_EQ(leaves.state(), State::Looking);
    EXPECT_EQ(look(leaves, rows), State::Same);
    EXPECT_EQ(rowsOf(leaves), (std::vector<unsigned long>{0, 1, 2}));
    const unsigned long revision = leaves.revision();
    EXPECT_EQ(look(leaves, rows), State::Same);
    EXPECT_EQ(leaves.revision(), revision);
    rows.reorderRows({2, 0, 1});
    EXPECT_EQ(look(leaves, rows), State::Same);
    EXPECT_EQ(rowsOf(leaves), (std::vector<unsigned long>{1, 2, 0}));
    EXPECT_GT(leaves.revision(), revision);
}

TEST_F(LeavesOfRows, AreChangedWhileAGapStandsElsewhere)
{
    TAMBO::Alignment &rows = alignment({"AC-", "-DE", "F--"});
    LeafRows leaves = leavesOf(rows);
    ASSERT_EQ(look(leaves, rows), State::Same);
    rows.moveGap(1, 0, 2, true);
    EXPECT_EQ(look(leaves, rows), State::Changed);
    rows.insertGap(2, 0);
    EXPECT_EQ(look(leaves, rows), State::Changed);
    history.undo();
    EXPECT_EQ(look(leaves, rows), State::Changed);
    history.undo();
    EXPECT_EQ(look(leaves, rows), State::Same);
    rows.insertGapCol(3, 5);
    EXPECT_EQ(look(leaves, rows), State::Same) << "gaps behind all that there is";
    rows.insertGapCol(0, 1);
    EXPECT_EQ(look(leaves, rows), State::Changed);
}

TEST_F(LeavesOfRows, KnowWhatIsGoneAndWhatIsNew)
{
    TAMBO::Peptide &added = peptide("new", "AC");
    TAMBO::Alignment &rows = alignment({"AC-", "-DE", "F--"});
    LeafRows leaves = leavesOf(rows);
    history.clear();
    rows.removeRow(1);
    EXPECT_EQ(look(leaves, rows), State::Changed);
    EXPECT_EQ(rowsOf(leaves), (std::vector<unsigned long>{0, kNoRow, 1}));
    EXPECT_EQ(leaves.gone(), 1u);
    EXPECT_EQ(leaves.added(), 0u);
    rows.addRows({&added});
    EXPECT_EQ(look(leaves, rows), State::Changed);
    EXPECT_EQ(leaves.added(), 1u);
    history.undo();
    history.undo();
    EXPECT_EQ(look(leaves, rows), State::Same);
}

TEST_F(LeavesOfRows, OfOneSequenceInSeveralRowsAreEachARow)
{
    TAMBO::Peptide &sequence = peptide("twice", "ACD");
    TAMBO::Alignment &rows = alignmentOf({{&sequence, "ACD-"}, {&sequence, "A-CD"}});
    LeafRows leaves = leavesOf(rows);
    EXPECT_EQ(look(leaves, rows), State::Same);
    EXPECT_EQ(rowsOf(leaves), (std::vector<unsigned long>{0, 1}));
    rows.removeRow(0);
    EXPECT_EQ(look(leaves, rows), State::Changed);
    EXPECT_EQ(leaves.gone(), 1u);
}

TEST_F(LeavesOfRows, AreFoundInSlicesAndAtOnceWhenTheyAreNeeded)
{
    TAMBO::Alignment &rows = alignment(std::vector<std::string>(2000, "ACD"));
    LeafRows leaves = leavesOf(rows);
    int slices = 1;
    while (leaves.goOn(rows, std::chrono::milliseconds(0)))
        ++slices;
    EXPECT_GT(slices, 100);
    EXPECT_EQ(leaves.state(), State::Same);
    std::vector<unsigned long> order(rows.height());
    std::iota(order.rbegin(), order.rend(), 0UL);
    rows.reorderRows(order);
    leaves.begin();
    EXPECT_EQ(leaves.rowOf(0), 0u) << "what was found stays until something else is";
    leaves.findRows(rows);
    EXPECT_EQ(leaves.rowOf(0), 1999u);
    EXPECT_EQ(leaves.state(), State::Looking);
    while (leaves.goOn(rows, std::chrono::hours(1))) {
    }
    EXPECT_EQ(leaves.state(), State::Same);
}

} // namespace LeafRowsTest
