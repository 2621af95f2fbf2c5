// SPDX-License-Identifier: GPL-3.0-or-later
// The gestures on the names and on the column marks, with real mouse events.
#include "EditingFixture.h"

namespace {

using PanelsByHand = EditingFixture;

constexpr const char *kReport = "Percentage identity";

TEST_F(PanelsByHand, AMiddleClickOnAMarkInsertsAColumn)
{
    open();
    m_Screen.click(mark(3), 2);
    QStringList rows = kRows;
    for (QString &row : rows)
        row.insert(3, '-');
    expectOneStep(rows);
}

TEST_F(PanelsByHand, AShiftMiddleClickOnAMarkRemovesTheColumn)
{
    open();
    shiftClick(mark(8), 2);
    QStringList rows = kRows;
    for (QString &row : rows)
        row.remove(8, 1);
    expectOneStep(rows);
}

TEST_F(PanelsByHand, AShiftMiddleClickOnANameRemovesTheRow)
{
    open();
    shiftClick(name(1), 2);
    expectOneStep({kRows[0], kRows[2]});
    waitForLine("Removing row");
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
    shiftClick(mark(7), 1);
    waitForMarked(4, 8);
    waitForLine("Range [4..8)");
    shiftClick(mark(1), 1);
    waitForMarked(1, 8);
    waitForLine("Range [1..8)");
    shiftClick(mark(5), 1);
    VirtualScreen::waitUntil([&] { return linesWith("Range [1..8)") == 2 || !isRunning(); });
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
    shiftClick(mark(11), 1);
    waitForMarked(9, 12);
    undo();
    waitForRows(kRows, -1, 9);
    waitForMarked(9, 12);
}

TEST_F(PanelsByHand, ARightClickOnANameReportsTheIdentityAndChangesNothing)
{
    open();
    m_Screen.click(name(2), 3);
    const QString box = window(kReport);
    m_Screen.pressKey(box, "Return");
    VirtualScreen::waitUntil([&] { return !m_Screen.findWindow(kReport) || !isRunning(); });
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
    EXPECT_FALSE(m_Screen.findWindow(kReport));
}

} // namespace
