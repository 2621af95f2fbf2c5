// SPDX-License-Identifier: GPL-3.0-or-later
#include "UndoActions.h"

#include "BaseWindow.h"

#include <QAction>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

using TAMBO::services::UndoActions;

namespace UndoActionsTest {

class UndoActionsTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        for (BaseWindow *window : {&m_First, &m_Second}) {
            window->show();
            ASSERT_TRUE(QTest::qWaitForWindowExposed(window));
        }
    }
    void TearDown() override
    {
        UndoActions::undo()->setEnabled(false);
        UndoActions::redo()->setEnabled(false);
    }
    static void activate(BaseWindow &window)
    {
        window.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    }

    BaseWindow m_First{"One", QSize(300, 200), QString(), false, nullptr, nullptr};
    BaseWindow m_Second{"Two", QSize(300, 200), QString(), false, nullptr, nullptr};
};

TEST_F(UndoActionsTest, AreDisabledUntilTheWorkbenchConnectsThem)
{
    EXPECT_FALSE(UndoActions::undo()->isEnabled());
    EXPECT_FALSE(UndoActions::redo()->isEnabled());
    const QSignalSpy undone(UndoActions::undo(), &QAction::triggered);
    activate(m_First);
    QTest::keyClick(&m_First, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(undone.count(), 0);
}

TEST_F(UndoActionsTest, TheirKeysWorkInEveryWindow)
{
    UndoActions::undo()->setEnabled(true);
    UndoActions::redo()->setEnabled(true);
    const QSignalSpy undone(UndoActions::undo(), &QAction::triggered);
    const QSignalSpy redone(UndoActions::redo(), &QAction::triggered);
    int expected = 0;
    for (BaseWindow *window : {&m_First, &m_Second}) {
        activate(*window);
        QTest::keyClick(window, Qt::Key_Z, Qt::ControlModifier);
        EXPECT_EQ(undone.count(), ++expected);
        QTest::keyClick(window, Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
        EXPECT_EQ(redone.count(), 2 * expected - 1);
        QTest::keyClick(window, Qt::Key_Y, Qt::ControlModifier);
        EXPECT_EQ(redone.count(), 2 * expected);
    }
}

} // namespace UndoActionsTest
