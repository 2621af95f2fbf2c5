// SPDX-License-Identifier: GPL-3.0-or-later
// The cell cursor, its block and the edits of gaps there, by real keys and a real mouse.
#include "CompanionByHand.h"

namespace EditingKeysByHandTest {

// Of the frame around a block, and of what is to come there and cannot.
const QColor kBlock(0, 40, 140);
const QColor kComing(0, 120, 60);
const QColor kRefused(200, 0, 0);
const QColor kKept(150, 90, 0);

class EditingByKeys : public CompanionByHand
{
protected:
    static QByteArray gaps(int count) { return QByteArray(count, '-'); }
    // As it stands in a file then.
    QString saved(int row) { return save(m_Editor, m_Folder.filePath("edited.ali")).value(row); }
    // With gaps put in before the column, and others at the end of those that have none.
    static QString edited(int number, int column, int count, int behind = 0)
    {
        return QString::fromLatin1(row(number).insert(column, gaps(count)) + gaps(behind));
    }
    void drawBlock(QPoint from, QPoint to)
    {
        m_Screen.dragWithKey("alt", from, to);
        waitForColorIn(m_Place, kBlock);
    }
};

TEST_F(EditingByKeys, GapsArePutInWithACountAndTakenOutAgain)
{
    open();
    // The first one shows the cursor.
    keys("Right Right 1 2 space Escape");
    waitForLetter(m_Grid.ground(0, 13), row(0)[1]);
    keys("Right");
    // Where it was last.
    keys("BackSpace BackSpace Escape");
    waitForLetter(m_Grid.ground(0, 11), row(0)[1]);
    keys("ctrl+z");
    waitForLetter(m_Grid.ground(0, 12), row(0)[1]);
    EXPECT_EQ(saved(0), edited(0, 1, 11, 1));
}

TEST_F(EditingByKeys, AnEditIsRepeatedInAnotherRow)
{
    open();
    keys("Right Right 3 space Down Left Left Left Return Escape");
    waitForLetter(m_Grid.ground(1, 4), row(1)[1]);
    EXPECT_EQ(saved(1), edited(1, 1, 3));
}

TEST_F(EditingByKeys, ABlockIsDrawnWithShiftAndAllItsRowsAreEdited)
{
    open();
    keys("Right Right shift+Down shift+Down");
    waitForColorIn(m_Place, kBlock);
    keys("4 space Escape Escape");
    for (int number = 0; number < 3; ++number)
        waitForLetter(m_Grid.ground(number, 5), row(number)[1]);
    waitForLetter(m_Grid.ground(3, 5), row(3)[5]);
    EXPECT_EQ(saved(2), edited(2, 1, 4));
}

TEST_F(EditingByKeys, ABlockIsDrawnWithAltAndItsResiduesAreSelectedByKeys)
{
    open();
    drawBlock(cell(1, 2), cell(3, 6));
    // The cursor stays in the last cell without the block.
    keys("ctrl+space Escape");
    waitForSelected(1, 2, row(1)[2]);
    waitForSelected(3, 4, row(3)[4]);
    // Not beside the cursor, whose frame covers some of it.
    waitForLetter(m_Grid.ground(2, 7), row(2)[7]);
    waitForLetter(m_Grid.ground(0, 2), row(0)[2]);
    keys("Escape");
    waitForSelected(1, 2, row(1)[2], false);
    waitForSelected(3, 4, row(3)[4], false);
    keys("ctrl+shift+l");
    waitForSelected(1, 2, row(1)[2]);
    waitForSelected(3, 4, row(3)[4]);
}

TEST_F(EditingByKeys, AllRowsOfABlockAreDraggedAndAllOrNone)
{
    open();
    drawBlock(cell(0, 3), cell(2, 3));
    // From the residues on to the right.
    m_Screen.moveMouse(cell(1, 3));
    m_Screen.press(2);
    m_Screen.moveMouse(cell(1, 5));
    m_Screen.moveMouse(cell(1, 6));
    waitForColorIn(m_Place, kComing);
    m_Screen.release(2);
    waitForColorIn(m_Place, kComing, false);
    for (int number = 0; number < 3; ++number)
        waitForLetter(m_Grid.ground(number, 8), row(number)[5]);
    // Back again, but not further than the gaps reach.
    m_Screen.moveMouse(cell(1, 6));
    m_Screen.press(2);
    m_Screen.moveMouse(cell(1, 2));
    m_Screen.moveMouse(cell(1, 1));
    waitForColorIn(m_Place, kRefused);
    m_Screen.release(2);
    waitForColorIn(m_Place, kRefused, false);
    for (int number = 0; number < 3; ++number)
        waitForLetter(m_Grid.ground(number, 8), row(number)[5]);
    // By the left button from the gaps on, which change places with a residue.
    drawBlock(cell(0, 3), cell(2, 5));
    m_Screen.drag(cell(2, 4), cell(2, 5));
    keys("Escape Escape");
    for (int number = 0; number < 3; ++number)
        waitForLetter(m_Grid.ground(number, 3), row(number)[3]);
    EXPECT_EQ(saved(2), edited(2, 4, 3));
    keys("ctrl+z");
    waitForLetter(m_Grid.ground(0, 6), row(0)[3]);
}

TEST_F(EditingByKeys, EscapeGivesUpADragOfABlock)
{
    open();
    drawBlock(cell(0, 3), cell(2, 3));
    m_Screen.moveMouse(cell(1, 3));
    m_Screen.press(2);
    m_Screen.moveMouse(cell(1, 5));
    m_Screen.moveMouse(cell(1, 6));
    waitForColorIn(m_Place, kComing);
    m_Screen.pressKey("Escape");
    waitForColorIn(m_Place, kComing, false);
    m_Screen.release(2);
    keys("Escape Escape");
    waitForColorIn(m_Place, kBlock, false);
    EXPECT_EQ(saved(1), QString::fromLatin1(row(1)));
}

TEST_F(EditingByKeys, KeptColumnsAreMarkedAndStayWhereTheyAre)
{
    open();
    drawBlock(cell(0, 9), cell(0, 12));
    m_Screen.click(corner(), 3);
    chooseByKeys("e k");
    waitForColorIn(m_Place, kKept);
    keys("Escape");
    // No gap is there to be used up.
    keys("ctrl+Home space Escape");
    waitForLetter(m_Grid.ground(0, 1), row(0)[1]);
    m_Screen.click(cell(0, 3), 2);
    m_Screen.click(corner(), 3);
    chooseByKeys("e n");
    waitForColorIn(m_Place, kKept, false);
    EXPECT_EQ(saved(0), QString::fromLatin1(row(0)));
}

} // namespace EditingKeysByHandTest
