// SPDX-License-Identifier: GPL-3.0-or-later
#include "GuideLabel.h"

#include "GuideTexts.h"

#include <gtest/gtest.h>

#include <random>

namespace GuideLabelTest {

using companion::guideLabelPlace;

TEST(GuideLabel, CoversNoMovedCellWhereThereIsRoomBelowOrAbove)
{
    std::mt19937 random(3);
    const auto below = [&random](int end) { return int(random() % unsigned(end)); };
    int aboves = 0;
    for (int round = 0; round < 5000; ++round) {
        const QSize area(300 + below(1500), 150 + below(900));
        const QSize label(100 + below(180), 30 + below(60));
        // Also of columns that are out of sight.
        const QRect moved(below(area.width()) - 200, below(area.height() - 20), 10 + below(3000),
                          20);
        const QPoint pointer(below(area.width()), moved.center().y());
        const QRect place = guideLabelPlace(label, area, moved, pointer);
        ASSERT_EQ(place.size(), label);
        ASSERT_TRUE(QRect(QPoint(0, 0), area).contains(place));
        const int room = std::max(moved.top(), area.height() - moved.bottom() - 1);
        if (room < label.height() + 8)
            continue;
        ASSERT_FALSE(place.intersects(moved));
        aboves += place.bottom() < moved.top() ? 1 : 0;
    }
    EXPECT_GT(aboves, 100);
}

TEST(GuideLabel, StaysInTheAreaAndOffThePointerWhenAllRowsMove)
{
    const QSize area(800, 400);
    const QRect moved(0, 0, 800, 400);
    for (const QPoint &pointer :
         {QPoint(10, 10), QPoint(790, 10), QPoint(10, 390), QPoint(790, 390)}) {
        const QRect place = guideLabelPlace({200, 80}, area, moved, pointer);
        EXPECT_TRUE(QRect(QPoint(0, 0), area).contains(place));
        EXPECT_FALSE(place.contains(pointer));
    }
}

TEST(GuideTexts, CountAsPeopleDoAndHaveADashForNothing)
{
    EXPECT_EQ(companion::columnsText(0, 1), QString("Column 1"));
    EXPECT_EQ(companion::columnsText(117, 131), QString("Columns 118–131"));
    EXPECT_EQ(companion::changeText(3.421, 2.866), QString("3.42 → 2.87 Å"));
    EXPECT_EQ(companion::changeText(std::nullopt, 2), QString("– → 2.00 Å"));
}

} // namespace GuideLabelTest
