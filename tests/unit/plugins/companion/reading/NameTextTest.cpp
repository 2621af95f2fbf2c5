// SPDX-License-Identifier: GPL-3.0-or-later
#include "NameText.h"

#include <QFont>
#include <QFontMetrics>

#include <gtest/gtest.h>

namespace NameTextTest {

using companion::cutInTheMiddle;

const QString kName = QStringLiteral("Q9XYZ1_DROME/318-350");

TEST(NameText, ANameThatHasRoomIsWhole)
{
    const QFontMetrics metrics{QFont()};
    EXPECT_EQ(cutInTheMiddle(kName, metrics.horizontalAdvance(kName), metrics), kName);
}

TEST(NameText, ALongNameKeepsBothEnds)
{
    const QFontMetrics metrics{QFont()};
    const int width = metrics.horizontalAdvance(kName) * 2 / 3;
    const QString cut = cutInTheMiddle(kName, width, metrics);
    EXPECT_LE(metrics.horizontalAdvance(cut), width);
    EXPECT_TRUE(cut.startsWith(QStringLiteral("Q9")));
    EXPECT_TRUE(cut.endsWith(QStringLiteral("50")));
    EXPECT_TRUE(cut.contains(QChar(0x2026)));
}

TEST(NameText, WithoutRoomNothingIsLeft)
{
    EXPECT_EQ(cutInTheMiddle(kName, 1, QFontMetrics{QFont()}), QString());
}

} // namespace NameTextTest
