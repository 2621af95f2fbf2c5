// SPDX-License-Identifier: GPL-3.0-or-later
// A view on a screen where a pixel of the contents is 1.25 pixels of the device.
#include "LetterLattice.h"
#include "QCanvasText.h"
#include "QCanvasView.h"

#include <QScreen>
#include <QTest>

#include <gtest/gtest.h>

namespace BrokenScaleTest {

// Read when the application object is made, so it has to be set before main().
const bool s_IsSet = qputenv("QT_SCALE_FACTOR", "1.25");

class BrokenScale : public ::testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(s_IsSet);
        giveLetters(m_Canvas, 60, 80, 13, 17);
        auto *text = new QCanvasText(QStringLiteral("a text across cells"), &m_Canvas);
        text->setZ(1);
        text->move(150, 90);
        text->show();
        m_View.setHScrollBarMode(QCanvasView::AlwaysOff);
        m_View.setVScrollBarMode(QCanvasView::AlwaysOff);
        m_View.resize(301, 203);
        m_View.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&m_View));
        ASSERT_EQ(m_View.devicePixelRatioF(), 1.25);
        m_Canvas.update();
    }
    QImage screen()
    {
        QCoreApplication::sendPostedEvents();
        QCoreApplication::processEvents();
        return m_View.screen()
            ->grabWindow(m_View.winId())
            .toImage()
            .convertToFormat(QImage::Format_RGB32);
    }

    QCanvas m_Canvas;
    QCanvasView m_View{&m_Canvas};
};

TEST_F(BrokenScale, ScrollingShowsWhatAFullRepaintWouldShow)
{
    for (const QPoint &to : {QPoint(0, 0), QPoint(4, 0), QPoint(4, 8), QPoint(5, 9), QPoint(30, 61),
                             QPoint(26, 57), QPoint(700, 800), QPoint(1, 1)}) {
        m_View.setContentsPos(to.x(), to.y());
        const QImage scrolled = screen();
        m_View.viewport()->update();
        EXPECT_EQ(screen(), scrolled) << "at " << to.x() << ", " << to.y();
    }
}

TEST_F(BrokenScale, PartialRepaintsLeaveNoSeams)
{
    m_View.setContentsPos(3, 5);
    const QImage before = screen();
    for (const QRect &part : {QRect(7, 9, 31, 23), QRect(0, 0, 1, 203), QRect(100, 50, 101, 77)}) {
        m_View.viewport()->update(part);
        EXPECT_EQ(screen(), before);
    }
    m_View.viewport()->update(QRegion(QRect(20, 20, 33, 33)) + QRect(53, 53, 33, 33));
    EXPECT_EQ(screen(), before);
}

TEST_F(BrokenScale, ChangedCellsArePaintedToTheirEdges)
{
    const QImage before = screen();
    for (unsigned long col = 2; col < 12; ++col) {
        m_Canvas.setChanged(m_Canvas.lattice().cellRect({3, col}));
        m_Canvas.update();
        EXPECT_EQ(screen(), before);
    }
}

} // namespace BrokenScaleTest
