// SPDX-License-Identifier: GPL-3.0-or-later
// What plug-ins rely on of AlignmentWindow and AlignmentWindowObserver: which windows there are,
// and where their cells are.
#include "AlignmentWindow.h"

#include "AlignmentWindowObserver.h"
#include "contract/FakeAlignmentWindow.h"
#include "support/LogLines.h"

#include <QDockWidget>
#include <QPointer>

#include <gmock/gmock.h>

#include <functional>
#include <memory>
#include <random>
#include <stdexcept>
#include <string>

using TAMBO::AlignmentWindow;
using TAMBO::CellBlock;
using TAMBO::CellIndex;
using TAMBO::WindowArea;
using testing::ElementsAre;
using testing::IsEmpty;

namespace AlignmentWindowContractTest {

class Observer : public TAMBO::AlignmentWindowObserver
{
public:
    void windowOpened(AlignmentWindow &window) override { note("opened", window); }
    void windowGoing(AlignmentWindow &window) override { note("going", window); }
    void windowActivated(AlignmentWindow &window) override { note("activated", window); }

    std::vector<std::string> calls;
    std::function<void(AlignmentWindow &)> reaction;

private:
    void note(const char *what, AlignmentWindow &window)
    {
        calls.emplace_back(what);
        if (reaction)
            reaction(window);
    }
};

TEST(AlignmentWindowContract, WindowsAreListedInTheOrderOfOpening)
{
    EXPECT_THAT(AlignmentWindow::All(), IsEmpty());
    EXPECT_EQ(AlignmentWindow::LastUsed(), nullptr);
    FakeAlignmentWindow first;
    auto second = std::make_unique<FakeAlignmentWindow>();
    FakeAlignmentWindow third;
    EXPECT_THAT(AlignmentWindow::All(), ElementsAre(&first, second.get(), &third));
    second.reset();
    EXPECT_THAT(AlignmentWindow::All(), ElementsAre(&first, &third));
}

TEST(AlignmentWindowContract, TheLastUsedIsTheOneOpenedOrActivatedLast)
{
    FakeAlignmentWindow first;
    EXPECT_EQ(AlignmentWindow::LastUsed(), &first);
    auto second = std::make_unique<FakeAlignmentWindow>();
    auto third = std::make_unique<FakeAlignmentWindow>();
    EXPECT_EQ(AlignmentWindow::LastUsed(), third.get());
    second->activated();
    EXPECT_EQ(AlignmentWindow::LastUsed(), second.get());
    second.reset();
    EXPECT_EQ(AlignmentWindow::LastUsed(), third.get());
    third.reset();
    EXPECT_EQ(AlignmentWindow::LastUsed(), &first);
}

TEST(AlignmentWindowContract, AWindowIsFoundByAnyWidgetOfIt)
{
    const FakeAlignmentWindow first;
    const FakeAlignmentWindow second;
    auto *dock = new QDockWidget;
    auto *inside = new QWidget(dock);
    second.mainWindow()->addDockWidget(Qt::LeftDockWidgetArea, dock);
    dock->setFloating(true);
    EXPECT_EQ(AlignmentWindow::Of(first.mainWindow()), &first);
    EXPECT_EQ(AlignmentWindow::Of(inside), &second);
    const QWidget other;
    EXPECT_EQ(AlignmentWindow::Of(&other), nullptr);
    EXPECT_EQ(AlignmentWindow::Of(nullptr), nullptr);
}

TEST(AlignmentWindowContract, ObserversHearOfOpeningActivatingAndGoing)
{
    Observer observer;
    {
        FakeAlignmentWindow window;
        EXPECT_THAT(observer.calls, ElementsAre("opened"));
        window.activated();
    }
    EXPECT_THAT(observer.calls, ElementsAre("opened", "activated", "going"));
}

TEST(AlignmentWindowContract, AGoingWindowAnswersAndIsListedNoMore)
{
    Observer observer;
    auto window = std::make_unique<FakeAlignmentWindow>();
    const QPointer<AlignmentWindow> guarded(window.get());
    unsigned long rows = 0;
    observer.reaction = [&](AlignmentWindow &going) {
        rows = going.rows();
        EXPECT_THAT(AlignmentWindow::All(), IsEmpty());
    };
    window.reset();
    EXPECT_EQ(rows, 100U);
    EXPECT_TRUE(guarded.isNull());
}

TEST(AlignmentWindowContract, ObserversMayComeAndGoDuringANotification)
{
    auto first = std::make_unique<Observer>();
    auto second = std::make_unique<Observer>();
    std::unique_ptr<Observer> added;
    Observer last;
    first->reaction = [&](AlignmentWindow &) {
        second.reset();
        added = std::make_unique<Observer>();
        first.reset();
    };
    const FakeAlignmentWindow window;
    EXPECT_THAT(last.calls, ElementsAre("opened"));
    EXPECT_THAT(added->calls, IsEmpty());
}

TEST(AlignmentWindowContract, AnObserverThatThrowsIsLoggedAndCalledNoMore)
{
    Observer observer;
    observer.reaction = [](AlignmentWindow &) { throw std::runtime_error("out of ink"); };
    Observer other;
    const LogLines log;
    FakeAlignmentWindow window;
    window.activated();
    EXPECT_THAT(observer.calls, ElementsAre("opened"));
    EXPECT_THAT(other.calls, ElementsAre("opened", "activated"));
    EXPECT_TRUE(log.texts().join('\n').contains("out of ink"));
}

// ---- Where cells are

class Geometry : public testing::Test
{
protected:
    FakeAlignmentWindow window;
};

TEST_F(Geometry, CellsAreWhereTheyAreScrolledTo)
{
    window.m_Scrolled = {15, 30};
    EXPECT_EQ(window.cellRect({0, 0}), QRect(-15, -30, 10, 20));
    EXPECT_EQ(window.cellRect({3, 4}), QRect(25, 30, 10, 20));
    EXPECT_EQ(window.blockRect({3, 5, 4, 7}), QRect(25, 30, 30, 40));
    EXPECT_EQ(window.cellAt({0, 0}), (CellIndex{1, 1}));
    EXPECT_EQ(window.cellAt({-15, -30}), (CellIndex{0, 0}));
    EXPECT_EQ(window.cellAt({-16, -30}), std::nullopt);
    EXPECT_EQ(window.rowAt(9), 1U);
    EXPECT_EQ(window.rowAt(10), 2U);
    EXPECT_EQ(window.columnAt(-16), std::nullopt);
    EXPECT_EQ(window.cellAt({2000 - 15, 0}), std::nullopt) << "right of the last column";
    EXPECT_EQ(window.rowAt(2000 - 30), std::nullopt);
}

TEST_F(Geometry, PanelsShareTheirRowsOrColumnsWithTheCells)
{
    window.m_Scrolled = {15, 30};
    for (const WindowArea area : {WindowArea::Names, WindowArea::Header, WindowArea::Corner})
        window.areaWidget(area)->resize(70, 60);
    const CellBlock block{3, 5, 4, 7};
    EXPECT_EQ(window.blockRect(block, WindowArea::Names), QRect(0, 30, 70, 40));
    EXPECT_EQ(window.blockRect(block, WindowArea::Header), QRect(25, 0, 30, 60));
    EXPECT_EQ(window.blockRect(block, WindowArea::Corner), QRect(0, 0, 70, 60));
    EXPECT_TRUE(window.blockRect({3, 3, 4, 7}, WindowArea::Names).isEmpty());
    EXPECT_EQ(window.cellsIn({0, 30, 1, 1}, WindowArea::Names), (CellBlock{3, 4, 0, 200}));
    EXPECT_EQ(window.cellsIn({25, 0, 1, 1}, WindowArea::Header), (CellBlock{0, 100, 4, 5}));
    EXPECT_EQ(window.cellsIn({0, 0, 1, 1}, WindowArea::Corner), (CellBlock{0, 100, 0, 200}));
}

TEST_F(Geometry, VisibleCellsAreThoseWithAPixelInSight)
{
    EXPECT_EQ(window.visibleCells(), (CellBlock{0, 5, 0, 10}));
    window.m_Scrolled = {10, 20};
    EXPECT_EQ(window.visibleCells(), (CellBlock{1, 6, 1, 11}));
    window.m_Scrolled = {9, 19};
    EXPECT_EQ(window.visibleCells(), (CellBlock{0, 6, 0, 11}));
    window.m_Scrolled = {1990, 1990};
    EXPECT_EQ(window.visibleCells(), (CellBlock{99, 100, 199, 200}));
    window.m_Scrolled = {3000, 0};
    EXPECT_TRUE(window.visibleCells().isEmpty());
    window.m_Rows = 0;
    EXPECT_TRUE(window.visibleCells().isEmpty());
}

TEST_F(Geometry, FarAwayCellsStayWithinWhatPixelsCanCount)
{
    window.m_Scrolled = {1000, 1000};
    const QRect rect = window.cellRect({~0UL, ~0UL});
    EXPECT_GT(rect.left(), 1000000);
    EXPECT_GT(rect.bottom(), rect.top());
    EXPECT_GT(window.blockRect({0, ~0UL, 0, ~0UL}).width(), 1000000);
}

TEST_F(Geometry, ShowingACellScrollsAsLittleAsNeeded)
{
    window.m_Scrolled = {100, 100};
    window.showCell({6, 12});
    EXPECT_EQ(window.m_Scrolled, QPoint(100, 100)) << "it is shown";
    window.showCell({4, 9});
    EXPECT_EQ(window.m_Scrolled, QPoint(90, 80));
    window.showCell({9, 30});
    EXPECT_EQ(window.m_Scrolled, QPoint(310 - 95, 200 - 90));
    window.showCell({9, 200});
    EXPECT_EQ(window.m_Scrolled, QPoint(310 - 95, 200 - 90)) << "there is no such cell";
}

TEST_F(Geometry, ACellLargerThanTheViewShowsItsBeginning)
{
    window.m_Visible = {5, 5};
    window.showCell({2, 3});
    EXPECT_EQ(window.m_Scrolled, QPoint(30, 40));
}

TEST_F(Geometry, ACellIsShownInTheMiddle)
{
    window.showCell({50, 60}, AlignmentWindow::Placement::Centred);
    EXPECT_EQ(window.cellRect({50, 60}).topLeft(), QPoint((95 - 10) / 2, (90 - 20) / 2));
    window.showCell({2, 3}, AlignmentWindow::Placement::Centred);
    EXPECT_EQ(window.cellRect({2, 3}).topLeft(), QPoint((95 - 10) / 2, (90 - 20) / 2));
}

TEST_F(Geometry, TheCellAtTheMiddleOfACellIsThatCell)
{
    std::mt19937 random(7);
    window.m_Rows = window.m_Columns = 1000;
    const auto upTo = [&](int most) { return static_cast<int>(random() % unsigned(most + 1)); };
    for (int round = 0; round < 200; ++round) {
        window.m_Cell = {1 + upTo(60), 1 + upTo(60)};
        window.m_Scrolled = {upTo(500), upTo(500)};
        const CellBlock seen = window.visibleCells();
        ASSERT_FALSE(seen.isEmpty());
        for (unsigned long row = seen.rowBegin; row < seen.rowEnd; ++row) {
            for (unsigned long col = seen.colBegin; col < seen.colEnd; ++col) {
                const QRect rect = window.cellRect({row, col});
                ASSERT_EQ(window.cellAt(rect.center()), (CellIndex{row, col}));
                ASSERT_TRUE(rect.intersects(QRect({}, window.m_Visible)));
                ASSERT_EQ(window.cellsIn(rect), CellBlock::of({row, col}));
            }
        }
    }
}

TEST(CellBlockContract, BlocksAreHalfOpen)
{
    constexpr CellBlock block{1, 3, 2, 5};
    static_assert(block.contains({1, 2}) && block.contains({2, 4}));
    static_assert(!block.contains({3, 2}) && !block.contains({1, 5}) && !block.contains({0, 2}));
    static_assert(CellBlock{}.isEmpty() && CellBlock{2, 2, 0, 5}.isEmpty());
    EXPECT_EQ(block.intersected({2, 9, 0, 3}), (CellBlock{2, 3, 2, 3}));
    EXPECT_EQ(block.intersected({3, 9, 0, 3}), CellBlock{});
    EXPECT_EQ(block.united({2, 9, 0, 3}), (CellBlock{1, 9, 0, 5}));
    EXPECT_EQ(block.united({}), block);
    EXPECT_EQ(CellBlock{}.united(block), block);
}

} // namespace AlignmentWindowContractTest
