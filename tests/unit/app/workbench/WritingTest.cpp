// SPDX-License-Identifier: GPL-3.0-or-later
// Exports that go on while the user works, and the editor's saving, for which he waits.
#include "AppFixture.h"
#include "DataMaker.h"
#include "ExportDialog.h"
#include "MainWindow.h"
#include "ObjectCommands.h"
#include "PipeFile.h"
#include "PluginManager.h"
#include "ProgressBox.h"
#include "StructuresDialog.h"
#include "UndoCommands.h"
#include "Workbench.h"
#include "WorkbenchCommands.h"
#include "WriteProgress.h"
#include "support/Answering.h"
#include "support/LogLines.h"
#include "support/WaitUntil.h"

#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>

#include <utility>

namespace WritingTest {

using namespace TAMBO;
using app::ExportDialog;
using app::Workbench;
using app::WriteProgress;
using services::ProgressBox;

class WritingTest : public AppFixture
{
protected:
    WritingTest()
    {
        m_Workbench = std::make_unique<Workbench>(Workbench::Attendance::User, withoutPlugins());
        m_Workbench->window().show();
    }
    ~WritingTest() override
    {
        history().clear();
        m_Workbench.reset();
    }

    History &history() { return m_Workbench->undo().history(); }
    QString exportTo(Alignment &alignment, const QString &file)
    {
        answering<ExportDialog>([file](ExportDialog &dialog) {
            // The toolkit takes the folder of a file that it knows for told.
            dialog.setDirectory(QFileInfo(file).path());
            dialog.findChild<QLineEdit *>("fileNameEdit")->setText(QFileInfo(file).fileName());
            dialog.setOption(QFileDialog::DontConfirmOverwrite);
            dialog.accept();
            // After a refusal it is still there.
            dialog.reject();
        });
        return m_Workbench->commands().askExport({&alignment});
    }
    static WriteProgress *progress()
    {
        for (QWidget *widget : QApplication::topLevelWidgets()) {
            if (auto *shown = qobject_cast<WriteProgress *>(widget);
                shown != nullptr && shown->isVisible())
                return shown;
        }
        return nullptr;
    }
    static bool save(Alignment &alignment, const QString &path)
    {
        SaveRequest request{path, &alignment};
        return PluginManager::Command("Parse", "PIR", "KALMO", "Save PIR", "SaveALI",
                                      static_cast<void *>(&request)) ==
               PluginManager::Outcome::Done;
    }

    std::unique_ptr<Workbench> m_Workbench;
};

TEST_F(WritingTest, AnExportThatTakesLongGoesOnAndSavesWhatWasThereThen)
{
    PipeFile pipe(m_Folder.filePath("x.ali"));
    ASSERT_TRUE(pipe.isThere());
    Alignment &family = alignment("family", {"AC-D", "ACCD"});
    const LogLines log;
    EXPECT_EQ(exportTo(family, pipe.path()), QString());
    EXPECT_FALSE(m_Workbench->exports().isEmpty());
    ASSERT_NE(progress(), nullptr);
    EXPECT_FALSE(progress()->isModal());
    family.moveGap(0, 2, 1, true);
    EXPECT_EQ(log.count(), 0);
    pipe.read();
    waitUntil([this] { return m_Workbench->exports().isEmpty(); });
    EXPECT_EQ(progress(), nullptr);
    EXPECT_NE(pipe.text().find("\nAC-D*"), std::string::npos);
    EXPECT_EQ(log.texts(), QStringList("Exported family to " + pipe.path()));
    EXPECT_TRUE(history().isModified(family)) << "the edit is in no file";
    history().undo();
    EXPECT_FALSE(history().isModified(family));
}

class SeveralWritten : public WritingTest
{
protected:
    SeveralWritten()
    {
        EXPECT_TRUE(QDir(m_Folder.path()).mkdir("out"));
        m_Pipe = std::make_unique<PipeFile>(path("one"));
        EXPECT_TRUE(m_Pipe->isThere());
    }
    QString path(const QString &name) { return m_Folder.filePath("out/" + name + ".pdb"); }
    // A file for each, of which that of the first one is held.
    void exportEach()
    {
        answering<app::StructuresDialog>([this](app::StructuresDialog &dialog) {
            dialog.findChild<QComboBox *>("Kind")->setCurrentIndex(
                int(app::MergedFiles::Kind::Files));
            dialog.findChild<QLineEdit *>("fileNameEdit")->setText(m_Folder.filePath("out"));
            answering<QMessageBox>([](QMessageBox &box) {
                for (QAbstractButton *const button : box.buttons())
                    if (box.buttonRole(button) == QMessageBox::AcceptRole)
                        return button->click();
            });
            dialog.accept();
        });
        EXPECT_EQ(m_Workbench->commands().askExport({&m_First, &m_Second}), QString());
    }

    std::unique_ptr<PipeFile> m_Pipe;
    Structure &m_First = structure("one", "A", "ACD");
    Structure &m_Second = structure("two", "B", "AC");
};

TEST_F(SeveralWritten, OneAfterTheOtherBesideTheWorkCountAsSaved)
{
    const LogLines log;
    exportEach();
    ASSERT_NE(progress(), nullptr);
    EXPECT_FALSE(progress()->isModal());
    EXPECT_FALSE(QFile::exists(path("two")));
    m_Pipe->read();
    waitUntil([this] { return m_Workbench->exports().isEmpty(); });
    EXPECT_EQ(progress(), nullptr);
    EXPECT_TRUE(QFile::exists(path("two")));
    EXPECT_EQ(log.texts(),
              QStringList({"Exported one to " + path("one"), "Exported two to " + path("two")}));
    EXPECT_FALSE(history().isModified(m_First));
    EXPECT_FALSE(history().isModified(m_Second));
}

TEST_F(SeveralWritten, WhatIsLeftIsNotBegunWhenTheyAreCancelled)
{
    const LogLines log;
    exportEach();
    ASSERT_NE(progress(), nullptr);
    progress()->reject();
    waitUntil([this] { return m_Workbench->exports().isEmpty(); });
    EXPECT_FALSE(QFile::exists(path("two")));
    EXPECT_EQ(log.texts(), QStringList("The export of one to " + path("one") +
                                       " was cancelled; the file is as it was. Files that were "
                                       "not begun: 1."));
    EXPECT_TRUE(history().isModified(m_First));
    EXPECT_TRUE(history().isModified(m_Second));
}

TEST_F(WritingTest, ACancelledExportSavesNothing)
{
    PipeFile pipe(m_Folder.filePath("x.ali"));
    ASSERT_TRUE(pipe.isThere());
    Alignment &family = alignment("family", {"AC-D", "ACCD"});
    const LogLines log;
    exportTo(family, pipe.path());
    ASSERT_NE(progress(), nullptr);
    progress()->reject();
    waitUntil([this] { return m_Workbench->exports().isEmpty(); });
    EXPECT_TRUE(history().isModified(family));
    EXPECT_EQ(log.texts(), QStringList("The export of family to " + pipe.path() +
                                       " was cancelled; the file is as it was."));
}

TEST_F(WritingTest, AnExportOutlivesItsAlignment)
{
    PipeFile pipe(m_Folder.filePath("x.ali"));
    ASSERT_TRUE(pipe.isThere());
    Alignment &family = alignment("family", {"AC-D", "ACCD"});
    exportTo(family, pipe.path());
    app::ObjectCommands::destroy({&family});
    history().clear();
    pipe.read();
    waitUntil([this] { return m_Workbench->exports().isEmpty(); });
    EXPECT_NE(pipe.text().find("\nAC-D*"), std::string::npos);
}

TEST_F(WritingTest, AFileThatIsBeingExportedIsNotExportedOrSavedAgain)
{
    PipeFile pipe(m_Folder.filePath("x.ali"));
    ASSERT_TRUE(pipe.isThere());
    Alignment &family = alignment("family", {"AC-D", "ACCD"});
    exportTo(family, pipe.path());
    QString message;
    answering<QMessageBox>([&](QMessageBox &box) {
        message = box.text();
        box.accept();
    });
    EXPECT_EQ(exportTo(family, pipe.path()), QString());
    EXPECT_EQ(message, "x.ali: is being written just now");
    EXPECT_FALSE(save(family, pipe.path()));
    pipe.read();
    waitUntil([this] { return m_Workbench->exports().isEmpty(); });
}

TEST_F(WritingTest, QuittingWaitsForAnExportUnlessTheUserStays)
{
    PipeFile pipe(m_Folder.filePath("x.ali"));
    ASSERT_TRUE(pipe.isThere());
    exportTo(alignment("family", {"AC-D", "ACCD"}), pipe.path());
    QString text;
    answering<ProgressBox>([&](ProgressBox &dialog) {
        if (dialog.objectName() != "ExportsBeforeQuitting")
            return;
        text = dialog.text();
        dialog.findChild<QPushButton *>()->click();
    });
    EXPECT_FALSE(m_Workbench->mayQuit());
    EXPECT_EQ(text, "Tambo quits when x.ali is written.");
    EXPECT_FALSE(m_Workbench->exports().isEmpty());
    answering<ProgressBox>([&](ProgressBox &) { pipe.read(); });
    // What it has saved is not asked about any more.
    EXPECT_TRUE(m_Workbench->mayQuit());
    EXPECT_TRUE(m_Workbench->exports().isEmpty());
}

// ---- The editor's saving

TEST_F(WritingTest, SavingReturnsWhenTheFileIsComplete)
{
    PipeFile pipe(m_Folder.filePath("x.ali"));
    ASSERT_TRUE(pipe.isThere());
    Alignment &family = alignment("family", {"AC-D", "ACCD"});
    answering<WriteProgress>([&](WriteProgress &dialog) {
        EXPECT_EQ(dialog.windowModality(), Qt::ApplicationModal);
        pipe.read();
    });
    EXPECT_TRUE(save(family, pipe.path()));
    EXPECT_NE(pipe.text().find("\nAC-D*"), std::string::npos);
    EXPECT_FALSE(history().isModified(family));
}

TEST_F(WritingTest, SavingThatIsCancelledSaysSoInTheLogAlone)
{
    PipeFile pipe(m_Folder.filePath("x.ali"));
    ASSERT_TRUE(pipe.isThere());
    Alignment &family = alignment("family", {"AC-D", "ACCD"});
    answering<WriteProgress>([](WriteProgress &dialog) { dialog.reject(); });
    const LogLines log;
    EXPECT_FALSE(save(family, pipe.path()));
    EXPECT_TRUE(history().isModified(family));
    EXPECT_EQ(log.texts(),
              QStringList("Saving family was cancelled; " + pipe.path() + " is as it was."));
}

TEST_F(WritingTest, SavingWhoseCopyIsCancelledWritesNothing)
{
    Alignment &family = alignment("family", {"AC-D", "ACCD"});
    const QString file = m_Folder.filePath("x.ali");
    const LogLines log;
    const auto progress =
        std::exchange(modelHooks().working, [](const char *, double, bool) { return false; });
    EXPECT_FALSE(save(family, file));
    modelHooks().working = progress;
    EXPECT_FALSE(QFile::exists(file));
    EXPECT_TRUE(history().isModified(family));
    EXPECT_EQ(log.texts(), QStringList("Saving family was cancelled; " + file + " is as it was."));
    EXPECT_TRUE(save(family, file));
}

// An arrival that comes meanwhile is a step that the file does not hold.
TEST_F(WritingTest, WhatComesWhileAFileIsSavedIsUnsaved)
{
    PipeFile pipe(m_Folder.filePath("x.ali"));
    ASSERT_TRUE(pipe.isThere());
    Alignment &family = alignment("family", {"AC-D", "ACCD"});
    answering<WriteProgress>([&](WriteProgress &) {
        family.insertGap(0, 0);
        pipe.read();
    });
    EXPECT_TRUE(save(family, pipe.path()));
    EXPECT_TRUE(history().isModified(family));
    history().undo();
    EXPECT_FALSE(history().isModified(family));
}

TEST_F(WritingTest, WhoeverEndsTheProgramLetsASavingFinish)
{
    PipeFile pipe(m_Folder.filePath("x.ali"));
    ASSERT_TRUE(pipe.isThere());
    Alignment &family = alignment("family", {"AC-D", "ACCD"});
    bool wasOpen = false;
    answering<WriteProgress>([&](WriteProgress &dialog) {
        m_Workbench->endOnRequest();
        wasOpen = m_Workbench->window().isVisible() && dialog.isVisible();
        pipe.read();
    });
    EXPECT_TRUE(save(family, pipe.path()));
    EXPECT_TRUE(wasOpen);
    EXPECT_FALSE(pipe.text().empty());
    waitUntil([this] { return !m_Workbench->window().isVisible(); });
}

} // namespace WritingTest
