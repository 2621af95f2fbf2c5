// SPDX-License-Identifier: GPL-3.0-or-later
// Plug-ins as the workbench uses them.
#include "Plugins.h"

#include "AppFixture.h"
#include "ConfigStore.h"
#include "LogBook.h"
#include "PluginsDialog.h"
#include "SelectObjectAnswers.h"

#include <QDir>
#include <QFile>
#include <QLabel>
#include <QTreeWidget>
#include <QWidget>

namespace PluginsTest {

using namespace TAMBO;
using services::PluginRecord;
using services::SelectObjectAnswers;
using TAMBO::app::Plugins;

class PluginsTest : public AppFixture
{
protected:
    // Copies, so that nothing is loaded from the previous case.
    void install(const QString &library, const QString &name)
    {
        EXPECT_TRUE(QFile::copy(QStringLiteral(PLUGIN_DIR "/") + library, m_Folder.filePath(name)));
    }
    void loadAll() { m_Plugins.loadAll(m_Folder.path()); }
    const PluginRecord &record(const QString &name) const
    {
        const PluginRecord *found = m_Plugins.loader().find(name);
        EXPECT_NE(found, nullptr);
        return *found;
    }

    Plugins m_Plugins;
};

TEST_F(PluginsTest, AnEmptyOrMissingDirectoryHasNone)
{
    loadAll();
    m_Plugins.loadAll(m_Folder.filePath("none"));
    EXPECT_TRUE(m_Plugins.loader().records().empty());
    EXPECT_FALSE(m_Plugins.hasUsable());
    EXPECT_EQ(m_Plugins.show(alignment("x", {"AC"})), nullptr);
}

TEST_F(PluginsTest, ALibraryUnderTwoNamesIsLoadedOnce)
{
    install("NoWindowPlugin.so", "libA.so.0");
    QFile::link(m_Folder.filePath("libA.so.0"), m_Folder.filePath("libA.so"));
    loadAll();
    EXPECT_EQ(m_Plugins.loader().records().size(), 1U);
}

TEST_F(PluginsTest, ABadLibraryIsRecordedAndLogged)
{
    services::LogBook::instance().clear();
    write("libBad.so", "no library");
    install("NoWindowPlugin.so", "libGood.so");
    loadAll();
    EXPECT_FALSE(record("libBad.so").isUsable());
    EXPECT_TRUE(record("libGood.so").isUsable());
    EXPECT_TRUE(m_Plugins.hasUsable());
    const auto entries = services::LogBook::instance().entries();
    ASSERT_EQ(entries.size(), 1U);
    EXPECT_TRUE(entries[0].text.contains("libBad.so"));
    EXPECT_EQ(entries[0].severity, Logger::Severity::Error);
}

TEST_F(PluginsTest, TheDialogShowsStateAndReasonOfEach)
{
    write("libBad.so", "no library");
    install("NoWindowPlugin.so", "libGood.so");
    loadAll();
    const app::PluginsDialog dialog(m_Plugins.loader(), m_Folder.path(), "Modelling?", nullptr);
    const auto *list = dialog.findChild<QTreeWidget *>("PluginList");
    ASSERT_EQ(list->topLevelItemCount(), 2);
    EXPECT_EQ(list->topLevelItem(0)->text(2), "cannot be loaded");
    EXPECT_EQ(list->topLevelItem(0)->text(3), record("libBad.so").reason);
    EXPECT_FALSE(list->topLevelItem(0)->text(3).isEmpty());
    EXPECT_EQ(list->topLevelItem(1)->text(0), "Good");
    EXPECT_EQ(list->topLevelItem(1)->text(2), "loaded");
    EXPECT_EQ(dialog.findChild<QLabel *>("ModellingState")->text(), "Modelling?");
}

TEST_F(PluginsTest, TheTitleComesFromTheSettings)
{
    install("NoWindowPlugin.so", "libGood.so.0");
    loadAll();
    EXPECT_EQ(Plugins::titleOf(record("libGood.so.0")), "Good");
    services::ConfigStore::instance().setValue("Plugins", "Good", "Good Things");
    EXPECT_EQ(Plugins::titleOf(record("libGood.so.0")), "Good Things");
    services::ConfigStore::instance().reset("Plugins", "Good");
}

TEST_F(PluginsTest, TheEditorHasItsTitle)
{
    PluginRecord editor;
    editor.name = QStringLiteral("libKALMO2.so.0");
    EXPECT_EQ(Plugins::titleOf(editor), "Alignment Editor");
}

TEST_F(PluginsTest, OpeningGivesTheNewWindow)
{
    install("WindowPlugin.so", "libW.so");
    install("NoWindowPlugin.so", "libN.so");
    loadAll();
    QWidget *first = m_Plugins.open(record("libW.so"));
    QWidget *second = m_Plugins.open(record("libW.so"));
    ASSERT_NE(first, nullptr);
    ASSERT_NE(second, nullptr);
    EXPECT_NE(first, second);
    EXPECT_EQ(m_Plugins.open(record("libN.so")), nullptr);
    delete first;
    delete second;
}

TEST_F(PluginsTest, AnAlignmentIsShownByThePluginThatCan)
{
    install("NoWindowPlugin.so", "liba.so");
    install("WindowPlugin.so", "libb.so");
    loadAll();
    QWidget *window = m_Plugins.show(alignment("x", {"AC"}));
    ASSERT_NE(window, nullptr);
    EXPECT_TRUE(window->property("asked").toBool());
    // It did not ask, and the next window must not be answered for it.
    EXPECT_TRUE(SelectObjectAnswers::isEmpty());
    delete window;
}

} // namespace PluginsTest
