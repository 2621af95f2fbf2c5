// SPDX-License-Identifier: GPL-3.0-or-later
#include "ChosenRows.h"

#include "unit/model/AlignmentFixture.h"

#include <gmock/gmock.h>

#include <random>

using testing::ElementsAre;
using testing::IsEmpty;

namespace ChosenRowsTest {

using companion::ChosenRows;

class RowsThatAreChosen : public AlignmentFixture
{
protected:
    std::vector<unsigned long> now()
    {
        rows.follow(shown);
        return rows.rows();
    }

    TAMBO::Alignment &shown = alignment({"AC", "AD", "AE", "AF", "AG"});
    ChosenRows rows;
};

TEST_F(RowsThatAreChosen, StayTheSameRowsWhenTheseMove)
{
    rows.choose(shown, {3, 1});
    EXPECT_THAT(now(), ElementsAre(3, 1));
    shown.bubbleRow(0, 4);
    EXPECT_THAT(now(), ElementsAre(2, 0));
    shown.bubbleRow(2, 0);
    EXPECT_THAT(now(), ElementsAre(0, 1));
    shown.reorderRows({4, 3, 2, 1, 0});
    EXPECT_THAT(now(), ElementsAre(4, 3));
    shown.insertGap(4, 0);
    EXPECT_THAT(now(), ElementsAre(4, 3));
}

TEST_F(RowsThatAreChosen, ARowThatGoesComesBackWithUndo)
{
    rows.choose(shown, {1, 3});
    shown.removeRow(1);
    EXPECT_THAT(now(), ElementsAre(2));
    shown.removeRow(0);
    EXPECT_THAT(now(), ElementsAre(1));
    history.undo();
    history.undo();
    EXPECT_THAT(now(), ElementsAre(1, 3));
}

TEST_F(RowsThatAreChosen, AreGivenUpOneByOneOrAll)
{
    rows.choose(shown, {1, 3, 9});
    EXPECT_THAT(now(), ElementsAre(1, 3)) << "there is no other";
    rows.giveUp(1);
    EXPECT_THAT(now(), ElementsAre(3));
    rows.clear();
    EXPECT_THAT(now(), IsEmpty());
}

TEST_F(RowsThatAreChosen, AreFoundAfterAnyEditUndoAndRedo)
{
    std::mt19937 random(7);
    std::vector<const TAMBO::Compound *> wanted = {shown.GetSeq(4), shown.GetSeq(0)};
    rows.choose(shown, {4, 0});
    for (int i = 0; i < 500; ++i) {
        const unsigned long row = random() % shown.height();
        switch (random() % 6) {
        case 0:
            shown.bubbleRow(row, random() % shown.height());
            break;
        case 1:
            if (shown.height() > 3)
                shown.removeRow(row);
            break;
        case 2:
            shown.addRows({&peptide("other", "ACD")});
            break;
        case 3:
            if (history.redoCount() > 0)
                history.redo();
            break;
        default:
            if (history.undoCount() > 0)
                history.undo();
        }
        if (random() % 3 != 0)
            continue;
        std::vector<unsigned long> expected;
        for (const TAMBO::Compound *const sequence : wanted)
            for (unsigned long place = 0; place < shown.height(); ++place)
                if (shown.GetSeq(place) == sequence)
                    expected.push_back(place);
        ASSERT_EQ(now(), expected) << i;
    }
}

TEST_F(RowsThatAreChosen, ThoseWithASelectedResidueAreFoundInTheirOrder)
{
    EXPECT_THAT(companion::rowsWithSelection(shown, 9), IsEmpty());
    shown.getItem(3, 1)->SetSelected(true);
    shown.getItem(1, 0)->SetSelected(true);
    EXPECT_THAT(companion::rowsWithSelection(shown, 9), ElementsAre(1, 3));
    EXPECT_THAT(companion::rowsWithSelection(shown, 1), ElementsAre(1));
}

} // namespace ChosenRowsTest
