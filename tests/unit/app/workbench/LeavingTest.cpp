// SPDX-License-Identifier: GPL-3.0-or-later
// How the workbench comes to its end: what it asks about, what it saves, and which jobs it waits
// for.
#include "AppFixture.h"
#include "ChangedFileBox.h"
#include "FileReader.h"
#include "JobList.h"
#include "LossBox.h"
#include "MainWindow.h"
#include "ObjectOperations.h"
#include "PluginManager.h"
#include "TestTexts.h"
#include "UndoCommands.h"
#include "UnsavedDialog.h"
#include "Workbench.h"
#include "support/Answering.h"
#include "support/WaitUntil.h"

#include <QApplication>
#include <QFile>
#include <QMessageBox>
#include <QProcess>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>
#include <QTimer>
#include <QTreeWidget>

#include <functional>

namespace LeavingTest {

using namespace TAMBO;
using app::ChangedFileBox;
using app::LossBox;
using app::UnsavedDialog;
using app::Workbench;
using services::JobList;

class LeavingTest : public AppFixture
{
protected:
    LeavingTest()
    {
        m_Workbench = std::make_unique<Workbench>(Workbench::Attendance::User, withoutPlugins());
        QObject::connect(m_Workbench.get(), &Workbench::opened, m_Workbench.get(),
                         [this](const app::LoadReport &report) { m_Report = report; });
        m_Workbench->window().show();
    }
    ~LeavingTest() override
    {
        for (const JobList::Job &job : std::vector(jobs().jobs()))
            jobs().end(job.number);
        m_Workbench->undo().history().clear();
        m_Workbench.reset();
    }

    static JobList &jobs() { return JobList::instance(); }
    bool isOpen() { return m_Workbench->window().isVisible(); }
    void open(const QString &file)
    {
        m_Workbench->open({file});
        waitUntil([this] { return !m_Workbench->loader().isBusy(); });
    }
    Alignment &openEdited(const QString &file)
    {
        open(file);
        Alignment &family = *m_Report.alignments.front();
        family.moveGap(0, 2, 1, true);
        return family;
    }
    QString fasta() { return write("x.fasta", ">a\nAC-D\n>b\nACCD\n"); }
    // Notes what is listed, chooses what becomes of jobs, and clicks.
    void answer(const char *button, const char *job = nullptr)
    {
        answering<UnsavedDialog>([this, button, job](UnsavedDialog &dialog) {
            m_Listed.clear();
            if (const auto *things = dialog.findChild<QTreeWidget *>("Things")) {
                for (int i = 0; i < things->topLevelItemCount(); ++i)
                    m_Listed << things->topLevelItem(i)->text(0) + ": " +
                                    things->topLevelItem(i)->text(1);
            }
            if (job != nullptr)
                dialog.findChild<QRadioButton *>(job)->click();
            dialog.findChild<QPushButton *>(button)->click();
        });
    }
    // One that goes on until somebody ends it.
    static void startJob(QProcess &program)
    {
        program.start("cat", QStringList());
        ASSERT_TRUE(program.waitForStarted(kPatienceMilliseconds));
        jobs().begin("Kestram", program.processId());
    }
    static bool saveAli(const QString &path, Alignment &alignment)
    {
        struct
        {
            QString path;
            Alignment *alignment;
        } request{path, &alignment};
        return PluginManager::Command("Parse", "PIR", "KALMO", "Save PIR", "SaveALI",
                                      static_cast<void *>(&request)) ==
               PluginManager::Outcome::Done;
    }
    LossBox *lossBox()
    {
        for (QWidget *widget : QApplication::topLevelWidgets()) {
            if (auto *box = qobject_cast<LossBox *>(widget); box != nullptr && box->isVisible())
                return box;
        }
        return nullptr;
    }
    static void click(const QMessageBox &box, const QString &text)
    {
        for (QAbstractButton *button : box.buttons()) {
            if (button->text().remove(u'&') == text)
                return button->click();
        }
        ADD_FAILURE() << "no button " << text.toStdString();
    }

    std::unique_ptr<Workbench> m_Workbench;
    app::LoadReport m_Report;
    QStringList m_Listed;
};

// ---- What is asked about

TEST_F(LeavingTest, FilesThatWereOnlyOpenedAreNotAskedAbout)
{
    open(fasta());
    open(write("loose.fasta", ">c\nACD\n>d\nACDE\n"));
    open(write("1abc.pdb", pdbText("AGAG")));
    m_Workbench->quit();
    EXPECT_FALSE(isOpen());
}

TEST_F(LeavingTest, EveryKindOfThingIsAskedAbout)
{
    open(write("1abc.pdb", pdbText("AGAG")));
    Structure &known = *m_Report.structures.front();
    known.chain(0)->setNumber(0, SequenceNumber(100));
    open(write("loose.fasta", ">c\nACD\n>d\nACDE\n"));
    renameObject(*space().object(space().objectCount() - 1), "renamed");
    openEdited(fasta());
    StructureRecord model;
    model.name = "x on 1abc";
    model.isModel = true;
    ObjectFactory::adopt(std::move(model));
    answer("Stay");
    m_Workbench->quit();
    EXPECT_TRUE(isOpen());
    EXPECT_EQ(m_Listed, (QStringList{"1abc: residue numbers", "renamed: name",
                                     "x: rows, columns or gaps", "x on 1abc: all of the model"}));
    answer("Discard");
    m_Workbench->quit();
    EXPECT_FALSE(isOpen());
}

TEST_F(LeavingTest, ClosingAStructureWithNewNumbersAsks)
{
    open(write("1abc.pdb", pdbText("AGAG")));
    Structure &known = *m_Report.structures.front();
    known.chain(0)->setNumber(0, SequenceNumber(100));
    answer("Stay");
    m_Workbench->closeObjects({&known});
    EXPECT_EQ(m_Listed, QStringList("1abc: residue numbers"));
    EXPECT_EQ(topLevelNames(), std::vector<std::string>{"1abc"});
    answer("Discard");
    m_Workbench->closeObjects({&known});
    EXPECT_TRUE(topLevelNames().empty());
}

// ---- Saving

TEST_F(LeavingTest, SaveAndQuitWritesTheFilesAndQuits)
{
    const QString file = fasta();
    openEdited(file);
    answer("Save");
    m_Workbench->quit();
    EXPECT_FALSE(isOpen());
    Result<FileContents> saved = readFile(file.toStdString());
    ASSERT_TRUE(saved.has_value());
    EXPECT_EQ(saved->format, "fasta");
    EXPECT_EQ(saved->alignments.front().rows[0].sequence.text(), "A-CD");
}

TEST_F(LeavingTest, AFailedSaveKeepsTheWorkbenchOpen)
{
    const QString file = fasta();
    openEdited(file);
    ASSERT_TRUE(QFile::remove(file));
    ASSERT_TRUE(QFile::link("/dev/full", file));
    answer("Save");
    answering<ChangedFileBox>(
        [](ChangedFileBox &box) { box.findChild<QPushButton *>("Overwrite")->click(); });
    m_Workbench->quit();
    EXPECT_TRUE(isOpen());
    auto *box = m_Workbench->window().findChild<QMessageBox *>("FailureBox");
    ASSERT_NE(box, nullptr);
    EXPECT_EQ(box->text(), "x could not be saved.");
    delete box;
    answer("Stay");
    m_Workbench->quit();
    EXPECT_EQ(m_Listed, QStringList("x: rows, columns or gaps"));
}

TEST_F(LeavingTest, ARequestToEndWaitsForTheAnswerWhileAFileIsChosen)
{
    Alignment &made = alignment("new", {"AC-D", "ACCD"});
    made.moveGap(0, 2, 1, true);
    answer("Save");
    bool wasChosen = false;
    const std::function<void()> closeExport = [&] {
        auto *dialog = qobject_cast<QDialog *>(QApplication::activeModalWidget());
        if (dialog == nullptr || dialog->objectName() != "ExportDialog") {
            QTimer::singleShot(1, qApp, closeExport);
            return;
        }
        m_Workbench->endOnRequest();
        EXPECT_EQ(QApplication::activeModalWidget(), dialog);
        wasChosen = true;
        dialog->reject();
    };
    QTimer::singleShot(1, qApp, closeExport);
    m_Workbench->quit();
    EXPECT_TRUE(isOpen());
    EXPECT_TRUE(wasChosen);
}

// ---- Running jobs

TEST_F(LeavingTest, ARunningJobIsAskedAboutAndCanBeLeftRunning)
{
    QProcess program;
    startJob(program);
    answer("Stay");
    m_Workbench->quit();
    EXPECT_TRUE(isOpen());
    answer("Quit", "Leave");
    m_Workbench->quit();
    EXPECT_FALSE(isOpen());
    EXPECT_FALSE(program.waitForFinished(0)) << "it goes on";
    program.kill();
    program.waitForFinished(kPatienceMilliseconds);
}

TEST_F(LeavingTest, ARunningJobCanBeCancelled)
{
    QProcess program;
    startJob(program);
    answer("Quit", "Cancel");
    m_Workbench->quit();
    EXPECT_FALSE(isOpen());
    EXPECT_TRUE(program.waitForFinished(kPatienceMilliseconds));
    EXPECT_EQ(program.exitStatus(), QProcess::CrashExit) << "by a signal";
}

TEST_F(LeavingTest, WaitingQuitsWhenTheLastJobHasEnded)
{
    const auto one = jobs().begin("One");
    const auto two = jobs().begin("Two");
    answer("Quit", "Wait");
    m_Workbench->quit();
    EXPECT_TRUE(isOpen());
    jobs().end(one);
    QCoreApplication::processEvents();
    EXPECT_TRUE(isOpen());
    jobs().end(two);
    waitUntil([this] { return !isOpen(); });
}

TEST_F(LeavingTest, WhatTheJobHasMadeIsAskedAboutAfterTheWait)
{
    const auto job = jobs().begin("Kestram");
    answer("Quit", "Wait");
    m_Workbench->quit();
    jobs().end(job);
    alignment("made", {"AC"});
    bool isAsked = false;
    answering<UnsavedDialog>([&](UnsavedDialog &dialog) {
        isAsked = true;
        dialog.findChild<QPushButton *>("Stay")->click();
    });
    waitUntil([&] { return isAsked; });
    EXPECT_TRUE(isOpen());
}

TEST_F(LeavingTest, ABoxAboutTheEndOfTheJobIsReadFirst)
{
    const auto job = jobs().begin("Kestram");
    answer("Quit", "Wait");
    m_Workbench->quit();
    QDialog box(&m_Workbench->window());
    QTimer::singleShot(1, &box, [&] {
        jobs().end(job);
        // Long enough for whoever would not wait.
        for (int i = 0; i < 10; ++i)
            QCoreApplication::processEvents();
        EXPECT_TRUE(isOpen());
        box.accept();
    });
    EXPECT_EQ(box.exec(), QDialog::Accepted);
    waitUntil([this] { return !isOpen(); });
}

TEST_F(LeavingTest, StayingEndsTheWait)
{
    const auto job = jobs().begin("Kestram");
    answer("Quit", "Wait");
    m_Workbench->quit();
    answer("Stay");
    m_Workbench->quit();
    jobs().end(job);
    for (int i = 0; i < 10; ++i)
        QCoreApplication::processEvents();
    EXPECT_TRUE(isOpen());
}

TEST_F(LeavingTest, WhatArrivesDuringTheQuestionIsAskedAbout)
{
    const auto job = jobs().begin("Kestram");
    answering<UnsavedDialog>([&](UnsavedDialog &first) {
        alignment("made", {"AC"});
        jobs().end(job);
        answer("Discard");
        EXPECT_FALSE(first.isVisible()) << "its job has ended";
    });
    m_Workbench->quit();
    EXPECT_EQ(m_Listed, QStringList("made: all of it"));
    EXPECT_FALSE(isOpen());
}

// ---- Files that lack something

TEST_F(LeavingTest, ASaveWithLossesCountsWhenTheUserSaysSo)
{
    open(fasta());
    Alignment &family = *m_Report.alignments.front();
    // Numbers of a plain sequence are in no file.
    Peptide::from(family.GetSeq(0))->setNumber(0, SequenceNumber(100));
    const QString file = m_Folder.filePath("saved.ali");
    EXPECT_TRUE(saveAli(file, family));
    EXPECT_TRUE(QFile::exists(file)) << "the box does not hold up whoever saves";
    ASSERT_NE(lossBox(), nullptr);
    EXPECT_EQ(lossBox()->text(), "saved.ali does not hold all of x.");
    EXPECT_TRUE(lossBox()->informativeText().startsWith("The residue numbers of 1 row"));
    click(*lossBox(), "Keep as Unsaved");
    answer("Stay");
    m_Workbench->quit();
    EXPECT_EQ(m_Listed, QStringList("x: residue numbers"));
    EXPECT_TRUE(saveAli(file, family));
    ASSERT_NE(lossBox(), nullptr);
    click(*lossBox(), "Count as Saved");
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    m_Workbench->quit();
    EXPECT_FALSE(isOpen());
}

TEST_F(LeavingTest, ReturnOverLossesKeepsTheObjectUnsaved)
{
    open(fasta());
    Alignment &family = *m_Report.alignments.front();
    Peptide::from(family.GetSeq(0))->setNumber(0, SequenceNumber(100));
    EXPECT_TRUE(saveAli(m_Folder.filePath("saved.ali"), family));
    ASSERT_NE(lossBox(), nullptr);
    QTest::keyClick(lossBox(), Qt::Key_Return);
    EXPECT_EQ(lossBox(), nullptr);
    EXPECT_TRUE(m_Workbench->undo().history().isModified(family));
}

TEST_F(LeavingTest, SavingHeadersWithNumbersOfNoFileSaysSoAndCounts)
{
    open(write("1abc.pdb", pdbText("AGAG")));
    Peptide &chain = *m_Report.structures.front()->chain(0);
    open(write("family.ali", ">P1;1abc_A\nstructureX:1abc:1:A:4:A::::\nAGAG*\n"
                             ">P1;b\nsequence:::::::::\nAG-G*\n"));
    Alignment &family = *m_Report.alignments.front();
    ASSERT_EQ(family.GetSeq(0), &chain);
    chain.setNumber(0, SequenceNumber(100));
    EXPECT_TRUE(saveAli(m_Folder.filePath("family.ali"), family));
    ASSERT_NE(lossBox(), nullptr);
    EXPECT_EQ(lossBox()->text(), "family is saved in family.ali.");
    EXPECT_EQ(lossBox()->informativeText(),
              "It names residue numbers of 1abc that are in no structure file until 1abc is saved, "
              "too.");
    click(*lossBox(), "OK");
    EXPECT_FALSE(m_Workbench->undo().history().isModified(family));
    answer("Discard");
    m_Workbench->quit();
    EXPECT_EQ(m_Listed, QStringList("1abc: residue numbers"));
}

TEST_F(LeavingTest, SavingWithoutLossesSaysNothing)
{
    Alignment &family = openEdited(fasta());
    EXPECT_TRUE(saveAli(m_Folder.filePath("saved.ali"), family));
    EXPECT_EQ(lossBox(), nullptr);
    m_Workbench->quit();
    EXPECT_FALSE(isOpen());
}

} // namespace LeavingTest
