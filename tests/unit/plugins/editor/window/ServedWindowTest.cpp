// SPDX-License-Identifier: GPL-3.0-or-later
// Editor windows as other plug-ins see them: which there are, what they show, where their cells
// are.
#include "AlignmentWindowFixture.h"

#include "AlignmentViewObserver.h"
#include "AlignmentWindowObserver.h"
#include "ResidueItem.h"

#include <QPointer>

#include <gmock/gmock.h>

#include <random>

using TAMBO::AlignmentWindow;
using TAMBO::CellBlock;
using TAMBO::CellIndex;
using TAMBO::WindowArea;
using testing::ElementsAre;
using testing::IsEmpty;

namespace ServedWindowTest {

class Observer : public TAMBO::AlignmentViewObserver
{
public:
    using AlignmentViewObserver::AlignmentViewObserver;

    void alignmentShown() override { notes.emplace_back("shown"); }
    void layoutRebuilt() override { notes.emplace_back("rebuilt"); }
    void cellSizeChanged() override { notes.emplace_back("cells"); }
    void visibleSizeChanged() override { notes.emplace_back("size"); }
    void scrolled() override { notes.emplace_back("scrolled"); }

    std::vector<std::string> told()
    {
        QCoreApplication::processEvents();
        return std::exchange(notes, {});
    }
    std::vector<std::string> notes;
};

class ServedWindow : public AlignmentWindowFixture
{
};

TEST_F(ServedWindow, EveryOpenEditorWindowIsThere)
{
    EXPECT_THAT(AlignmentWindow::All(), IsEmpty());
    ZEP::KALMO2 &first = open();
    const WindowParts parts(first);
    ZEP::KALMO2 &second = open();
    EXPECT_THAT(AlignmentWindow::All(), ElementsAre(&served(first), &served(second)));
    EXPECT_EQ(served(first).mainWindow(), &first);
    EXPECT_EQ(AlignmentWindow::Of(parts.view->viewport()), &served(first));
    EXPECT_EQ(AlignmentWindow::LastUsed(), &served(second));
    QEvent activation(QEvent::WindowActivate);
    QCoreApplication::sendEvent(&first, &activation);
    EXPECT_EQ(AlignmentWindow::LastUsed(), &served(first));
    closeWindows();
    EXPECT_THAT(AlignmentWindow::All(), IsEmpty());
}

TEST_F(ServedWindow, AWindowIsCompleteWhenItOpensAndWhenItGoes)
{
    struct Watcher : TAMBO::AlignmentWindowObserver
    {
        void windowOpened(AlignmentWindow &window) override
        {
            EXPECT_EQ(window.alignment(), nullptr);
            EXPECT_FALSE(window.cellSize().isEmpty());
            EXPECT_FALSE(window.mainWindow()->isVisible());
            window.mainWindow()->addToolBar("more");
            calls.emplace_back("opened");
        }
        void windowGoing(AlignmentWindow &window) override
        {
            EXPECT_EQ(window.rows(), 2U);
            EXPECT_EQ(window.alignment()->width(), 3U);
            calls.emplace_back("going");
        }
        std::vector<std::string> calls;
    } watcher;
    const QPointer<AlignmentWindow> guarded(&served(open(alignment({"ACD", "A-D"}))));
    closeWindows();
    EXPECT_THAT(watcher.calls, ElementsAre("opened", "going"));
    EXPECT_TRUE(guarded.isNull());
}

TEST_F(ServedWindow, AnotherAlignmentIsToldAtOnce)
{
    TAMBO::Alignment &one = alignment({"ACD"});
    TAMBO::Alignment &other = alignment({"ACD", "EFG"});
    ZEP::KALMO2 &window = open();
    AlignmentWindow &seen = served(window);
    Observer observer(seen);
    const MessageRecorder quiet;
    window.Populate(&one);
    EXPECT_THAT(observer.notes, ElementsAre("shown"));
    EXPECT_EQ(seen.alignment(), &one);
    EXPECT_THAT(observer.told(), ElementsAre("shown", "rebuilt"));
    window.Populate(&one);
    EXPECT_THAT(observer.told(), ElementsAre("rebuilt"));
    window.Populate(&other);
    EXPECT_EQ(seen.rows(), 2U);
    EXPECT_THAT(observer.told(), ElementsAre("shown", "rebuilt"));
    window.Clear();
    EXPECT_THAT(observer.notes, ElementsAre("shown"));
    EXPECT_EQ(seen.alignment(), nullptr);
    EXPECT_EQ(seen.rows(), 0U);
    EXPECT_EQ(seen.columns(), 0U);
    EXPECT_TRUE(seen.visibleCells().isEmpty());
    window.Clear();
    window.Populate(nullptr);
    EXPECT_THAT(observer.told(), ElementsAre("shown"));
}

TEST_F(ServedWindow, AnEditIsARebuild)
{
    TAMBO::Alignment &shown = alignment({"ACD", "A-D"});
    ZEP::KALMO2 &window = open(shown);
    Observer observer(served(window));
    (void)observer.told();
    const MessageRecorder quiet;
    {
        const DataPoint<TAMBO::Alignment> guard(nullptr, &shown);
        shown.insertGapCol(1, 1);
    }
    EXPECT_THAT(observer.told(), ElementsAre("rebuilt"));
    EXPECT_EQ(served(window).columns(), 4U);
}

TEST_F(ServedWindow, CellsAreWhereTheCanvasHasThem)
{
    for (const char *font : {"DejaVu Sans Mono, 7", "DejaVu Sans, 11", "DejaVu Sans Mono, 26"}) {
        SCOPED_TRACE(font);
        setSettings(QByteArray("[KALMO2]\nFont = ") + font + '\n');
        ZEP::KALMO2 &window = show(large(), {700, 400});
        const WindowParts parts(window);
        AlignmentWindow &seen = served(window);
        for (const QPoint &place : {QPoint(0, 0), QPoint(37, 53), QPoint(100000, 100000)}) {
            seen.scrollTo(place);
            EXPECT_EQ(seen.scrollPosition(),
                      QPoint(parts.view->contentsX(), parts.view->contentsY()));
            EXPECT_EQ(parts.header->contentsX(), parts.view->contentsX());
            EXPECT_EQ(parts.names->contentsY(), parts.view->contentsY());
            EXPECT_EQ(seen.visibleSize(), parts.view->viewport()->size());
            const CellBlock cells = seen.visibleCells();
            ASSERT_FALSE(cells.isEmpty());
            for (unsigned long row = cells.rowBegin; row < cells.rowEnd; row += 3) {
                for (unsigned long col = cells.colBegin; col < cells.colEnd; col += 5) {
                    const QRect rect = seen.cellRect({row, col});
                    const QCanvasItemList items =
                        parts.view->itemsAt(parts.view->viewportToContents(rect.center()));
                    ASSERT_EQ(items.size(), 1);
                    const auto *item = static_cast<const ResidueItem *>(items.front());
                    EXPECT_EQ(item->getRow(), row);
                    EXPECT_EQ(item->getCol(), col);
                    EXPECT_EQ(item->rect().topLeft(),
                              parts.view->viewportToContents(rect.topLeft()));
                    EXPECT_EQ(item->rect().size(), seen.cellSize());
                }
            }
        }
        closeWindows();
    }
}

TEST_F(ServedWindow, TheCellAtTheMiddleOfACellIsThatCellAtEverySize)
{
    ZEP::KALMO2 &window = show(large(), {500, 300});
    const WindowParts parts(window);
    AlignmentWindow &seen = served(window);
    std::mt19937 random(11);
    const auto upTo = [&](int most) { return static_cast<int>(random() % unsigned(most + 1)); };
    for (int round = 0; round < 40; ++round) {
        seen.setCellSize({1 + upTo(40), 1 + upTo(40)}, {upTo(300), upTo(200)});
        seen.scrollTo({upTo(4000), upTo(2000)});
        const CellBlock cells = seen.visibleCells();
        ASSERT_FALSE(cells.isEmpty());
        for (unsigned long row = cells.rowBegin; row < cells.rowEnd; ++row) {
            for (unsigned long col = cells.colBegin; col < cells.colEnd; ++col) {
                const QRect rect = seen.cellRect({row, col});
                ASSERT_EQ(seen.cellAt(rect.center()), (CellIndex{row, col}));
                ASSERT_EQ(
                    parts.cells->lattice().cellAt(parts.view->viewportToContents(rect.center())),
                    (Cell{row, col}));
            }
        }
    }
}

TEST_F(ServedWindow, ScrollingIsToldWhenItIsOver)
{
    ZEP::KALMO2 &window = show(large(), {500, 300});
    AlignmentWindow &seen = served(window);
    Observer observer(seen);
    (void)observer.told();
    seen.scrollBy({30, 40});
    WindowParts(window).view->horizontalScrollBar()->setValue(77);
    EXPECT_THAT(observer.notes, IsEmpty());
    EXPECT_EQ(seen.scrollPosition(), QPoint(77, 40));
    EXPECT_THAT(observer.told(), ElementsAre("scrolled"));
    window.resize(520, 330);
    EXPECT_THAT(observer.told(), ElementsAre("size"));
}

TEST_F(ServedWindow, ACellIsScrolledIntoSight)
{
    ZEP::KALMO2 &window = show(large(), {500, 300});
    AlignmentWindow &seen = served(window);
    const QRect view(QPoint(), seen.visibleSize());
    seen.showCell({100, 300});
    EXPECT_TRUE(view.contains(seen.cellRect({100, 300})));
    EXPECT_EQ(seen.cellRect({100, 300}).bottomRight(), view.bottomRight());
    seen.showCell({50, 100}, AlignmentWindow::Placement::Centred);
    const QSize beside = view.size() - seen.cellSize();
    EXPECT_EQ(seen.cellRect({50, 100}).topLeft(), QPoint(beside.width() / 2, beside.height() / 2));
    seen.showCell({0, 0}, AlignmentWindow::Placement::Centred);
    EXPECT_EQ(seen.scrollPosition(), QPoint(0, 0));
}

TEST_F(ServedWindow, PanelsLieBesideTheirCells)
{
    ZEP::KALMO2 &window = show(large(), {500, 300});
    const WindowParts parts(window);
    AlignmentWindow &seen = served(window);
    EXPECT_EQ(seen.areaWidget(WindowArea::Cells), parts.view->viewport());
    EXPECT_EQ(seen.areaWidget(WindowArea::Names), parts.names->viewport());
    EXPECT_EQ(seen.areaWidget(WindowArea::Header), parts.header->viewport());
    EXPECT_EQ(seen.areaWidget(WindowArea::Corner), parts.corner);
    seen.scrollTo({90, 70});
    const QRect cell = seen.cellRect({8, 14});
    const auto onScreen = [&](WindowArea area, const QPoint &point) {
        return seen.areaWidget(area)->mapToGlobal(point);
    };
    const QPoint there = onScreen(WindowArea::Cells, cell.topLeft());
    const CellBlock block = CellBlock::of({8, 14});
    EXPECT_EQ(onScreen(WindowArea::Names, seen.blockRect(block, WindowArea::Names).topLeft()).y(),
              there.y());
    EXPECT_EQ(onScreen(WindowArea::Header, seen.blockRect(block, WindowArea::Header).topLeft()).x(),
              there.x());
}

} // namespace ServedWindowTest
