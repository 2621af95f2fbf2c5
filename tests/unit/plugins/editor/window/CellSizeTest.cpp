// SPDX-License-Identifier: GPL-3.0-or-later
// Cells in sizes that the window's font does not ask for, and names in a width of their own.
#include "AlignmentWindowFixture.h"

#include "AlignmentViewObserver.h"
#include "QCanvasRectangle.h"
#include "QCanvasText.h"

#include <QPainter>

#include <gmock/gmock.h>

using TAMBO::AlignmentWindow;
using TAMBO::CellBlock;
using TAMBO::CellIndex;
using TAMBO::WindowArea;

namespace CellSizeTest {

const std::vector<QSize> kSizes = {{1, 1}, {2, 3}, {3, 3}, {5, 9}, {8, 8}, {14, 30}, {33, 53}};

class CellSize : public AlignmentWindowFixture
{
protected:
    CellSize()
        : shown(large()), window(show(shown, {900, 500})), parts(window), seen(served(window))
    { }

    [[nodiscard]] QPoint middle(const CellIndex &cell) const
    {
        return seen.cellRect(cell).center();
    }
    // In the line of the header's marks.
    [[nodiscard]] QPoint mark(unsigned long col) const
    {
        return {middle({0, col}).x(), parts.header->visibleHeight() * 7 / 8};
    }
    [[nodiscard]] QPoint name(unsigned long row) const
    {
        return {parts.names->visibleWidth() / 2, middle({row, 0}).y()};
    }

    TAMBO::Alignment &shown;
    ZEP::KALMO2 &window;
    const WindowParts parts;
    AlignmentWindow &seen;
};

TEST_F(CellSize, BackAtItsOwnTheWindowLooksAsBefore)
{
    const QSize own = seen.cellSize();
    EXPECT_EQ(own, seen.ownCellSize());
    for (const QPoint &place : {QPoint(0, 0), QPoint(400, 300)}) {
        seen.scrollTo(place);
        const QImage before = picture(window);
        for (const QSize &size : kSizes) {
            seen.setCellSize(size);
            EXPECT_EQ(seen.cellSize(), size);
            EXPECT_NE(picture(window), before);
        }
        seen.resetCellSize();
        EXPECT_EQ(seen.cellSize(), own);
        seen.scrollTo(place);
        EXPECT_EQ(picture(window), before);
    }
}

TEST_F(CellSize, IsCutOffAtOnePixelAndAtFortyPoints)
{
    seen.setCellSize({0, -5});
    EXPECT_EQ(seen.cellSize(), QSize(1, 1));
    seen.setCellSize({100000, 100000});
    EXPECT_EQ(seen.cellSize(), seen.maximumCellSize());
    window.setFont(QFont("DejaVu Sans Mono", 40));
    EXPECT_EQ(seen.ownCellSize(), seen.maximumCellSize());
    window.setFont(QFont("DejaVu Sans Mono", 50));
    EXPECT_EQ(seen.ownCellSize(), seen.maximumCellSize());
}

TEST_F(CellSize, WhatIsAtThePointStaysThere)
{
    seen.scrollTo({1500, 1000});
    const QPoint point(210, 130);
    const CellIndex cell = *seen.cellAt(point);
    for (const QSize &size : {QSize(20, 30), QSize(33, 50), QSize(9, 12), QSize(20, 30)}) {
        seen.setCellSize(size, point);
        EXPECT_EQ(seen.cellAt(point), cell) << size.width();
        EXPECT_EQ(parts.header->contentsX(), parts.view->contentsX());
        EXPECT_EQ(parts.names->contentsY(), parts.view->contentsY());
    }
}

TEST_F(CellSize, PanelsKeepTheirWidthAndHeight)
{
    const QRect names = parts.names->geometry();
    const QRect header = parts.header->geometry();
    for (const QSize &size : kSizes) {
        seen.setCellSize(size);
        QCoreApplication::processEvents();
        EXPECT_EQ(parts.names->geometry(), names);
        EXPECT_EQ(parts.header->geometry(), header);
        EXPECT_EQ(seen.nameWidth(), names.width());
    }
}

TEST_F(CellSize, IsTold)
{
    struct Observer : TAMBO::AlignmentViewObserver
    {
        using AlignmentViewObserver::AlignmentViewObserver;
        void cellSizeChanged() override { ++count; }
        void alignmentShown() override { ADD_FAILURE(); }
        int count = 0;
    } observer(seen);
    const auto told = [&] {
        QCoreApplication::processEvents();
        return std::exchange(observer.count, 0);
    };
    EXPECT_EQ(told(), 0);
    seen.setCellSize({5, 5});
    seen.setCellSize({6, 6});
    EXPECT_EQ(told(), 1);
    seen.setCellSize({6, 6});
    EXPECT_EQ(told(), 0);
    const MessageRecorder quiet;
    BaseWindow &base = window;
    base.setFont(QFont("DejaVu Sans Mono", 20));
    call(window, "ReCreate");
    EXPECT_EQ(told(), 1);
}

TEST_F(CellSize, EndsWithAnotherFont)
{
    seen.setCellSize({3, 3});
    window.setFont(QFont("DejaVu Sans Mono", 20));
    EXPECT_EQ(seen.cellSize(), QSize(3, 3)) << "a font only measures";
    const MessageRecorder quiet;
    call(window, "ReCreate");
    EXPECT_EQ(seen.cellSize(), seen.ownCellSize());
    const QImage fresh = picture(window);
    seen.setCellSize({3, 3});
    seen.resetCellSize();
    EXPECT_EQ(picture(window), fresh);
}

TEST_F(CellSize, StaysWhenWhatIsShownIsRebuiltOrAnother)
{
    seen.setCellSize({3, 4});
    const MessageRecorder quiet;
    call(window, "ReCreate");
    EXPECT_EQ(seen.cellSize(), QSize(3, 4));
    window.Populate(&alignment({"ACD"}));
    EXPECT_EQ(seen.cellSize(), QSize(3, 4));
    window.Clear();
    EXPECT_EQ(seen.cellSize(), QSize(3, 4));
    seen.setCellSize({7, 7});
    EXPECT_EQ(seen.cellSize(), QSize(7, 7));
}

TEST_F(CellSize, SmallCellsShowTheirColorsAlone)
{
    {
        const DataPoint<TAMBO::Alignment> guard(nullptr, &shown);
        for (unsigned long col = 0; col < 60; ++col) {
            if (TAMBO::Compound *residue = shown.getItem(2, col))
                residue->SetColor(Color(0x00000100U * (col + 1) * 4));
        }
    }
    for (const QSize &size : {QSize(1, 1), QSize(3, 2), QSize(4, 50), QSize(30, 3)}) {
        seen.setCellSize(size);
        const QImage image = pictureOf(parts.view->viewport());
        for (unsigned long col = 0; col < 25; ++col) {
            const TAMBO::Compound *residue = shown.getItem(2, col);
            const QColor wanted =
                residue == nullptr ? QColor(Qt::white) : residue->GetColor().toQColor();
            const QRect cell = seen.cellRect({2, col});
            for (const QPoint &corner : {cell.topLeft(), cell.center(), cell.bottomRight()})
                EXPECT_EQ(image.pixelColor(corner), wanted)
                    << col << " at " << size.width() << " x " << size.height();
        }
    }
}

TEST_F(CellSize, GapsAreDraggedAtEverySize)
{
    const MessageRecorder quiet;
    for (const QSize &size : kSizes) {
        SCOPED_TRACE(size.width());
        seen.setCellSize(size);
        seen.scrollTo({});
        unsigned long gap = 0;
        while (shown.getItem(1, gap) != nullptr)
            ++gap;
        seen.showCell({1, gap + 6});
        const std::string before = shown.GetSequence(1, false);
        QWidget *cells = parts.view->viewport();
        press(cells, Qt::LeftButton, middle({1, gap}));
        release(cells, Qt::LeftButton, middle({1, gap + 6}));
        std::string wanted = before;
        wanted.erase(gap, 1);
        wanted.insert(gap + 6, 1, '-');
        EXPECT_EQ(shown.GetSequence(1, false), wanted);
        EXPECT_EQ(seen.cellSize(), size);
    }
}

TEST_F(CellSize, MarksNamesAndResiduesAreHitAtEverySize)
{
    for (const QSize &size : kSizes) {
        SCOPED_TRACE(size.width());
        seen.setCellSize(size);
        seen.scrollTo({});
        EXPECT_FALSE(shown.isColumnSelected(5));
        click(parts.header->viewport(), Qt::LeftButton, mark(5));
        EXPECT_TRUE(shown.isColumnSelected(5));
        EXPECT_FALSE(shown.isColumnSelected(4) || shown.isColumnSelected(6));
        EXPECT_EQ(shown.range(), (TAMBO::Alignment::Range{5, 6}));
        click(parts.header->viewport(), Qt::LeftButton, mark(5));
        EXPECT_FALSE(shown.isRowSelected(4));
        click(parts.names->viewport(), Qt::LeftButton, name(4));
        EXPECT_TRUE(shown.isRowSelected(4));
        EXPECT_FALSE(shown.isRowSelected(3) || shown.isRowSelected(5));
        click(parts.names->viewport(), Qt::LeftButton, name(4));
        TAMBO::Compound *residue = shown.getItem(3, 4);
        ASSERT_NE(residue, nullptr);
        click(parts.view->viewport(), Qt::LeftButton, middle({3, 4}));
        EXPECT_TRUE(residue->IsSelected());
        click(parts.view->viewport(), Qt::LeftButton, middle({3, 4}));
        EXPECT_FALSE(residue->IsSelected());
    }
}

TEST_F(CellSize, ToolTipsTellTheirPlaceAtEverySize)
{
    for (const QSize &size : kSizes) {
        SCOPED_TRACE(size.width());
        seen.setCellSize(size);
        seen.scrollTo({});
        EXPECT_TRUE(toolTipAt(parts.view->viewport(), middle({2, 9})).contains("column 10"));
        EXPECT_TRUE(toolTipAt(parts.view->viewport(), middle({2, 9})).contains("s2"));
        EXPECT_EQ(toolTipAt(parts.header->viewport(), mark(9)), "column 10");
        EXPECT_TRUE(toolTipAt(parts.names->viewport(), name(2)).contains("s2"));
    }
}

TEST_F(CellSize, TheRangeMarkerCoversItsColumns)
{
    for (const QSize &size : kSizes) {
        seen.setCellSize(size);
        parts.header->SetRange(3, 9);
        int markers = 0;
        for (const QCanvasItem *item : parts.headerCanvas->allItems()) {
            if (item->rtti() != QCanvasItem::Rtti_Rectangle)
                continue;
            ++markers;
            EXPECT_EQ(item->boundingRect().left(), 3 * size.width());
            EXPECT_EQ(item->boundingRect().width(), 6 * size.width());
            EXPECT_EQ(item->boundingRect().bottom(), parts.headerCanvas->height() - 1);
        }
        EXPECT_EQ(markers, 1);
    }
}

TEST_F(CellSize, NumbersKeepApart)
{
    for (const QSize &size : kSizes) {
        seen.setCellSize(size);
        std::vector<QRect> numbers;
        for (const QCanvasItem *item : parts.headerCanvas->allItems()) {
            if (item->rtti() == QCanvasItem::Rtti_Text && item->boundingRect().top() == 0)
                numbers.push_back(item->boundingRect());
        }
        ASSERT_GT(numbers.size(), 4U);
        for (std::size_t i = 1; i < numbers.size(); ++i)
            EXPECT_GT(numbers[i].left(), numbers[i - 1].right()) << size.width();
    }
}

TEST_F(CellSize, PrintsAreWhatTheyWere)
{
    const auto printed = [this] {
        QImage page(2000, 1200, QImage::Format_RGB32);
        page.fill(Qt::white);
        QPainter painter(&page);
        window.drawIt(&painter, ZEP::KALMO2::Fat);
        painter.end();
        return page;
    };
    const QImage before = printed();
    seen.setCellSize({2, 2});
    EXPECT_EQ(printed(), before);
}

// ---- Names

TEST_F(CellSize, NamesTakeTheWidthThatIsWanted)
{
    const int own = seen.nameWidth();
    EXPECT_EQ(own, 8 * seen.ownCellSize().width());
    const QImage before = picture(window);
    seen.setNameWidth(own + 60);
    QCoreApplication::processEvents();
    EXPECT_EQ(parts.names->width(), own + 60);
    EXPECT_EQ(parts.corner->width(), own + 60);
    EXPECT_EQ(parts.nameCanvas->width(), own + 60);
    EXPECT_EQ(seen.nameWidth(), own + 60);
    for (const QCanvasItem *item : parts.nameCanvas->allItems())
        EXPECT_EQ(item->x(), own + 60 - seen.ownCellSize().width());
    seen.resetNameWidth();
    EXPECT_EQ(seen.nameWidth(), own);
    EXPECT_EQ(picture(window), before);
}

TEST_F(CellSize, NamesLeaveACellBesideThemAndKeepOneThemselves)
{
    const QSize size = window.size();
    seen.setNameWidth(-3);
    QCoreApplication::processEvents();
    EXPECT_EQ(parts.names->width(), seen.ownCellSize().width());
    seen.setNameWidth(1000000);
    QCoreApplication::processEvents();
    EXPECT_EQ(window.size(), size);
    EXPECT_GE(seen.visibleSize().width(), seen.ownCellSize().width());
    EXPECT_GT(parts.names->width(), size.width() / 2);
}

TEST_F(CellSize, NamesAreHitInTheirWidth)
{
    seen.setNameWidth(seen.nameWidth() + 100);
    QCoreApplication::processEvents();
    const QPoint mark(seen.nameWidth() - seen.ownCellSize().width() - 4, middle({4, 0}).y());
    click(parts.names->viewport(), Qt::LeftButton, mark);
    EXPECT_TRUE(shown.isRowSelected(4));
}

TEST_F(CellSize, TheWidthOfNamesOutlivesAnotherFontAndAnotherAlignment)
{
    seen.setNameWidth(333);
    const MessageRecorder quiet;
    DialogDriver dialogs;
    dialogs.expect([](QDialog &dialog) { dialog.accept(); });
    window.ChangeFont();
    window.Populate(&alignment({"ACD"}));
    QCoreApplication::processEvents();
    EXPECT_EQ(parts.names->width(), 333);
    seen.resetNameWidth();
    EXPECT_EQ(parts.names->maximumWidth(), 8 * seen.ownCellSize().width());
}

} // namespace CellSizeTest
