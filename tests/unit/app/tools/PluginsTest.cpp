// SPDX-License-Identifier: GPL-3.0-or-later
// Plug-ins as the workbench uses them.
#include "Plugins.h"

#include "AppFixture.h"
#include "ConfigStore.h"
#include "HelpPages.h"
#include "PluginsDialog.h"
#include "SelectObjectAnswers.h"
#include "support/LogLines.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QTreeWidget>
#include <QWidget>

namespace PluginsTest {

using namespace TAMBO;
using services::ConfigStore;
using services::PluginRecord;
using services::PluginState;
using services::SelectObjectAnswers;
using TAMBO::app::Plugins;

class PluginsTest : public AppFixture
{
protected:
    PluginsTest()
    {
        QDir(m_Folder.path()).mkdir("first");
        QDir(m_Folder.path()).mkdir("second");
    }
    ~PluginsTest() override { ConfigStore::setInstance(nullptr); }

    // Copies, so that nothing is loaded from the previous case. Only one with a descriptor is known
    // to show alignments.
    void install(const QString &library, const QString &name, const QByteArray &descriptor = {})
    {
        const QString file = m_Folder.filePath(name.contains('/') ? name : "first/" + name);
        EXPECT_TRUE(QFile::copy(QStringLiteral(PLUGIN_DIR "/") + library, file));
        if (!descriptor.isEmpty())
            writeFile(services::PluginDescriptor::fileOf(file),
                      "[Plugin]\nKit = 1.0\n" + descriptor);
    }
    static void writeFile(const QString &path, const QByteArray &text)
    {
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
    }
    void installViewer(const QString &name, const QByteArray &more = {})
    {
        install("WindowPlugin.so", name, "Role = alignments\n" + more);
    }
    const PluginRecord &record(const QString &name) const
    {
        const PluginRecord *found = m_Plugins.loader().find(name);
        EXPECT_NE(found, nullptr) << name.toStdString();
        return *found;
    }
    // How often Execute0 of a copy of NoWindowPlugin was called.
    static int callsOfTool() { return qApp->property("NoWindowPluginCalls").toInt(); }
    static std::string failureOf(const Result<QWidget *> &shown)
    {
        return shown ? "shown" : shown.error().message();
    }

    Plugins m_Plugins{
        services::PluginFolders({{m_Folder.filePath("first")}, {m_Folder.filePath("second")}})};
    const LogLines m_Log;
};

TEST_F(PluginsTest, EmptyAndMissingFoldersHaveNone)
{
    QDir(m_Folder.path()).rmdir("second");
    m_Plugins.loadAll();
    EXPECT_TRUE(m_Plugins.loader().records().empty());
    EXPECT_TRUE(m_Plugins.alignmentViewers().empty());
    EXPECT_EQ(failureOf(m_Plugins.show(alignment("x", {"AC"}))),
              "there is no alignment editor in " + m_Folder.filePath("first").toStdString() + ", " +
                  m_Folder.filePath("second").toStdString());
    EXPECT_EQ(m_Log.texts(), QStringList());
}

TEST_F(PluginsTest, ALibraryUnderTwoNamesIsLoadedOnce)
{
    install("NoWindowPlugin.so", "libA.so.0");
    QFile::link(m_Folder.filePath("first/libA.so.0"), m_Folder.filePath("first/libA.so"));
    m_Plugins.loadAll();
    EXPECT_EQ(m_Plugins.loader().records().size(), 1U);
    EXPECT_EQ(m_Log.count(), 0);
}

TEST_F(PluginsTest, OfTwoFilesOfOneNameTheFirstIsLoaded)
{
    install("NoWindowPlugin.so", "second/libA.so.0");
    install("NoWindowPlugin.so", "first/libA.so.0");
    m_Plugins.loadAll();
    ASSERT_EQ(m_Plugins.loader().records().size(), 2U);
    EXPECT_EQ(m_Plugins.loader().records()[0].state, PluginState::Loaded);
    EXPECT_EQ(m_Plugins.loader().records()[1].state, PluginState::Overruled);
    EXPECT_EQ(m_Log.texts(), QStringList(m_Plugins.loader().records()[1].reason));
}

TEST_F(PluginsTest, ABadLibraryIsRecordedAndLogged)
{
    writeFile(m_Folder.filePath("first/libBad.so"), "no library");
    install("NoWindowPlugin.so", "libGood.so");
    m_Plugins.loadAll();
    EXPECT_FALSE(record("libBad.so").isUsable());
    EXPECT_TRUE(record("libGood.so").isUsable());
    ASSERT_EQ(m_Log.count(), 1);
    EXPECT_TRUE(m_Log.texts().front().contains("libBad.so"));
}

TEST_F(PluginsTest, TheDialogShowsFolderStateAndReasonOfEach)
{
    writeFile(m_Folder.filePath("first/libBad.so"), "no library");
    install("NoWindowPlugin.so", "libGood.so");
    install("NoWindowPlugin.so", "libNew.so");
    writeFile(m_Folder.filePath("first/libNew.plugin"), "[Plugin]\nKit = 9.0\nTitle = Newer\n");
    install("NoWindowPlugin.so", "libOdd.so", "Role = odd\n");
    install("NoWindowPlugin.so", "second/libGood.so");
    m_Plugins.loadAll();
    const app::PluginsDialog dialog(m_Plugins, "Modelling?", nullptr);
    const auto *list = dialog.findChild<QTreeWidget *>("PluginList");
    const std::vector<QStringList> expected = {
        {"Bad", "libBad.so", m_Folder.filePath("first"), "cannot be loaded"},
        {"Good", "libGood.so", m_Folder.filePath("first"), "loaded"},
        {"Newer", "libNew.so", m_Folder.filePath("first"), "wrong version"},
        {"Odd", "libOdd.so", m_Folder.filePath("first"), "bad descriptor"},
        {"Good", "libGood.so", m_Folder.filePath("second"), "not used"},
    };
    ASSERT_EQ(list->topLevelItemCount(), int(expected.size()));
    for (int row = 0; row < list->topLevelItemCount(); ++row) {
        const QTreeWidgetItem &item = *list->topLevelItem(row);
        for (int column = 0; column < 4; ++column)
            EXPECT_EQ(item.text(column), expected[std::size_t(row)][column]) << row;
        EXPECT_EQ(item.text(4), m_Plugins.loader().records()[std::size_t(row)].reason) << row;
        EXPECT_EQ(item.text(4).isEmpty(), item.text(3) == "loaded") << row;
        EXPECT_FALSE(item.icon(0).isNull());
    }
    // The reason in full, of the first that has one and of the one that is picked.
    auto *picked = dialog.findChild<QTreeWidget *>("PluginList");
    const auto *reason = dialog.findChild<QLabel *>("PluginReason");
    EXPECT_EQ(reason->text(), m_Plugins.loader().records()[0].reason);
    picked->setCurrentItem(picked->topLevelItem(2));
    EXPECT_EQ(reason->text(), m_Plugins.loader().records()[2].reason);
    picked->setCurrentItem(picked->topLevelItem(1));
    EXPECT_EQ(reason->text(), "");
    EXPECT_TRUE(dialog.findChild<QLabel *>("PluginFolders")
                    ->text()
                    .endsWith(m_Folder.filePath("first") + "\n" + m_Folder.filePath("second")));
    EXPECT_EQ(dialog.findChild<QLabel *>("ModellingState")->text(), "Modelling?");
}

TEST_F(PluginsTest, TheTitleComesFromTheSettingsOrTheDescriptor)
{
    install("NoWindowPlugin.so", "libGood.so.0");
    install("NoWindowPlugin.so", "libBest.so.0", "Name = Best\nTitle = The Best\n");
    m_Plugins.loadAll();
    EXPECT_EQ(Plugins::titleOf(record("libGood.so.0")), "Good");
    EXPECT_EQ(Plugins::titleOf(record("libBest.so.0")), "The Best");
    ConfigStore::instance().setValue("Plugins", "Good", "Good Things");
    ConfigStore::instance().setValue("Plugins", "Best", "Better");
    EXPECT_EQ(Plugins::titleOf(record("libGood.so.0")), "Good Things");
    EXPECT_EQ(Plugins::titleOf(record("libBest.so.0")), "Better");
}

TEST_F(PluginsTest, TheIconIsItsOwnOrThatOfAllPlugins)
{
    install("NoWindowPlugin.so", "libA.so", "Icon = editor.svg\n");
    install("NoWindowPlugin.so", "libB.so", "Icon = plug-in.svg\n");
    install("NoWindowPlugin.so", "libC.so");
    m_Plugins.loadAll();
    const auto picture = [this](const char *name) {
        return Plugins::iconOf(record(name)).pixmap(32).toImage();
    };
    EXPECT_FALSE(picture("libC.so").isNull());
    EXPECT_EQ(picture("libC.so"), picture("libB.so"));
    EXPECT_NE(picture("libC.so"), picture("libA.so"));
}

TEST_F(PluginsTest, SettingsAndHelpAreThereWithoutTheLibraryBeingOpened)
{
    writeFile(m_Folder.filePath("first/a.html"), "<p>A");
    install("NoWindowPlugin.so", "libA.so", "Title = Ay\nHelp = a.html\n[A]\nWidth = 3\n");
    m_Plugins.find();
    EXPECT_EQ(record("libA.so").state, PluginState::Found);
    EXPECT_EQ(ConfigStore::instance().value("A", "Width"), "3");
    EXPECT_EQ(services::HelpPages::instance().fileOf("a.html"), m_Folder.filePath("first/a.html"));
}

TEST_F(PluginsTest, OneThatIsRefusedBringsNeitherSettingsNorHelp)
{
    writeFile(m_Folder.filePath("first/refused.html"), "<p>A");
    install("NoWindowPlugin.so", "libA.so");
    writeFile(m_Folder.filePath("first/libA.plugin"),
              "[Plugin]\nKit = 9.0\nHelp = refused.html\n[A]\nWidth = 3\n");
    m_Plugins.loadAll();
    EXPECT_EQ(record("libA.so").state, PluginState::WrongVersion);
    EXPECT_EQ(ConfigStore::instance().value("A", "Width"), std::nullopt);
    EXPECT_EQ(services::HelpPages::instance().fileOf("refused.html"), "");
}

TEST_F(PluginsTest, OpeningGivesTheNewWindow)
{
    install("WindowPlugin.so", "libW.so");
    install("NoWindowPlugin.so", "libN.so");
    m_Plugins.loadAll();
    QWidget *first = m_Plugins.open(record("libW.so"));
    QWidget *second = m_Plugins.open(record("libW.so"));
    ASSERT_NE(first, nullptr);
    ASSERT_NE(second, nullptr);
    EXPECT_NE(first, second);
    EXPECT_EQ(m_Plugins.open(record("libN.so")), nullptr);
    delete first;
    delete second;
}

TEST_F(PluginsTest, AnAlignmentIsShownByThePluginWhoseRoleItIs)
{
    const int before = callsOfTool();
    install("NoWindowPlugin.so", "liba.so");
    install("WindowPlugin.so", "libb.so");
    installViewer("libc.so");
    m_Plugins.loadAll();
    const Result<QWidget *> window = m_Plugins.show(alignment("x", {"AC"}));
    ASSERT_TRUE(window) << failureOf(window);
    EXPECT_TRUE(window.value()->property("asked").toBool());
    // It did not ask, and the next window must not be answered for it.
    EXPECT_TRUE(SelectObjectAnswers::isEmpty());
    EXPECT_EQ(callsOfTool(), before);
    delete window.value();
}

TEST_F(PluginsTest, NoOtherPluginIsCalledForAnAlignment)
{
    const int before = callsOfTool();
    install("NoWindowPlugin.so", "liba.so");
    install("WindowPlugin.so", "libb.so");
    m_Plugins.loadAll();
    const QWidgetList windows = QApplication::topLevelWidgets();
    EXPECT_FALSE(m_Plugins.show(alignment("x", {"AC"})));
    EXPECT_EQ(callsOfTool(), before);
    EXPECT_EQ(QApplication::topLevelWidgets(), windows);
    m_Plugins.open(record("liba.so"));
    EXPECT_EQ(callsOfTool(), before + 1) << "a call would have been noticed";
}

TEST_F(PluginsTest, TheFirstViewerCountsUnlessTheSettingsNameAnother)
{
    installViewer("libb.so");
    installViewer("liba.so");
    m_Plugins.loadAll();
    ASSERT_EQ(m_Plugins.alignmentViewers().size(), 2U);
    EXPECT_EQ(m_Plugins.alignmentViewers().front(), &record("liba.so"));
    ConfigStore::instance().setValue("Plugins", "ShowsAlignments", "b");
    EXPECT_EQ(m_Plugins.alignmentViewers().front(), &record("libb.so"));
    EXPECT_EQ(m_Plugins.alignmentViewers().back(), &record("liba.so"));
}

TEST_F(PluginsTest, AViewerThatTheSettingsNameInVainIsTold)
{
    installViewer("liba.so");
    m_Plugins.loadAll();
    ConfigStore::instance().setValue("Plugins", "ShowsAlignments", "Other");
    const Result<QWidget *> window = m_Plugins.show(alignment("x", {"AC"}));
    ASSERT_TRUE(window);
    EXPECT_EQ(m_Log.texts(), QStringList("No plug-in that shows alignments is called Other, as the "
                                         "setting Plugins/ShowsAlignments has it"));
    delete window.value();
}

TEST_F(PluginsTest, OnlyTheViewerIsOpenedForAnAlignment)
{
    install("NoWindowPlugin.so", "liba.so");
    installViewer("libb.so");
    m_Plugins.find();
    const Result<QWidget *> window = m_Plugins.show(alignment("x", {"AC"}));
    ASSERT_TRUE(window) << failureOf(window);
    EXPECT_EQ(record("liba.so").state, PluginState::Found);
    EXPECT_EQ(record("libb.so").state, PluginState::Loaded);
    delete window.value();
}

TEST_F(PluginsTest, AViewerThatIsNoneIsToldAndTheNextOneAsked)
{
    install("NoWindowPlugin.so", "liba.so", "Role = alignments\n");
    m_Plugins.loadAll();
    EXPECT_EQ(failureOf(m_Plugins.show(alignment("x", {"AC"}))), "liba.so opened no window");
    EXPECT_EQ(m_Log.count(), 0);
    installViewer("libb.so");
    m_Plugins.loadAll();
    const Result<QWidget *> window = m_Plugins.show(alignment("y", {"AC"}));
    ASSERT_TRUE(window);
    EXPECT_EQ(m_Log.texts(), QStringList("liba.so opened no window"));
    delete window.value();
}

TEST_F(PluginsTest, WhyTheOnlyViewerCannotBeUsedIsSaid)
{
    installViewer("liba.so");
    writeFile(m_Folder.filePath("first/liba.plugin"), "[Plugin]\nKit = 9.0\nRole = alignments\n");
    m_Plugins.loadAll();
    EXPECT_EQ(failureOf(m_Plugins.show(alignment("x", {"AC"}))),
              record("liba.so").reason.toStdString());
    EXPECT_FALSE(record("liba.so").reason.isEmpty());
}

TEST_F(PluginsTest, AToolThatHasTheNameOfTheViewerIsWhyThereIsNone)
{
    install("WindowPlugin.so", "first/libV.so");
    installViewer("second/libV.so");
    m_Plugins.loadAll();
    EXPECT_EQ(failureOf(m_Plugins.show(alignment("x", {"AC"}))),
              m_Folder.filePath("second/libV.so").toStdString() + " is not used, since " +
                  m_Folder.filePath("first/libV.so").toStdString() +
                  " has its name and was found before it");
}

TEST_F(PluginsTest, ABrokenDescriptorMayBeWhyThereIsNoViewer)
{
    install("WindowPlugin.so", "liba.so", "Role = alignment\n");
    m_Plugins.loadAll();
    EXPECT_NE(failureOf(m_Plugins.show(alignment("x", {"AC"})))
                  .find(m_Folder.filePath("first/liba.plugin").toStdString() + ":3: expected Role"),
              std::string::npos);
}

} // namespace PluginsTest
