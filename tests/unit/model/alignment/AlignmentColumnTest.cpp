// SPDX-License-Identifier: GPL-3.0-or-later
#include "unit/model/AlignmentFixture.h"

#include "TableChanges.h"

using TAMBO::Alignment;
using TAMBO::Compound;
using TAMBO::OccupancyRow;
using TAMBO::Peptide;

namespace AlignmentColumnTest {

class AlignmentColumn : public AlignmentFixture
{
protected:
    // After the last operation there are these rows and this range; undo and redo agree.
    void expectStep(Alignment &sample, const Texts &before, const Range &rangeBefore,
                    const Texts &after, const Range &rangeAfter)
    {
        EXPECT_EQ(rowsOf(sample), after);
        EXPECT_EQ(sample.range(), rangeAfter);
        ASSERT_EQ(history.undoCount(), 1U);
        history.undo();
        EXPECT_EQ(rowsOf(sample), before);
        EXPECT_EQ(sample.range(), rangeBefore);
        history.redo();
        EXPECT_EQ(rowsOf(sample), after);
        EXPECT_EQ(sample.range(), rangeAfter);
        history.undo();
        EXPECT_EQ(rowsOf(sample), before);
        EXPECT_EQ(sample.range(), rangeBefore);
        history.clear();
    }
    // What a range of ten columns becomes.
    Range rangeAfterInsert(const Range &range, unsigned long column, unsigned long count)
    {
        const Texts rows{"ACDEFGHIKL"};
        Alignment &sample = alignment(rows);
        sample.range(range);
        sample.insertGapCol(column, count);
        const Range after = sample.range();
        expectStep(sample, rows, range, Texts{Texts(rows)[0].insert(column, count, '-')}, after);
        return after;
    }
    Range rangeAfterRemove(const Range &range, const Range &removed)
    {
        const Texts rows{"ACDEFGHIKL"};
        Alignment &sample = alignment(rows);
        sample.range(range);
        sample.remove(removed);
        const Range after = sample.range();
        expectStep(sample, rows, range,
                   Texts{Texts(rows)[0].erase(removed.first, removed.second - removed.first)},
                   after);
        return after;
    }
};

// ---- insertGapCol

TEST_F(AlignmentColumn, GapColumnsAreInsertedBeforeAColumn)
{
    Alignment &sample = alignment({"ACD", "E-F"});
    sample.insertGapCol(2, 1);
    expectStep(sample, {"ACD", "E-F"}, {0, 0}, {"AC-D", "E--F"}, {0, 0});
    sample.insertGapCol(1, 3);
    expectStep(sample, {"ACD", "E-F"}, {0, 0}, {"A---CD", "E----F"}, {0, 0});
}

TEST_F(AlignmentColumn, GapColumnsAreInsertedAtBothEnds)
{
    Alignment &sample = alignment({"AC", "DE"});
    sample.insertGapCol(0, 1);
    expectStep(sample, {"AC", "DE"}, {0, 0}, {"-AC", "-DE"}, {1, 1});
    sample.insertGapCol(sample.width(), 1);
    expectStep(sample, {"AC", "DE"}, {0, 0}, {"AC-", "DE-"}, {0, 0});
    sample.insertGapCol(2, 1);
    EXPECT_EQ(sample.getCol(2), (std::vector<Compound *>(2, nullptr)));
}

TEST_F(AlignmentColumn, GapColumnsAreInsertedAtWordBoundaries)
{
    for (const std::size_t width : {63U, 64U, 65U, 127U, 128U, 129U, 256U, 257U}) {
        const std::string wide(width, 'A');
        for (const std::size_t column : {std::size_t(0), width - 1, width, width / 2}) {
            for (const std::size_t count : {1U, 63U, 64U, 65U, 200U}) {
                Alignment &sample = alignment({wide});
                sample.range(Range(0, width));
                sample.insertGapCol(column, count);
                std::string expected = wide;
                expected.insert(column, count, '-');
                EXPECT_EQ(rowsOf(sample), Texts{expected});
                history.undo();
                EXPECT_EQ(rowsOf(sample), Texts{wide});
            }
        }
    }
}

TEST_F(AlignmentColumn, NoColumnsOrAPlaceOutOfBoundsChangeNothing)
{
    Alignment &sample = alignment({"AC"});
    sample.insertGapCol(0, 0);
    sample.insertGapCol(3, 1);
    sample.insertGapCol(~0UL, 1);
    EXPECT_EQ(rowsOf(sample), Texts{"AC"});
    EXPECT_EQ(history.undoCount(), 0U);
}

TEST_F(AlignmentColumn, AnAbsurdNumberOfColumnsIsRefusedWithALineInTheLog)
{
    Alignment &sample = alignment({"AC"}, "wide");
    sample.insertGapCol(1, ~0UL);
    sample.insertGapCol(1, 200'000'000);
    EXPECT_EQ(rowsOf(sample), Texts{"AC"});
    EXPECT_EQ(log, Texts(2, "The alignment wide would become too wide."));
}

TEST_F(AlignmentColumn, ColumnsCanBeInsertedIntoAnAlignmentWithoutRows)
{
    Alignment &sample = alignment(Texts{});
    sample.insertGapCol(0, 2);
    EXPECT_EQ(sample.width(), 2U);
    EXPECT_EQ(sample.height(), 0U);
    EXPECT_TRUE(sample.getCol(1).empty());
}

// ---- remove

TEST_F(AlignmentColumn, RemovedColumnsGoWithTheirResidues)
{
    Alignment &sample = alignment({"ACDEF", "-GH-I"});
    sample.remove(Range(1, 3));
    expectStep(sample, {"ACDEF", "-GH-I"}, {0, 0}, {"AEF", "--I"}, {0, 0});
    sample.remove(2);
    expectStep(sample, {"ACDEF", "-GH-I"}, {0, 0}, {"ACEF", "-G-I"}, {0, 0});
}

TEST_F(AlignmentColumn, ResiduesBehindRemovedColumnsKeepTheirIdentity)
{
    Alignment &sample = alignment({"AAAAA"});
    Peptide &chain = sequence(sample, 0);
    sample.remove(Range(1, 3));
    EXPECT_EQ(sample.getItem(0, 0), chain.residue(0));
    EXPECT_EQ(sample.getItem(0, 1), chain.residue(3));
    EXPECT_EQ(sample.getItem(0, 2), chain.residue(4));
    sample.remove(0);
    EXPECT_EQ(sample.getItem(0, 0), chain.residue(3));
    history.undo();
    history.undo();
    for (unsigned long col = 0; col < 5; ++col)
        EXPECT_EQ(sample.getItem(0, col), chain.residue(col));
}

TEST_F(AlignmentColumn, ColumnsRemovedOneByOneComeBackInWhateverOrderTheyWent)
{
    const std::string letters = "ACDEFGHIKL";
    const std::vector<std::vector<unsigned long>> orders{{0, 0, 0, 0, 0, 0, 0, 0, 0, 0},
                                                         {9, 8, 7, 6, 5, 4, 3, 2, 1, 0},
                                                         {4, 4, 3, 3, 2, 2, 1, 1, 0, 0},
                                                         {1, 2, 3, 4, 5, 0, 0, 0, 0, 0},
                                                         {5, 1, 7, 0, 3, 2, 0, 1, 0, 0}};
    for (const auto &order : orders) {
        Alignment &sample = alignment({letters, "A-C-D-E-FG"});
        Texts states;
        for (const unsigned long column : order) {
            states.push_back(sample.GetSequence(0, false));
            sample.remove(column);
        }
        EXPECT_EQ(sample.width(), 0U);
        while (history.undoCount() > 0) {
            history.undo();
            EXPECT_EQ(sample.GetSequence(0, false), states[history.undoCount()]);
            for (unsigned long col = 0; col < sample.width(); ++col)
                EXPECT_EQ(sample.getItem(0, col)->TypeCode(), states[history.undoCount()][col]);
        }
        EXPECT_EQ(rowsOf(sample), (Texts{letters, "A-C-D-E-FG"}));
    }
}

TEST_F(AlignmentColumn, RemovingAllColumnsLeavesNoRowsUntilUndo)
{
    Alignment &sample = alignment({"AC", "D-"});
    sample.range(Range(0, 2));
    sample.remove(Range(0, 2));
    EXPECT_EQ(sample.width(), 0U);
    EXPECT_EQ(sample.height(), 0U);
    EXPECT_EQ(sample.range(), Range(0, 0));
    sample.removeRow(0);
    sample.bubbleRow(0, 1);
    sample.remove(0);
    EXPECT_EQ(history.undoCount(), 1U) << "there is nothing left to change";
    history.undo();
    EXPECT_EQ(rowsOf(sample), (Texts{"AC", "D-"}));
    EXPECT_EQ(sample.range(), Range(0, 2));
}

TEST_F(AlignmentColumn, RemovingOutOfBoundsOrNothingChangesNothing)
{
    Alignment &sample = alignment({"ACD"});
    sample.remove(3);
    sample.remove(~0UL);
    sample.remove(Range(1, 1));
    sample.remove(Range(2, 1));
    sample.remove(Range(2, 4));
    sample.remove(Range(3, 4));
    EXPECT_EQ(rowsOf(sample), Texts{"ACD"});
    EXPECT_EQ(history.undoCount(), 0U);
}

TEST_F(AlignmentColumn, StepOfRemovedColumnsHoldsTheirBitsAndNoCopy)
{
    const std::string wide(10000, 'A');
    Alignment &sample = alignment(Texts(100, wide));
    sample.remove(Range(5000, 5001));
    EXPECT_LE(history.last().front()->bytes(), 300U);
    sample.remove(Range(5000, 5001));
    EXPECT_LE(history.last().front()->bytes(), 300U) << "the next one at the same place";
    sample.remove(Range(2000, 2064));
    EXPECT_LE(history.last().front()->bytes(), 300U + 100 * 8);
}

// ---- range

TEST_F(AlignmentColumn, RangeIsWhatWasSetAndNoStepOfUndo)
{
    Alignment &sample = alignment({"ACDEFGH"});
    sample.range(Range(2, 5));
    EXPECT_EQ(sample.range(), Range(2, 5));
    sample.rangeAll();
    EXPECT_EQ(sample.range(), Range(0, 7));
    sample.range(Range(3, 3));
    EXPECT_EQ(sample.range(), Range(3, 3)) << "an empty range";
    sample.range(Range(6, 2));
    EXPECT_EQ(sample.range(), Range(6, 2)) << "an empty range as well";
    EXPECT_EQ(history.undoCount(), 0U);
}

TEST_F(AlignmentColumn, RangeThatReachesBeyondTheLastColumnEndsThere)
{
    Alignment &sample = alignment({"ACD"});
    sample.range(Range(1, 4));
    EXPECT_EQ(sample.range(), Range(1, 3));
    sample.range(Range(2, 99));
    EXPECT_EQ(sample.range(), Range(2, 3));
    EXPECT_EQ(history.undoCount(), 0U);
}

TEST_F(AlignmentColumn, RangeBehindTheLastColumnIsNotTakenUnlessItIsEmpty)
{
    Alignment &sample = alignment({"ACD"});
    sample.range(Range(1, 3));
    sample.range(Range(3, 4));
    sample.range(Range(7, 9));
    EXPECT_EQ(sample.range(), Range(1, 3));
    sample.range(Range(3, 3));
    EXPECT_EQ(sample.range(), Range(3, 3));
}

TEST_F(AlignmentColumn, InsertedColumnsMoveARangeBehindThemAndWidenOneAroundThem)
{
    EXPECT_EQ(rangeAfterInsert({4, 7}, 0, 2), Range(6, 9));
    EXPECT_EQ(rangeAfterInsert({4, 7}, 4, 2), Range(6, 9));
    EXPECT_EQ(rangeAfterInsert({4, 7}, 5, 2), Range(4, 9));
    EXPECT_EQ(rangeAfterInsert({4, 7}, 7, 2), Range(4, 7));
    EXPECT_EQ(rangeAfterInsert({4, 7}, 9, 2), Range(4, 7));
    EXPECT_EQ(rangeAfterInsert({4, 4}, 2, 2), Range(6, 6));
    EXPECT_EQ(rangeAfterInsert({4, 4}, 5, 2), Range(4, 4));
    EXPECT_EQ(rangeAfterInsert({0, 10}, 10, 1), Range(0, 10));
}

TEST_F(AlignmentColumn, RemovedColumnsMoveARangeBehindThemAndShrinkOneTheyTouch)
{
    EXPECT_EQ(rangeAfterRemove({4, 7}, {0, 2}), Range(2, 5));
    EXPECT_EQ(rangeAfterRemove({4, 7}, {2, 4}), Range(2, 5));
    EXPECT_EQ(rangeAfterRemove({4, 7}, {3, 5}), Range(3, 5));
    EXPECT_EQ(rangeAfterRemove({4, 7}, {5, 6}), Range(4, 6));
    EXPECT_EQ(rangeAfterRemove({4, 7}, {6, 9}), Range(4, 6));
    EXPECT_EQ(rangeAfterRemove({4, 7}, {7, 9}), Range(4, 7));
    EXPECT_EQ(rangeAfterRemove({4, 7}, {3, 8}), Range(3, 3));
    EXPECT_EQ(rangeAfterRemove({4, 7}, {4, 7}), Range(4, 4));
}

TEST_F(AlignmentColumn, UndoKeepsARangeThatTheUserHasSetSince)
{
    Alignment &sample = alignment({"ACDEFGHIKL"});
    sample.range(Range(4, 7));
    sample.remove(Range(0, 2));
    sample.range(Range(5, 8));
    history.undo();
    EXPECT_EQ(sample.range(), Range(7, 10)) << "the same columns";
}

TEST_F(AlignmentColumn, RangeStaysWithinAnAlignmentThatUndoNarrows)
{
    Alignment &sample = alignment({"ACD"});
    sample.insertGap(0, 1);
    sample.rangeAll();
    history.undo();
    EXPECT_EQ(sample.range(), Range(0, 3));
}

// ---- select

TEST_F(AlignmentColumn, SelectSetsTheFlagOfEveryResidueInTheColumns)
{
    Alignment &sample = alignment({"AC-D", "-EFG"});
    const auto selected = [&] {
        std::string letters;
        for (unsigned long row = 0; row < 2; ++row) {
            for (unsigned long col = 0; col < 4; ++col) {
                if (sample.getItem(row, col) && sample.getItem(row, col)->IsSelected())
                    letters += sample.letterAt(row, col);
            }
        }
        return letters;
    };
    sample.select(Range(1, 3), true);
    EXPECT_EQ(selected(), "CEF");
    sample.select(Range(2, 4), false);
    EXPECT_EQ(selected(), "CE");
    sample.select(Range(0, 4), true);
    EXPECT_EQ(selected(), "ACDEFG");
    EXPECT_EQ(history.undoCount(), 0U) << "selecting is no step of undo";
}

TEST_F(AlignmentColumn, SelectLeavesResiduesThatTheRowHasLostAlone)
{
    Alignment &sample = alignment({"ACDEF"});
    sample.remove(2);
    sample.select(Range(0, 4), true);
    EXPECT_FALSE(sequence(sample, 0).isSelected(2));
    EXPECT_EQ(sequence(sample, 0).selectedCount(), 4U);
}

TEST_F(AlignmentColumn, SelectingOutOfBoundsOrNothingChangesNothing)
{
    Alignment &sample = alignment({"ACD"});
    sample.select(Range(1, 1), true);
    sample.select(Range(2, 1), true);
    sample.select(Range(0, 4), true);
    sample.select(Range(3, 5), true);
    EXPECT_EQ(sequence(sample, 0).selectedCount(), 0U);
}

// ---- replaceColumns

TEST_F(AlignmentColumn, ReplacedColumnsHoldTheSameResiduesAtNewPlaces)
{
    const auto cells = [](const std::string &text) {
        TAMBO::GappedSequence sequence;
        sequence.append(text);
        return OccupancyRow(sequence.occupancy);
    };
    Alignment &sample = alignment({"ACDE", "A-FE", "----"});
    sample.range(Range(1, 3));
    ASSERT_TRUE(TAMBO::replaceColumns(sample.table(), Range(1, 3),
                                      {cells("x-x-"), cells("---x"), OccupancyRow()}, 4));
    EXPECT_EQ(history.lastKinds(), Texts{"realign"});
    expectStep(sample, {"ACDE", "A-FE", "----"}, {1, 3}, {"AC-D-E", "A---FE", "------"}, {1, 5});
    ASSERT_TRUE(TAMBO::replaceColumns(sample.table(), Range(1, 4),
                                      {cells("xxx"), cells("xx"), OccupancyRow()}, 3));
    expectStep(sample, {"ACDE", "A-FE", "----"}, {1, 3}, {"ACDE", "AFE-", "----"}, {1, 3});
}

TEST_F(AlignmentColumn, ReplacingColumnsByTheSameIsNoStep)
{
    Alignment &sample = alignment({"AC"});
    EXPECT_TRUE(TAMBO::replaceColumns(sample.table(), Range(0, 2), {OccupancyRow::filled(2)}, 2));
    EXPECT_EQ(history.undoCount(), 0U);
}

TEST_F(AlignmentColumn, ColumnsThatWouldLoseOrMakeResiduesAreRefused)
{
    Alignment &sample = alignment({"ACD", "E-F"}, "test");
    const OccupancyRow one = OccupancyRow::filled(1);
    const OccupancyRow two = OccupancyRow::filled(2);
    const auto replace = [&](const Range &range, const std::vector<OccupancyRow> &rows,
                             unsigned long count) {
        return TAMBO::replaceColumns(sample.table(), range, rows, count);
    };
    EXPECT_FALSE(replace({0, 2}, {two, two}, 2)) << "a residue more";
    EXPECT_FALSE(replace({0, 2}, {one, one}, 2)) << "a residue less";
    EXPECT_FALSE(replace({0, 2}, {two}, 2)) << "a row less";
    EXPECT_FALSE(replace({0, 2}, {two, one}, 1)) << "a residue beyond the last column";
    EXPECT_FALSE(replace({2, 4}, {one, one}, 1)) << "out of bounds";
    EXPECT_FALSE(replace({1, 1}, {OccupancyRow(), OccupancyRow()}, 1)) << "an empty range";
    EXPECT_EQ(rowsOf(sample), (Texts{"ACD", "E-F"}));
    EXPECT_EQ(history.undoCount(), 0U);
    EXPECT_EQ(log, Texts(6, "The columns to be put into test do not fit its sequences."));
}

} // namespace AlignmentColumnTest
