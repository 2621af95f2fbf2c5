// SPDX-License-Identifier: GPL-3.0-or-later
// Plug-ins in the workbench's window: their menu, and which of them is called for an alignment.
#include "UndoCommands.h"
#include "Workbench.h"

#include "AppFixture.h"
#include "FirstPlaces.h"
#include "MainWindow.h"
#include "support/WaitUntil.h"

#include <QAction>
#include <QApplication>
#include <QFile>
#include <QMenu>
#include <QMenuBar>
#include <QStatusBar>
#include <QToolBar>

namespace ToolsMenuTest {

using namespace TAMBO;
using app::Workbench;

class ToolsMenuTest : public AppFixture
{
protected:
    ~ToolsMenuTest() override
    {
        if (m_Workbench)
            m_Workbench->undo().history().clear();
        m_Workbench.reset();
    }

    void install(const QString &library, const QString &name, const QByteArray &descriptor)
    {
        EXPECT_TRUE(
            QFile::copy(QStringLiteral(PLUGIN_DIR "/") + library, m_Folder.filePath(name + ".so")));
        write(name + ".plugin", "[Plugin]\nKit = 1.0\n" + descriptor);
    }
    void start()
    {
        m_Workbench = std::make_unique<Workbench>(
            Workbench::Attendance::Nobody, services::PluginFolders({{m_Folder.path(), true}}));
    }
    // Up to the line below the plug-ins.
    QList<QAction *> tools()
    {
        for (QAction *top : m_Workbench->window().menuBar()->actions()) {
            if (top->text().remove(u'&') != "Tools")
                continue;
            QList<QAction *> actions = top->menu()->actions();
            actions.erase(
                std::find_if(actions.begin(), actions.end(), std::mem_fn(&QAction::isSeparator)),
                actions.end());
            return actions;
        }
        return {};
    }
    void openAlignment()
    {
        const QString file = write("x.fasta", ">a\nAC-D\n>b\nACCD\n");
        bool isDone = false;
        QObject::connect(m_Workbench.get(), &Workbench::started, m_Workbench.get(),
                         [&] { isDone = true; });
        m_Workbench->openAtStart({file.toStdString()});
        waitUntil([&] { return isDone; });
    }
    static int callsOfTool() { return qApp->property("NoWindowPluginCalls").toInt(); }
    static QList<QWidget *> choosers()
    {
        QList<QWidget *> found;
        for (QWidget *window : QApplication::topLevelWidgets())
            if (window->windowTitle() == "Chooser" && window->isVisible())
                found << window;
        return found;
    }

    std::unique_ptr<Workbench> m_Workbench;
};

TEST_F(ToolsMenuTest, HasTitlesAndIconsAndBeginsWithTheViewer)
{
    install("NoWindowPlugin.so", "a", "Title = Count & More\n");
    install("WindowPlugin.so", "b", "Title = Viewer\nRole = alignments\nIcon = editor.svg\n");
    start();
    const QList<QAction *> actions = tools();
    ASSERT_EQ(actions.size(), 2);
    EXPECT_EQ(actions[0]->text(), "Viewer");
    EXPECT_EQ(actions[0]->shortcut(), QKeySequence(Qt::CTRL | Qt::Key_E));
    EXPECT_EQ(actions[1]->text(), "Count && More") << "no key of the menu is made of a title";
    EXPECT_TRUE(actions[1]->shortcut().isEmpty());
    const QImage own = actions[0]->icon().pixmap(32).toImage();
    const QImage general = actions[1]->icon().pixmap(32).toImage();
    EXPECT_FALSE(own.isNull());
    EXPECT_FALSE(general.isNull());
    EXPECT_NE(own, general);
    actions[1]->trigger();
    EXPECT_TRUE(choosers().isEmpty());
}

TEST_F(ToolsMenuTest, OpeningAnAlignmentCallsTheViewerAlone)
{
    install("NoWindowPlugin.so", "a", "");
    install("WindowPlugin.so", "b", "Role = alignments\n");
    start();
    const int before = callsOfTool();
    openAlignment();
    ASSERT_EQ(choosers().size(), 1);
    EXPECT_TRUE(choosers().front()->property("asked").toBool());
    EXPECT_EQ(callsOfTool(), before);
    delete choosers().front();
}

TEST_F(ToolsMenuTest, AToolOfTheCallIsOpenedOnceTheFilesAreThere)
{
    install("NoWindowPlugin.so", "a", "Title = Counter\n");
    install("WindowPlugin.so", "b", "Role = alignments\n");
    start();
    ASSERT_TRUE(m_Workbench->setToolsAtStart({"counter"}));
    const int before = callsOfTool();
    openAlignment();
    EXPECT_EQ(callsOfTool(), before + 1);
    ASSERT_EQ(choosers().size(), 1);
    delete choosers().front();
    openAlignment();
    EXPECT_EQ(callsOfTool(), before + 1) << "once";
    ASSERT_EQ(choosers().size(), 1);
    delete choosers().front();
}

TEST_F(ToolsMenuTest, AnUnknownToolIsRefusedWithThoseThatThereAre)
{
    install("NoWindowPlugin.so", "a", "Title = Counter\n");
    install("WindowPlugin.so", "b", "Title = Viewer\nRole = alignments\n");
    start();
    const Result<void> known = m_Workbench->setToolsAtStart({"Structures"});
    ASSERT_FALSE(known);
    EXPECT_EQ(known.error().message(),
              "there is no tool called \"Structures\"; there are \"Viewer\", \"Counter\"");
}

TEST_F(ToolsMenuTest, AToolOfTheCallThatCannotBeUsedIsRefusedWithTheReason)
{
    write("broken.so", "no library");
    write("broken.plugin", "[Plugin]\nKit = 1.0\nTitle = Broken\n");
    start();
    const Result<void> known = m_Workbench->setToolsAtStart({"Broken"});
    ASSERT_FALSE(known);
    EXPECT_NE(known.error().message().find("broken.so"), std::string::npos)
        << known.error().message();
}

TEST_F(ToolsMenuTest, AllButtonsAreToBeSeenAtTheFirstWidth)
{
    install("WindowPlugin.so", "a", "Title = Alignment Editor\nRole = alignments\n");
    install("NoWindowPlugin.so", "b", "Title = Structure View\n");
    start();
    for (const QSize &screen : {QSize(1280, 800), QSize(1600, 1000), QSize(1920, 1080)}) {
        app::MainWindow &window = m_Workbench->window();
        window.show();
        window.resize(app::workbenchPlace(QRect(QPoint(0, 0), screen)).size());
        QCoreApplication::sendPostedEvents();
        const auto *const bar = window.findChild<QToolBar *>("CommandBar");
        ASSERT_NE(bar, nullptr);
        for (QAction *const action : bar->actions())
            EXPECT_TRUE(bar->widgetForAction(action)->isVisible())
                << action->text().toStdString() << " on " << screen.width();
    }
}

TEST_F(ToolsMenuTest, WithoutAViewerTheStatusLineSaysWhy)
{
    install("NoWindowPlugin.so", "a", "");
    install("WindowPlugin.so", "b", "");
    start();
    const int before = callsOfTool();
    openAlignment();
    EXPECT_TRUE(choosers().isEmpty());
    EXPECT_EQ(callsOfTool(), before);
    EXPECT_EQ(m_Workbench->window().statusBar()->currentMessage(),
              "x cannot be shown: there is no alignment editor in " + m_Folder.path());
}

} // namespace ToolsMenuTest
