// SPDX-License-Identifier: GPL-3.0-or-later
// The distances of all columns, as the alignment is edited, against those found from anew.
#include "SpreadTable.h"

#include "guide/FamilyInSpace.h"

#include <set>

namespace SpreadTableTest {

using companion::SpreadTable;

constexpr auto kForever = std::chrono::hours(1);
constexpr auto kNoTime = std::chrono::microseconds(0);

class SpreadsOfColumns : public FamilyInSpace
{
protected:
    static void expectRight(const SpreadTable &table, const TAMBO::Alignment &alignment)
    {
        ASSERT_TRUE(table.total());
        for (unsigned long col = 0; col < alignment.width(); ++col) {
            ASSERT_TRUE(table.isKnown(col));
            ASSERT_EQ(table.at(col).positions, positionsIn(alignment, col).size()) << col;
            expectSame(table.at(col).hasMean() ? std::optional(table.at(col).mean()) : std::nullopt,
                       plainMean(alignment, col));
        }
        expectSame(table.total()->value(), plainMean(alignment, 0, alignment.width()));
    }
    static void finish(SpreadTable &table, const TAMBO::Alignment &alignment)
    {
        while (table.goOn(alignment, kForever)) {
        }
    }
    void editAnything(TAMBO::Alignment &alignment)
    {
        const unsigned long row = below(alignment.height());
        const unsigned long col = below(alignment.width());
        const DataPoint<TAMBO::Alignment> change(nullptr, &alignment);
        switch (below(9)) {
        case 0:
            return alignment.insertGap(row, col);
        case 1:
            return alignment.moveGap(row, col, below(alignment.width()), below(2) == 0);
        case 2:
            return alignment.insertGapCol(col, 1 + below(3));
        case 3:
            if (alignment.width() > 20)
                alignment.remove({col, col + 1 + below(3)});
            return;
        case 4:
            return alignment.bubbleRow(row, below(alignment.height()));
        case 5:
            if (alignment.height() > 4)
                alignment.removeRow(row);
            return;
        default:
            for (unsigned times = below(3); times > 0; --times)
                alignment.insertGap(row, col);
        }
    }
};

TEST_F(SpreadsOfColumns, FollowAnyEditsUndoAndRedo)
{
    TAMBO::Alignment &alignment = family(9, 24, 36);
    SpreadTable table;
    for (int round = 0; round < 300; ++round) {
        SCOPED_TRACE(round);
        // Some edits come while it is being computed.
        for (unsigned edits = below(4); edits > 0; --edits) {
            if (below(4) == 0 && history.canUndo())
                history.undo();
            else if (below(4) == 0 && history.canRedo())
                history.redo();
            else
                editAnything(alignment);
            for (unsigned parts = below(6); parts > 0; --parts)
                table.goOn(alignment, kNoTime);
        }
        finish(table, alignment);
        ASSERT_NO_FATAL_FAILURE(expectRight(table, alignment));
    }
}

TEST_F(SpreadsOfColumns, AGapThatMovesCostsTheColumnsBetween)
{
    TAMBO::Alignment &alignment = family(6, 24, 60);
    SpreadTable table;
    finish(table, alignment);
    EXPECT_EQ(table.found(), 60U);
    unsigned long gap = 0;
    while (alignment.letterAt(0, gap) != '\0' || alignment.letterAt(0, gap + 1) == '\0')
        ++gap;
    {
        const DataPoint<TAMBO::Alignment> change(nullptr, &alignment);
        alignment.moveGap(0, gap, gap + 1, true);
    }
    EXPECT_FALSE(table.total() && (table.follow(alignment), table.total()));
    finish(table, alignment);
    EXPECT_EQ(table.found(), 62U);
    ASSERT_NO_FATAL_FAILURE(expectRight(table, alignment));
}

TEST_F(SpreadsOfColumns, ARowWithoutAStructureChangesNothing)
{
    const Points fold = randomFold(24, 3);
    TAMBO::Alignment &alignment =
        alignmentOf({{member("a", fold).chain(0), withGaps(24, 30)},
                     {member("b", fold).chain(0), withGaps(24, 30)},
                     {&peptide("c", std::string(24, 'A')), withGaps(24, 30)}});
    SpreadTable table;
    finish(table, alignment);
    {
        const DataPoint<TAMBO::Alignment> change(nullptr, &alignment);
        alignment.moveGap(2, alignment.columnOfResidue(2, 4), 29, false);
    }
    finish(table, alignment);
    EXPECT_LE(table.found(), 30U + alignment.width() - 30U);
    ASSERT_NO_FATAL_FAILURE(expectRight(table, alignment));
}

TEST_F(SpreadsOfColumns, ThoseThatAreWantedComeFirst)
{
    TAMBO::Alignment &alignment = family(20, 150, 300);
    SpreadTable table;
    table.want(200, 210);
    while (!table.areKnown(200, 210))
        ASSERT_TRUE(table.goOn(alignment, kNoTime));
    EXPECT_FALSE(table.isKnown(0));
    EXPECT_FALSE(table.total());
    finish(table, alignment);
    EXPECT_EQ(table.found(), 300U);
}

TEST_F(SpreadsOfColumns, WithoutStructuresAllIsKnownAndNothingHasADistance)
{
    TAMBO::Alignment &alignment =
        alignmentOf({{&peptide("a", "AAA"), "A-AA"}, {&peptide("b", "AAA"), "AA-A"}});
    SpreadTable table;
    finish(table, alignment);
    ASSERT_TRUE(table.total());
    EXPECT_EQ(table.total()->value(), std::nullopt);
    EXPECT_TRUE(table.rows().empty());
}

} // namespace SpreadTableTest
