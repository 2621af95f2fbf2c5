// SPDX-License-Identifier: GPL-3.0-or-later
#include "TextColors.h"

#include "CellLooks.h"
#include "ColumnRules.h"
#include "TrackPainting.h"
#include "support/Contrast.h"

#include <gtest/gtest.h>

namespace TextColorsTest {

TEST(TextColors, CanBeReadOnWhite)
{
    for (const QColor &color : companion::kTextsOnWhite)
        EXPECT_GE(contrastOf(color, Qt::white), kReadableContrast) << color.name().toStdString();
}

TEST(TextColors, OfTheLogoCanBeReadOnWhite)
{
    for (char letter = 'A'; letter <= 'Z'; ++letter)
        EXPECT_GE(contrastOf(companion::logoColor(letter), Qt::white), kReadableContrast) << letter;
}

TEST(TextColors, OfCellsCanBeReadOnTheShadesOfConservation)
{
    for (const auto &entry : companion::legendOf(companion::ColumnRule::Conservation).entries) {
        const QColor ground = entry.color.toQColor();
        EXPECT_GE(
            contrastOf(companion::hasWhiteLetter(ground.rgb()) ? Qt::white : Qt::black, ground),
            kReadableContrast)
            << entry.label;
    }
}

TEST(TextColors, OfWarningsCanBeReadOnLightAndDarkDocks)
{
    for (const QColor &ground :
         {QColor(Qt::white), QColor(0xef, 0xef, 0xef), QColor(0xe0, 0xdc, 0xd8),
          QColor(0x3b, 0x3b, 0x3b), QColor(0x23, 0x26, 0x29), QColor(Qt::black)})
        EXPECT_GE(contrastOf(companion::warningTextOn(ground), ground), kReadableContrast)
            << ground.name().toStdString();
}

} // namespace TextColorsTest
