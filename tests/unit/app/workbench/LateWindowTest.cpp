// SPDX-License-Identifier: GPL-3.0-or-later
#include "LateWindow.h"

#include "support/WaitUntil.h"

#include <QTest>
#include <QWidget>

#include <gtest/gtest.h>

#include <memory>

namespace LateWindowTest {

using TAMBO::app::LateWindow;

class LateWindowTest : public ::testing::Test
{
protected:
    [[nodiscard]] bool isShown() const { return m_Window != nullptr && m_Window->isVisible(); }

    std::unique_ptr<QWidget> m_Window;
    QWidget m_Editor;
    LateWindow m_Late{[this]() -> QWidget & {
        if (m_Window == nullptr)
            m_Window = std::make_unique<QWidget>();
        return *m_Window;
    }};
};

TEST_F(LateWindowTest, WhenNothingElseComesItIsShownAfterAWhile)
{
    m_Late.expect();
    EXPECT_EQ(m_Window, nullptr);
    EXPECT_TRUE(waitUntil([this] { return isShown(); }));
    EXPECT_FALSE(m_Late.isExpected());
}

TEST_F(LateWindowTest, ItComesWhenTheOtherWindowIsPainted)
{
    m_Late.expect();
    m_Editor.show();
    m_Late.showBelow(m_Editor);
    EXPECT_EQ(m_Window, nullptr) << "not even made";
    EXPECT_TRUE(waitUntil([this] { return isShown(); }));
    EXPECT_TRUE(m_Editor.isVisible());
    EXPECT_FALSE(m_Window->testAttribute(Qt::WA_ShowWithoutActivating)) << "the next time it may";
}

TEST_F(LateWindowTest, ItComesWithoutTheOtherWindowWhenThatHasBeenClosed)
{
    m_Late.expect();
    auto editor = std::make_unique<QWidget>();
    editor->show();
    m_Late.showBelow(*editor);
    editor.reset();
    EXPECT_TRUE(waitUntil([this] { return isShown(); }));
}

TEST_F(LateWindowTest, AWindowThatIsNeverSeenDoesNotHoldItUp)
{
    m_Late.expect();
    m_Late.showBelow(m_Editor);
    EXPECT_TRUE(waitUntil([this] { return isShown(); }));
}

TEST_F(LateWindowTest, ItIsShownOnceAndNotUnasked)
{
    m_Late.showNow();
    m_Late.showBelow(m_Editor);
    EXPECT_EQ(m_Window, nullptr);
    m_Late.expect();
    m_Late.showNow();
    ASSERT_TRUE(isShown());
    m_Window->hide();
    m_Late.showNow();
    EXPECT_FALSE(isShown());
}

} // namespace LateWindowTest
