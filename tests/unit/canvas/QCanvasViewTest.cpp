// SPDX-License-Identifier: GPL-3.0-or-later
// What a view shows: scrolling, scroll bars, exposure.
#include "QCanvasView.h"

#include "LetterLattice.h"
#include "QCanvasText.h"
#include "support/ExpectMessage.h"

#include <QGuiApplication>
#include <QLoggingCategory>
#include <QScreen>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

#include <vector>

namespace QCanvasViewTest {

class RecordingView : public QCanvasView
{
public:
    using QCanvasView::QCanvasView;

    std::vector<QRect> m_Drawn;

protected:
    void drawContents(QPainter *painter, int x, int y, int width, int height) override
    {
        m_Drawn.emplace_back(x, y, width, height);
        QCanvasView::drawContents(painter, x, y, width, height);
    }
};

class QCanvasViewTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        giveLetters(m_Canvas, 60, 80, 13, 17);
        m_View.setHScrollBarMode(QCanvasView::AlwaysOff);
        m_View.setVScrollBarMode(QCanvasView::AlwaysOff);
        m_View.resize(300, 200);
        m_View.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&m_View));
        m_Canvas.update();
        settle();
    }

    // Until everything that waits to be painted has been.
    static void settle()
    {
        QCoreApplication::sendPostedEvents();
        QCoreApplication::processEvents();
    }
    // The pixels on the screen, as they have come about.
    QImage screen()
    {
        settle();
        return m_View.screen()
            ->grabWindow(m_View.winId())
            .toImage()
            .convertToFormat(QImage::Format_RGB32);
    }
    QImage repainted()
    {
        QImage image(m_View.viewport()->size(), QImage::Format_RGB32);
        QPainter painter(&image);
        painter.translate(-m_View.contentsX(), -m_View.contentsY());
        m_Canvas.drawArea(
            QRect(m_View.contentsX(), m_View.contentsY(), image.width(), image.height()), &painter);
        return image;
    }

    QCanvas m_Canvas;
    RecordingView m_View{&m_Canvas};
};

TEST_F(QCanvasViewTest, ShowsTheCanvasFromItsUpperLeftCorner)
{
    EXPECT_EQ(m_View.contentsX(), 0);
    EXPECT_EQ(m_View.contentsY(), 0);
    EXPECT_EQ(m_View.contentsWidth(), 80 * 13);
    EXPECT_EQ(m_View.contentsHeight(), 60 * 17);
    EXPECT_EQ(screen(), repainted());
}

TEST_F(QCanvasViewTest, ScrollingShowsWhatAFullRepaintWouldShow)
{
    auto *name = new QCanvasText(QStringLiteral("a text across the edge of a strip"), &m_Canvas);
    name->setZ(1);
    name->move(200, 150);
    name->show();
    m_Canvas.update();
    for (const QPoint &to : {QPoint(5, 0), QPoint(5, 40), QPoint(30, 60), QPoint(20, 30),
                             QPoint(700, 800), QPoint(690, 795), QPoint(0, 0)}) {
        m_View.setContentsPos(to.x(), to.y());
        EXPECT_EQ(m_View.contentsX(), to.x());
        EXPECT_EQ(m_View.contentsY(), to.y());
        EXPECT_EQ(screen(), repainted()) << "at " << to.x() << ", " << to.y();
    }
}

TEST_F(QCanvasViewTest, ScrollingPaintsTheStripThatCameIntoSightOnly)
{
    m_View.m_Drawn.clear();
    m_View.setContentsPos(0, 20);
    settle();
    ASSERT_EQ(m_View.m_Drawn.size(), 1U);
    EXPECT_EQ(m_View.m_Drawn.front(), QRect(0, 200, 300, 20));
    m_View.m_Drawn.clear();
    m_View.setContentsPos(7, 20);
    settle();
    ASSERT_EQ(m_View.m_Drawn.size(), 1U);
    EXPECT_EQ(m_View.m_Drawn.front(), QRect(300, 20, 7, 200));
}

TEST_F(QCanvasViewTest, TellsTheNewPositionBeforeTheContentsMove)
{
    const QSignalSpy moving(&m_View, SIGNAL(contentsMoving(int, int)));
    QPoint whileTelling(-1, -1);
    QObject::connect(&m_View, &QCanvasView::contentsMoving, [&](int, int) {
        whileTelling = QPoint(m_View.contentsX(), m_View.contentsY());
    });
    m_View.verticalScrollBar()->setValue(25);
    ASSERT_EQ(moving.count(), 1);
    EXPECT_EQ(moving.first().at(0).toInt(), 0);
    EXPECT_EQ(moving.first().at(1).toInt(), 25);
    EXPECT_EQ(whileTelling, QPoint(0, 0));
    EXPECT_EQ(m_View.contentsY(), 25);
}

TEST_F(QCanvasViewTest, PositionIsCutOffAtTheEndsOfTheContents)
{
    m_View.setContentsPos(100000, 100000);
    EXPECT_EQ(m_View.contentsX(), 80 * 13 - 300);
    EXPECT_EQ(m_View.contentsY(), 60 * 17 - 200);
    m_View.setContentsPos(-5, -5);
    EXPECT_EQ(m_View.contentsX(), 0);
    EXPECT_EQ(m_View.contentsY(), 0);
}

TEST_F(QCanvasViewTest, PointsAreConvertedBetweenViewportAndContents)
{
    m_View.setContentsPos(40, 25);
    EXPECT_EQ(m_View.viewportToContents({1, 2}), QPoint(41, 27));
    EXPECT_EQ(m_View.contentsToViewport({41, 27}), QPoint(1, 2));
    EXPECT_TRUE(m_View.isInSight({40, 25}));
    EXPECT_TRUE(m_View.isInSight({339, 224}));
    EXPECT_FALSE(m_View.isInSight({39, 25}));
    EXPECT_FALSE(m_View.isInSight({340, 224}));
}

TEST_F(QCanvasViewTest, ScrollPositionSurvivesARebuildOfTheCanvas)
{
    m_View.setContentsPos(120, 340);
    m_Canvas.clear();
    m_Canvas.resize(0, 0);
    m_Canvas.update();
    giveLetters(m_Canvas, 60, 81, 13, 17);
    m_Canvas.update();
    EXPECT_EQ(screen(), repainted());
    EXPECT_EQ(m_View.contentsX(), 120);
    EXPECT_EQ(m_View.contentsY(), 340);
}

TEST_F(QCanvasViewTest, ScrollPositionFollowsACanvasThatGotSmaller)
{
    m_View.setContentsPos(120, 340);
    giveLetters(m_Canvas, 20, 10, 13, 17);
    settle();
    EXPECT_EQ(m_View.contentsX(), 0);
    EXPECT_EQ(m_View.contentsY(), 20 * 17 - 200);
    EXPECT_EQ(screen(), repainted());
}

TEST_F(QCanvasViewTest, ScrollBarsKnowANewSizeWithoutTheEventLoop)
{
    giveLetters(m_Canvas, 100, 200, 13, 17);
    EXPECT_EQ(m_View.horizontalScrollBar()->maximum(), 200 * 13 - 300);
    m_View.setContentsPos(2000, 0);
    EXPECT_EQ(m_View.contentsX(), 2000);
}

TEST_F(QCanvasViewTest, ScrollBarModesAreTheThreeOfOld)
{
    m_View.setVScrollBarMode(QCanvasView::AlwaysOn);
    EXPECT_EQ(m_View.verticalScrollBarPolicy(), Qt::ScrollBarAlwaysOn);
    m_View.setHScrollBarMode(QCanvasView::Auto);
    EXPECT_EQ(m_View.horizontalScrollBarPolicy(), Qt::ScrollBarAsNeeded);
    m_View.setHScrollBarMode(QCanvasView::AlwaysOff);
    EXPECT_EQ(m_View.horizontalScrollBarPolicy(), Qt::ScrollBarAlwaysOff);
}

TEST_F(QCanvasViewTest, AutomaticBarsAppearWhenTheContentsAreLarger)
{
    m_View.setHScrollBarMode(QCanvasView::Auto);
    m_View.setVScrollBarMode(QCanvasView::Auto);
    settle();
    EXPECT_TRUE(m_View.horizontalScrollBar()->isVisible());
    EXPECT_TRUE(m_View.verticalScrollBar()->isVisible());
    giveLetters(m_Canvas, 2, 3, 13, 17);
    settle();
    EXPECT_FALSE(m_View.horizontalScrollBar()->isVisible());
    EXPECT_FALSE(m_View.verticalScrollBar()->isVisible());
    // It fits exactly when there are no bars.
    m_Canvas.resize(300, 200);
    settle();
    EXPECT_FALSE(m_View.horizontalScrollBar()->isVisible());
    EXPECT_FALSE(m_View.verticalScrollBar()->isVisible());
}

TEST_F(QCanvasViewTest, BesideTheCanvasTheBackgroundGoesOn)
{
    giveLetters(m_Canvas, 2, 3, 13, 17);
    m_Canvas.setBackgroundColor(Qt::yellow);
    m_Canvas.update();
    EXPECT_EQ(screen().pixelColor(290, 190), QColor(Qt::yellow));
    EXPECT_EQ(screen(), repainted());
}

TEST_F(QCanvasViewTest, UpdatePaintsWhatChangedSinceTheLastOne)
{
    m_View.m_Drawn.clear();
    m_Canvas.setChanged(QRect(13, 17, 13, 17));
    settle();
    EXPECT_TRUE(m_View.m_Drawn.empty());
    m_Canvas.update();
    settle();
    ASSERT_EQ(m_View.m_Drawn.size(), 1U);
    EXPECT_EQ(m_View.m_Drawn.front(), QRect(13, 17, 13, 17));
    m_View.m_Drawn.clear();
    m_Canvas.update();
    settle();
    EXPECT_TRUE(m_View.m_Drawn.empty());
    m_Canvas.setAllChanged();
    m_Canvas.update();
    settle();
    ASSERT_EQ(m_View.m_Drawn.size(), 1U);
    EXPECT_EQ(m_View.m_Drawn.front(), QRect(0, 0, 300, 200));
}

TEST_F(QCanvasViewTest, ChangesOfItemsArePaintedAfterAnUpdate)
{
    auto *item = new QCanvasRectangle(20, 20, 30, 30, &m_Canvas);
    item->setBrush(QColor(Qt::red));
    item->setZ(1);
    item->show();
    m_Canvas.update();
    EXPECT_EQ(screen().pixelColor(30, 30), QColor(Qt::red));
    item->move(100, 100);
    m_Canvas.update();
    EXPECT_EQ(screen(), repainted());
    item->setSize(5, 5);
    item->setBrush(QColor(Qt::blue));
    m_Canvas.update();
    EXPECT_EQ(screen(), repainted());
    delete item;
    m_Canvas.update();
    EXPECT_EQ(screen(), repainted());
}

TEST_F(QCanvasViewTest, EveryViewOfACanvasFollowsIt)
{
    RecordingView second(&m_Canvas);
    second.resize(300, 200);
    second.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&second));
    settle();
    second.m_Drawn.clear();
    m_View.m_Drawn.clear();
    m_Canvas.setAllChanged();
    m_Canvas.update();
    settle();
    EXPECT_EQ(second.m_Drawn.size(), 1U);
    EXPECT_EQ(m_View.m_Drawn.size(), 1U);
}

TEST_F(QCanvasViewTest, ViewOutlivesItsCanvas)
{
    auto canvas = std::make_unique<QCanvas>(500, 500);
    m_View.setCanvas(canvas.get());
    settle();
    canvas.reset();
    EXPECT_EQ(m_View.canvas(), nullptr);
    EXPECT_TRUE(m_View.itemsAt({1, 1}).isEmpty());
    EXPECT_EQ(screen().pixelColor(5, 5), QColor(Qt::white));
}

TEST_F(QCanvasViewTest, PaintLogTintsAndTimesRepaintsWhenItIsOn)
{
    QLoggingCategory::setFilterRules(QStringLiteral("kalmo.canvas.paint.debug=true"));
    MessageRecorder recorder;
    m_Canvas.setAllChanged();
    m_Canvas.update();
    const QImage tinted = screen();
    QLoggingCategory::setFilterRules(QString());
    ASSERT_EQ(recorder.messages().size(), 1);
    EXPECT_TRUE(recorder.messages().first().contains(QStringLiteral("300 x 200 at (0, 0) in ")));
    EXPECT_TRUE(recorder.messages().first().endsWith(QStringLiteral(" ms")));
    EXPECT_NE(tinted, repainted());
    recorder.clear();
    m_Canvas.setAllChanged();
    m_Canvas.update();
    EXPECT_EQ(screen(), repainted());
    EXPECT_TRUE(recorder.messages().isEmpty());
}

} // namespace QCanvasViewTest
