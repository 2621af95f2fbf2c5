// SPDX-License-Identifier: GPL-3.0-or-later
// The gestures on the names and on the column marks, with real mouse events.
#include "EditingFixture.h"

namespace PanelsByHandTest {

using PanelsByHand = EditingFixture;

constexpr const char *kReport = "Percentage identity";

TEST_F(PanelsByHand, AMiddleClickOnAMarkInsertsAColumn)
{
    open();
    m_Screen.click(mark(3), 2);
    expectOneStep(withGapColumn(3));
}

TEST_F(PanelsByHand, AShiftMiddleClickOnAMarkRemovesTheColumn)
{
    open();
    m_Screen.shiftClick(mark(8), 2);
    expectOneStep(withoutColumn(8));
}

TEST_F(PanelsByHand, AShiftMiddleClickOnANameRemovesTheRow)
{
    open();
    m_Screen.shiftClick(name(1), 2);
    expectOneStep({kRows[0], kRows[2]});
    waitForLines("Removing row");
}

TEST_F(PanelsByHand, ARowIsDraggedByItsNameAndTakenAlong)
{
    open();
    m_Screen.drag(name(0), name(2));
    // The press selects the row as well.
    const QStringList moved = {kRows[1], kRows[2], kRows[0]};
    waitForRows(moved, 2);
    undo();
    waitForRows(kRows, 0);
    redo();
    waitForRows(moved, 2);
    expectSaved(moved);
    undo();
    waitForRows(kRows, 0);
    m_Screen.click(name(0));
    waitForPicture(m_Before);
}

TEST_F(PanelsByHand, ARowIsDraggedUpwards)
{
    open();
    m_Screen.drag(name(2), name(0));
    waitForRows({kRows[2], kRows[0], kRows[1]}, 0);
    undo();
    waitForRows(kRows, 2);
}

TEST_F(PanelsByHand, AClickOnANameOnlySelectsTheRow)
{
    open();
    m_Screen.click(name(1));
    waitForRows(kRows, 1);
    m_Screen.click(name(1));
    waitForPicture(m_Before);
}

TEST_F(PanelsByHand, AClickOnAMarkSelectsItsColumnAndMakesItTheRange)
{
    open();
    m_Screen.click(mark(9));
    waitForRows(kRows, -1, 9);
    waitForMarked(9, 10);
    m_Screen.click(mark(9));
    waitForRows(kRows);
    waitForMarked(9, 10);
}

TEST_F(PanelsByHand, ShiftClicksOnMarksExtendTheRange)
{
    open();
    m_Screen.click(mark(4));
    waitForMarked(4, 5);
    m_Screen.shiftClick(mark(7), 1);
    waitForMarked(4, 8);
    waitForLines("Range [4..8)");
    m_Screen.shiftClick(mark(1), 1);
    waitForMarked(1, 8);
    waitForLines("Range [1..8)");
    m_Screen.shiftClick(mark(5), 1);
    waitForLines("Range [1..8)", 2);
    waitForMarked(1, 8);
    // Only the plain click has selected.
    waitForRows(kRows, -1, 4);
}

TEST_F(PanelsByHand, UndoTakesBackTheEditAndLeavesTheRange)
{
    open();
    m_Screen.drag(cell(0, 5), cell(0, 1));
    waitForRows(withRow(0, "A-CDE--FGHIKLMNP"));
    m_Screen.click(mark(9));
    m_Screen.shiftClick(mark(11), 1);
    waitForMarked(9, 12);
    undo();
    waitForRows(kRows, -1, 9);
    waitForMarked(9, 12);
}

TEST_F(PanelsByHand, AShiftRightClickOnANameOpensTheMenuOfTheSequence)
{
    open();
    m_Screen.shiftClick(name(1), 3);
    // "Select".
    chooseInMenu("s");
    waitForRows(kRows, 1);
    EXPECT_TRUE(m_Screen.findWindows(kReport).isEmpty());
    m_Screen.click(name(1));
    waitForPicture(m_Before);
}

TEST_F(PanelsByHand, AShiftClickOnANameSelectsLikeAPlainOne)
{
    open();
    m_Screen.shiftClick(name(1), 1);
    waitForRows(kRows, 1);
    m_Screen.shiftClick(name(1), 1);
    waitForPicture(m_Before);
}

TEST_F(PanelsByHand, ARightClickOnANameReportsTheIdentityAndChangesNothing)
{
    open();
    m_Screen.click(name(2), 3);
    const QString box = window(kReport);
    m_Screen.pressKey(box, "Return");
    waitForWindows(kReport, 0);
    waitForPicture(m_Before);
    // The editor goes on as before.
    m_Screen.click(cell(1, 5), 2);
    expectOneStep(withRow(1, "ACDEF-GHIKLMN---"));
}

TEST_F(PanelsByHand, ARightClickOnTheFirstNameReportsNothing)
{
    open();
    m_Screen.click(name(0), 3);
    // A box would keep this from the cells.
    m_Screen.click(cell(1, 5), 2);
    expectOneStep(withRow(1, "ACDEF-GHIKLMN---"));
    EXPECT_TRUE(m_Screen.findWindows(kReport).isEmpty());
}

} // namespace PanelsByHandTest
