// SPDX-License-Identifier: GPL-3.0-or-later
// Cells without letters, which are painted as colours straight away.
#include "LetterLattice.h"

#include <QImage>
#include <QPainter>
#include <QPicture>

#include <gtest/gtest.h>

#include <cmath>

namespace LatticeColorsTest {

constexpr unsigned long kRows = 70;
constexpr unsigned long kColumns = 90;

class Colors : public LetterLattice
{
public:
    bool hasLetters() const override { return false; }
    void drawCell(QPainter &painter, const QRectF &rect, const CellLook &look) const override
    {
        ++m_Drawn;
        painter.fillRect(rect, QColor::fromRgb(look.background));
    }
};

class LatticeColors : public ::testing::TestWithParam<QSize>
{
protected:
    void show(const QSize &cell)
    {
        auto source = std::make_unique<Colors>();
        m_Colors = source.get();
        m_Canvas.resize(static_cast<int>(kColumns + 1) * cell.width(),
                        static_cast<int>(kRows + 1) * cell.height());
        m_Canvas.setLattice(CellLattice(kRows, kColumns, cell.width(), cell.height()),
                            std::move(source));
    }
    [[nodiscard]] QImage painted(double scale, const QRect &part)
    {
        QImage image(static_cast<int>(std::ceil(m_Canvas.width() * scale)),
                     static_cast<int>(std::ceil(m_Canvas.height() * scale)), QImage::Format_RGB32);
        image.setDevicePixelRatio(scale);
        image.fill(Qt::magenta);
        QPainter painter(&image);
        m_Canvas.drawArea(part, &painter);
        return image;
    }

    QCanvas m_Canvas;
    Colors *m_Colors = nullptr;
};

TEST_P(LatticeColors, EveryPixelIsThatOfItsCell)
{
    show(GetParam());
    for (const double scale : {1.0, 1.25, 2.0}) {
        const QImage image = painted(scale, m_Canvas.rect());
        const auto edge = [scale](unsigned long cell, int size) {
            return static_cast<int>(std::floor(static_cast<double>(cell) * size * scale + 0.5));
        };
        for (unsigned long row = 0; row < kRows; ++row) {
            for (unsigned long col = 0; col < kColumns; ++col) {
                const QRgb color = LetterLattice::lookAt({row, col}).background;
                const QPoint first(edge(col, GetParam().width()), edge(row, GetParam().height()));
                const QPoint last(edge(col + 1, GetParam().width()) - 1,
                                  edge(row + 1, GetParam().height()) - 1);
                ASSERT_EQ(image.pixel(first), color) << row << ", " << col << " at " << scale;
                ASSERT_EQ(image.pixel(last), color) << row << ", " << col << " at " << scale;
            }
        }
    }
    EXPECT_EQ(m_Colors->m_Drawn, 0) << "cells were drawn one by one";
}

TEST_P(LatticeColors, APartLooksAsItDoesInTheWhole)
{
    show(GetParam());
    const QRect part(17, 13, 40, 31);
    const QImage all = painted(1, m_Canvas.rect());
    const QImage image = painted(1, part);
    EXPECT_EQ(image.copy(part), all.copy(part));
    EXPECT_EQ(image.pixelColor(part.topLeft() - QPoint(1, 0)), QColor(Qt::magenta));
    EXPECT_EQ(image.pixelColor(part.bottomRight() + QPoint(0, 1)), QColor(Qt::magenta));
}

INSTANTIATE_TEST_SUITE_P(Sizes, LatticeColors,
                         ::testing::Values(QSize(1, 1), QSize(2, 1), QSize(3, 5), QSize(1, 60),
                                           QSize(7, 2)),
                         [](const auto &info) {
                             return "Of" + std::to_string(info.param.width()) + "By" +
                                    std::to_string(info.param.height());
                         });

TEST_F(LatticeColors, ADeviceWithoutPixelsGetsEveryCellDrawn)
{
    show({2, 2});
    QPicture picture;
    QPainter painter(&picture);
    m_Canvas.drawArea(m_Canvas.rect(), &painter);
    painter.end();
    EXPECT_EQ(m_Colors->m_Drawn, static_cast<int>(kRows * kColumns));
}

TEST_F(LatticeColors, SmallerThanAPixelEveryCellIsDrawn)
{
    show({1, 1});
    QImage image(m_Canvas.size(), QImage::Format_RGB32);
    QPainter painter(&image);
    painter.scale(0.5, 0.5);
    m_Canvas.drawArea(m_Canvas.rect(), &painter);
    EXPECT_EQ(m_Colors->m_Drawn, static_cast<int>(kRows * kColumns));
}

} // namespace LatticeColorsTest
