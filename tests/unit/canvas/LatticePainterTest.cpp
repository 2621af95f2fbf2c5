// SPDX-License-Identifier: GPL-3.0-or-later
#include "LatticePainter.h"

#include "LetterLattice.h"

#include <QBuffer>
#include <QImage>
#include <QPainter>
#include <QPicture>

#include <gtest/gtest.h>

#include <cmath>

namespace LatticePainterTest {

constexpr unsigned long kRows = 9;
constexpr unsigned long kColumns = 17;
// Sizes that no usual scale makes whole.
constexpr int kWidth = 13;
constexpr int kHeight = 17;

class LatticePainterTest : public ::testing::Test
{
protected:
    QCanvas m_Canvas;
    LetterLattice *m_Letters = giveLetters(m_Canvas, kRows, kColumns, kWidth, kHeight);

    // The part of the canvas that begins at corner, on a device of the given scale.
    QImage painted(double scale, const QPoint &corner = {})
    {
        const auto pixels = [scale](int length) {
            return static_cast<int>(std::lround(length * scale));
        };
        QImage image(pixels(m_Canvas.width()), pixels(m_Canvas.height()), QImage::Format_RGB32);
        image.setDevicePixelRatio(scale);
        image.fill(Qt::magenta);
        QPainter painter(&image);
        painter.translate(-corner);
        m_Canvas.drawArea(m_Canvas.rect(), &painter);
        return image;
    }
};

int backgroundPixels(const QImage &image, const QRect &area, QRgb color)
{
    int count = 0;
    for (int y = area.top(); y <= area.bottom(); ++y) {
        for (int x = area.left(); x <= area.right(); ++x)
            count += image.pixel(x, y) == color ? 1 : 0;
    }
    return count;
}

// Letters are in the middle, so a frame one pixel wide of every cell shows its background.
void expectCellsWithoutSeams(const QImage &image, double scale)
{
    const auto edge = [scale](unsigned long cell, int size) {
        return static_cast<int>(std::floor(static_cast<double>(cell) * size * scale + 0.5));
    };
    for (unsigned long row = 0; row < kRows; ++row) {
        for (unsigned long col = 0; col < kColumns; ++col) {
            const QRect cell(QPoint(edge(col, kWidth), edge(row, kHeight)),
                             QPoint(edge(col + 1, kWidth) - 1, edge(row + 1, kHeight) - 1));
            const QRgb color = LetterLattice::lookAt({row, col}).background;
            for (const QPoint &corner :
                 {cell.topLeft(), cell.topRight(), cell.bottomLeft(), cell.bottomRight()})
                EXPECT_EQ(image.pixel(corner), color)
                    << "cell " << row << ", " << col << " at scale " << scale;
            const int background = backgroundPixels(image, cell, color);
            EXPECT_GT(background, 0);
            // Something is written in the middle of the cell.
            EXPECT_LT(background, cell.width() * cell.height());
        }
    }
}

TEST_F(LatticePainterTest, CellsMeetWithoutSeamsAtEveryScale)
{
    for (const double scale : {1.0, 1.25, 1.5, 1.75, 2.0, 3.0})
        expectCellsWithoutSeams(painted(scale), scale);
}

TEST_F(LatticePainterTest, TilesLookLikeCellsDrawnOneByOne)
{
    for (const double scale : {1.0, 2.0}) {
        QImage expected(painted(scale).size(), QImage::Format_RGB32);
        expected.setDevicePixelRatio(scale);
        QPainter painter(&expected);
        for (unsigned long row = 0; row < kRows; ++row) {
            for (unsigned long col = 0; col < kColumns; ++col)
                m_Letters->drawCell(painter, m_Canvas.lattice().cellRect({row, col}),
                                    LetterLattice::lookAt({row, col}));
        }
        painter.end();
        EXPECT_EQ(painted(scale), expected) << "scale " << scale;
    }
}

TEST_F(LatticePainterTest, ScrolledByWholeDevicePixelsTheSamePixelsAppearElsewhere)
{
    // 4 pixels of the canvas are 5 of the device.
    const QImage all = painted(1.25);
    const QImage scrolled = painted(1.25, {4 * 7, 4 * 3});
    const QRect seen(5 * 7, 5 * 3, all.width() - 5 * 7, all.height() - 5 * 3);
    EXPECT_EQ(scrolled.copy(0, 0, seen.width(), seen.height()), all.copy(seen));
}

TEST_F(LatticePainterTest, PartOfTheCanvasLooksAsItDoesInTheWhole)
{
    for (const double scale : {1.0, 1.25, 2.0}) {
        const QImage all = painted(scale);
        QImage image(all.size(), QImage::Format_RGB32);
        image.setDevicePixelRatio(scale);
        image.fill(Qt::magenta);
        // 20 and 40 are whole numbers of device pixels at each of the scales.
        const QRect part(20, 40, 100, 60);
        QPainter painter(&image);
        m_Canvas.drawArea(part, &painter);
        painter.end();
        const QRectF device(part.x() * scale, part.y() * scale, part.width() * scale,
                            part.height() * scale);
        EXPECT_EQ(image.copy(device.toRect()), all.copy(device.toRect())) << "scale " << scale;
        EXPECT_EQ(image.pixelColor(device.toRect().left() - 1, device.toRect().top()),
                  QColor(Qt::magenta));
    }
}

TEST_F(LatticePainterTest, OnlyExposedCellsAreRead)
{
    QImage image(m_Canvas.size(), QImage::Format_RGB32);
    QPainter painter(&image);
    // Two cells of one row, in tiles that do not exist yet.
    m_Canvas.drawArea(QRect(kWidth + 1, kHeight + 1, kWidth, 1), &painter);
    EXPECT_EQ(m_Letters->m_Drawn, 2);
}

TEST_F(LatticePainterTest, RepaintingDrawsNoLetterAgain)
{
    (void)painted(1);
    const int drawn = m_Letters->m_Drawn;
    (void)painted(1);
    EXPECT_EQ(m_Letters->m_Drawn, drawn);
}

TEST_F(LatticePainterTest, ARebuildWithTheSameFontKeepsTheTiles)
{
    (void)painted(1);
    m_Canvas.clear();
    const LetterLattice *rebuilt = giveLetters(m_Canvas, kRows, kColumns, kWidth, kHeight);
    (void)painted(1);
    EXPECT_EQ(rebuilt->m_Drawn, 0);
}

TEST_F(LatticePainterTest, DeviceWithoutPixelsGetsEveryCellDrawn)
{
    QPicture picture;
    QPainter painter(&picture);
    m_Canvas.drawArea(m_Canvas.rect(), &painter);
    painter.end();
    EXPECT_EQ(m_Letters->m_Drawn, static_cast<int>(kRows * kColumns));

    QImage image(m_Canvas.size(), QImage::Format_RGB32);
    QPainter player(&image);
    player.drawPicture(0, 0, picture);
    player.end();
    expectCellsWithoutSeams(image, 1);
}

TEST_F(LatticePainterTest, RotatedAndTinyPaintingsAreDrawnCellByCell)
{
    QImage image(300, 300, QImage::Format_RGB32);
    image.fill(Qt::magenta);
    QPainter painter(&image);
    painter.translate(290, 5);
    painter.rotate(90);
    m_Canvas.drawArea(m_Canvas.rect(), &painter);
    painter.end();
    EXPECT_EQ(image.pixel(288, 7), LetterLattice::lookAt({0, 0}).background);

    QPainter tiny(&image);
    tiny.scale(0.05, 0.05);
    m_Canvas.drawArea(m_Canvas.rect(), &tiny);
    tiny.end();
    EXPECT_NE(image.pixelColor(0, 0), QColor(Qt::magenta));
}

TEST_F(LatticePainterTest, LeavesThePainterAsItWas)
{
    QImage image(m_Canvas.size(), QImage::Format_RGB32);
    QPainter painter(&image);
    painter.translate(3, 4);
    const QTransform before = painter.transform();
    m_Canvas.drawArea(m_Canvas.rect(), &painter);
    EXPECT_EQ(painter.transform(), before);
    EXPECT_FALSE(painter.hasClipping());
}

} // namespace LatticePainterTest
