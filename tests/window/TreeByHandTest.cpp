// SPDX-License-Identifier: GPL-3.0-or-later
// The tree of the rows, by real keys and a real mouse.
#include "CompanionByHand.h"

namespace TreeByHandTest {

// Of the dock: branches and nodes, the node that keys have gone to, and what is collapsed.
const QColor kBranch(50, 50, 50);
const QColor kPresentNode(208, 88, 0);
const QColor kTriangle(200, 214, 232);
// Two families, whose rows take turns.
constexpr int kRows = 6;
constexpr char kFamilies[] = "AW";
const QByteArray kText = ">a0\nACDEFGHIKL\n>w0\nWYTSRQPNML\n>a1\nACDEFGHIKV\n>w1\nWYTSRQPNMI\n"
                         ">a2\nACDEFGHTTV\n>w2\nWYTSRQPAAA\n";

class TreeByHand : public CompanionByHand
{
protected:
    void openTree()
    {
        open(kText, "ACDEFGHIK");
        keys("ctrl+shift+t");
        waitForColorIn(m_Place, kPresentNode);
        // Beside the tree.
        m_Grid = grid(m_Editor, "ACDEFGHIK");
    }
    [[nodiscard]] QRect treeArea() const
    {
        QRect area = m_Place;
        area.setRight(m_Grid.corner.x() - 1);
        return area;
    }
    // A square of the branches' color that is not the present node: the leftmost one.
    [[nodiscard]] QPoint nodeNextToTheRoot()
    {
        const QRect area = treeArea();
        QPoint found;
        waitFor([&] {
            const QImage image = settled([&] { return m_Screen.picture(area); });
            const auto isNode = [&](int left, int top) {
                for (int y = top; y < top + 4; ++y)
                    for (int x = left; x < left + 4; ++x)
                        if (image.pixelColor(x, y) != kBranch)
                            return false;
                return true;
            };
            for (int x = 0; x + 4 <= image.width() && found.isNull(); ++x)
                for (int y = 0; y + 4 <= image.height() && found.isNull(); ++y)
                    if (isNode(x, y))
                        found = area.topLeft() + QPoint(x + 2, y + 2);
            return !found.isNull();
        });
        return found;
    }
    [[nodiscard]] QPoint presentNode() const
    {
        return placeOf(kPresentNode, treeArea()) + QPoint(0, 4);
    }
    [[nodiscard]] bool isRowSelected(int row) const
    {
        return isSelected(row, 0, kFamilies[row % 2]);
    }
    // All rows of one family and none of the other.
    void waitForOneFamily()
    {
        waitFor([&] { return isRowSelected(0) != isRowSelected(1); });
        (void)settledEditor();
        for (int row = 0; row < kRows; ++row)
            EXPECT_EQ(isRowSelected(row), isRowSelected(row % 2)) << row;
    }
    // What the rows begin with, from top to bottom.
    [[nodiscard]] QByteArray firstLetters() const
    {
        QByteArray letters;
        for (int row = 0; row < kRows; ++row) {
            const QColor shown = m_Screen.picture().pixelColor(m_Grid.ground(row, 0));
            letters += shown == colorOf('A') ? 'A' : shown == colorOf('W') ? 'W' : '?';
        }
        return letters;
    }
};

TEST_F(TreeByHand, AClickOnANodeSelectsTheRowsOfItsClade)
{
    openTree();
    m_Screen.click(nodeNextToTheRoot());
    waitForOneFamily();
    // A click beside all nodes takes nothing back.
    m_Screen.click(treeArea().bottomRight() - QPoint(5, 60));
    waitForOneFamily();
}

TEST_F(TreeByHand, ADoubleClickCollapsesACladeAndShowsItAgain)
{
    openTree();
    waitForColorIn(treeArea(), kTriangle, false);
    m_Screen.doubleClick(nodeNextToTheRoot());
    waitForColorIn(treeArea(), kTriangle);
    (void)settledEditor();
    m_Screen.doubleClick(presentNode());
    waitForColorIn(treeArea(), kTriangle, false);
}

TEST_F(TreeByHand, KeysGoFromCladeToCladeAndSelectAndCollapseThem)
{
    openTree();
    m_Screen.pressKey("Right");
    m_Screen.pressKey("Return");
    waitForOneFamily();
    const bool isFirst = isRowSelected(0);
    // The other child of the root.
    m_Screen.pressKey("Left Right Down");
    m_Screen.pressKey("Return");
    waitFor([&] { return isRowSelected(0) != isFirst; });
    waitForOneFamily();
    m_Screen.pressKey("space");
    waitForColorIn(treeArea(), kTriangle);
    m_Screen.pressKey("space");
    waitForColorIn(treeArea(), kTriangle, false);
    m_Screen.pressKey("Escape");
    keys("ctrl+shift+t");
    waitForColorIn(m_Place, kPresentNode, false);
}

TEST_F(TreeByHand, RowsAreSortedByTheMenuAndUndoPutsThemBack)
{
    openTree();
    EXPECT_EQ(firstLetters(), "AWAWAW");
    // The tree stands left of the names.
    m_Screen.click({m_Grid.corner.x() - 20, corner().y()}, 3);
    chooseByKeys("t s");
    waitFor([&] { return firstLetters() == "AAAWWW" || firstLetters() == "WWWAAA"; });
    keys("ctrl+z");
    waitFor([&] { return firstLetters() == "AWAWAW"; });
}

} // namespace TreeByHandTest
