// SPDX-License-Identifier: GPL-3.0-or-later
// Columns that are followed through edits, against marks in the columns themselves.
#include "FollowedColumns.h"

#include "unit/model/AlignmentFixture.h"

#include <random>

namespace FollowedColumnsTest {

using companion::ColumnAnchors;
using companion::ColumnRange;
using companion::followed;
using TAMBO::LayoutChanges;

class Columns : public AlignmentFixture
{
protected:
    static bool isEmpty(const TAMBO::Alignment &rows, unsigned long col)
    {
        return rows.majority(col).count == 0;
    }
    // What comes of the columns by the edit.
    template <typename Edit>
    ColumnRange after(TAMBO::Alignment &rows, const ColumnRange &columns, const Edit &edit)
    {
        const auto revision = LayoutChanges::revision(rows);
        edit(rows);
        return followed(columns, LayoutChanges::since(rows, revision).value());
    }
};

TEST_F(Columns, MoveWithWhatComesAndGoesBeforeThem)
{
    TAMBO::Alignment &rows = alignment({"ACDEFGHIKL", "ACDEFGHIKL"});
    EXPECT_EQ(after(rows, {4, 7}, [](auto &all) { all.insertGapCol(2, 3); }), ColumnRange(7, 10));
    EXPECT_EQ(after(rows, {7, 10}, [](auto &all) { all.remove({0, 2}); }), ColumnRange(5, 8));
    // Directly before the first one is before it.
    EXPECT_EQ(after(rows, {5, 8}, [](auto &all) { all.insertGapCol(5, 1); }), ColumnRange(6, 9));
}

TEST_F(Columns, StayWhenSomethingHappensBehindThem)
{
    TAMBO::Alignment &rows = alignment({"ACDEFGHIKL", "ACDEFGHIKL"});
    EXPECT_EQ(after(rows, {4, 7}, [](auto &all) { all.insertGapCol(7, 3); }), ColumnRange(4, 7));
    EXPECT_EQ(after(rows, {4, 7}, [](auto &all) { all.remove({8, 10}); }), ColumnRange(4, 7));
    EXPECT_EQ(after(rows, {4, 7}, [](auto &all) { all.insertGap(0, 0); }), ColumnRange(4, 7));
}

TEST_F(Columns, HaveWhatComesBetweenThemAndLackWhatGoes)
{
    TAMBO::Alignment &rows = alignment({"ACDEFGHIKL", "ACDEFGHIKL"});
    EXPECT_EQ(after(rows, {4, 7}, [](auto &all) { all.insertGapCol(5, 3); }), ColumnRange(4, 10));
    EXPECT_EQ(after(rows, {4, 10}, [](auto &all) { all.remove({6, 12}); }), ColumnRange(4, 6));
    EXPECT_EQ(after(rows, {4, 6}, [](auto &all) { all.remove({2, 5}); }), ColumnRange(2, 3));
    const ColumnRange gone = after(rows, {2, 3}, [](auto &all) { all.remove({0, 4}); });
    EXPECT_EQ(gone.first, gone.second);
}

// The letter X stands in the columns, and nowhere else; only some rows have it.
TEST_F(Columns, AreWhereTheirResiduesAreAfterAnyEdits)
{
    std::mt19937 random(3);
    for (int time = 0; time < 200; ++time) {
        const unsigned long first = 5 + random() % 10;
        const unsigned long second = first + 1 + random() % 5;
        std::vector<std::string> texts;
        for (int row = 0; row < 6; ++row) {
            std::string text;
            for (unsigned long col = 0; col < 25; ++col)
                text += col >= first && col < second ? 'X' : "ACDE-"[random() % 5];
            texts.push_back(text);
        }
        const bool removesResidues = time % 2 == 0;
        TAMBO::Alignment &rows = alignment(texts);
        const ColumnRange columns{first, second};
        const ColumnAnchors anchors(rows, columns);
        const auto revision = LayoutChanges::revision(rows);
        for (int edit = 0; edit < 5; ++edit) {
            const unsigned long col = random() % rows.width();
            const bool isBetween =
                rows.letterAt(0, col) == 'X' && col > 0 && rows.letterAt(0, col - 1) == 'X';
            if (random() % 2 == 0 && !isBetween)
                rows.insertGapCol(col, 1 + random() % 3);
            else if (rows.letterAt(0, col) != 'X' && (removesResidues || isEmpty(rows, col)))
                rows.remove({col, col + 1});
        }
        const std::string row = rows.GetSequence(0, false);
        const ColumnRange wanted{row.find('X'), row.rfind('X') + 1};
        EXPECT_EQ(followed(columns, LayoutChanges::since(rows, revision).value()), wanted);
        if (!removesResidues) {
            EXPECT_EQ(anchors.find(rows), wanted);
        }
    }
}

// As many gaps that move make more changes than are kept.
TEST_F(Columns, AreFoundByTheirResiduesAfterMoreEditsThanAreKept)
{
    std::vector<std::string> texts;
    for (int row = 0; row < 200; ++row)
        texts.push_back(row % 5 == 0 ? "AC----XXEF---" : "ACD---XXEF---");
    TAMBO::Alignment &rows = alignment(texts);
    const ColumnAnchors anchors(rows, {6, 8});
    const auto revision = LayoutChanges::revision(rows);
    for (unsigned long row = 0; row < 200; ++row)
        rows.insertGap(row, 9);
    EXPECT_FALSE(LayoutChanges::since(rows, revision));
    EXPECT_EQ(anchors.find(rows), ColumnRange(6, 8));
    rows.insertGapCol(0, 2);
    EXPECT_EQ(anchors.find(rows), ColumnRange(8, 10));
    // A few rows that go another way do not matter.
    for (unsigned long row = 0; row < 20; ++row)
        rows.insertGap(row, 0);
    EXPECT_EQ(anchors.find(rows), ColumnRange(8, 10));
}

TEST_F(Columns, AreNotFoundWhenAllRowsHaveLostResidues)
{
    TAMBO::Alignment &rows = alignment({"ACDXX", "CADXX", "-ADXX"});
    const ColumnAnchors anchors(rows, {3, 5});
    rows.remove({0, 1});
    // The third row has none there.
    EXPECT_EQ(anchors.find(rows), ColumnRange(2, 4));
    rows.remove({0, 1});
    EXPECT_FALSE(anchors.find(rows));
}

TEST_F(Columns, StayWhereTheyWereWhenNoRowIsLeftAtItsPlace)
{
    TAMBO::Alignment &rows = alignment({"ACXX", "CAXX", "DAXX"});
    const ColumnAnchors anchors(rows, {2, 4});
    rows.reorderRows({1, 2, 0});
    EXPECT_EQ(anchors.find(rows), ColumnRange(2, 4));
}

} // namespace FollowedColumnsTest
