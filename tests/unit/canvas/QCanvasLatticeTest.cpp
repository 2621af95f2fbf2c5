// SPDX-License-Identifier: GPL-3.0-or-later
// The items of a canvas's lattice: made on demand, but reported as if all existed.
#include "LetterLattice.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QImage>
#include <QTimer>

#include <gtest/gtest.h>

namespace QCanvasLatticeTest {

class QCanvasLattice : public ::testing::Test
{
protected:
    void SetUp() override { giveLetters(m_Canvas, 3, 5, 13, 17); }

    static Cell cellOf(const QCanvasItem *item)
    {
        EXPECT_EQ(item->rtti(), LetterItem::RTTI);
        return static_cast<const LetterItem *>(item)->cell();
    }
    static void returnToEventLoop()
    {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    QCanvas m_Canvas;
};

TEST_F(QCanvasLattice, AllItemsAreReportedRowByRow)
{
    const QCanvasItemList items = m_Canvas.allItems();
    ASSERT_EQ(items.size(), 15);
    for (qsizetype i = 0; i < items.size(); ++i) {
        const Cell cell{static_cast<unsigned long>(i) / 5, static_cast<unsigned long>(i) % 5};
        EXPECT_EQ(cellOf(items[i]), cell);
        EXPECT_EQ(items[i]->boundingRect(), m_Canvas.lattice().cellRect(cell));
        EXPECT_EQ(items[i]->z(), 0.0);
        EXPECT_TRUE(items[i]->isVisible());
        EXPECT_EQ(items[i]->canvas(), &m_Canvas);
    }
}

TEST_F(QCanvasLattice, AskingTwiceGivesTheSameItem)
{
    const QCanvasItemList once = m_Canvas.collisions(QPoint(14, 18));
    ASSERT_EQ(once.size(), 1);
    EXPECT_EQ(m_Canvas.collisions(QPoint(20, 30)), once);
    EXPECT_EQ(m_Canvas.allItems().at(6), once.first());
}

TEST_F(QCanvasLattice, CollisionsFindTheCellUnderThePointAndNoneOutside)
{
    const QCanvasItemList items = m_Canvas.collisions(QPoint(13, 17));
    ASSERT_EQ(items.size(), 1);
    EXPECT_EQ(cellOf(items.first()), (Cell{1, 1}));
    EXPECT_TRUE(m_Canvas.collisions(QPoint(65, 0)).isEmpty());
    EXPECT_TRUE(m_Canvas.collisions(QPoint(0, 51)).isEmpty());
    EXPECT_TRUE(m_Canvas.collisions(QPoint(-1, -1)).isEmpty());
}

TEST_F(QCanvasLattice, CollisionsOfARectangleComeLatestFirst)
{
    const QCanvasItemList items = m_Canvas.collisions(QRect(12, 16, 2, 2));
    ASSERT_EQ(items.size(), 4);
    EXPECT_EQ(cellOf(items[0]), (Cell{1, 1}));
    EXPECT_EQ(cellOf(items[1]), (Cell{1, 0}));
    EXPECT_EQ(cellOf(items[2]), (Cell{0, 1}));
    EXPECT_EQ(cellOf(items[3]), (Cell{0, 0}));
}

TEST_F(QCanvasLattice, OtherItemsStandInFrontOrBehindByDepthAndTimeOfMaking)
{
    QCanvas canvas;
    auto *before = new QCanvasRectangle(0, 0, 5, 5, &canvas);
    before->show();
    giveLetters(canvas, 1, 1, 13, 17);
    auto *after = new QCanvasRectangle(0, 0, 5, 5, &canvas);
    after->show();
    auto *behind = new QCanvasRectangle(0, 0, 5, 5, &canvas);
    behind->setZ(-1);
    behind->show();
    const QCanvasItemList items = canvas.collisions(QPoint(2, 2));
    ASSERT_EQ(items.size(), 4);
    EXPECT_EQ(items[0], after);
    EXPECT_EQ(items[1]->rtti(), LetterItem::RTTI);
    EXPECT_EQ(items[2], before);
    EXPECT_EQ(items[3], behind);
    const QCanvasItemList all = canvas.allItems();
    ASSERT_EQ(all.size(), 4);
    EXPECT_EQ(all[0], before);
    EXPECT_EQ(all[1]->rtti(), LetterItem::RTTI);
    EXPECT_EQ(all[2], after);
}

TEST_F(QCanvasLattice, OtherItemsArePaintedInFrontOrBehindAlike)
{
    auto *front = new QCanvasRectangle(0, 0, 10, 10, &m_Canvas);
    front->setBrush(QColor(Qt::red));
    front->show();
    auto *behind = new QCanvasRectangle(20, 0, 60, 100, &m_Canvas);
    behind->setBrush(QColor(Qt::blue));
    behind->setZ(-1);
    behind->show();
    QImage image(100, 100, QImage::Format_RGB32);
    QPainter painter(&image);
    m_Canvas.drawArea(image.rect(), &painter);
    painter.end();
    EXPECT_EQ(image.pixelColor(5, 5), QColor(Qt::red));
    EXPECT_EQ(image.pixel(26, 0), LetterLattice::lookAt({0, 2}).background);
    EXPECT_EQ(image.pixelColor(70, 5), QColor(Qt::blue));
    EXPECT_EQ(image.pixelColor(90, 90), QColor(Qt::white));
}

TEST_F(QCanvasLattice, ItemsLiveUntilControlIsBackInTheEventLoop)
{
    EXPECT_EQ(LetterItem::s_Alive, 0);
    EXPECT_EQ(m_Canvas.allItems().size(), 15);
    EXPECT_EQ(LetterItem::s_Alive, 15);
    returnToEventLoop();
    EXPECT_EQ(LetterItem::s_Alive, 0);
    EXPECT_EQ(m_Canvas.collisions(QPoint(1, 1)).size(), 1);
    EXPECT_EQ(LetterItem::s_Alive, 1);
    returnToEventLoop();
}

TEST_F(QCanvasLattice, ItemOutlivesARebuildAndANestedLoop)
{
    const QCanvasItem *item = nullptr;
    int aliveInHandler = 0;
    QEventLoop loop;
    QTimer::singleShot(0, [&] {
        item = m_Canvas.collisions(QPoint(1, 1)).first();
        m_Canvas.clear();
        giveLetters(m_Canvas, 4, 4, 13, 17);
        QEventLoop nested;
        QTimer::singleShot(0, &nested, &QEventLoop::quit);
        nested.exec();
        aliveInHandler = LetterItem::s_Alive;
        EXPECT_EQ(item->canvas(), nullptr);
        EXPECT_EQ(cellOf(item), (Cell{0, 0}));
        EXPECT_NE(m_Canvas.collisions(QPoint(1, 1)).first(), item);
        QTimer::singleShot(0, &loop, &QEventLoop::quit);
    });
    loop.exec();
    EXPECT_EQ(aliveInHandler, 1);
    EXPECT_EQ(LetterItem::s_Alive, 0);
}

TEST_F(QCanvasLattice, DeletingAnItemByHandIsSafe)
{
    delete m_Canvas.collisions(QPoint(1, 1)).first();
    EXPECT_EQ(LetterItem::s_Alive, 0);
    EXPECT_EQ(m_Canvas.allItems().size(), 15);
    returnToEventLoop();
    EXPECT_EQ(LetterItem::s_Alive, 0);
}

TEST_F(QCanvasLattice, ClearTakesTheLatticeAway)
{
    m_Canvas.clear();
    EXPECT_TRUE(m_Canvas.lattice().isEmpty());
    EXPECT_TRUE(m_Canvas.allItems().isEmpty());
    EXPECT_TRUE(m_Canvas.collisions(QPoint(1, 1)).isEmpty());
}

TEST_F(QCanvasLattice, LatticeWithoutCellsHasNoItems)
{
    m_Canvas.setLattice(CellLattice(0, 0, 13, 17), std::make_unique<LetterLattice>());
    EXPECT_TRUE(m_Canvas.allItems().isEmpty());
    QImage image(20, 20, QImage::Format_RGB32);
    QPainter painter(&image);
    m_Canvas.drawArea(image.rect(), &painter);
    painter.end();
    EXPECT_EQ(image.pixelColor(5, 5), QColor(Qt::white));
}

TEST_F(QCanvasLattice, MakingALatticeMakesNoItems)
{
    giveLetters(m_Canvas, 10000, 10000, 13, 17);
    EXPECT_EQ(LetterItem::s_Alive, 0);
    EXPECT_EQ(m_Canvas.collisions(QPoint(13 * 9999, 17 * 9999)).size(), 1);
    EXPECT_EQ(LetterItem::s_Alive, 1);
    returnToEventLoop();
}

TEST_F(QCanvasLattice, CanvasMayGoWhileItsItemsAreStillAlive)
{
    {
        QCanvas canvas;
        giveLetters(canvas, 3, 5, 13, 17);
        EXPECT_EQ(canvas.allItems().size(), 15);
    }
    EXPECT_EQ(LetterItem::s_Alive, 0);
    returnToEventLoop();
}

} // namespace QCanvasLatticeTest
