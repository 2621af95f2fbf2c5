// SPDX-License-Identifier: GPL-3.0-or-later
#include "WorkbenchMenus.h"

#include "support/LogLines.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>

#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>

namespace WorkbenchMenusTest {

using TAMBO::services::WorkbenchMenus;

class PluginMenus : public ::testing::Test
{
protected:
    void makeBar()
    {
        m_Bar = std::make_unique<QMenuBar>();
        m_Bar->addMenu("File");
        m_Help = m_Bar->addMenu("Help");
        WorkbenchMenus::instance().setMenuBar(*m_Bar, m_Help->menuAction());
    }
    [[nodiscard]] QStringList titles() const
    {
        QStringList titles;
        for (const QAction *const action : m_Bar->actions())
            titles << action->text();
        return titles;
    }

    std::unique_ptr<QMenuBar> m_Bar;
    QMenu *m_Help = nullptr;
};

TEST_F(PluginMenus, ComeBeforeHelpInTheOrderInWhichTheyWereMade)
{
    const WorkbenchMenu first("First", [](QMenu &menu) { menu.addAction("one"); });
    makeBar();
    const WorkbenchMenu second("Second", [](QMenu &) {});
    EXPECT_EQ(titles(), (QStringList{"File", "First", "Second", "Help"}));
    EXPECT_EQ(m_Bar->actions().at(1)->menu()->actions().front()->text(), "one");
}

TEST_F(PluginMenus, GoWithWhoeverHasThem)
{
    makeBar();
    auto menu = std::make_unique<WorkbenchMenu>("Menu", [](QMenu &) {});
    EXPECT_EQ(titles().size(), 3);
    menu.reset();
    EXPECT_EQ(titles(), (QStringList{"File", "Help"}));
}

TEST_F(PluginMenus, AreFilledAgainForAnotherMainWindow)
{
    int filled = 0;
    const WorkbenchMenu menu("Menu", [&filled](QMenu &) { ++filled; });
    EXPECT_EQ(filled, 0);
    makeBar();
    m_Bar.reset();
    makeBar();
    EXPECT_EQ(filled, 2);
    EXPECT_EQ(titles(), (QStringList{"File", "Menu", "Help"}));
}

TEST_F(PluginMenus, WithoutAnythingToFillThemThereAreNone)
{
    makeBar();
    const WorkbenchMenu menu("Menu", nullptr);
    EXPECT_EQ(titles(), (QStringList{"File", "Help"}));
}

TEST_F(PluginMenus, WhatIsThrownIsLogged)
{
    makeBar();
    const LogLines log;
    const WorkbenchMenu menu("Menu", [](QMenu &) { throw std::runtime_error("no luck"); });
    EXPECT_EQ(log.texts(), QStringList("The menu \"Menu\" could not be filled: no luck"));
    EXPECT_EQ(titles(), (QStringList{"File", "Menu", "Help"}));
}

} // namespace WorkbenchMenusTest
