// SPDX-License-Identifier: GPL-3.0-or-later
#include "QCanvasRectangle.h"

#include "QCanvas.h"

#include <QImage>
#include <QPainter>

#include <gtest/gtest.h>

namespace QCanvasRectangleTest {

QImage drawn(QCanvasRectangle &item)
{
    QImage image(20, 20, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    item.draw(painter);
    return image;
}

TEST(QCanvasRectangle, StartsHiddenAtDepthZeroWithTheDefaultPenAndBrush)
{
    const QCanvasRectangle item(3, 4, 5, 6, nullptr);
    EXPECT_FALSE(item.isVisible());
    EXPECT_EQ(item.z(), 0.0);
    EXPECT_EQ(item.rtti(), QCanvasRectangle::RTTI);
    EXPECT_EQ(item.pen(), QPen());
    EXPECT_EQ(item.brush(), QBrush());
    EXPECT_EQ(item.rect(), QRect(3, 4, 5, 6));
}

TEST(QCanvasRectangle, DrawsItsPenInsideItsSize)
{
    QCanvasRectangle item(5, 5, 10, 10, nullptr);
    item.setPen(QColor(Qt::blue));
    item.setBrush(QColor(Qt::red));
    const QImage image = drawn(item);
    EXPECT_EQ(image.pixelColor(4, 10), QColor(Qt::white));
    EXPECT_EQ(image.pixelColor(5, 10), QColor(Qt::blue));
    EXPECT_EQ(image.pixelColor(6, 10), QColor(Qt::red));
    EXPECT_EQ(image.pixelColor(13, 10), QColor(Qt::red));
    EXPECT_EQ(image.pixelColor(14, 10), QColor(Qt::blue));
    EXPECT_EQ(image.pixelColor(15, 10), QColor(Qt::white));
}

TEST(QCanvasRectangle, WithoutAnAreaKeepsItsSizeButCoversAndDrawsNothing)
{
    QCanvasRectangle item(5, 5, 10, 10, nullptr);
    item.setBrush(QColor(Qt::red));
    for (const int width : {0, -39}) {
        item.setSize(width, 10);
        EXPECT_EQ(item.width(), width);
        EXPECT_TRUE(item.boundingRect().isEmpty());
        QImage blank(20, 20, QImage::Format_RGB32);
        blank.fill(Qt::white);
        EXPECT_EQ(drawn(item), blank);
    }
}

TEST(QCanvasRectangle, WithoutAnAreaCollidesWithNothing)
{
    QCanvas canvas(100, 100);
    auto *item = new QCanvasRectangle(5, 5, -39, 10, &canvas);
    item->show();
    EXPECT_TRUE(canvas.collisions(QRect(0, 0, 100, 100)).isEmpty());
    item->setSize(10, 10);
    EXPECT_EQ(canvas.collisions(QPoint(14, 14)).size(), 1);
}

} // namespace QCanvasRectangleTest
