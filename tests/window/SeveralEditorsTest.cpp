// SPDX-License-Identifier: GPL-3.0-or-later
// Two editor windows on one alignment, and the workbench beside them: what is done in one, shows
// in all.
#include "EditingFixture.h"
#include "support/WaitUntil.h"

#include <QFile>

#include <cstdlib>

namespace SeveralEditorsTest {

class SeveralEditors : public EditingFixture
{
protected:
    // The first row of the tree, below menu bar, tool bar and heading.
    [[nodiscard]] QPoint treeRow()
    {
        return m_Screen.geometryOf(m_Workbench).topLeft() + QPoint(100, 90);
    }

    // What the first row of the tree says of the object's kind.
    [[nodiscard]] QImage treeKind()
    {
        return m_Screen.picture({treeRow() + QPoint(340, -6), QSize(60, 12)});
    }

    void openTwo()
    {
        open();
        m_Workbench = window("Tambo");
        m_Screen.doubleClick(treeRow());
        m_Other = openedBeside({m_Editor});
        // Below the first, which comes to the front when it is clicked.
        const QRect first = m_Screen.geometryOf(m_Editor);
        m_Screen.moveWindow(m_Other, first.bottomLeft() + QPoint(0, 20));
        waitUntil(
            [&] { return m_Screen.geometryOf(m_Other).top() > first.bottom() || !isRunning(); });
        m_OtherGrid = grid(m_Other, kRows[0].left(4));
        waitForBoth(kRows);
    }

    // The editor window that is not among those.
    QString openedBeside(const QStringList &known)
    {
        window("Alignment Editor", int(known.size()) + 1);
        for (const QString &editor : m_Screen.findWindows("Alignment Editor")) {
            if (!known.contains(editor))
                return editor;
        }
        ADD_FAILURE() << "no new editor";
        return {};
    }

    void waitForBoth(const QStringList &rows)
    {
        waitForRowsIn(m_Grid, rows);
        waitForRowsIn(m_OtherGrid, rows);
    }

    // Cells, names and header without a letter; only the corner left of the header is grey.
    void waitForNothing(const CellGrid &grid)
    {
        waitForRowsIn(grid, {});
        const QRect corner(0, 0, 8 * grid.cell.width(), 4 * grid.cell.height());
        const auto isBlank = [&] {
            const QImage image = picture(grid);
            for (int y = 0; y < image.height(); ++y) {
                for (int x = 0; x < image.width(); ++x) {
                    const bool isInCorner = corner.contains(x, y);
                    if (image.pixel(x, y) != (isInCorner ? image.pixel(0, 0) : kWhite))
                        return false;
                }
            }
            return true;
        };
        waitUntil([&] { return isBlank() || !isRunning(); });
        EXPECT_TRUE(isRunning());
    }

    // The entry with this key of the menu of the tree's first row.
    void chooseInTree(const QString &key)
    {
        m_Screen.pressKey(m_Workbench, "Escape");
        m_Screen.click(treeRow(), 3);
        chooseInMenu(key);
    }

    // Where the workbench says what was refused.
    [[nodiscard]] QImage statusLine()
    {
        const QRect area = m_Screen.geometryOf(m_Workbench);
        return m_Screen.picture({area.left() + 4, area.bottom() - 20, area.width() / 3, 16});
    }
    // Letters stand out from their ground, which may be shaded.
    static bool hasText(const QImage &image)
    {
        const int ground = qGray(image.pixel(0, 0));
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                if (std::abs(qGray(image.pixel(x, y)) - ground) > 80)
                    return true;
            }
        }
        return false;
    }

    // The log that the program keeps.
    [[nodiscard]] QByteArray log()
    {
        QFile file(m_Folder.filePath("user/data/tambo.log"));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return file.readAll();
    }

    static constexpr QRgb kWhite = qRgb(255, 255, 255);

    QString m_Workbench;
    QString m_Other;
    CellGrid m_OtherGrid;
};

TEST_F(SeveralEditors, AnEditInOneShowsInTheOther)
{
    openTwo();
    m_Screen.drag(cell(0, 5), cell(0, 1));
    const QStringList first = withRow(0, "A-CDE--FGHIKLMNP");
    waitForBoth(first);
    m_Screen.click(m_OtherGrid.middle(1, 5), 2);
    QStringList second = first;
    second[1] = "ACDEF-GHIKLMN---";
    waitForBoth(second);
    m_Screen.pressKey(m_Other, "ctrl+z");
    waitForBoth(first);
    m_Screen.pressKey(m_Editor, "ctrl+z");
    waitForBoth(kRows);
    m_Screen.pressKey(m_Other, "ctrl+shift+z");
    m_Screen.pressKey(m_Editor, "ctrl+shift+z");
    waitForBoth(second);
    expectSaved(second);
}

TEST_F(SeveralEditors, UndoInTheWorkbenchShowsInBoth)
{
    openTwo();
    m_Screen.click(m_OtherGrid.middle(-1, 3), 2);
    waitForBoth(withGapColumn(3));
    m_Screen.pressKey(m_Workbench, "ctrl+z");
    waitForBoth(kRows);
    m_Screen.pressKey(m_Workbench, "ctrl+shift+z");
    waitForBoth(withGapColumn(3));
    // The first entry of the Edit menu, and the second.
    m_Screen.pressKey(m_Workbench, "alt+e Return");
    waitForBoth(kRows);
    m_Screen.pressKey(m_Workbench, "alt+e Down Return");
    waitForBoth(withGapColumn(3));
}

TEST_F(SeveralEditors, ARowDraggedInOneShowsInTheOtherThatIsOnlyLookedAt)
{
    openTwo();
    m_Screen.drag(name(2), name(0));
    const QStringList moved = {kRows[2], kRows[0], kRows[1]};
    // Taking hold of the row has selected it.
    waitForRowsIn(m_Grid, moved, 0);
    waitForRowsIn(m_OtherGrid, moved, 0);
}

TEST_F(SeveralEditors, ADeletionInTheTreeEmptiesBothAndUndoFillsThemAgain)
{
    openTwo();
    m_Screen.click(treeRow());
    m_Screen.pressKey(m_Workbench, "Delete");
    waitForNothing(m_Grid);
    waitForNothing(m_OtherGrid);
    waitUntil([&] { return !hasText(treeKind()) || !isRunning(); });
    m_Screen.pressKey(m_Workbench, "ctrl+z");
    waitForBoth(kRows);
    // The opening goes and comes like that, too.
    m_Screen.pressKey(m_Other, "ctrl+z");
    waitForNothing(m_Grid);
    waitForNothing(m_OtherGrid);
    m_Screen.pressKey(m_Editor, "ctrl+shift+z");
    waitForBoth(kRows);
    // One that is emptied by hand stays empty.
    m_Screen.pressKey(m_Other, "ctrl+w");
    waitForNothing(m_OtherGrid);
    m_Screen.pressKey(m_Editor, "ctrl+z");
    waitForNothing(m_Grid);
    m_Screen.pressKey(m_Editor, "ctrl+shift+z");
    waitForRowsIn(m_Grid, kRows);
    waitForNothing(m_OtherGrid);
}

TEST_F(SeveralEditors, ALockedAlignmentIsLeftAloneAndTheWorkbenchSaysSo)
{
    openTwo();
    m_Screen.drag(cell(0, 5), cell(0, 1));
    const QStringList moved = withRow(0, "A-CDE--FGHIKLMNP");
    waitForBoth(moved);
    const QImage saidBefore = statusLine();
    chooseInTree("l");
    m_Screen.drag(cell(1, 13), cell(1, 2));
    waitForLines("Cannot update CDB!");
    waitUntil([&] {
        const QImage said = statusLine();
        return (said != saidBefore && hasText(said)) || !isRunning();
    });
    m_Screen.click(m_OtherGrid.middle(2, 3), 2);
    waitForLines("Cannot update CDB!", 2);
    // Neither do the panels change it, nor undo. Events are handled in their order: when the last
    // gesture has been refused, the others have had their chance.
    m_Screen.drag(name(2), name(1));
    m_Screen.click(mark(3), 2);
    m_Screen.shiftClick(mark(8), 2);
    m_Screen.shiftClick(name(1), 2);
    waitForLines("Removing row", 1);
    undo();
    const qsizetype refused = linesWith("Cannot update CDB!");
    m_Screen.drag(m_OtherGrid.middle(1, 13), m_OtherGrid.middle(1, 2), 2);
    waitForLines("Cannot update CDB!", refused + 1);
    EXPECT_TRUE(log().contains("\"hand\" is locked and was not changed."));
    waitForBoth(moved);
    expectSaved(moved);
    // The same entry unlocks it.
    chooseInTree("l");
    undo();
    waitForBoth(kRows);
    m_Screen.drag(cell(1, 13), cell(1, 2));
    waitForBoth(withRow(1, "AC-DEFGHIKLMN---"));
}

} // namespace SeveralEditorsTest
