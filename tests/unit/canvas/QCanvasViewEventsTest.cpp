// SPDX-License-Identifier: GPL-3.0-or-later
// What a view does with the mouse, the wheel and the keys.
#include "QCanvasView.h"

#include "DragScroller.h"
#include "LetterLattice.h"
#include "support/ExpectMessage.h"

#include <QContextMenuEvent>
#include <QHelpEvent>
#include <QMainWindow>
#include <QMouseEvent>
#include <QTest>
#include <QToolTip>
#include <QWheelEvent>

#include <gtest/gtest.h>

#include <vector>

namespace QCanvasViewEventsTest {

struct Event
{
    QEvent::Type type;
    QPoint at;
    Qt::MouseButton button;

    friend bool operator==(const Event &, const Event &) = default;
};

class EventView : public QCanvasView
{
public:
    using QCanvasView::QCanvasView;
    using QCanvasView::setDragging;

    std::vector<Event> m_Events;

protected:
    void contentsMousePressEvent(QMouseEvent *event) override { note(*event); }
    void contentsMouseReleaseEvent(QMouseEvent *event) override { note(*event); }
    void contentsMouseMoveEvent(QMouseEvent *event) override { note(*event); }

private:
    void note(const QMouseEvent &event)
    {
        m_Events.push_back({event.type(), event.pos(), event.button()});
    }
};

class QCanvasViewEvents : public ::testing::Test
{
protected:
    void SetUp() override
    {
        giveLetters(m_Canvas, 60, 80, 13, 17);
        prepare(m_View);
    }
    static void prepare(EventView &view)
    {
        view.setHScrollBarMode(QCanvasView::AlwaysOff);
        view.setVScrollBarMode(QCanvasView::AlwaysOff);
        view.resize(300, 200);
        view.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&view));
    }
    static void wheel(QCanvasView &view, int angle, Qt::KeyboardModifiers keys)
    {
        QWheelEvent event(QPointF(10, 10), view.mapToGlobal(QPointF(10, 10)), QPoint(),
                          QPoint(0, angle), Qt::NoButton, keys, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(view.viewport(), &event);
    }
    static void drag(QCanvasView &view, const QPoint &to)
    {
        QMouseEvent event(QEvent::MouseMove, to, view.viewport()->mapToGlobal(to), Qt::NoButton,
                          Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(view.viewport(), &event);
    }

    QCanvas m_Canvas;
    EventView m_View{&m_Canvas};
};

TEST_F(QCanvasViewEvents, MouseEventsCarryContentsCoordinates)
{
    m_View.setContentsPos(40, 25);
    QTest::mousePress(m_View.viewport(), Qt::MiddleButton, {}, QPoint(10, 20));
    drag(m_View, QPoint(11, 22));
    QTest::mouseRelease(m_View.viewport(), Qt::LeftButton, {}, QPoint(12, 24));
    const std::vector<Event> expected{{QEvent::MouseButtonPress, {50, 45}, Qt::MiddleButton},
                                      {QEvent::MouseMove, {51, 47}, Qt::NoButton},
                                      {QEvent::MouseButtonRelease, {52, 49}, Qt::LeftButton}};
    EXPECT_EQ(m_View.m_Events, expected);
}

TEST_F(QCanvasViewEvents, PointerBetweenPixelsBelongsToThePixelItIsIn)
{
    const QPointF at(12.8, 16.9);
    QMouseEvent event(QEvent::MouseButtonPress, at, m_View.viewport()->mapToGlobal(at),
                      Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(m_View.viewport(), &event);
    ASSERT_EQ(m_View.m_Events.size(), 1U);
    EXPECT_EQ(m_View.m_Events.front().at, QPoint(12, 16));
}

TEST_F(QCanvasViewEvents, SecondClickOfADoubleClickIsAPress)
{
    QMouseEvent event(QEvent::MouseButtonDblClick, QPointF(10, 20),
                      m_View.viewport()->mapToGlobal(QPointF(10, 20)), Qt::MiddleButton,
                      Qt::MiddleButton, Qt::NoModifier);
    m_View.setContentsPos(40, 25);
    QCoreApplication::sendEvent(m_View.viewport(), &event);
    const std::vector<Event> expected{{QEvent::MouseButtonDblClick, {50, 45}, Qt::MiddleButton}};
    EXPECT_EQ(m_View.m_Events, expected);
}

TEST_F(QCanvasViewEvents, RightButtonDoesNotBringUpTheWindowsMenu)
{
    QContextMenuEvent event(QContextMenuEvent::Mouse, QPoint(5, 5),
                            m_View.viewport()->mapToGlobal(QPoint(5, 5)));
    event.ignore();
    QCoreApplication::sendEvent(m_View.viewport(), &event);
    EXPECT_TRUE(event.isAccepted());
}

TEST_F(QCanvasViewEvents, WheelScrollsDownAndWithShiftSideways)
{
    wheel(m_View, -120, {});
    EXPECT_GT(m_View.contentsY(), 0);
    EXPECT_EQ(m_View.contentsX(), 0);
    const int down = m_View.contentsY();
    wheel(m_View, -120, Qt::ShiftModifier);
    EXPECT_GT(m_View.contentsX(), 0);
    EXPECT_EQ(m_View.contentsY(), down);
}

TEST_F(QCanvasViewEvents, WheelScrollsWholeCells)
{
    wheel(m_View, -120, {});
    EXPECT_EQ(m_View.contentsY() % 17, 0);
    wheel(m_View, -120, Qt::ShiftModifier);
    EXPECT_EQ(m_View.contentsX() % 13, 0);
}

TEST_F(QCanvasViewEvents, KeysGoToTheEndsOfTheContents)
{
    QTest::keyClick(&m_View, Qt::Key_End);
    EXPECT_EQ(m_View.contentsX(), 80 * 13 - 300);
    EXPECT_EQ(m_View.contentsY(), 0);
    QTest::keyClick(&m_View, Qt::Key_End, Qt::ControlModifier);
    EXPECT_EQ(m_View.contentsY(), 60 * 17 - 200);
    QTest::keyClick(&m_View, Qt::Key_Home);
    EXPECT_EQ(m_View.contentsX(), 0);
    EXPECT_EQ(m_View.contentsY(), 60 * 17 - 200);
    QTest::keyClick(&m_View, Qt::Key_Home, Qt::ControlModifier);
    EXPECT_EQ(m_View.contentsY(), 0);
    QTest::keyClick(&m_View, Qt::Key_PageDown);
    EXPECT_EQ(m_View.contentsY(), 200);
}

TEST_F(QCanvasViewEvents, FollowerHandsWheelAndKeysToItsLeader)
{
    QCanvas names(100, 60 * 17);
    EventView follower(&names);
    prepare(follower);
    follower.setLeader(&m_View);
    wheel(follower, -120, {});
    EXPECT_EQ(follower.contentsY(), 0);
    EXPECT_GT(m_View.contentsY(), 0);
    QTest::keyClick(&follower, Qt::Key_End);
    EXPECT_EQ(m_View.contentsX(), 80 * 13 - 300);
}

TEST_F(QCanvasViewEvents, ToolTipComesFromTheContentsUnderThePointer)
{
    QPoint asked;
    m_View.setToolTips([&asked](const QPoint &point) {
        asked = point;
        return QStringLiteral("what is here");
    });
    m_View.setContentsPos(40, 25);
    // The offscreen platform has something to say about raising the tip.
    const MessageRecorder recorder;
    QHelpEvent event(QEvent::ToolTip, QPoint(10, 20),
                     m_View.viewport()->mapToGlobal(QPoint(10, 20)));
    QCoreApplication::sendEvent(m_View.viewport(), &event);
    EXPECT_EQ(asked, QPoint(50, 45));
    EXPECT_EQ(QToolTip::text(), QStringLiteral("what is here"));
    QToolTip::hideText();
}

TEST_F(QCanvasViewEvents, DragShowsInThePointer)
{
    const Qt::CursorShape before = m_View.viewport()->cursor().shape();
    m_View.setDragging(true);
    EXPECT_EQ(m_View.viewport()->cursor().shape(), Qt::ClosedHandCursor);
    m_View.setDragging(false);
    EXPECT_EQ(m_View.viewport()->cursor().shape(), before);
}

TEST_F(QCanvasViewEvents, DragBeyondTheEdgeScrollsUntilItComesBack)
{
    m_View.setDragging(true);
    drag(m_View, QPoint(150, 100));
    drag(m_View, QPoint(340, 240));
    ASSERT_TRUE(
        QTest::qWaitFor([&] { return m_View.contentsX() > 60 && m_View.contentsY() > 60; }));
    drag(m_View, QPoint(150, 100));
    const QPoint stopped(m_View.contentsX(), m_View.contentsY());
    drag(m_View, QPoint(150, -40));
    ASSERT_TRUE(QTest::qWaitFor([&] { return m_View.contentsY() == 0; }));
    EXPECT_EQ(m_View.contentsX(), stopped.x());
    m_View.setDragging(false);
}

DragScroller scrollerOf(QCanvasView &view)
{
    return DragScroller(
        [&view] {
            return DragScroller::Extent{{view.visibleWidth(), view.visibleHeight()},
                                        {view.contentsWidth(), view.contentsHeight()}};
        },
        [&view](const QPoint &step) {
            view.setContentsPos(view.contentsX() + step.x(), view.contentsY() + step.y());
        });
}

TEST_F(QCanvasViewEvents, DragThatBeginsCloseToTheEdgeDoesNotRunOff)
{
    DragScroller scroller = scrollerOf(m_View);
    scroller.start();
    scroller.pointerAt({298, 100});
    EXPECT_FALSE(scroller.isScrolling());
    // Once it has been away from the edge, coming back to it scrolls.
    scroller.pointerAt({100, 100});
    EXPECT_FALSE(scroller.isScrolling());
    scroller.pointerAt({298, 100});
    EXPECT_TRUE(scroller.isScrolling());
    EXPECT_TRUE(QTest::qWaitFor([&] { return m_View.contentsX() > 0; }));
    scroller.stop();
    EXPECT_FALSE(scroller.isScrolling());
}

TEST_F(QCanvasViewEvents, WithoutADragTheEdgeDoesNotScroll)
{
    DragScroller scroller = scrollerOf(m_View);
    scroller.pointerAt({150, 100});
    scroller.pointerAt({340, 240});
    EXPECT_FALSE(scroller.isScrolling());
    scroller.start();
    scroller.pointerAt({340, 240});
    EXPECT_TRUE(scroller.isScrolling());
    scroller.stop();
    scroller.pointerAt({340, 240});
    EXPECT_FALSE(scroller.isScrolling());
}

TEST_F(QCanvasViewEvents, FollowersDragScrollsTheLeaderWhereTheFollowerIsLarger)
{
    QCanvas names(100, 60 * 17);
    EventView follower(&names);
    prepare(follower);
    follower.setLeader(&m_View);
    QObject::connect(&m_View, &QCanvasView::contentsMoving,
                     [&follower](int, int y) { follower.setContentsPos(0, y); });
    follower.setDragging(true);
    drag(follower, QPoint(50, 100));
    drag(follower, QPoint(400, 260));
    ASSERT_TRUE(QTest::qWaitFor([&] { return m_View.contentsY() > 60; }));
    EXPECT_EQ(m_View.contentsX(), 0);
    EXPECT_EQ(follower.contentsY(), m_View.contentsY());
    follower.setDragging(false);
}

} // namespace QCanvasViewEventsTest
