// SPDX-License-Identifier: GPL-3.0-or-later
// What other plug-ins paint over an editor window, and events that they get before it.
#include "AlignmentWindowFixture.h"

#include "AlignmentViewObserver.h"
#include "CellEventFilter.h"
#include "CellOverlay.h"
#include "DataDelete.h"
#include "DataMaker.h"
#include "PaintWatch.h"
#include "Space.h"

#include <QApplication>
#include <QPainter>
#include <QWheelEvent>

#include <gmock/gmock.h>

using TAMBO::AlignmentWindow;
using TAMBO::CellBlock;
using TAMBO::CellIndex;
using TAMBO::GapDrag;
using TAMBO::WindowArea;
using TAMBO::WindowAreas;
using testing::ElementsAre;
using testing::IsEmpty;

namespace OverlayTest {

constexpr std::initializer_list<WindowArea> kAreas = {WindowArea::Cells, WindowArea::Names,
                                                      WindowArea::Header, WindowArea::Corner};
const WindowAreas kEverywhere =
    WindowArea::Cells | WindowArea::Names | WindowArea::Header | WindowArea::Corner;

// Fills a block of cells with red.
class Mark : public TAMBO::CellOverlay
{
public:
    Mark(AlignmentWindow &window, WindowAreas areas, const CellBlock &block)
        : CellOverlay(window, areas), m_Block(block)
    { }

    void paint(QPainter &painter, const AlignmentWindow &window,
               const TAMBO::OverlayExposure &exposed) override
    {
        painted.push_back(exposed);
        painter.fillRect(window.blockRect(m_Block, exposed.area), Qt::red);
    }
    void moveTo(const CellBlock &block)
    {
        repaint(m_Block);
        m_Block = block;
        repaint(m_Block);
    }

    std::vector<TAMBO::OverlayExposure> painted;

private:
    CellBlock m_Block;
};

class Overlay : public AlignmentWindowFixture
{
protected:
    Overlay() : shown(large()), window(show(shown, {700, 400})), parts(window), seen(served(window))
    { }

    // How the block looks when it is red, and nothing else is.
    [[nodiscard]] QImage painted(WindowArea area, QImage image, const CellBlock &block) const
    {
        QPainter(&image).fillRect(seen.blockRect(block, area), Qt::red);
        return image;
    }

    TAMBO::Alignment &shown;
    ZEP::KALMO2 &window;
    const WindowParts parts;
    AlignmentWindow &seen;
};

TEST_F(Overlay, IsSeenOverItsCellsInEveryArea)
{
    seen.scrollTo({33, 21});
    const CellBlock block{4, 6, 7, 10};
    for (const WindowArea area : kAreas) {
        QWidget *widget = seen.areaWidget(area);
        const QImage before = pictureOf(widget);
        Mark mark(seen, area, block);
        mark.repaint(block);
        EXPECT_EQ(pictureOf(widget), painted(area, before, block)) << int(area);
        EXPECT_NE(pictureOf(widget), before);
    }
}

TEST_F(Overlay, MovesWithItsCells)
{
    const CellBlock block{4, 6, 7, 10};
    const Mark mark(seen, WindowArea::Cells, block);
    for (const QSize &size : {QSize(1, 1), QSize(3, 5), QSize(30, 40), seen.ownCellSize()}) {
        seen.setCellSize(size);
        seen.scrollBy({11, 7});
        const QRect red = seen.blockRect(block);
        const QImage image = pictureOf(parts.view->viewport());
        EXPECT_EQ(image.pixelColor(red.topLeft()), QColor(Qt::red));
        EXPECT_EQ(image.pixelColor(red.bottomRight()), QColor(Qt::red));
        EXPECT_NE(image.pixelColor(red.bottomRight() + QPoint(1, 1)), QColor(Qt::red));
    }
}

TEST_F(Overlay, RepaintsWhatItAskedForAndNothingElse)
{
    seen.scrollTo({33, 21});
    Mark mark(seen, WindowArea::Cells | WindowArea::Names, {4, 6, 7, 10});
    PaintWatch paints{parts.view, parts.header, parts.names};
    mark.painted.clear();
    EXPECT_FALSE(paints.isAnythingPainted());
    mark.moveTo({5, 7, 8, 11});
    EXPECT_EQ(paints.take(), (PaintWatch::Rects{seen.blockRect({4, 7, 7, 11}), QRect(),
                                                seen.blockRect({4, 7, 7, 11}, WindowArea::Names)}));
    ASSERT_FALSE(mark.painted.empty());
    for (const TAMBO::OverlayExposure &exposure : mark.painted)
        EXPECT_EQ(exposure.cells, seen.cellsIn(exposure.rect, exposure.area));
}

TEST_F(Overlay, LeavesTheWindowAsItWasWhenItGoes)
{
    const QImage before = picture(window);
    {
        const Mark mark(seen, kEverywhere, {4, 6, 7, 10});
        mark.repaint({4, 6, 7, 10});
        EXPECT_NE(picture(window), before);
    }
    EXPECT_EQ(picture(window), before);
}

TEST_F(Overlay, IsInNoPictureButTheScreens)
{
    const auto pictures = [this] {
        std::vector<QImage> images;
        for (int i = 0; i < 3; ++i) {
            images.emplace_back(600, 400, QImage::Format_RGB32);
            images.back().fill(Qt::white);
        }
        QPainter area(&images[0]);
        parts.cells->drawArea({0, 0, 600, 400}, &area);
        QPainter print(&images[1]);
        parts.view->print(&print, 0, 0, 600, 400);
        QPainter pages(&images[2]);
        window.drawIt(&pages, ZEP::KALMO2::Fat);
        return images;
    };
    const std::vector<QImage> before = pictures();
    const Mark mark(seen, kEverywhere, {0, 10, 0, 10});
    EXPECT_EQ(pictures(), before);
}

TEST_F(Overlay, MayGoAfterTheWindow)
{
    const Mark mark(seen, kEverywhere, {4, 6, 7, 10});
    closeWindows();
    EXPECT_EQ(mark.window(), nullptr);
    mark.repaint({4, 6, 7, 10});
}

// ---- Events

class Filter : public TAMBO::CellEventFilter
{
public:
    Filter(AlignmentWindow &window, WindowAreas areas) : CellEventFilter(window, areas) { }

    bool handle(AlignmentWindow &, WindowArea area, QEvent &event) override
    {
        types.emplace_back(area, event.type());
        return takes && (act ? act(event) : true);
    }

    std::vector<std::pair<WindowArea, QEvent::Type>> types;
    bool takes = true;
    std::function<bool(QEvent &)> act;
};

class EventFilter : public Overlay
{
protected:
    [[nodiscard]] QPoint middle(unsigned long row, unsigned long col) const
    {
        return seen.cellRect({row, col}).center();
    }
    // The first gap of the row.
    [[nodiscard]] unsigned long gapOf(unsigned long row) const
    {
        unsigned long col = 0;
        while (shown.getItem(row, col) != nullptr)
            ++col;
        return col;
    }
    QWidget *cells = parts.view->viewport();
};

TEST_F(EventFilter, APressThatIsTakenIsNotTheWindows)
{
    Filter filter(seen, WindowArea::Cells | WindowArea::Names | WindowArea::Header);
    const TAMBO::Compound *residue = shown.getItem(2, 0);
    ASSERT_NE(residue, nullptr);
    click(cells, Qt::LeftButton, middle(2, 0));
    EXPECT_FALSE(residue->IsSelected());
    click(parts.names->viewport(), Qt::LeftButton,
          {seen.nameWidth() - seen.ownCellSize().width() - 4, middle(2, 0).y()});
    EXPECT_FALSE(shown.isRowSelected(2));
    click(parts.header->viewport(), Qt::LeftButton,
          {middle(0, 3).x(), parts.header->visibleHeight() * 7 / 8});
    EXPECT_FALSE(shown.isColumnSelected(3));
    EXPECT_THAT(filter.types,
                ElementsAre(std::pair(WindowArea::Cells, QEvent::MouseButtonPress),
                            std::pair(WindowArea::Cells, QEvent::MouseButtonRelease),
                            std::pair(WindowArea::Names, QEvent::MouseButtonPress),
                            std::pair(WindowArea::Names, QEvent::MouseButtonRelease),
                            std::pair(WindowArea::Header, QEvent::MouseButtonPress),
                            std::pair(WindowArea::Header, QEvent::MouseButtonRelease)));
    filter.takes = false;
    click(cells, Qt::LeftButton, middle(2, 0));
    EXPECT_TRUE(residue->IsSelected());
}

TEST_F(EventFilter, TheWheelAndKeysMayBeTaken)
{
    Filter filter(seen, WindowArea::Cells | WindowArea::Header);
    const auto turn = [&](QWidget *widget) {
        QWheelEvent wheel({5, 5}, widget->mapToGlobal(QPointF(5, 5)), {}, {0, -120}, {}, {},
                          Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(widget, &wheel);
    };
    const auto press = [](QWidget *view) {
        QKeyEvent key(QEvent::KeyPress, Qt::Key_End, {});
        QCoreApplication::sendEvent(view, &key);
    };
    turn(cells);
    turn(parts.header->viewport());
    press(parts.view);
    press(parts.names);
    EXPECT_EQ(seen.scrollPosition(), QPoint(0, 0));
    EXPECT_THAT(filter.types, ElementsAre(std::pair(WindowArea::Cells, QEvent::Wheel),
                                          std::pair(WindowArea::Header, QEvent::Wheel),
                                          std::pair(WindowArea::Cells, QEvent::KeyPress),
                                          std::pair(WindowArea::Cells, QEvent::KeyPress)));
    filter.takes = false;
    turn(parts.header->viewport());
    EXPECT_GT(seen.scrollPosition().y(), 0);
    press(parts.names);
    EXPECT_GT(seen.scrollPosition().x(), 0);
}

TEST_F(EventFilter, ToolTipsAndContextMenusMayBeTaken)
{
    const Filter filter(seen, WindowArea::Cells | WindowArea::Corner);
    EXPECT_EQ(toolTipAt(cells, middle(1, 1)), "");
    QContextMenuEvent menu(QContextMenuEvent::Mouse, {3, 3},
                           parts.corner->mapToGlobal(QPoint(3, 3)));
    QCoreApplication::sendEvent(parts.corner, &menu);
    EXPECT_THAT(filter.types, ElementsAre(std::pair(WindowArea::Cells, QEvent::ToolTip),
                                          std::pair(WindowArea::Corner, QEvent::ContextMenu)));
}

TEST_F(EventFilter, ThePointerIsFollowedWhileSomebodyWantsTo)
{
    EXPECT_FALSE(cells->hasMouseTracking());
    {
        Filter filter(seen, WindowArea::Cells);
        EXPECT_TRUE(cells->hasMouseTracking());
        EXPECT_FALSE(parts.names->viewport()->hasMouseTracking());
        move(cells, Qt::NoButton, {10, 10});
        QEvent leave(QEvent::Leave);
        QCoreApplication::sendEvent(cells, &leave);
        EXPECT_THAT(filter.types, ElementsAre(std::pair(WindowArea::Cells, QEvent::MouseMove),
                                              std::pair(WindowArea::Cells, QEvent::Leave)));
    }
    EXPECT_FALSE(cells->hasMouseTracking());
}

TEST_F(EventFilter, ADragOfTheWindowMayBeEnded)
{
    Filter filter(seen, WindowArea::Cells);
    filter.act = [&](QEvent &event) {
        if (event.type() == QEvent::MouseButtonRelease)
            seen.endDrag();
        return false;
    };
    const std::string before = shown.GetSequence(1, false);
    press(cells, Qt::LeftButton, middle(1, gapOf(1)));
    release(cells, Qt::LeftButton, middle(1, gapOf(1) + 3));
    EXPECT_EQ(shown.GetSequence(1, false), before);
    EXPECT_THAT(filter.types, testing::SizeIs(2));
}

TEST_F(EventFilter, SeesTheAlignmentAsItIsNow)
{
    unsigned long rows = 0;
    Filter filter(seen, WindowArea::Cells);
    filter.act = [&](QEvent &) {
        rows = seen.rows();
        return true;
    };
    const MessageRecorder quiet;
    // Without a guard, so that nobody is told.
    shown.removeRow(0);
    press(cells, Qt::LeftButton, {1, 1});
    EXPECT_EQ(rows, 119U);
}

TEST_F(EventFilter, MayCloseTheWindow)
{
    Filter filter(seen, WindowArea::Cells);
    filter.act = [&](QEvent &) {
        closeWindows();
        return true;
    };
    press(cells, Qt::LeftButton, {1, 1});
    EXPECT_EQ(filter.window(), nullptr);
    EXPECT_THAT(AlignmentWindow::All(), IsEmpty());
}

// ---- Gaps that are dragged

class DragObserver : public TAMBO::AlignmentViewObserver
{
public:
    using AlignmentViewObserver::AlignmentViewObserver;

    void gapDragBegan(const GapDrag &drag) override { note("began", drag); }
    void gapDragMoved(const GapDrag &drag) override { note("moved", drag); }
    void gapDragEnded(const GapDrag &drag) override { note("ended", drag); }

    std::vector<std::string> notes;
    std::vector<GapDrag> drags;
    std::function<void()> act;

private:
    void note(const char *what, const GapDrag &drag)
    {
        notes.emplace_back(what);
        drags.push_back(drag);
        if (act)
            act();
    }
};

TEST_F(EventFilter, AGapThatIsDraggedIsToldFromItsBeginningToItsEnd)
{
    DragObserver observer(seen);
    const unsigned long gap = gapOf(1);
    const std::string before = shown.GetSequence(1, false);
    std::string atTheEnd;
    observer.act = [&] { atTheEnd = shown.GetSequence(1, false); };
    const MessageRecorder quiet;
    press(cells, Qt::LeftButton, middle(1, gap));
    move(cells, Qt::LeftButton, middle(1, gap) + QPoint(1, 0));
    move(cells, Qt::LeftButton, middle(1, gap + 2));
    move(cells, Qt::LeftButton, middle(4, gap + 2));
    move(cells, Qt::LeftButton, middle(1, gap + 3));
    release(cells, Qt::LeftButton, middle(1, gap + 3));
    EXPECT_THAT(observer.notes, ElementsAre("began", "moved", "moved", "moved", "ended"));
    std::vector<std::optional<unsigned long>> columns;
    for (const GapDrag &drag : observer.drags) {
        EXPECT_EQ(drag.from, (CellIndex{1, gap}));
        EXPECT_EQ(drag.button, Qt::LeftButton);
        columns.push_back(drag.column);
    }
    EXPECT_THAT(columns, ElementsAre(gap, gap + 2, std::nullopt, gap + 3, gap + 3));
    EXPECT_EQ(atTheEnd, before);
    EXPECT_NE(shown.GetSequence(1, false), before);
}

TEST_F(EventFilter, AGapThatIsGivenUpIsToldOnce)
{
    DragObserver observer(seen);
    const unsigned long gap = gapOf(1);
    press(cells, Qt::LeftButton, middle(1, gap));
    seen.endDrag();
    seen.endDrag();
    EXPECT_THAT(observer.notes, ElementsAre("began", "ended"));
    EXPECT_EQ(observer.drags.back().column, std::nullopt);
    observer.notes.clear();
    press(cells, Qt::LeftButton, middle(1, gap));
    release(cells, Qt::LeftButton, middle(3, gap));
    EXPECT_THAT(observer.notes, ElementsAre("began", "ended"));
    EXPECT_EQ(observer.drags.back().column, std::nullopt);
    observer.notes.clear();
    press(cells, Qt::LeftButton, middle(1, gap));
    seen.setCellSize({5, 5});
    EXPECT_THAT(observer.notes, ElementsAre("began", "ended"));
    observer.notes.clear();
    click(cells, Qt::LeftButton, middle(1, 0));
    EXPECT_THAT(observer.notes, IsEmpty()) << "a residue is selected, not held";
}

TEST_F(EventFilter, AGapThatIsHeldEndsBeforeItsAlignmentIsFreed)
{
    DragObserver observer(seen);
    press(cells, Qt::LeftButton, middle(1, gapOf(1)));
    const TAMBO::Alignment *then = &shown;
    observer.act = [&] { then = seen.alignment(); };
    const MessageRecorder quiet;
    {
        const DataDelete<TAMBO::Space> guard(nullptr, TAMBO::Space::instance());
        TAMBO::DataMaker::Destroy(&shown);
    }
    EXPECT_THAT(observer.notes, ElementsAre("began", "ended"));
    EXPECT_EQ(then, nullptr);
}

TEST_F(EventFilter, ScrollingMovesAGapThatIsHeld)
{
    DragObserver observer(seen);
    const unsigned long gap = gapOf(1);
    press(cells, Qt::LeftButton, middle(1, gap));
    seen.scrollBy({2 * seen.cellSize().width(), 0});
    EXPECT_THAT(observer.notes, ElementsAre("began", "moved"));
    EXPECT_EQ(observer.drags.back().column, gap + 2);
    seen.endDrag();
}

TEST_F(EventFilter, AnObserverMayCloseTheWindowWhenADragEnds)
{
    DragObserver observer(seen);
    const unsigned long gap = gapOf(1);
    const std::string before = shown.GetSequence(1, false);
    press(cells, Qt::LeftButton, middle(1, gap));
    observer.act = [&] { closeWindows(); };
    release(cells, Qt::LeftButton, middle(1, gap + 2));
    EXPECT_EQ(shown.GetSequence(1, false), before);
    EXPECT_EQ(observer.window(), nullptr);
}

// ---- Nobody there

TEST_F(Overlay, AWindowThatNobodyUsesIsWhatItWas)
{
    QStringList children;
    for (const QObject *child : window.children())
        children.append(child->metaObject()->className());
    EXPECT_EQ(children.filter("Alignment"), QStringList());
    EXPECT_EQ(children.filter("QCanvas").size(), 3);
    EXPECT_EQ(window.metaObject()->superClass(), &BaseWindow::staticMetaObject);
    EXPECT_EQ(window.metaObject()->propertyCount(), QMainWindow::staticMetaObject.propertyCount());
    for (const WindowArea area : kAreas)
        EXPECT_FALSE(seen.areaWidget(area)->hasMouseTracking());
    const QImage image = pictureOf(parts.view->viewport());
    QImage wanted(image.size(), image.format());
    QPainter painter(&wanted);
    parts.cells->drawArea(parts.view->viewport()->rect(), &painter);
    painter.end();
    EXPECT_EQ(image, wanted);
}

} // namespace OverlayTest
