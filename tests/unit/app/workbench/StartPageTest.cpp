// SPDX-License-Identifier: GPL-3.0-or-later
// What an empty workbench offers, and what its menu Help tells of the program.
#include "StartPage.h"

#include "AppFixture.h"
#include "HelpTexts.h"
#include "Logger.h"
#include "MainWindow.h"
#include "RecentFiles.h"
#include "Space.h"
#include "UndoCommands.h"
#include "Workbench.h"
#include "support/WaitUntil.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QDialog>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QTextBrowser>

namespace StartPageTest {

using namespace TAMBO;
using app::StartPage;
using app::Workbench;

class StartPageTest : public AppFixture
{
protected:
    StartPageTest()
        : m_Workbench(std::make_unique<Workbench>(
              Workbench::Attendance::Nobody, services::PluginFolders({{m_Folder.path(), true}})))
    {
        // As it is installed, with what is beside the folder of the sources.
        qputenv("TAMBO_SHARE_DIR", BUILD_DIR "/share/tambo");
        window().show();
    }
    ~StartPageTest() override
    {
        qputenv("TAMBO_SHARE_DIR", m_Share);
        m_Workbench->undo().history().clear();
        m_Workbench.reset();
    }

    [[nodiscard]] app::MainWindow &window() { return m_Workbench->window(); }
    [[nodiscard]] StartPage *page() { return window().findChild<StartPage *>(); }
    [[nodiscard]] bool isOffered() { return page() != nullptr && page()->isVisible(); }
    [[nodiscard]] QPushButton *button(const QString &words)
    {
        for (QPushButton *const each : page()->findChildren<QPushButton *>())
            if (each->text().remove(u'&').startsWith(words))
                return each;
        return nullptr;
    }
    void open(const QByteArray &text)
    {
        m_Workbench->open({write("family.fasta", text)});
        waitUntil([&] { return !m_Workbench->loader().isBusy(); });
    }
    QAction *helpEntry(const QString &words)
    {
        for (QAction *const top : window().menuBar()->actions())
            for (QAction *const entry : top->menu()->actions())
                if (entry->text().remove(u'&').startsWith(words))
                    return entry;
        return nullptr;
    }

    const QByteArray m_Share = qgetenv("TAMBO_SHARE_DIR");
    std::unique_ptr<Workbench> m_Workbench;
};

TEST_F(StartPageTest, AnEmptyWorkbenchSaysWhatToDo)
{
    waitUntil([&] { return isOffered(); });
    EXPECT_NE(button("Open files"), nullptr);
    EXPECT_NE(button("Open the example"), nullptr);
    EXPECT_EQ(page()->size(), page()->parentWidget()->size());
}

TEST_F(StartPageTest, ItGoesWithTheFirstFileAndComesBackWhenAllIsClosed)
{
    waitUntil([&] { return isOffered(); });
    open(">a\nACD\n>b\nAC-\n");
    EXPECT_FALSE(isOffered());
    ASSERT_TRUE(m_Workbench->undo().history().undo());
    EXPECT_TRUE(isOffered());
    ASSERT_TRUE(m_Workbench->undo().history().redo());
    EXPECT_FALSE(isOffered());
}

TEST_F(StartPageTest, FilesThatWereOpenedLastAreOffered)
{
    waitUntil([&] { return isOffered(); });
    const QString file = write("kinases.fasta", ">a\nACD\n>b\nAC-\n");
    m_Workbench->recentFiles().add({file});
    ASSERT_NE(button("kinases.fasta"), nullptr);
    button("kinases.fasta")->click();
    waitUntil([&] { return Space::instance()->ChildCount() > 0; });
    EXPECT_FALSE(isOffered());
}

TEST_F(StartPageTest, NamesWithAnAmpersandAreShownWhole)
{
    waitUntil([&] { return isOffered(); });
    m_Workbench->recentFiles().add({write("a&b.fasta", ">a\nACD\n")});
    bool isShown = false;
    for (const QPushButton *const each : page()->findChildren<QPushButton *>())
        isShown = isShown || each->text() == "a&&b.fasta";
    EXPECT_TRUE(isShown);
}

TEST_F(StartPageTest, TheExampleComesWithItsStructures)
{
    waitUntil([&] { return isOffered(); });
    button("Open the example")->click();
    waitUntil([&] { return Space::instance()->ChildCount() == 7; });
    EXPECT_FALSE(isOffered());
}

TEST_F(StartPageTest, EachOfItsButtonsIsReachedByTheKeyboardAndHasAName)
{
    waitUntil([&] { return isOffered(); });
    for (const QPushButton *const each : page()->findChildren<QPushButton *>()) {
        EXPECT_TRUE(each->focusPolicy() & Qt::TabFocus);
        EXPECT_FALSE(each->text().isEmpty());
    }
}

TEST_F(StartPageTest, AReportHasVersionsPlugInsAndTheLogAndGoesToTheClipboard)
{
    Logger::Write(QStringLiteral("a line for the report"));
    ASSERT_NE(helpEntry("Copy a Report"), nullptr);
    helpEntry("Copy a Report")->trigger();
    const QString report = QApplication::clipboard()->text();
    EXPECT_TRUE(report.contains(QString::fromLatin1(qVersion())));
    EXPECT_TRUE(report.contains("Plug-ins:"));
    EXPECT_TRUE(report.contains("a line for the report"));
}

TEST_F(StartPageTest, WhatIsNewIsTheChangelog)
{
    ASSERT_NE(helpEntry("What is New"), nullptr);
    helpEntry("What is New")->trigger();
    const QTextBrowser *const text = window().findChild<QTextBrowser *>();
    ASSERT_NE(text, nullptr);
    EXPECT_TRUE(text->toPlainText().startsWith("Changelog"))
        << text->toPlainText().left(80).toStdString();
    text->window()->close();
}

} // namespace StartPageTest
