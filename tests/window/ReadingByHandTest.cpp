// SPDX-License-Identifier: GPL-3.0-or-later
// Names, zoom, overview and tracks, by real keys and a real mouse.
#include "CompanionByHand.h"

namespace ReadingByHandTest {

using ReadingByHand = CompanionByHand;

// Of the tracks.
const QColor kConservation(58, 104, 168);
const QColor kOccupancy(130, 140, 150);

TEST_F(ReadingByHand, TheBorderOfTheNamesIsDraggedAndADoubleClickFitsThem)
{
    open();
    const QPoint border = m_Grid.corner + QPoint(-3, 40);
    constexpr QPoint kNarrower(-60, 0);
    m_Screen.drag(border, border + kNarrower);
    waitForLetter(m_Grid.corner + kNarrower, row(0)[0]);
    EXPECT_EQ(m_Screen.picture().pixelColor(m_Grid.corner + kNarrower - QPoint(2, 0)), Qt::white);
    m_Screen.doubleClick(border + kNarrower);
    waitForColor(m_Grid.corner - QPoint(2, 0), Qt::white);
    waitForLetter(m_Grid.corner, row(0)[0]);
}

TEST_F(ReadingByHand, CtrlAndTheWheelZoomAroundThePointer)
{
    open();
    const int own = cellWidth();
    const QPoint place = cell(1, 20);
    const char letter = row(1)[20];
    EXPECT_EQ(widthAround(place, letter), own);
    m_Screen.moveMouse(place);
    m_Screen.pressWithKey("ctrl", 4, 2);
    waitFor([&] { return widthAround(place, letter) > own; });
    m_Screen.pressWithKey("ctrl", 5, 4);
    waitFor([&] {
        const int width = widthAround(place, letter);
        return width > 0 && width < own;
    });
}

TEST_F(ReadingByHand, KeysZoom)
{
    open();
    const int own = cellWidth();
    keys("ctrl+plus");
    // Around the middle, so that the first column may have gone.
    goHome();
    waitForCellWidth([own](int width) { return width > own; });
    keys("ctrl+minus ctrl+minus ctrl+minus");
    goHome();
    waitForCellWidth([own](int width) { return width < own && width > 1; });
    keys("ctrl+0");
    goHome();
    waitForCellWidth([own](int width) { return width == own; });
    waitForLastColumn(false);
    keys("ctrl+8");
    waitForLastColumn(true);
    goHome();
    waitForCellWidth([own](int width) { return width < own; });
}

TEST_F(ReadingByHand, AllRowsAndColumnsComeIntoSightByOneKey)
{
    open();
    keys("ctrl+9");
    waitForLastColumn(true);
    const int width = cellWidth();
    EXPECT_GT(width, 0);
    // What is painted of the last column ends with the last of all rows.
    const QRect column(m_Grid.corner + QPoint((kColumnCount - 1) * width, 0),
                       QPoint(m_Grid.corner.x() + kColumnCount * width - 1, m_Place.bottom()));
    const QImage picture = settled([&] { return m_Screen.picture(column); });
    int height = 0;
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x)
            height = picture.pixelColor(x, y) == colorOf('W') ? y + 1 : height;
    EXPECT_GT(height, 0);
    EXPECT_EQ(height % kRowCount, 0);
}

TEST_F(ReadingByHand, TheOverviewComesByItsKeyAndScrollsAsItIsDragged)
{
    open();
    const QImage before = settledEditor();
    keys("ctrl+m");
    waitFor([&] { return settledEditor() != before; });
    // Well above the line for what is under the pointer.
    const QPoint left(m_Place.left() + 60, m_Place.bottom() - 100);
    const QPoint right(m_Place.right() - 10, m_Place.bottom() - 100);
    m_Screen.drag(left, right);
    waitForLastColumn(true);
    m_Screen.drag(right, left);
    waitForLastColumn(false);
    keys("ctrl+m");
    goHome();
    waitFor([&] { return settledEditor() == before; });
}

TEST_F(ReadingByHand, TracksComeByTheirKeyAndTheRightButtonSwitchesOneOff)
{
    open();
    waitForColorIn(lowerPart(), kOccupancy, false);
    keys("ctrl+t");
    waitForColorIn(lowerPart(), kOccupancy);
    waitForColorIn(lowerPart(), kConservation);
    m_Screen.click({m_Place.left() + 40, m_Place.bottom() - 80}, 3);
    chooseByKeys("Down Down Return");
    waitForColorIn(lowerPart(), kOccupancy, false);
    waitForColorIn(lowerPart(), kConservation);
    keys("ctrl+t");
    waitForColorIn(lowerPart(), kConservation, false);
}

TEST_F(ReadingByHand, TheToolTipOfATrackHasTheValuesOfAColumn)
{
    open();
    keys("ctrl+t");
    waitForColorIn(lowerPart(), kOccupancy);
    (void)settledEditor();
    const QPoint place(cell(0, 5).x(), m_Place.bottom() - 80);
    m_Screen.moveMouse(place);
    m_Screen.moveMouse(place + QPoint(1, 0));
    waitFor([&] { return m_Screen.findPopups().size() == 1; });
    m_Screen.moveMouse({1910, 1070});
    waitFor([&] { return m_Screen.findPopups().isEmpty(); });
}

TEST_F(ReadingByHand, TheLowestLineFollowsThePointer)
{
    open();
    const QRect line(m_Place.left(), m_Place.bottom() - 46, m_Place.width(), 20);
    (void)settledEditor();
    const QImage without = m_Screen.picture(line);
    m_Screen.moveMouse(cell(1, 4));
    waitForPicture(line, without, false);
    const QImage first = settled([&] { return m_Screen.picture(line); });
    m_Screen.moveMouse(cell(2, 7));
    waitForPicture(line, first, false);
    m_Screen.moveMouse({1910, 1070});
    waitForPicture(line, without);
}

TEST_F(ReadingByHand, TheRightButtonOnTheCornerHasTheCommands)
{
    open();
    m_Screen.click(corner(), 3);
    chooseByKeys("k t");
    waitForColorIn(lowerPart(), kConservation);
}

TEST_F(ReadingByHand, TheMenuOfTheCornerComesByKeys)
{
    open();
    m_Screen.pressKey(m_Editor, "shift+F10");
    chooseByKeys("k t");
    waitForColorIn(lowerPart(), kConservation);
    m_Screen.pressKey("Menu");
    chooseByKeys("k t");
    waitForColorIn(lowerPart(), kConservation, false);
}

TEST_F(ReadingByHand, ColorsByColumnComeWithALegendAndGoByUndo)
{
    open();
    const QImage before = settledEditor();
    m_Screen.click(corner(), 3);
    chooseByKeys("y i");
    // The last column is the same in all rows; the others are not.
    waitForColor(m_Grid.corner, Qt::white);
    // The legend is below the cells, which have the room again when it is closed.
    EXPECT_NE(settledEditor(), before);
    keys("ctrl+z");
    waitForLetter(m_Grid.corner, row(0)[0]);
}

TEST_F(ReadingByHand, TheTableOfIdentitiesOpensAndEscapeClosesIt)
{
    open();
    m_Screen.click(corner(), 3);
    chooseByKeys("i");
    m_Screen.pressKey(window("Identities in hand"), "Escape");
    waitForWindows("Identities in hand", 0);
}

// The menu of the main window is for the editor that was used last.
TEST_F(ReadingByHand, TheMenuOfTheWorkbenchIsForTheEditorThatWasUsedLast)
{
    open();
    const QString workbench = window("Tambo");
    m_Screen.doubleClick(m_Screen.geometryOf(workbench).topLeft() + QPoint(100, 90));
    window("Alignment Editor", 2);
    QStringList editors = m_Screen.findWindows("Alignment Editor");
    editors.removeOne(m_Editor);
    ASSERT_EQ(editors.size(), 1);
    const QString other = editors.front();
    // Over the lower part of the first, which comes to the front when it is used.
    m_Screen.moveWindow(other, {m_Place.left(), 1060 - m_Place.height()});
    waitFor([&] { return m_Screen.geometryOf(other).top() > m_Place.top() + 300; });
    const QRect otherPlace = m_Screen.geometryOf(other);
    ASSERT_LT(otherPlace.bottom(), 1080);
    const QRect below(QPoint(m_Place.left(), m_Place.bottom() + 10), otherPlace.bottomRight());

    const auto toggleTracks = [&](const QString &editor) {
        m_Screen.activate(editor);
        waitFor([&] { return isSettled(); });
        m_Screen.pressKey(workbench, "alt+a");
        chooseByKeys("k t");
    };
    toggleTracks(m_Editor);
    waitForColorIn(m_Place, kConservation);
    waitForColorIn(below, kConservation, false);
    toggleTracks(m_Editor);
    waitForColorIn(m_Place, kConservation, false);
    toggleTracks(other);
    waitForColorIn(below, kConservation);
    m_Screen.activate(m_Editor);
    waitForColorIn(m_Place, kConservation, false);
}

} // namespace ReadingByHandTest
