// SPDX-License-Identifier: GPL-3.0-or-later
// The wrapped view, and pages as files and on paper, by real keys and a real mouse.
#include "CompanionByHand.h"
#include "support/PrintedFile.h"
#include "support/WaitUntil.h"

#include <QFileInfo>

namespace PagesByHandTest {

// Of the frame around a place that one went to.
const QColor kGoneTo(255, 221, 0);
constexpr const char *kWrapped = "Wrapped Alignment";
constexpr const char *kPages = "Pages of hand";

class PagesByHand : public CompanionByHand
{
protected:
    // In the place of the workbench's window, so that it covers no cell of the editor.
    void openWrapped()
    {
        open();
        keys("ctrl+b");
        m_Wrapped = window(kWrapped);
        const QRect free = m_Screen.geometryOf(window("Tambo"));
        m_Screen.resizeWindow(m_Wrapped, free.size());
        m_Screen.moveWindow(m_Wrapped, free.topLeft());
        waitFor([&] { return !m_Screen.geometryOf(m_Wrapped).intersects(m_Place); });
        m_Cells = grid(m_Wrapped, QString::fromLatin1(row(0).left(8)));
        m_Area = m_Screen.geometryOf(m_Wrapped);
    }

    QString m_Wrapped;
    CellGrid m_Cells;
    QRect m_Area;
};

TEST_F(PagesByHand, AClickInTheWrappedViewGoesThereInTheGrid)
{
    openWrapped();
    waitForLastColumn(false);
    // The last row of the last block, which has the only letter of its kind.
    m_Screen.pressKey("End");
    waitForColorIn(m_Area, colorOf('W'));
    m_Screen.click(placeOf(colorOf('W'), m_Area) + QPoint(0, 2));
    waitForLastColumn(true);
    waitForColorIn(m_Place, kGoneTo);
}

TEST_F(PagesByHand, DraggingInTheWrappedViewSelectsInTheGrid)
{
    openWrapped();
    m_Screen.drag(m_Cells.middle(1, 2), m_Cells.middle(3, 5));
    for (int row = 1; row <= 3; ++row)
        for (const int column : {2, 5})
            waitForSelected(row, column, this->row(row)[column]);
    for (const auto &[row, column] : {std::pair(0, 2), {4, 5}, {1, 1}, {3, 6}})
        waitForSelected(row, column, this->row(row)[column], false);
    // There as well.
    waitForColorIn(QRect(m_Cells.middle(1, 2), m_Cells.cell), selectedColorOf(row(1)[2]));
}

TEST_F(PagesByHand, CtrlAndTheWheelZoomTheWrappedViewAlone)
{
    openWrapped();
    const char letter = row(0)[0];
    // Of the first cell, wherever it is; names become narrower as well.
    const auto width = [&] { return widthAround(placeOf(colorOf(letter), m_Area), letter); };
    const int own = cellWidth();
    EXPECT_EQ(width(), own);
    m_Screen.moveMouse(m_Cells.middle(0, 0));
    m_Screen.pressWithKey("ctrl", 5, 3);
    waitFor([&] { return width() > 0 && width() < own; });
    EXPECT_EQ(cellWidth(), own);
    m_Screen.pressWithKey("ctrl", 4, 3);
    waitFor([&] { return width() == own; });
    EXPECT_EQ(cellWidth(), own);
}

TEST_F(PagesByHand, EscapeClosesTheWrappedViewAndItsKeyOpensItAgain)
{
    openWrapped();
    m_Screen.pressKey(m_Wrapped, "Escape");
    waitForWindows(kWrapped, 0);
    keys("ctrl+b");
    window(kWrapped);
}

TEST_F(PagesByHand, ExportWritesAPdfFileThatAProgramReads)
{
    open();
    keys("ctrl+shift+p");
    const QString dialog = window(kPages);
    // Export is what Enter does.
    m_Screen.pressKey(dialog, "Return");
    const QString file = m_Folder.filePath("pages.pdf");
    enterFile("Export Pages", file);
    waitUntil([&] { return QFileInfo::exists(file) || !isRunning(); });
    const PrintedFile pages(file);
    EXPECT_TRUE(pages.isPdf());
    EXPECT_EQ(pages.title(), "hand");
    ASSERT_GT(pages.pageCount(), 0);
    QString text;
    for (int page = 0; page < pages.pageCount(); ++page)
        text += pages.text(page);
    // Each row once a block, in their order, the last with the letter that nothing else has.
    qsizetype place = 0;
    for (int number = 0; number < kRowCount; ++number) {
        const qsizetype found = text.indexOf(QString::fromLatin1(row(number).left(40)), place);
        EXPECT_GE(found, place) << number;
        place = std::max(place, found);
    }
    EXPECT_GE(text.count("W"), kRowCount);
    // It has done what it was for.
    waitForWindows(kPages, 0);
}

TEST_F(PagesByHand, PrintAsksForThePrinterByItsKey)
{
    open();
    keys("ctrl+p");
    m_Screen.pressKey(window(kPages), "Return");
    m_Screen.pressKey(window("Print"), "Escape");
    waitForWindows("Print", 0);
    m_Screen.pressKey(window(kPages), "Escape");
    waitForWindows(kPages, 0);
}

// What can be chosen is reached by keys: the rows in sight alone need fewer pages.
TEST_F(PagesByHand, WhatGoesOnThePagesIsChosenByKeys)
{
    open();
    keys("ctrl+shift+p");
    const QString dialog = window(kPages);
    m_Screen.pressKey(dialog, "alt+c Down Tab ctrl+a 1 1 Tab ctrl+a 2 0 Return");
    const QString file = m_Folder.filePath("part.pdf");
    if (m_Screen.findWindows("Export Pages").isEmpty())
        m_Screen.pressKey(dialog, "alt+e");
    enterFile("Export Pages", file);
    waitUntil([&] { return QFileInfo::exists(file) || !isRunning(); });
    const PrintedFile pages(file);
    ASSERT_GT(pages.pageCount(), 0);
    EXPECT_TRUE(pages.text(0).contains(QString::fromLatin1(row(0).mid(10, 10))));
    EXPECT_FALSE(pages.text(0).contains(QString::fromLatin1(row(0).mid(9, 11))));
    EXPECT_FALSE(pages.text(0).contains(QString::fromLatin1(row(0).mid(10, 11))));
}

} // namespace PagesByHandTest
