// SPDX-License-Identifier: GPL-3.0-or-later
#include "QCanvas.h"

#include "QCanvasRectangle.h"
#include "QCanvasText.h"

#include <QEventLoop>
#include <QImage>
#include <QPainter>
#include <QPointer>
#include <QSignalSpy>
#include <QTimer>

#include <gtest/gtest.h>

namespace QCanvasTest {

QCanvasRectangle *rectangle(QCanvas &canvas, const QRect &rect, const QColor &color = Qt::red)
{
    auto *item = new QCanvasRectangle(rect, &canvas);
    item->setPen(Qt::NoPen);
    item->setBrush(color);
    item->show();
    return item;
}

QImage painted(QCanvas &canvas)
{
    QImage image(canvas.size(), QImage::Format_RGB32);
    image.fill(Qt::magenta);
    QPainter painter(&image);
    canvas.drawArea(canvas.rect(), &painter);
    return image;
}

class Counted : public QCanvasRectangle
{
public:
    using QCanvasRectangle::QCanvasRectangle;
    ~Counted() override { ++s_Deleted; }

    static inline int s_Deleted = 0;
};

TEST(QCanvas, ResizeSetsWidthAndHeightAndTellsAboutIt)
{
    QCanvas canvas;
    const QSignalSpy resized(&canvas, &QCanvas::resized);
    canvas.resize(60, 40);
    EXPECT_EQ(canvas.width(), 60);
    EXPECT_EQ(canvas.height(), 40);
    EXPECT_EQ(resized.count(), 1);
    canvas.resize(60, 40);
    EXPECT_EQ(resized.count(), 1);
}

TEST(QCanvas, OnCanvasIsTrueForItsPixelsOnly)
{
    const QCanvas canvas(60, 40);
    EXPECT_TRUE(canvas.onCanvas(0, 0));
    EXPECT_TRUE(canvas.onCanvas(QPoint(59, 39)));
    EXPECT_FALSE(canvas.onCanvas(60, 0));
    EXPECT_FALSE(canvas.onCanvas(0, 40));
    EXPECT_FALSE(canvas.onCanvas(-1, 0));
}

TEST(QCanvas, ReportsAllItemsInTheOrderOfMakingHiddenOnesIncluded)
{
    QCanvas canvas(100, 100);
    auto *first = new QCanvasRectangle(&canvas);
    auto *second = new QCanvasText(&canvas);
    auto *third = rectangle(canvas, {50, 50, 5, 5});
    EXPECT_EQ(canvas.allItems(), (QCanvasItemList{first, second, third}));
}

TEST(QCanvas, DeletedItemsAreOffTheCanvas)
{
    QCanvas canvas(100, 100);
    auto *first = rectangle(canvas, {0, 0, 10, 10});
    auto *second = rectangle(canvas, {0, 0, 10, 10});
    auto *third = rectangle(canvas, {0, 0, 10, 10});
    delete second;
    EXPECT_EQ(canvas.allItems(), (QCanvasItemList{first, third}));
    EXPECT_EQ(canvas.collisions(QPoint(5, 5)), (QCanvasItemList{third, first}));
    delete first;
    delete third;
    EXPECT_TRUE(canvas.allItems().isEmpty());
    EXPECT_TRUE(canvas.collisions(QPoint(5, 5)).isEmpty());
}

TEST(QCanvas, CollisionsComeFromTheTopItemDownAndOfEqualDepthTheLatestFirst)
{
    QCanvas canvas(100, 100);
    auto *low = rectangle(canvas, {0, 0, 10, 10});
    auto *high = rectangle(canvas, {0, 0, 10, 10});
    auto *early = rectangle(canvas, {0, 0, 10, 10});
    auto *late = rectangle(canvas, {0, 0, 10, 10});
    low->setZ(-1);
    high->setZ(3);
    EXPECT_EQ(canvas.collisions(QPoint(5, 5)), (QCanvasItemList{high, late, early, low}));
}

TEST(QCanvas, CollisionsLeaveOutHiddenItems)
{
    QCanvas canvas(100, 100);
    auto *item = rectangle(canvas, {0, 0, 10, 10});
    item->hide();
    EXPECT_TRUE(canvas.collisions(QPoint(5, 5)).isEmpty());
    item->show();
    EXPECT_EQ(canvas.collisions(QPoint(5, 5)), (QCanvasItemList{item}));
}

TEST(QCanvas, CollisionsFollowMovedAndResizedItems)
{
    QCanvas canvas(2000, 2000);
    auto *item = rectangle(canvas, {0, 0, 10, 10});
    item->move(1500, 900);
    EXPECT_TRUE(canvas.collisions(QPoint(5, 5)).isEmpty());
    EXPECT_EQ(canvas.collisions(QPoint(1505, 905)), (QCanvasItemList{item}));
    item->setSize(400, 1);
    EXPECT_EQ(canvas.collisions(QPoint(1899, 900)), (QCanvasItemList{item}));
    EXPECT_TRUE(canvas.collisions(QPoint(1900, 900)).isEmpty());
    EXPECT_TRUE(canvas.collisions(QPoint(1505, 905)).isEmpty());
}

TEST(QCanvas, CollisionsOfARectangleHoldEveryItemThatItTouches)
{
    QCanvas canvas(100, 100);
    auto *left = rectangle(canvas, {0, 0, 10, 10});
    auto *right = rectangle(canvas, {20, 0, 10, 10});
    rectangle(canvas, {40, 0, 10, 10});
    EXPECT_EQ(canvas.collisions(QRect(9, 5, 12, 1)), (QCanvasItemList{right, left}));
}

TEST(QCanvas, ItemsCollideWhenTheirAreasMeet)
{
    QCanvas canvas(100, 100);
    const auto *a = rectangle(canvas, {0, 0, 10, 10});
    const auto *b = rectangle(canvas, {9, 9, 10, 10});
    const auto *c = rectangle(canvas, {10, 0, 10, 9});
    EXPECT_TRUE(a->collidesWith(b));
    EXPECT_FALSE(a->collidesWith(c));
    EXPECT_FALSE(a->collidesWith(nullptr));
}

TEST(QCanvas, PaintsItemsOverItsBackgroundByDepth)
{
    QCanvas canvas(30, 10);
    rectangle(canvas, {0, 0, 20, 10}, Qt::red)->setZ(1);
    rectangle(canvas, {10, 0, 20, 10}, Qt::blue);
    const QImage image = painted(canvas);
    EXPECT_EQ(image.pixelColor(15, 5), QColor(Qt::red));
    EXPECT_EQ(image.pixelColor(25, 5), QColor(Qt::blue));
    canvas.setBackgroundColor(Qt::yellow);
    canvas.clear();
    EXPECT_EQ(painted(canvas).pixelColor(25, 5), QColor(Qt::yellow));
}

TEST(QCanvas, PaintsNothingOutsideTheAreaAskedFor)
{
    QCanvas canvas(30, 10);
    rectangle(canvas, {0, 0, 30, 10});
    QImage image(canvas.size(), QImage::Format_RGB32);
    image.fill(Qt::magenta);
    QPainter painter(&image);
    canvas.drawArea(QRect(10, 0, 10, 10), &painter);
    painter.end();
    EXPECT_EQ(image.pixelColor(9, 5), QColor(Qt::magenta));
    EXPECT_EQ(image.pixelColor(10, 5), QColor(Qt::red));
    EXPECT_EQ(image.pixelColor(20, 5), QColor(Qt::magenta));
}

TEST(QCanvas, ClearDeletesAllItems)
{
    QCanvas canvas(100, 100);
    Counted::s_Deleted = 0;
    for (int i = 0; i < 3; ++i)
        (new Counted(0, 0, 5, 5, &canvas))->show();
    canvas.clear();
    EXPECT_EQ(Counted::s_Deleted, 3);
    EXPECT_TRUE(canvas.allItems().isEmpty());
}

TEST(QCanvas, TakesItsItemsAlongWhenItIsDestroyed)
{
    Counted::s_Deleted = 0;
    {
        QCanvas canvas(100, 100);
        (new Counted(0, 0, 5, 5, &canvas))->show();
        EXPECT_EQ(canvas.collisions(QPoint(1, 1)).size(), 1);
        (new Counted(0, 0, 5, 5, &canvas))->show();
    }
    EXPECT_EQ(Counted::s_Deleted, 2);
}

TEST(QCanvas, ItemHandedOutOutlivesAClearUntilControlIsBackInTheEventLoop)
{
    QCanvas canvas(100, 100);
    (new Counted(0, 0, 5, 5, &canvas))->show();
    Counted::s_Deleted = 0;
    int deletedWhileHandling = -1;
    int deletedInNestedLoop = -1;
    bool knowsItsCanvas = true;
    QEventLoop loop;
    QTimer::singleShot(0, [&] {
        const QCanvasItem *item = canvas.collisions(QPoint(1, 1)).first();
        canvas.clear();
        deletedWhileHandling = Counted::s_Deleted;
        knowsItsCanvas = item->canvas() != nullptr;
        QEventLoop nested;
        QTimer::singleShot(0, &nested, &QEventLoop::quit);
        nested.exec();
        deletedInNestedLoop = Counted::s_Deleted;
        QTimer::singleShot(0, &loop, &QEventLoop::quit);
    });
    loop.exec();
    EXPECT_EQ(deletedWhileHandling, 0);
    EXPECT_FALSE(knowsItsCanvas);
    EXPECT_EQ(deletedInNestedLoop, 0);
    EXPECT_EQ(Counted::s_Deleted, 1);
    EXPECT_TRUE(canvas.allItems().isEmpty());
}

TEST(QCanvas, ItemWithoutACanvasIsNobodys)
{
    QCanvasRectangle item(1, 2, 3, 4, nullptr);
    item.show();
    item.move(5, 6);
    EXPECT_EQ(item.canvas(), nullptr);
    EXPECT_EQ(item.boundingRect(), QRect(5, 6, 3, 4));
}

} // namespace QCanvasTest
