// SPDX-License-Identifier: GPL-3.0-or-later
#include "NumberingItems.h"
#include "CanvasFixture.h"
#include "QCanvas.h"

#include <QCoreApplication>
#include <QImage>
#include <QPainter>

#include <memory>

namespace NumberingItemsTest {

class NumberingItemsOf : public CanvasFixture
{
protected:
    NumberingItems &number(const std::string &row)
    {
        const NumberingItems::Measures measures{10, {10, 15}, m_Font, m_Font, true, true};
        m_Canvas.resize(int(row.size()) * 10, 60);
        auto items = std::make_unique<NumberingItems>(&makeAlignment({row}), measures, m_Made);
        NumberingItems &series = *items;
        m_Canvas.addSeries(std::move(items));
        return series;
    }

    QCanvasItemList m_Made;
    QCanvas m_Canvas;
};

TEST_F(NumberingItemsOf, NoneIsListedBeforeSomebodyAsksForIt)
{
    number(std::string(40, 'A'));

    EXPECT_TRUE(m_Made.isEmpty());
}

TEST_F(NumberingItemsOf, AllAreListedWhenAllHaveBeenAskedFor)
{
    number(std::string(40, 'A'));

    const QCanvasItemList all = m_Canvas.allItems();

    EXPECT_EQ(all.size(), 4);
    EXPECT_EQ(m_Made, all);
}

TEST_F(NumberingItemsOf, OneThatSomebodyDeletesLeavesTheList)
{
    number(std::string(40, 'A'));
    const QCanvasItemList all = m_Canvas.allItems();

    delete all.at(1);

    EXPECT_EQ(m_Made, QCanvasItemList({all.at(0), all.at(2), all.at(3)}));
}

TEST_F(NumberingItemsOf, OnesThatGoBecauseThereAreManyLeaveTheList)
{
    number(std::string(200'000, 'A'));
    QImage image(10, 60, QImage::Format_RGB32);
    QPainter painter(&image);
    ASSERT_EQ(m_Canvas.allItems().size(), 20'000);
    // Until then the canvas keeps them for who has asked.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCoreApplication::processEvents();

    m_Canvas.drawArea(QRect(90, 0, 10, 60), &painter);

    EXPECT_LT(m_Made.size(), 10);
    EXPECT_FALSE(m_Made.isEmpty());
}

} // namespace NumberingItemsTest
