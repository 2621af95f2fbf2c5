// SPDX-License-Identifier: GPL-3.0-or-later
// The workbench as a whole: its window, its questions, and what it answers for plug-ins.
#include "Workbench.h"

#include "AppFixture.h"
#include "Config.h"
#include "ConfigStore.h"
#include "DataDelete.h"
#include "DataMaker.h"
#include "DataPoint.h"
#include "FileReader.h"
#include "JobList.h"
#include "MainWindow.h"
#include "ObjectOperations.h"
#include "ObjectTree.h"
#include "ObjectTreeModel.h"
#include "PluginManager.h"
#include "Printouts.h"
#include "RecentFiles.h"
#include "SelectObjectAnswers.h"
#include "StatusLine.h"
#include "TestTexts.h"
#include "UndoActions.h"
#include "UndoCommands.h"
#include "UnsavedDialog.h"
#include "support/Answering.h"
#include "support/LogLines.h"
#include "support/WaitUntil.h"

#include <QAbstractButton>
#include <QAction>
#include <QDir>
#include <QDropEvent>
#include <QFile>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QMimeData>
#include <QPushButton>
#include <QSignalSpy>
#include <QStatusBar>
#include <QTest>
#include <QTimer>
#include <QTreeWidget>

#include <functional>

namespace WorkbenchTest {

using namespace TAMBO;
using app::LoadReport;
using app::MainWindow;
using app::ObjectCommands;
using app::UnsavedDialog;
using app::Workbench;
using Outcome = PluginManager::Outcome;
using Texts = std::vector<std::string>;

class WorkbenchTest : public AppFixture
{
protected:
    WorkbenchTest()
    {
        m_Workbench = std::make_unique<Workbench>(Workbench::Attendance::User, withoutPlugins());
        QObject::connect(m_Workbench.get(), &Workbench::opened, m_Workbench.get(),
                         [this](const LoadReport &report) { m_Reports.push_back(report); });
    }
    ~WorkbenchTest() override
    {
        m_Workbench->undo().history().clear();
        m_Workbench.reset();
        services::SelectObjectAnswers::clear();
    }

    MainWindow &window() { return m_Workbench->window(); }
    History &history() { return m_Workbench->undo().history(); }
    void show()
    {
        window().show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&window()));
    }
    void open(const QStringList &files)
    {
        m_Workbench->open(files);
        finish();
    }
    void finish()
    {
        waitUntil([this] { return !m_Workbench->loader().isBusy(); });
    }
    QAction *menuEntry(const QString &menu, const QString &text)
    {
        for (QAction *top : window().menuBar()->actions()) {
            if (top->text().remove(u'&') != menu)
                continue;
            for (QAction *action : top->menu()->actions()) {
                if (action->text().remove(u'&') == text)
                    return action;
            }
        }
        ADD_FAILURE() << "no entry " << text.toStdString();
        return nullptr;
    }
    static void moveGap(Alignment &family)
    {
        const DataPoint<Alignment> guard(nullptr, &family);
        if (guard.m_good)
            guard->moveGap(0, 2, 1, true);
    }
    static QMessageBox *failureBox(const QWidget &over)
    {
        return over.findChild<QMessageBox *>("FailureBox");
    }
    // The alignment "x", with a change that is not saved.
    Alignment &openEdited()
    {
        open({write("x.fasta", ">a\nAC-D\n>b\nACCD\n")});
        Alignment &family = *m_Reports.front().alignments.front();
        moveGap(family);
        return family;
    }
    // Answers the next question about unsaved work and keeps its text.
    void answerUnsaved(bool goOn)
    {
        answering<UnsavedDialog>([this, goOn](UnsavedDialog &dialog) {
            m_Question = dialog.findChild<QLabel *>("Headline")->text();
            m_Listed.clear();
            const auto *things = dialog.findChild<QTreeWidget *>("Things");
            for (int i = 0; i < things->topLevelItemCount(); ++i)
                m_Listed << things->topLevelItem(i)->text(0);
            dialog.findChild<QPushButton *>(goOn ? "Discard" : "Stay")->click();
        });
    }

    std::unique_ptr<Workbench> m_Workbench;
    std::vector<LoadReport> m_Reports;
    QString m_Question;
    QStringList m_Listed;
};

// ---- The window

TEST_F(WorkbenchTest, TheWindowIsMadeWhenSomebodyAsksForIt)
{
    EXPECT_EQ(m_Workbench->shownWindow(), nullptr);
    for (const QWidget *window : QApplication::topLevelWidgets())
        EXPECT_EQ(qobject_cast<const MainWindow *>(window), nullptr);
    window().show();
    EXPECT_EQ(m_Workbench->shownWindow(), &window());
}

TEST_F(WorkbenchTest, TheWindowShowsWhatWasOpenedBeforeItWasMade)
{
    const QString file = write("x.fasta", ">a\nAC-DEF\n>b\nACCDEF\n");
    m_Workbench->open({file});
    ASSERT_TRUE(waitUntil([this] { return !m_Reports.empty(); }));
    EXPECT_EQ(window().objects().rowCount(), 2);
    EXPECT_EQ(window().statusBar()->currentMessage(), "Opened x.fasta");
    EXPECT_EQ(window().findChild<QLabel *>("ObjectCount")->text(), "1 alignment, 2 sequences");
    auto *const tree = window().findChild<app::ObjectTree *>();
    EXPECT_TRUE(waitUntil([&] { return tree->isExpanded(window().objects().sequencesIndex()); }))
        << "as if it had been there before";
}

TEST_F(WorkbenchTest, WithoutAnEditorTheWindowComesAtOnce)
{
    std::vector<bool> shownBeforeTexts;
    m_Workbench->showAndOpen({write("x.fasta", ">a\nAC-DEF\n").toStdString()}, [&] {
        shownBeforeTexts.push_back(m_Workbench->shownWindow() != nullptr);
    });
    ASSERT_FALSE(shownBeforeTexts.empty());
    EXPECT_FALSE(shownBeforeTexts.front()) << "a window has texts";
    EXPECT_TRUE(window().isVisible());
    EXPECT_TRUE(waitUntil([this] { return !m_Reports.empty(); }));
}

TEST_F(WorkbenchTest, AJobThatFailsIsToldInABoxOfItsOwn)
{
    show();
    auto &jobs = services::JobList::instance();
    jobs.fail(jobs.begin("Kestram"), "No model was built: out of paper.", {"one", "two"});
    const auto boxes = window().findChildren<QMessageBox *>("FailureBox");
    ASSERT_EQ(boxes.size(), 1);
    EXPECT_EQ(boxes[0]->text(), "No model was built: out of paper.");
    EXPECT_EQ(boxes[0]->informativeText(), "one\ntwo");
    boxes[0]->accept();
    jobs.forgetFailures();
}

TEST_F(WorkbenchTest, TheMenusHoldTheCommandsWithTheirKeys)
{
    const std::vector<std::tuple<QString, QString, QKeySequence>> commands = {
        {"File", "Open…", QKeySequence("Ctrl+O")},
        {"File", "Close", QKeySequence("Ctrl+W")},
        {"File", "Quit", QKeySequence("Ctrl+Q")},
        {"Edit", "Undo", QKeySequence("Ctrl+Z")},
        {"Edit", "Redo", QKeySequence("Ctrl+Shift+Z")},
        {"Edit", "Paste", QKeySequence("Ctrl+V")},
        {"Edit", "Select None", QKeySequence("Ctrl+Shift+A")},
        {"Edit", "Select Again", QKeySequence("Ctrl+Shift+L")},
        {"Edit", "Delete", QKeySequence("Del")},
        {"Help", "Contents", QKeySequence("F1")},
        {"Help", "Plug-ins…", QKeySequence()},
        {"Help", "About", QKeySequence()},
    };
    for (const auto &[menu, text, key] : commands)
        EXPECT_EQ(menuEntry(menu, text)->shortcut(), key) << text.toStdString();
}

TEST_F(WorkbenchTest, CommandsOnObjectsAreEnabledWhileSomeArePicked)
{
    show();
    structure("1abc", "A", "ACD");
    for (const char *text : {"Rename…", "Delete", "Properties…"})
        EXPECT_FALSE(menuEntry("Edit", text)->isEnabled()) << text;
    EXPECT_FALSE(menuEntry("File", "Close")->isEnabled());
    window().tree().setCurrentIndex(window().objects().index(0, 0));
    for (const char *text : {"Rename…", "Delete", "Properties…"})
        EXPECT_TRUE(menuEntry("Edit", text)->isEnabled()) << text;
    EXPECT_TRUE(menuEntry("File", "Close")->isEnabled());
}

TEST_F(WorkbenchTest, TheDeleteKeyDeletesThePickedObjects)
{
    show();
    structure("1abc", "A", "ACD");
    structure("2abc", "A", "ACD");
    window().tree().setCurrentIndex(window().objects().index(0, 0));
    menuEntry("Edit", "Delete")->trigger();
    EXPECT_EQ(topLevelNames(), Texts{"2abc"});
}

TEST_F(WorkbenchTest, SelectNoneClearsPicksAndSelections)
{
    show();
    Structure &structure = this->structure("1abc", "A", "ACD");
    Peptide &other = sequence("other", "ACD");
    other.setSelected(1, true);
    window().tree().setCurrentIndex(window().objects().index(0, 0));
    EXPECT_TRUE(structure.IsSelected());
    menuEntry("Edit", "Select None")->trigger();
    EXPECT_FALSE(structure.IsSelected());
    EXPECT_FALSE(other.isSelected(1));
    EXPECT_TRUE(window().tree().pickedObjects().empty());
    menuEntry("Edit", "Select Again")->trigger();
    EXPECT_TRUE(structure.IsSelected());
    EXPECT_TRUE(other.isSelected(1));
    EXPECT_EQ(other.selectedCount(), 1U);
}

TEST_F(WorkbenchTest, ANameTypedIntoTheTreeIsTakenInOneStep)
{
    show();
    Structure &structure = this->structure("1abc", "A", "ACD");
    const QModelIndex top = window().objects().index(0, 0);
    window().tree().setCurrentIndex(top);
    window().tree().edit(top);
    auto *editor = window().tree().findChild<QLineEdit *>();
    ASSERT_NE(editor, nullptr);
    editor->setText("2abc");
    QTest::keyClick(editor, Qt::Key_Return);
    // The name is handed over once the key has been dealt with.
    QCoreApplication::processEvents();
    EXPECT_EQ(structure.Name(), "2abc");
    history().undo();
    EXPECT_EQ(structure.Name(), "1abc");
}

TEST_F(WorkbenchTest, TheStatusLineSaysWhyAChangeWasRefused)
{
    Alignment &family = alignment("SeqAli", {"AC-D"});
    setObjectLocked(family, true);
    moveGap(family);
    EXPECT_EQ(window().statusBar()->currentMessage(), "SeqAli is locked");
    EXPECT_EQ(rowsOf(family), Texts{"AC-D"});
}

TEST_F(WorkbenchTest, TheStatusLineSaysThatAnObjectIsLockedNoLongerThanItIs)
{
    const auto said = [this] { return window().statusBar()->currentMessage(); };
    Alignment &family = alignment("SeqAli", {"AC-D"});
    Alignment &other = alignment("other", {"AC-D"});
    for (Alignment *const one : {&family, &other})
        setObjectLocked(*one, true);
    moveGap(family);
    setObjectLocked(other, false);
    EXPECT_EQ(said(), "SeqAli is locked");
    setObjectLocked(family, false);
    EXPECT_EQ(said(), "");

    setObjectLocked(family, true);
    {
        const DataPoint<Space> guard(nullptr, Space::instance());
        family.insertGapCol(0, 1);
    }
    EXPECT_EQ(said(), "\"SeqAli\" is locked and was not changed.");
    setObjectLocked(family, false);
    EXPECT_EQ(said(), "");

    setObjectLocked(family, true);
    moveGap(family);
    window().say("Something else");
    setObjectLocked(family, false);
    EXPECT_EQ(said(), "Something else");
}

TEST_F(WorkbenchTest, TheStatusLineSaysSoOfChangesWithoutAGuardAndOfUndoToo)
{
    Alignment &family = alignment("SeqAli", {"AC-D", "ACCD"});
    moveGap(family);
    setObjectLocked(family, true);
    const auto expectSaid = [this](const std::function<void()> &change) {
        window().statusBar()->clearMessage();
        change();
        EXPECT_EQ(window().statusBar()->currentMessage(), "SeqAli is locked");
    };
    expectSaid([&] { family.bubbleRow(0, 1); });
    expectSaid([&] { family.range({1, 2}); });
    expectSaid([&] { family.insertGapCol(0, 1); });
    expectSaid([] { services::UndoActions::undo()->trigger(); });
    EXPECT_EQ(rowsOf(family), (Texts{"A-CD", "ACCD"}));
}

TEST_F(WorkbenchTest, TheStatusLineCountsTheObjects)
{
    const auto *count = window().findChild<QLabel *>("ObjectCount");
    EXPECT_EQ(count->text(), "");
    structure("1abc", "A", "ACD");
    alignment("x", {"AC", "AC"});
    EXPECT_EQ(count->text(), "1 structure, 1 alignment, 2 sequences");
}

TEST_F(WorkbenchTest, AContextMenuOfAPluginIsTheWorkbenchsMenu)
{
    Peptide &one = sequence("one", "ACD");
    QString shown;
    QTimer::singleShot(1, qApp, [&] {
        auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
        ASSERT_NE(menu, nullptr);
        shown = menu->objectName();
        menu->close();
    });
    one.residue(1)->ShowMenu();
    EXPECT_EQ(shown, "ObjectMenu");
}

TEST_F(WorkbenchTest, TheStatusLineSaysWhyACommandWasRefused)
{
    Peptide &one = sequence("one", "ACD");
    one.setNumber(0, SequenceNumber("first"));
    EXPECT_EQ(window().statusBar()->currentMessage(),
              "\"first\" is no residue number; one keeps its numbers.");
    setObjectLocked(one, true);
    {
        const DataPoint<Space> guard(nullptr, Space::instance());
        one.setNumber(0, SequenceNumber(7));
    }
    EXPECT_EQ(window().statusBar()->currentMessage(), "\"one\" is locked and was not changed.");
}

// ---- Opening

TEST_F(WorkbenchTest, OpenedFilesAreRememberedAndCountAsSaved)
{
    const QString file = write("x.fasta", ">a\nAC-D\n>b\nACCD\n");
    open({file});
    ASSERT_EQ(m_Reports.size(), 1U);
    EXPECT_EQ(m_Workbench->recentFiles().files().front(), file);
    EXPECT_TRUE(m_Workbench->mayQuit());
}

TEST_F(WorkbenchTest, FailedFilesAreListedInOneBox)
{
    show();
    open({write("bad.ali", ">P1;a\n\nAC#D*\n"), write("good.fasta", ">a\nACD\n>b\nACDE\n"),
          m_Folder.filePath("none.pdb")});
    const auto boxes = window().findChildren<QMessageBox *>("FailureBox");
    ASSERT_EQ(boxes.size(), 1);
    EXPECT_EQ(boxes[0]->text(), "2 files could not be opened.");
    EXPECT_TRUE(boxes[0]->informativeText().startsWith("bad.ali:3: "));
    EXPECT_TRUE(boxes[0]->informativeText().contains("none.pdb"));
    EXPECT_EQ(boxes[0]->informativeText().count(u'\n'), 1);
    EXPECT_EQ(topLevelNames(), (Texts{"a", "b"}));
    EXPECT_FALSE(m_Workbench->recentFiles().files().contains(m_Folder.filePath("bad.ali")));
    delete boxes[0];
}

TEST_F(WorkbenchTest, FilesDroppedOnTheWindowAreOpened)
{
    show();
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(write("x.fasta", ">a\nACD\n>b\nACDE\n"))});
    QDragEnterEvent enter(QPoint(10, 10), Qt::CopyAction, &data, Qt::LeftButton, {});
    QApplication::sendEvent(&window(), &enter);
    EXPECT_TRUE(enter.isAccepted());
    QDropEvent drop(QPointF(10, 10), Qt::CopyAction, &data, Qt::LeftButton, {});
    QApplication::sendEvent(&window(), &drop);
    finish();
    EXPECT_EQ(topLevelNames(), (Texts{"a", "b"}));
}

TEST_F(WorkbenchTest, SomethingElseThanFilesIsNotTaken)
{
    QMimeData data;
    data.setText("hello");
    QDragEnterEvent enter(QPoint(10, 10), Qt::CopyAction, &data, Qt::LeftButton, {});
    enter.ignore();
    QApplication::sendEvent(&window(), &enter);
    EXPECT_FALSE(enter.isAccepted());
}

TEST_F(WorkbenchTest, TheFileDialogOpensSeveralFiles)
{
    show();
    const QString one = write("one.fasta", ">a\nACD\n>b\nACDE\n");
    write("two.fasta", ">c\nACD\n>d\nACDE\n");
    services::ConfigStore::instance().setValue("Files", "Directory", m_Folder.path().toStdString());
    answering<QFileDialog>([&](QFileDialog &dialog) {
        EXPECT_EQ(dialog.directory().path(), m_Folder.path());
        EXPECT_EQ(dialog.fileMode(), QFileDialog::ExistingFiles);
        dialog.findChild<QLineEdit *>("fileNameEdit")->setText("\"one.fasta\" \"two.fasta\"");
        dialog.findChild<QPushButton *>()->setFocus();
        QMetaObject::invokeMethod(&dialog, "accept");
    });
    menuEntry("File", "Open…")->trigger();
    finish();
    EXPECT_EQ(topLevelNames(), (Texts{"a", "b", "c", "d"}));
}

// ---- Closing

TEST_F(WorkbenchTest, CloseTakesThePickedTopLevelObjectsOut)
{
    show();
    Structure &structure = this->structure("1abc", "A", "ACD");
    history().markSaved(structure);
    m_Workbench->closeObjects({&structure});
    EXPECT_TRUE(topLevelNames().empty());
    history().undo();
    EXPECT_EQ(topLevelNames(), Texts{"1abc"});
}

TEST_F(WorkbenchTest, ClosingUnsavedWorkAsksFirst)
{
    Alignment &family = openEdited();
    answerUnsaved(false);
    m_Workbench->closeObjects({&family});
    EXPECT_EQ(m_Question, "Save changes before closing?");
    EXPECT_EQ(m_Listed, QStringList("x"));
    EXPECT_EQ(topLevelNames(), (Texts{"a", "b", "x"}));
    answerUnsaved(true);
    m_Workbench->closeObjects({&family});
    EXPECT_EQ(topLevelNames(), (Texts{"a", "b"}));
}

TEST_F(WorkbenchTest, QuittingWithUnsavedWorkNamesItAndCanBeCancelled)
{
    show();
    openEdited();
    alignment("new", {"AC"});
    answerUnsaved(false);
    m_Workbench->quit();
    EXPECT_EQ(m_Question, "Save changes before quitting?");
    EXPECT_EQ(m_Listed, (QStringList{"x", "new"}));
    EXPECT_TRUE(window().isVisible());
    answerUnsaved(true);
    m_Workbench->quit();
    EXPECT_FALSE(window().isVisible());
}

TEST_F(WorkbenchTest, ARequestToEndAsksAboutUnsavedWork)
{
    show();
    openEdited();
    answerUnsaved(false);
    m_Workbench->endOnRequest();
    EXPECT_EQ(m_Question, "Save changes before quitting?");
    EXPECT_EQ(m_Listed, QStringList("x"));
    EXPECT_TRUE(window().isVisible());
    answerUnsaved(true);
    m_Workbench->endOnRequest();
    EXPECT_FALSE(window().isVisible());
}

TEST_F(WorkbenchTest, ARequestToEndEndsWhatTheUserIsAsked)
{
    show();
    QDialog dialog(&window());
    QTimer::singleShot(0, m_Workbench.get(), &Workbench::endOnRequest);
    EXPECT_EQ(dialog.exec(), QDialog::Rejected);
    // Only then, for somebody was waiting for the answer.
    EXPECT_TRUE(window().isVisible());
    waitUntil([this] { return !window().isVisible(); });
}

TEST_F(WorkbenchTest, ARequestToEndLeavesADialogOpenWhenTheUserStays)
{
    show();
    openEdited();
    QDialog dialog(&window());
    answerUnsaved(false);
    QTimer::singleShot(0, &dialog, [&] {
        m_Workbench->endOnRequest();
        EXPECT_TRUE(dialog.isVisible());
        dialog.accept();
    });
    EXPECT_EQ(dialog.exec(), QDialog::Accepted);
    EXPECT_TRUE(window().isVisible());
}

TEST_F(WorkbenchTest, ASecondRequestToEndDoesNotAskTwice)
{
    show();
    openEdited();
    int questions = 0;
    answering<UnsavedDialog>([&](UnsavedDialog &dialog) {
        m_Workbench->endOnRequest();
        questions = int(window().findChildren<UnsavedDialog *>().size());
        dialog.reject();
    });
    m_Workbench->endOnRequest();
    EXPECT_EQ(questions, 1);
    EXPECT_TRUE(window().isVisible());
}

TEST_F(WorkbenchTest, UndoneChangesAreNoUnsavedWork)
{
    openEdited();
    services::UndoActions::undo()->trigger();
    EXPECT_TRUE(m_Workbench->mayQuit());
}

TEST_F(WorkbenchTest, SelectingAndColoringResiduesAloneIsNoUnsavedAlignment)
{
    open({write("x.fasta", ">a\nAC-D\n>b\nACCD\n")});
    Alignment &family = *m_Reports.front().alignments.front();
    ObjectCommands::select({&family}, true);
    ObjectCommands::color({family.getItem(0, 1)}, Qt::red);
    EXPECT_TRUE(m_Workbench->mayQuit());
}

// ---- What plug-ins ask for

TEST_F(WorkbenchTest, ReadPdbAddsTheStructureAtOnce)
{
    const QByteArray path = write("model.pdb", pdbText("AG")).toLatin1();
    EXPECT_EQ(PluginManager::Command("Parse", "PDB", "KALMO", "Read PDB stream", "ReadPDB",
                                     static_cast<const void *>(path.constData())),
              Outcome::Done);
    EXPECT_EQ(topLevelNames(), Texts{"model"});
}

TEST_F(WorkbenchTest, ReadPdbFailsWithoutAReadableFile)
{
    const QByteArray path = m_Folder.filePath("none.pdb").toLatin1();
    EXPECT_EQ(PluginManager::Command("Parse", "PDB", "KALMO", "Read PDB stream", "ReadPDB",
                                     static_cast<const void *>(path.constData())),
              Outcome::Failed);
    EXPECT_EQ(PluginManager::Command("Parse", "PDB", "KALMO", "Read PDB stream", "ReadPDB",
                                     static_cast<const void *>(nullptr)),
              Outcome::Failed);
    EXPECT_TRUE(topLevelNames().empty());
}

TEST_F(WorkbenchTest, SaveAliWritesTheAlignmentAndMarksItSaved)
{
    struct
    {
        QString path;
        Alignment *alignment;
    } request{m_Folder.filePath("saved.ali"), &alignment("new", {"AC-D", "ACCD"})};
    EXPECT_TRUE(history().isModified(*request.alignment));
    EXPECT_EQ(PluginManager::Command("Parse", "PIR", "KALMO", "Save PIR", "SaveALI",
                                     static_cast<void *>(&request)),
              Outcome::Done);
    EXPECT_FALSE(history().isModified(*request.alignment));
    Result<FileContents> saved = readFile(request.path.toStdString());
    ASSERT_TRUE(saved.has_value());
    EXPECT_EQ(saved->format, "pir");
    EXPECT_EQ(saved->alignments.front().rows[0].sequence.text(), "AC-D");
    moveGap(*request.alignment);
    EXPECT_TRUE(history().isModified(*request.alignment));
}

TEST_F(WorkbenchTest, SaveAliWritesPirUnderAnyNameAndLeavesOneLineInTheLog)
{
    const QByteArray longName(200, 'x');
    open({write("x.fasta", '>' + longName + "\nAC-D\n>b\nACCD\n")});
    struct
    {
        QString path;
        Alignment *alignment;
    } request{m_Folder.filePath("saved.fasta"), m_Reports.front().alignments.front()};
    const LogLines log;
    EXPECT_EQ(PluginManager::Command("Parse", "PIR", "KALMO", "Save PIR", "SaveALI",
                                     static_cast<void *>(&request)),
              Outcome::Done);
    Result<FileContents> saved = readFile(request.path.toStdString());
    ASSERT_TRUE(saved.has_value());
    EXPECT_EQ(saved->format, "pir");
    EXPECT_EQ(saved->alignments.front().rows[0].name, longName.toStdString());
    EXPECT_EQ(log.texts(), QStringList("Saved x to " + request.path));
}

TEST_F(WorkbenchTest, SaveAliThatFailsLeavesTheAlignmentUnsaved)
{
    struct
    {
        QString path;
        Alignment *alignment;
    } request{m_Folder.filePath("none/saved.ali"), &alignment("new", {"AC-D"})};
    EXPECT_EQ(PluginManager::Command("Parse", "PIR", "KALMO", "Save PIR", "SaveALI",
                                     static_cast<void *>(&request)),
              Outcome::Failed);
    EXPECT_TRUE(history().isModified(*request.alignment));
    delete failureBox(window());
    request.alignment = nullptr;
    EXPECT_EQ(PluginManager::Command("Parse", "PIR", "KALMO", "Save PIR", "SaveALI",
                                     static_cast<void *>(&request)),
              Outcome::Failed);
}

TEST_F(WorkbenchTest, SaveAliThatFailsIsToldInABoxOverTheWindowUsed)
{
    show();
    QMainWindow tool;
    tool.show();
    tool.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&tool));
    struct
    {
        QString path;
        Alignment *alignment;
    } request{m_Folder.filePath("none/saved.ali"), &alignment("<i>new", {"AC-D"})};
    EXPECT_EQ(PluginManager::Command("Parse", "PIR", "KALMO", "Save PIR", "SaveALI",
                                     static_cast<void *>(&request)),
              Outcome::Failed);
    const QMessageBox *box = failureBox(tool);
    ASSERT_NE(box, nullptr);
    EXPECT_EQ(box->text(), "<i>new could not be saved.");
    EXPECT_EQ(box->textFormat(), Qt::PlainText);
    EXPECT_TRUE(box->informativeText().startsWith("saved.ali: "))
        << qPrintable(box->informativeText());
    EXPECT_EQ(tool.findChild<QStatusBar *>(), nullptr);
}

TEST_F(WorkbenchTest, WithoutAUserNoFailureWaitsInABox)
{
    m_Workbench->undo().history().clear();
    m_Workbench.reset();
    m_Workbench = std::make_unique<Workbench>(Workbench::Attendance::Nobody, withoutPlugins());
    show();
    open({m_Folder.filePath("none.pdb")});
    struct
    {
        QString path;
        Alignment *alignment;
    } request{m_Folder.filePath("none/saved.ali"), &alignment("new", {"AC-D"})};
    const LogLines log;
    EXPECT_EQ(PluginManager::Command("Parse", "PIR", "KALMO", "Save PIR", "SaveALI",
                                     static_cast<void *>(&request)),
              Outcome::Failed);
    EXPECT_EQ(log.count(), 1);
    EXPECT_EQ(failureBox(window()), nullptr);
}

TEST_F(WorkbenchTest, APrintIsOfferedBesideTheFileOfTheAlignment)
{
    const QString file = write("x.ali", ">P1;a\nsequence:a::::::::\nACD*\n");
    ASSERT_TRUE(QDir(m_Folder.path()).mkdir("deep"));
    const QString deep = m_Folder.filePath("deep/x.ali");
    ASSERT_TRUE(QFile::copy(file, deep));
    open({deep});
    EXPECT_EQ(Printouts::Folder(*m_Reports.front().alignments.front()), m_Folder.filePath("deep"));
    EXPECT_EQ(Printouts::Folder(alignment("made", {"AC"})), QDir::currentPath());
}

TEST_F(WorkbenchTest, TheStatusLineTellsWhereAPrintWent)
{
    show();
    const auto *notice = window().findChild<QWidget *>("PrintNotice");
    ASSERT_NE(notice, nullptr);
    EXPECT_FALSE(notice->isVisible());
    Printouts::Written(m_Folder.filePath("x.ps"));
    EXPECT_TRUE(notice->isVisible());
    notice->findChild<QAbstractButton *>("OpenPrinted")->click();
    const QMessageBox *box = failureBox(window());
    ASSERT_NE(box, nullptr);
    EXPECT_EQ(box->text(), m_Folder.filePath("x.ps") + " is not there any more.");
}

TEST_F(WorkbenchTest, TheStatusLineTellsOnceWhatWasPrinted)
{
    show();
    StatusLine::Say("Before.");
    Printouts::Written(m_Folder.filePath("x.ps"));
    EXPECT_EQ(window().statusBar()->currentMessage(), "Before.") << "the notice tells of it";
    EXPECT_EQ(window().findChild<QLabel *>("PrintedFormat")->text(), "Printed PostScript:");
    Printouts::Sent("laser");
    EXPECT_EQ(window().statusBar()->currentMessage(), "Sent to the printer laser");
}

TEST_F(WorkbenchTest, APluginSpeaksInTheStatusLineWhichMakesRoomForIt)
{
    show();
    sequence("one", "AC");
    const auto *count = window().findChild<QLabel *>("ObjectCount");
    StatusLine::Say("Nothing was found.");
    EXPECT_EQ(window().statusBar()->currentMessage(), "Nothing was found.");
    EXPECT_FALSE(count->isHidden());
    const QString longer = QString(300, 'x');
    StatusLine::Say(longer);
    EXPECT_TRUE(count->isHidden());
    EXPECT_TRUE(window().statusBar()->toolTip().contains(longer));
    StatusLine::Say({});
    EXPECT_EQ(window().statusBar()->currentMessage(), longer);
    window().statusBar()->clearMessage();
    EXPECT_FALSE(count->isHidden());
}

TEST_F(WorkbenchTest, ASavedFileIsInOpenRecentAndOneForAnotherProgramIsNot)
{
    const auto save = [](Alignment &alignment, const QString &file) {
        struct
        {
            QString path;
            Alignment *alignment;
        } request{file, &alignment};
        return PluginManager::Command("Parse", "PIR", "KALMO", "Save PIR", "SaveALI",
                                      static_cast<void *>(&request));
    };
    Alignment &made = alignment("new", {"AC-D"});
    const QString file = m_Folder.filePath("new.ali");
    ASSERT_EQ(save(made, file), Outcome::Done);
    EXPECT_EQ(m_Workbench->recentFiles().files().value(0), file);
    ASSERT_EQ(save(made, QString::fromStdString(Config::GetPersonalTmpDir()) + "/seq.ali"),
              Outcome::Done);
    EXPECT_EQ(m_Workbench->recentFiles().files().value(0), file);
}

TEST_F(WorkbenchTest, ARefusedPrintIsToldInABox)
{
    show();
    Printouts::Refused("Nothing was printed: the page is too small.");
    const QMessageBox *box = failureBox(window());
    ASSERT_NE(box, nullptr);
    EXPECT_EQ(box->text(), "Nothing was printed: the page is too small.");
}

TEST_F(WorkbenchTest, OpenFileOpensTheFileDialog)
{
    show();
    bool asked = false;
    answering<QFileDialog>([&](QFileDialog &dialog) {
        asked = true;
        dialog.reject();
    });
    EXPECT_EQ(PluginManager::Execute("Data", "OpenFile", "SequenceEditor", "open"), Outcome::Done);
    EXPECT_TRUE(asked);
}

TEST_F(WorkbenchTest, RoutesGoWithTheWorkbench)
{
    m_Workbench->undo().history().clear();
    m_Workbench.reset();
    EXPECT_EQ(PluginManager::Execute("Data", "OpenFile", "SequenceEditor", "open"),
              Outcome::NoService);
    m_Workbench = std::make_unique<Workbench>(Workbench::Attendance::User, withoutPlugins());
}

} // namespace WorkbenchTest
