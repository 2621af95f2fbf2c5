// SPDX-License-Identifier: GPL-3.0-or-later
// Selecting by commands, by real keys.
#include "CompanionByHand.h"

namespace SelectingByHandTest {

class SelectingByHand : public CompanionByHand
{
protected:
    // Some cells of the row, from its beginning on.
    void waitForRow(int number, bool isSelected = true)
    {
        for (const int column : {0, 3, 9})
            waitForSelected(number, column, row(number)[column], isSelected);
    }
    // By the menu key and the letters of the entries.
    void chooseSelect(const QString &entry)
    {
        m_Screen.pressKey(m_Editor, "Menu");
        chooseByKeys("l " + entry);
        waitFor([&] { return isSettled(); });
    }
    [[nodiscard]] QRect cellsToTheRight() const
    {
        QRect area = m_Place;
        area.setTopLeft(m_Grid.corner);
        area.setHeight(3 * m_Grid.cell.height());
        return area;
    }
};

TEST_F(SelectingByHand, TheOtherWayRoundAndNothingHaveKeys)
{
    open();
    keys("ctrl+i");
    waitForRow(0);
    waitForRow(5);
    keys("ctrl+i");
    waitForRow(0, false);
    waitForRow(5, false);
    keys("ctrl+i");
    waitForRow(5);
    keys("ctrl+shift+a");
    waitForRow(0, false);
    waitForRow(5, false);
}

TEST_F(SelectingByHand, ColumnsAreMarkedByDraggingOverTheirMarks)
{
    open();
    m_Screen.drag(m_Grid.middle(-1, 2), m_Grid.middle(-1, 5));
    for (const int column : {2, 3, 4, 5})
        waitForSelected(0, column, row(0)[column]);
    for (const int column : {1, 6})
        EXPECT_FALSE(isSelected(0, column, row(0)[column])) << column;
}

// Each eighth row has the same letters but for what is to be found.
TEST_F(SelectingByHand, RowsLikeTheOneUnderThePointerAreSelectedByKeys)
{
    open();
    m_Screen.moveMouse(cell(2, 3));
    keys("ctrl+l");
    waitFor([&] { return isSettled(); });
    m_Screen.pressKey("ctrl+a 1 0 0 Return");
    waitForRow(2);
    waitForRow(10);
    waitForRow(1, false);
    waitForRow(3, false);
    m_Screen.pressKey("Escape");
    expectKeyboardIsAtTheCells();
}

TEST_F(SelectingByHand, AllIsChosenFromTheMenuByKeys)
{
    open();
    chooseSelect("a");
    waitForRow(0);
    waitForRow(7);
    chooseSelect("n");
    waitForRow(0, false);
    chooseSelect("i");
    waitForRow(7);
}

TEST_F(SelectingByHand, ABlockIsChosenByItsNumbers)
{
    open();
    chooseSelect("b");
    m_Screen.pressKey("ctrl+a 2 Tab ctrl+a 3 Tab ctrl+a 4 Tab ctrl+a 6 Return");
    for (const int line : {1, 2})
        for (const int column : {3, 5})
            waitForSelected(line, column, row(line)[column]);
    for (const auto &[line, column] : {std::pair(0, 3), {3, 5}, {1, 2}, {2, 6}})
        waitForSelected(line, column, row(line)[column], false);
}

TEST_F(SelectingByHand, RowsAreChosenByTheirNames)
{
    open();
    chooseSelect("m");
    m_Screen.typeText(m_Editor, "_1_of");
    m_Screen.pressKey("Return");
    waitForRow(1);
    waitForRow(0, false);
    waitForRow(10, false);
}

TEST_F(SelectingByHand, ColumnsAreChosenByConservation)
{
    open();
    chooseSelect("c");
    // 0.7 at least: the last column alone.
    m_Screen.pressKey("Return");
    m_Screen.pressKey("Escape");
    m_Screen.pressKey("End");
    waitForColorIn(cellsToTheRight(), selectedColorOf('W'));
    waitForColorIn(cellsToTheRight(), selectedColorOf('A'), false);
}

TEST_F(SelectingByHand, ColumnsAreChosenByGaps)
{
    open();
    chooseSelect("g");
    // Two of 60 rows have gaps in two columns.
    m_Screen.pressKey("ctrl+a 3 Return");
    m_Screen.pressKey("Escape");
    m_Screen.pressKey("End");
    waitForColorIn(cellsToTheRight(), selectedColorOf(row(0)[kHitColumn + 2]));
    waitForColorIn(cellsToTheRight(), selectedColorOf('W'), false);
}

} // namespace SelectingByHandTest
