// SPDX-License-Identifier: GPL-3.0-or-later
#include "ZoomSteps.h"

#include <gtest/gtest.h>

namespace ZoomStepsTest {

using companion::zoomedIn;
using companion::zoomedOut;

constexpr QSize kOwn(13, 19);
constexpr QSize kLargest(58, 80);

TEST(ZoomSteps, OutEndsAtOnePixelACell)
{
    QSize size = kOwn;
    for (int step = 0; step < 100; ++step)
        size = zoomedOut(size, kOwn);
    EXPECT_EQ(size, QSize(1, 1));
}

TEST(ZoomSteps, InEndsAtTheLargestCell)
{
    QSize size = kOwn;
    for (int step = 0; step < 100; ++step)
        size = zoomedIn(size, kOwn, kLargest);
    EXPECT_EQ(size, kLargest);
}

TEST(ZoomSteps, EachStepMakesCellsWiderOrNarrower)
{
    for (QSize size = {1, 1}; size.width() < kLargest.width();) {
        const QSize next = zoomedIn(size, kOwn, kLargest);
        EXPECT_GT(next.width(), size.width());
        EXPECT_GE(next.height(), size.height());
        size = next;
    }
    for (QSize size = kLargest; size.width() > 1;) {
        const QSize next = zoomedOut(size, kOwn);
        EXPECT_LT(next.width(), size.width());
        EXPECT_LE(next.height(), size.height());
        size = next;
    }
}

TEST(ZoomSteps, TheWindowsOwnSizeIsAStopBothWays)
{
    bool hasStopped = false;
    for (QSize size = {1, 1}; size.width() <= kOwn.width(); size = zoomedIn(size, kOwn, kLargest))
        hasStopped |= size == kOwn;
    EXPECT_TRUE(hasStopped);
    hasStopped = false;
    for (QSize size = kLargest; size.width() >= kOwn.width(); size = zoomedOut(size, kOwn))
        hasStopped |= size == kOwn;
    EXPECT_TRUE(hasStopped);
}

} // namespace ZoomStepsTest
