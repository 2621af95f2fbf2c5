// SPDX-License-Identifier: GPL-3.0-or-later
// What plug-ins rely on of what they register with an alignment window: overlays, event filters and
// observers.
#include "CellEventFilter.h"
#include "CellOverlay.h"
#include "contract/FakeAlignmentWindow.h"
#include "support/LogLines.h"

#include <QCoreApplication>
#include <QImage>
#include <QKeyEvent>
#include <QMouseEvent>

#include <gmock/gmock.h>

#include <functional>
#include <memory>
#include <stdexcept>
#include <string>

using TAMBO::CellBlock;
using TAMBO::GapDrag;
using TAMBO::WindowArea;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

namespace WindowUsersContractTest {

using Notes = std::vector<std::string>;

// ---- Overlays

class Overlay : public TAMBO::CellOverlay
{
public:
    Overlay(TAMBO::AlignmentWindow &window, Notes &notes, std::string name, int z = 0,
            TAMBO::WindowAreas areas = WindowArea::Cells)
        : CellOverlay(window, areas, z), m_Notes(notes), m_Name(std::move(name))
    { }

    void paint(QPainter &painter, const TAMBO::AlignmentWindow &,
               const TAMBO::OverlayExposure &exposed) override
    {
        m_Notes.push_back(m_Name);
        last = exposed;
        if (act)
            act(painter);
    }

    TAMBO::OverlayExposure last;
    std::function<void(QPainter &)> act;

private:
    Notes &m_Notes;
    std::string m_Name;
};

class Overlays : public testing::Test
{
protected:
    void paint(WindowArea area = WindowArea::Cells, const QRect &rect = {0, 0, 50, 50})
    {
        QPainter painter(&image);
        window.paintOverlays(area, painter, rect);
    }

    Notes notes;
    FakeAlignmentWindow window;
    QImage image{100, 100, QImage::Format_RGB32};
};

TEST_F(Overlays, AreToldWhatIsExposed)
{
    Overlay overlay(window, notes, "a");
    window.m_Scrolled = {5, 10};
    paint(WindowArea::Cells, {20, 30, 15, 25});
    EXPECT_EQ(overlay.last.area, WindowArea::Cells);
    EXPECT_EQ(overlay.last.rect, QRect(20, 30, 15, 25));
    EXPECT_EQ(overlay.last.cells, (CellBlock{2, 4, 2, 4}));
    EXPECT_EQ(overlay.last.cells, window.cellsIn({20, 30, 15, 25}));
}

TEST_F(Overlays, ArePaintedFromTheLowestUp)
{
    const Overlay top(window, notes, "top", 5);
    const Overlay first(window, notes, "first");
    const Overlay second(window, notes, "second");
    const Overlay bottom(window, notes, "bottom", -1);
    paint();
    EXPECT_THAT(notes, ElementsAre("bottom", "first", "second", "top"));
}

TEST_F(Overlays, ArePaintedInTheirAreasAlone)
{
    const Overlay names(window, notes, "names", 0, WindowArea::Names | WindowArea::Corner);
    paint();
    EXPECT_THAT(notes, IsEmpty());
    paint(WindowArea::Names);
    paint(WindowArea::Corner);
    EXPECT_THAT(notes, ElementsAre("names", "names"));
    EXPECT_TRUE(window.hasOverlays(WindowArea::Names));
    EXPECT_FALSE(window.hasOverlays(WindowArea::Cells));
}

TEST_F(Overlays, PaintOnNothingButWhatIsExposed)
{
    Overlay overlay(window, notes, "a");
    overlay.act = [](QPainter &painter) { painter.fillRect(0, 0, 100, 100, Qt::red); };
    image.fill(Qt::white);
    paint(WindowArea::Cells, {10, 10, 5, 5});
    QImage wanted(image.size(), image.format());
    wanted.fill(Qt::white);
    QPainter(&wanted).fillRect(10, 10, 5, 5, Qt::red);
    EXPECT_EQ(image, wanted);
}

TEST_F(Overlays, LeaveThePainterToTheNextAsItWas)
{
    Overlay first(window, notes, "first");
    Overlay second(window, notes, "second");
    first.act = [](QPainter &painter) {
        painter.translate(20, 0);
        painter.setPen(Qt::red);
    };
    QPen pen;
    QTransform transform;
    second.act = [&](QPainter &painter) {
        pen = painter.pen();
        transform = painter.transform();
    };
    paint();
    EXPECT_EQ(pen.color(), Qt::black);
    EXPECT_TRUE(transform.isIdentity());
}

TEST_F(Overlays, OneThatThrowsIsLoggedAndPaintedNoMore)
{
    Overlay bad(window, notes, "bad");
    bad.act = [](QPainter &painter) {
        painter.setOpacity(0.5);
        throw std::runtime_error("out of ink");
    };
    Overlay good(window, notes, "good");
    double opacity = 0;
    good.act = [&](QPainter &painter) { opacity = painter.opacity(); };
    const LogLines log;
    paint();
    paint();
    EXPECT_THAT(notes, ElementsAre("bad", "good", "good"));
    EXPECT_EQ(opacity, 1.0);
    EXPECT_EQ(log.texts().filter("out of ink").size(), 1);
}

TEST_F(Overlays, AskForTheirCellsInTheirAreas)
{
    window.areaWidget(WindowArea::Header)->resize(300, 40);
    const Overlay overlay(window, notes, "a", 0, WindowArea::Cells | WindowArea::Header);
    EXPECT_THAT(window.m_Repainted, IsEmpty()) << "nothing is painted at first";
    overlay.repaint({1, 2, 3, 5});
    EXPECT_THAT(window.m_Repainted, ElementsAre(Pair(WindowArea::Cells, QRect(30, 20, 20, 20)),
                                                Pair(WindowArea::Header, QRect(30, 0, 20, 40))));
    window.m_Repainted.clear();
    overlay.repaint({});
    EXPECT_THAT(window.m_Repainted, IsEmpty());
    overlay.repaint({1, 2, 3, 5}, 2);
    EXPECT_EQ(window.m_Repainted.front().second, QRect(28, 18, 24, 24));
}

TEST_F(Overlays, LeaveNothingBehindWhenTheyGo)
{
    window.areaWidget(WindowArea::Names)->resize(70, 60);
    auto overlay = std::make_unique<Overlay>(window, notes, "a", 0, WindowArea::Names);
    EXPECT_EQ(window.m_UsersChanged, 1);
    overlay.reset();
    EXPECT_EQ(window.m_UsersChanged, 2);
    EXPECT_THAT(window.m_Repainted, ElementsAre(Pair(WindowArea::Names, QRect(0, 0, 70, 60))));
    paint(WindowArea::Names);
    EXPECT_THAT(notes, IsEmpty());
}

// ---- Event filters

class Filter : public TAMBO::CellEventFilter
{
public:
    Filter(TAMBO::AlignmentWindow &window, Notes &notes, std::string name, int order = 0,
           TAMBO::WindowAreas areas = WindowArea::Cells)
        : CellEventFilter(window, areas, order), m_Notes(notes), m_Name(std::move(name))
    { }

    bool handle(TAMBO::AlignmentWindow &, WindowArea, QEvent &event) override
    {
        m_Notes.push_back(m_Name);
        // By value: it may go while it is asked.
        const auto answer = this->answer;
        return answer && answer(event);
    }

    std::function<bool(QEvent &)> answer;

private:
    Notes &m_Notes;
    std::string m_Name;
};

class Filters : public testing::Test
{
protected:
    static bool take(QEvent &) { return true; }
    [[nodiscard]] bool mouse(QEvent::Type type, Qt::MouseButton button, Qt::MouseButtons held,
                             WindowArea area = WindowArea::Cells)
    {
        QMouseEvent event(type, {1, 1}, {1, 1}, button, held, {});
        return window->offer(area, event);
    }
    [[nodiscard]] bool press(Qt::MouseButton button = Qt::LeftButton)
    {
        return mouse(QEvent::MouseButtonPress, button, button);
    }
    [[nodiscard]] bool release(Qt::MouseButton button = Qt::LeftButton)
    {
        return mouse(QEvent::MouseButtonRelease, button, Qt::NoButton);
    }
    [[nodiscard]] bool move(Qt::MouseButtons held)
    {
        return mouse(QEvent::MouseMove, Qt::NoButton, held);
    }
    [[nodiscard]] bool key()
    {
        QKeyEvent event(QEvent::KeyPress, Qt::Key_A, {});
        return window->offer(WindowArea::Cells, event);
    }
    Notes taken() { return std::exchange(notes, {}); }

    Notes notes;
    std::unique_ptr<FakeAlignmentWindow> window = std::make_unique<FakeAlignmentWindow>();
};

TEST_F(Filters, AreAskedInTheirOrderUntilOneTakesTheEvent)
{
    const Filter last(*window, notes, "last", 3);
    const Filter older(*window, notes, "older");
    Filter newer(*window, notes, "newer");
    const Filter first(*window, notes, "first", -3);
    EXPECT_FALSE(key());
    EXPECT_THAT(taken(), ElementsAre("first", "newer", "older", "last"));
    newer.answer = take;
    EXPECT_TRUE(key());
    EXPECT_THAT(taken(), ElementsAre("first", "newer"));
}

TEST_F(Filters, AreAskedInTheirAreasAlone)
{
    Filter filter(*window, notes, "a", 0, WindowArea::Names);
    filter.answer = take;
    EXPECT_FALSE(press());
    EXPECT_TRUE(mouse(QEvent::MouseButtonPress, Qt::LeftButton, Qt::LeftButton, WindowArea::Names));
    EXPECT_TRUE(window->hasFilters(WindowArea::Names));
    EXPECT_FALSE(window->hasFilters(WindowArea::Cells));
}

TEST_F(Filters, WhoTakesAPressGetsTheMouseAloneUntilItIsReleased)
{
    Filter front(*window, notes, "front");
    Filter back(*window, notes, "back", 1);
    bool takes = true;
    back.answer = [&](QEvent &) { return takes; };
    EXPECT_TRUE(press());
    EXPECT_THAT(taken(), ElementsAre("front", "back"));
    takes = false;
    EXPECT_TRUE(move(Qt::LeftButton));
    EXPECT_TRUE(release());
    EXPECT_THAT(taken(), ElementsAre("back", "back"));
    EXPECT_FALSE(move(Qt::NoButton));
    EXPECT_THAT(taken(), ElementsAre("front", "back"));
}

TEST_F(Filters, TheWindowGetsTheReleaseOfItsOwnPress)
{
    Filter filter(*window, notes, "a");
    EXPECT_FALSE(press());
    filter.answer = take;
    EXPECT_TRUE(move(Qt::LeftButton));
    EXPECT_FALSE(release());
}

TEST_F(Filters, ASecondButtonThatIsTakenLeavesTheWindowItsOwn)
{
    Filter filter(*window, notes, "a");
    EXPECT_FALSE(press());
    filter.answer = take;
    EXPECT_TRUE(mouse(QEvent::MouseButtonPress, Qt::RightButton, Qt::LeftButton | Qt::RightButton));
    EXPECT_FALSE(mouse(QEvent::MouseButtonRelease, Qt::LeftButton, Qt::RightButton));
    EXPECT_TRUE(release(Qt::RightButton));
}

TEST_F(Filters, AReleaseThatGotLostEndsTheHold)
{
    Filter filter(*window, notes, "a");
    filter.answer = take;
    EXPECT_TRUE(press());
    filter.answer = nullptr;
    EXPECT_FALSE(move(Qt::NoButton));
    EXPECT_FALSE(press());
    EXPECT_FALSE(release());
}

TEST_F(Filters, ThePressOfAFilterThatHasGoneStaysTaken)
{
    auto filter = std::make_unique<Filter>(*window, notes, "a");
    filter->answer = take;
    EXPECT_TRUE(press());
    filter.reset();
    EXPECT_TRUE(move(Qt::LeftButton));
    EXPECT_TRUE(release());
    EXPECT_FALSE(press());
}

TEST_F(Filters, EnteringAndLeavingIsNobodys)
{
    Filter front(*window, notes, "front");
    const Filter back(*window, notes, "back", 1);
    front.answer = take;
    QEvent leave(QEvent::Leave);
    EXPECT_FALSE(window->offer(WindowArea::Cells, leave));
    EXPECT_THAT(notes, ElementsAre("front", "back"));
}

TEST_F(Filters, OneThatThrowsIsLoggedAndAskedNoMore)
{
    Filter filter(*window, notes, "a");
    filter.answer = [](QEvent &) -> bool { throw std::runtime_error("no hands"); };
    const LogLines log;
    EXPECT_FALSE(key());
    EXPECT_FALSE(key());
    EXPECT_THAT(notes, ElementsAre("a"));
    EXPECT_EQ(log.texts().filter("no hands").size(), 1);
}

TEST_F(Filters, MayComeAndGoWhileTheyAreAsked)
{
    auto front = std::make_unique<Filter>(*window, notes, "front");
    auto middle = std::make_unique<Filter>(*window, notes, "middle", 1);
    const Filter back(*window, notes, "back", 2);
    front->answer = [&](QEvent &) {
        middle.reset();
        front.reset();
        return false;
    };
    EXPECT_FALSE(key());
    EXPECT_THAT(notes, ElementsAre("front", "back"));
}

TEST_F(Filters, MayCloseTheWindow)
{
    Filter front(*window, notes, "front");
    const Filter back(*window, notes, "back", 2);
    front.answer = [&](QEvent &) {
        window.reset();
        return true;
    };
    EXPECT_TRUE(press());
    EXPECT_EQ(front.window(), nullptr);
    EXPECT_EQ(back.window(), nullptr);
    EXPECT_THAT(notes, ElementsAre("front"));
}

// ---- Observers

class Observer : public TAMBO::AlignmentViewObserver
{
public:
    Observer(TAMBO::AlignmentWindow &window, Notes &notes)
        : AlignmentViewObserver(window), m_Notes(notes)
    { }

    void alignmentShown() override { note("shown"); }
    void layoutRebuilt() override { note("rebuilt"); }
    void cellSizeChanged() override { note("cells"); }
    void visibleSizeChanged() override { note("size"); }
    void scrolled() override { note("scrolled"); }
    void gapDragBegan(const GapDrag &drag) override { note("began", drag); }
    void gapDragMoved(const GapDrag &drag) override { note("moved", drag); }
    void gapDragEnded(const GapDrag &drag) override { note("ended", drag); }

    std::function<void()> act;

private:
    void note(const char *what)
    {
        m_Notes.emplace_back(what);
        if (act)
            act();
    }
    void note(const std::string &what, const GapDrag &drag)
    {
        m_Notes.push_back(what + " " + (drag.column ? std::to_string(*drag.column) : "nowhere"));
    }

    Notes &m_Notes;
};

class Observers : public Filters
{
protected:
    Notes told()
    {
        QCoreApplication::processEvents();
        return taken();
    }
};

TEST_F(Observers, HearOfEachChangeOnceAndInOrder)
{
    const Observer observer(*window, notes);
    for (int i = 0; i < 3; ++i) {
        window->hasChanged(FakeAlignmentWindow::ScrollPosition);
        window->hasChanged(FakeAlignmentWindow::CellSize);
        window->hasChanged(FakeAlignmentWindow::Rebuilt);
        window->hasChanged(FakeAlignmentWindow::VisibleSize);
    }
    EXPECT_THAT(notes, IsEmpty());
    EXPECT_THAT(told(), ElementsAre("rebuilt", "cells", "size", "scrolled"));
    window->hasChanged(FakeAlignmentWindow::ScrollPosition);
    EXPECT_THAT(told(), ElementsAre("scrolled"));
    EXPECT_THAT(told(), IsEmpty());
}

TEST_F(Observers, HearOfAnotherAlignmentAndOfDragsAtOnce)
{
    const Observer observer(*window, notes);
    window->tellAlignmentShown();
    window->tellGapDragBegan({{1, 2}, Qt::LeftButton, 2});
    window->tellGapDragMoved({{1, 2}, Qt::LeftButton, std::nullopt});
    window->tellGapDragEnded({{1, 2}, Qt::LeftButton, 5});
    EXPECT_THAT(notes, ElementsAre("shown", "began 2", "moved nowhere", "ended 5"));
}

TEST_F(Observers, MayEndTheWindowInANotification)
{
    Observer observer(*window, notes);
    const Observer other(*window, notes);
    observer.act = [&] { window.reset(); };
    window->hasChanged(FakeAlignmentWindow::ScrollPosition);
    window->hasChanged(FakeAlignmentWindow::CellSize);
    EXPECT_THAT(told(), ElementsAre("cells"));
    EXPECT_EQ(observer.window(), nullptr);
    EXPECT_EQ(other.window(), nullptr);
}

TEST_F(Observers, NewsOfAWindowThatHasGoneIsNotTold)
{
    const Observer observer(*window, notes);
    window->hasChanged(FakeAlignmentWindow::ScrollPosition);
    window.reset();
    EXPECT_THAT(told(), IsEmpty());
}

// ---- Either side may go first

TEST_F(Observers, WhatIsRegisteredMayGoAfterItsWindow)
{
    auto overlay = std::make_unique<Overlay>(*window, notes, "overlay");
    auto filter = std::make_unique<Filter>(*window, notes, "filter");
    auto observer = std::make_unique<Observer>(*window, notes);
    auto failed = std::make_unique<Overlay>(*window, notes, "failed");
    failed->act = [](QPainter &) { throw std::runtime_error("out of ink"); };
    {
        QImage image(10, 10, QImage::Format_RGB32);
        QPainter painter(&image);
        window->paintOverlays(WindowArea::Cells, painter, image.rect());
    }
    window.reset();
    EXPECT_EQ(overlay->window(), nullptr);
    EXPECT_EQ(filter->window(), nullptr);
    EXPECT_EQ(observer->window(), nullptr);
    EXPECT_EQ(failed->window(), nullptr);
    overlay->repaint({0, 1, 0, 1});
}

} // namespace WindowUsersContractTest
