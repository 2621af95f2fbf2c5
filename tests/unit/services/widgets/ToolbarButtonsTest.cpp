// SPDX-License-Identifier: GPL-3.0-or-later
#include "ToolbarButtons.h"

#include <gtest/gtest.h>

using namespace TAMBO::services;

namespace ToolbarButtonsTest {

TEST(ToolbarButtons, AreReadInOrder)
{
    std::vector<QString> problems;
    const auto buttons = parseToolbarButtons(
        "9|font.svg|Font|Choose a font; - ;11 | a.svg | Realign | Again | toggle;", problems);
    ASSERT_EQ(buttons.size(), 3U);
    EXPECT_EQ(buttons[0].number, 9);
    EXPECT_EQ(buttons[0].icon, "font.svg");
    EXPECT_EQ(buttons[0].text, "Font");
    EXPECT_EQ(buttons[0].toolTip, "Choose a font");
    EXPECT_FALSE(buttons[0].isToggle);
    EXPECT_TRUE(buttons[1].isSeparator);
    EXPECT_EQ(buttons[2].number, 11);
    EXPECT_EQ(buttons[2].text, "Realign");
    EXPECT_TRUE(buttons[2].isToggle);
    EXPECT_TRUE(problems.empty());
}

TEST(ToolbarButtons, MissingFieldsFollowFromOthers)
{
    std::vector<QString> problems;
    const auto buttons = parseToolbarButtons("3;-4||Text", problems);
    ASSERT_EQ(buttons.size(), 2U);
    EXPECT_EQ(buttons[0].number, 3);
    EXPECT_EQ(buttons[0].text, "3");
    EXPECT_EQ(buttons[0].toolTip, "3");
    EXPECT_TRUE(buttons[0].icon.isEmpty());
    EXPECT_EQ(buttons[1].number, -4);
    EXPECT_EQ(buttons[1].toolTip, "Text");
}

TEST(ToolbarButtons, WhatHasNoNumberIsToldAndLeftOut)
{
    std::vector<QString> problems;
    const auto buttons = parseToolbarButtons("font|a.svg;2|b.svg;;", problems);
    ASSERT_EQ(buttons.size(), 1U);
    EXPECT_EQ(buttons[0].number, 2);
    ASSERT_EQ(problems.size(), 1U);
    EXPECT_EQ(problems[0], "\"font|a.svg\" does not start with a number");
}

TEST(ToolbarButtons, AnEmptyDescriptionHasNone)
{
    std::vector<QString> problems;
    EXPECT_TRUE(parseToolbarButtons("", problems).empty());
    EXPECT_TRUE(problems.empty());
}

} // namespace ToolbarButtonsTest
