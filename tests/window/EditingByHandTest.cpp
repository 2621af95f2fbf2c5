// SPDX-License-Identifier: GPL-3.0-or-later
// Editing an alignment with the mouse, as hands do it: the gestures on the cells, judged by what
// the screen shows, taken back and done again with the keys.
#include "EditingFixture.h"
#include "support/WaitUntil.h"

#include <functional>

namespace EditingByHandTest {

using EditingByHand = EditingFixture;

TEST_F(EditingByHand, ALeftDragMovesOneGapToTheLeft)
{
    open();
    m_Screen.drag(cell(0, 5), cell(0, 1));
    expectOneStep(withRow(0, "A-CDE--FGHIKLMNP"));
    waitForLines("Drag point");
    EXPECT_EQ(linesWith("Drag range"), 0);
}

TEST_F(EditingByHand, ALeftDragMovesOneGapToTheRight)
{
    open();
    m_Screen.drag(cell(0, 5), cell(0, 9));
    expectOneStep(withRow(0, "ACDE--FGH-IKLMNP"));
    waitForLines("Drag point");
}

TEST_F(EditingByHand, AMiddleDragMovesTheRunOfGaps)
{
    open();
    m_Screen.drag(cell(0, 5), cell(0, 8), 2);
    expectOneStep(withRow(0, "ACDEFGH---IKLMNP"));
    waitForLines("Drag range");
    EXPECT_EQ(linesWith("Drag point"), 0);
}

TEST_F(EditingByHand, ADragThatTheMiddleButtonEndsMovesTheRun)
{
    open();
    dragWithBoth(cell(0, 4), cell(0, 2), 1, 2);
    expectOneStep(withRow(0, "AC---DEFGHIKLMNP"));
    waitForLines("Drag range");
    EXPECT_EQ(linesWith("Drag point"), 0);
}

TEST_F(EditingByHand, ADragThatTheLeftButtonEndsMovesOneGap)
{
    open();
    dragWithBoth(cell(0, 6), cell(0, 2), 2, 1);
    expectOneStep(withRow(0, "AC-DE--FGHIKLMNP"));
    waitForLines("Drag point");
    EXPECT_EQ(linesWith("Drag range"), 0);
}

TEST_F(EditingByHand, AMiddleDragFromAResidueSlidesWhatFollows)
{
    open();
    m_Screen.drag(cell(1, 2), cell(1, 4), 2);
    expectOneStep(withRow(1, "AC--DEFGHIKLMN--"));
    waitForLines("Drag range");
    waitForLines("ASSERT: \"0 == Target->getItem( m_Row, m_Col )\" in View (");
}

TEST_F(EditingByHand, AMiddleClickInsertsAGapBeforeTerminalGaps)
{
    open();
    m_Screen.click(cell(1, 5), 2);
    expectOneStep(withRow(1, "ACDEF-GHIKLMN---"));
    waitForLines("Drag terminal gap to here");
}

TEST_F(EditingByHand, AMiddleClickInAFullRowAddsAColumn)
{
    open();
    m_Screen.click(cell(2, 3), 2);
    expectOneStep({kRows[0] + '-', kRows[1] + '-', "WYA-CDEFGHIKLWYAC"});
    waitForLines("Drag terminal gap to here");
}

TEST_F(EditingByHand, QuickClicksInsertOneGapEach)
{
    open();
    m_Screen.click(cell(1, 5), 2);
    m_Screen.click(cell(1, 5), 2);
    m_Screen.click(cell(1, 5), 2);
    waitForRows(withRow(1, "ACDEF---GHIKLMN-"));
    expectSaved(withRow(1, "ACDEF---GHIKLMN-"));
    undo();
    waitForRows(withRow(1, "ACDEF--GHIKLMN--"));
    undo();
    undo();
    waitForPicture(m_Before);
}

TEST_F(EditingByHand, DragsThatLeaveTheRowOrTheGridChangeNothing)
{
    open();
    m_Screen.drag(cell(0, 5), cell(1, 9));
    m_Screen.drag(cell(0, 5), name(0));
    m_Screen.drag(cell(0, 5), mark(9));
    m_Screen.drag(cell(0, 5), cell(0, int(kRows[0].size()) + 2));
    m_Screen.click(cell(0, 5), 1);
    // Events are handled in their order: when this one shows, the others have had their effect.
    m_Screen.drag(cell(0, 6), cell(0, 3));
    expectOneStep(withRow(0, "ACD-E--FGHIKLMNP"));
    waitForLines("Drag point");
}

TEST_F(EditingByHand, AClosedHandShowsWhileAGapIsDragged)
{
    open();
    m_Screen.moveMouse(cell(0, 5));
    const QImage arrow = settledPointer(cell(0, 5));
    m_Screen.press(1);
    waitUntil([&] { return pointer(cell(0, 5)) != arrow || !isRunning(); });
    // Let go where it began, the gap stays.
    m_Screen.release(1);
    waitUntil([&] { return pointer(cell(0, 5)) == arrow || !isRunning(); });
    waitForPicture(m_Before);
}

TEST_F(EditingByHand, AToolTipComesUpWhereThePointerRests)
{
    open();
    EXPECT_TRUE(m_Screen.findPopups().isEmpty());
    const QString workbench = window("Tambo");
    // Only an active window shows tips, and one that has just come up may not know that it is. So
    // it is told again with each motion, which comes later than a tip would have.
    const auto restAt = [&](QPoint place, const std::function<bool()> &isAsWanted) {
        constexpr int looksPerMotion = 200;
        waitUntil([&, looks = 0]() mutable {
            if (looks % looksPerMotion == 0) {
                m_Screen.activate(workbench);
                m_Screen.activate(m_Editor);
                m_Screen.moveMouse(place + QPoint(looks / looksPerMotion % 2, 0));
            }
            ++looks;
            return isAsWanted() || !isRunning();
        });
    };
    const auto tipHeight = [&] {
        const QStringList tips = m_Screen.findPopups();
        return tips.size() == 1 ? m_Screen.geometryOf(tips[0]).height() : 0;
    };
    int cellTip = 0;
    restAt(cell(0, 2), [&] { return (cellTip = tipHeight()) > 0; });
    // Sequence, column and residue are three lines, a column is one.
    restAt(mark(9), [&] {
        const int markTip = tipHeight();
        return markTip > 0 && markTip < cellTip;
    });
    restAt(cell(4, 2), [&] { return m_Screen.findPopups().isEmpty(); });
    waitForPicture(m_Before);
}

TEST_F(EditingByHand, StepsAreTakenBackOneByOne)
{
    open();
    m_Screen.drag(cell(0, 5), cell(0, 1));
    const QStringList first = withRow(0, "A-CDE--FGHIKLMNP");
    waitForRows(first);
    m_Screen.click(cell(1, 5), 2);
    QStringList second = first;
    second[1] = "ACDEF-GHIKLMN---";
    waitForRows(second);
    m_Screen.click(mark(3), 2);
    QStringList third = second;
    for (QString &row : third)
        row.insert(3, '-');
    waitForRows(third);
    expectSaved(third);
    undo();
    waitForRows(second);
    undo();
    waitForRows(first);
    undo();
    waitForPicture(m_Before);
    for (const QStringList &rows : {first, second, third}) {
        redo();
        waitForRows(rows);
    }
    expectSaved(third);
}

TEST_F(EditingByHand, ALeftClickOnAResidueSelectsItAndIsNoStep)
{
    open();
    m_Screen.drag(cell(0, 5), cell(0, 1));
    const QStringList moved = withRow(0, "A-CDE--FGHIKLMNP");
    waitForRows(moved);
    m_Screen.click(cell(2, 4), 1);
    waitForSelected(2, 4);
    m_Screen.click(cell(2, 4), 1);
    waitForRows(moved);
    undo();
    waitForPicture(m_Before);
}

TEST_F(EditingByHand, ARightClickOpensTheMenuOfAResidueAndNoneOfAGap)
{
    open();
    m_Screen.click(cell(0, 5), 3);
    m_Screen.click(cell(2, 4), 3);
    // "Select".
    chooseInMenu("s");
    waitForSelected(2, 4);
    m_Screen.click(cell(2, 4), 1);
    waitForPicture(m_Before);
}

} // namespace EditingByHandTest
