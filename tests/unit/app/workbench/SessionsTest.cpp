// SPDX-License-Identifier: GPL-3.0-or-later
// Sessions in files, as the workbench saves and opens them.
#include "AppFixture.h"
#include "ChangedFileBox.h"
#include "KeptValues.h"
#include "MainWindow.h"
#include "ObjectIndex.h"
#include "ObjectOperations.h"
#include "RecentFiles.h"
#include "SessionCommands.h"
#include "SessionDocument.h"
#include "StoreReader.h"
#include "UndoCommands.h"
#include "UnsavedDialog.h"
#include "Workbench.h"
#include "support/Answering.h"
#include "support/ScopedSettings.h"
#include "support/WaitUntil.h"
#include "unit/sessions/store/FailingDisk.h"

#include <sqlite3.h>

#include <QAbstractItemView>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTreeWidget>

#include <chrono>
#include <fcntl.h>
#include <filesystem>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>

namespace SessionsTest {

using namespace TAMBO;
using app::ChangedFileBox;
using app::UnsavedDialog;
using app::Workbench;

constexpr const char *kFasta = ">a\nAC-D\n>b\nACCD\n";

class SessionsTest : public AppFixture
{
protected:
    SessionsTest() { begin(); }
    ~SessionsTest() override { end(); }

    void begin()
    {
        m_Workbench = std::make_unique<Workbench>(Workbench::Attendance::User, withoutPlugins());
        QObject::connect(m_Workbench.get(), &Workbench::opened, m_Workbench.get(),
                         [this](const app::LoadReport &) { ++m_Opened; });
    }
    void end()
    {
        if (m_Workbench == nullptr)
            return;
        history().clear();
        space().reset();
        m_Workbench.reset();
    }
    History &history() { return m_Workbench->undo().history(); }
    app::MainWindow &window() { return m_Workbench->window(); }
    [[nodiscard]] QString session() const { return path("work.tambo"); }

    Alignment &openFamily(const QString &name = "x.fasta")
    {
        const int before = m_Opened;
        m_Workbench->open({write(name, kFasta)});
        waitUntil([&] { return m_Opened > before; });
        return *dynamic_cast<Alignment *>(space().object(space().objectCount() - 1));
    }
    static Alignment &family()
    {
        for (Compound *object : space()) {
            if (auto *alignment = dynamic_cast<Alignment *>(object))
                return *alignment;
        }
        throw std::logic_error("no alignment");
    }
    // Goes on when all that the call has begun is done.
    void openSession(const QString &file)
    {
        m_Workbench->open({file});
        QCoreApplication::processEvents();
    }
    void answerFileDialog(const QString &name)
    {
        answering<QFileDialog>([file = path(name)](QFileDialog &files) {
            files.setOption(QFileDialog::DontConfirmOverwrite);
            // What is chosen in a list counts more than what is typed.
            for (QAbstractItemView *list : files.findChildren<QAbstractItemView *>())
                list->clearSelection();
            files.findChild<QLineEdit *>("fileNameEdit")->setText(file);
            for (QAbstractItemView *list : files.findChildren<QAbstractItemView *>())
                list->clearSelection();
            QMetaObject::invokeMethod(&files, "accept");
        });
    }
    void saveSessionAs(const QString &name)
    {
        answerFileDialog(name);
        ASSERT_TRUE(m_Workbench->sessions().saveAs());
    }
    // A file that comes to no end before endPipe(), and one that waits for it.
    void beginToOpen()
    {
        ASSERT_EQ(mkfifo(path("pipe.fasta").toUtf8().constData(), 0600), 0);
        m_Workbench->open({path("pipe.fasta")});
        m_Workbench->open({write("late.fasta", kFasta)});
        // Once it is being read.
        m_Pipe = ::open(path("pipe.fasta").toUtf8().constData(), O_WRONLY);
        ASSERT_GE(m_Pipe, 0);
        ASSERT_TRUE(m_Workbench->loader().isBusy());
    }
    void endPipe(std::string_view text)
    {
        EXPECT_EQ(::write(m_Pipe, text.data(), text.size()), ssize_t(text.size()));
        ::close(m_Pipe);
    }
    // What the dialog shows first; it is called off then.
    QString suggestion()
    {
        QString file;
        answering<QFileDialog>([&file](QFileDialog &files) {
            file = files.directory().filePath(files.findChild<QLineEdit *>("fileNameEdit")->text());
            files.reject();
        });
        EXPECT_FALSE(m_Workbench->sessions().saveAs());
        return file;
    }
    // Edited, and saved as a session.
    void prepareSession()
    {
        openFamily();
        family().moveGap(0, 2, 1, true);
        ASSERT_NO_FATAL_FAILURE(saveSessionAs("work.tambo"));
    }
    template <typename Box> void answerBox(const char *button)
    {
        answering<Box>([this, button](Box &box) {
            ++m_Asked;
            m_Said = box.text();
            if (button == nullptr)
                box.reject();
            else
                box.template findChild<QPushButton *>(button)->click();
        });
    }
    void answerUnsaved(const char *button)
    {
        answering<UnsavedDialog>([this, button](UnsavedDialog &dialog) {
            ++m_Asked;
            m_Listed.clear();
            if (const auto *things = dialog.findChild<QTreeWidget *>("Things")) {
                for (int i = 0; i < things->topLevelItemCount(); ++i)
                    m_Listed << things->topLevelItem(i)->text(0);
            }
            m_HasSessionButton = dialog.findChild<QPushButton *>("SaveSession") != nullptr;
            dialog.findChild<QPushButton *>(button)->click();
        });
    }
    [[nodiscard]] std::vector<QMessageBox *> failures()
    {
        const auto found = window().findChildren<QMessageBox *>("FailureBox");
        return {found.begin(), found.end()};
    }

    std::unique_ptr<Workbench> m_Workbench;
    int m_Opened = 0;
    int m_Asked = 0;
    int m_Pipe = -1;
    QString m_Said;
    QStringList m_Listed;
    bool m_HasSessionButton = false;
};

// ---- Saving

TEST_F(SessionsTest, TheFileIsAskedForOnce)
{
    ASSERT_NO_FATAL_FAILURE(prepareSession());
    const QByteArray before = bytesOf(session());
    family().insertGap(0, 1);
    EXPECT_TRUE(m_Workbench->sessions().save());
    EXPECT_FALSE(bytesOf(session()) == before);
    EXPECT_EQ(m_Workbench->session().file(), session());
}

TEST_F(SessionsTest, TheFirstSuggestionStandsBesideTheFirstFileThatIsOpen)
{
    end();
    const ScopedSettings settings("");
    begin();
    for (const char *folder : {"family", "other", "sessions"})
        ASSERT_TRUE(QDir().mkdir(path(folder)));
    EXPECT_EQ(suggestion(), QDir::current().filePath("session.tambo"));
    openFamily("family/x.fasta");
    openFamily("other/y.fasta");
    EXPECT_EQ(suggestion(), path("family/x.tambo"));
    ASSERT_NO_FATAL_FAILURE(saveSessionAs("sessions/work.tambo"));
    EXPECT_EQ(suggestion(), path("sessions/work.tambo"));
    end();
}

TEST_F(SessionsTest, NoFolderIsSuggestedThatIsGone)
{
    end();
    const ScopedSettings settings("");
    begin();
    for (const char *folder : {"family", "other"})
        ASSERT_TRUE(QDir().mkdir(path(folder)));
    openFamily("family/x.fasta");
    openFamily("other/y.fasta");
    ASSERT_TRUE(QDir(path("family")).removeRecursively());
    EXPECT_EQ(suggestion(), path("other/x.tambo"));
    ASSERT_TRUE(QDir(path("other")).removeRecursively());
    EXPECT_EQ(suggestion(), QDir::current().filePath("x.tambo"));
    end();
}

TEST_F(SessionsTest, AFileWithoutTheEndingGetsIt)
{
    openFamily();
    ASSERT_NO_FATAL_FAILURE(saveSessionAs("work"));
    EXPECT_TRUE(QFile::exists(session()));
    ASSERT_NO_FATAL_FAILURE(saveSessionAs("other.fasta"));
    EXPECT_TRUE(QFile::exists(path("other.fasta.tambo")));
    EXPECT_FALSE(QFile::exists(path("other.fasta")));
}

TEST_F(SessionsTest, AFileThatIsThereWithTheEndingIsAskedAbout)
{
    openFamily();
    write("old.fasta.tambo", "something");
    answerFileDialog("old.fasta");
    // The second question comes behind the first one.
    std::function<void()> answer = [&] {
        auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
        if (box == nullptr)
            return QTimer::singleShot(1, qApp, answer);
        m_Said = box->text();
        box->button(QMessageBox::No)->click();
    };
    QTimer::singleShot(1, qApp, answer);
    EXPECT_FALSE(m_Workbench->sessions().saveAs());
    EXPECT_EQ(m_Said, "old.fasta.tambo already exists.\nDo you want to replace it?");
    EXPECT_EQ(bytesOf(path("old.fasta.tambo")), "something");
}

TEST_F(SessionsTest, TheTitleShowsItsNameAndWhetherItHasChanges)
{
    EXPECT_EQ(window().windowTitle(), "Tambo");
    ASSERT_NO_FATAL_FAILURE(prepareSession());
    EXPECT_EQ(window().windowTitle(), "work.tambo[*] – Tambo");
    EXPECT_FALSE(window().isWindowModified());
    family().insertGap(0, 1);
    EXPECT_TRUE(window().isWindowModified());
    history().undo();
    EXPECT_FALSE(window().isWindowModified());
    history().undo();
    EXPECT_TRUE(window().isWindowModified());
    EXPECT_TRUE(m_Workbench->sessions().save());
    EXPECT_FALSE(window().isWindowModified());
}

TEST_F(SessionsTest, ItStandsAmongTheFilesThatWereOpenedLast)
{
    ASSERT_NO_FATAL_FAILURE(prepareSession());
    EXPECT_EQ(m_Workbench->recentFiles().files().front(), session());
}

TEST_F(SessionsTest, AFailureNamesFileAndCauseAndTheSessionKeepsItsFile)
{
    ASSERT_NO_FATAL_FAILURE(prepareSession());
    family().insertGap(0, 1);
    ASSERT_TRUE(QDir().mkdir(path("full")));
    answerFileDialog("full/work.tambo");
    FailingDisk disk;
    disk.fill();
    EXPECT_FALSE(m_Workbench->sessions().saveAs());
    disk.free();
    ASSERT_EQ(failures().size(), 1u);
    EXPECT_EQ(failures()[0]->text(), "The session could not be saved.");
    EXPECT_EQ(failures()[0]->informativeText(),
              "work.tambo: cannot be written: database or disk is full");
    EXPECT_EQ(m_Workbench->session().file(), session());
    EXPECT_TRUE(window().isWindowModified());
    EXPECT_TRUE(QDir(path("full")).isEmpty());
}

TEST_F(SessionsTest, AFileThatAnotherProgramHasChangedIsAskedAbout)
{
    ASSERT_NO_FATAL_FAILURE(prepareSession());
    changeBehind("work.tambo", "somebody else's");
    answerBox<ChangedFileBox>(nullptr);
    EXPECT_FALSE(m_Workbench->sessions().save());
    EXPECT_EQ(m_Said, "work.tambo was changed by another program.");
    EXPECT_EQ(bytesOf(session()), "somebody else's");
    answerBox<ChangedFileBox>("Overwrite");
    EXPECT_TRUE(m_Workbench->sessions().save());
    EXPECT_TRUE(bytesOf(session()).startsWith("SQLite"));
}

TEST_F(SessionsTest, TheLastVersionsStayWhenTheSettingsSaySo)
{
    end();
    const ScopedSettings settings("[Files]\nBackups = true\n");
    begin();
    ASSERT_NO_FATAL_FAILURE(prepareSession());
    const QByteArray before = bytesOf(session());
    family().insertGap(0, 1);
    EXPECT_TRUE(m_Workbench->sessions().save());
    EXPECT_TRUE(bytesOf(path("work.tambo.1.bak~")) == before);
    end();
}

// ---- What it holds counts as saved

TEST_F(SessionsTest, NobodyIsAskedAboutWhatItHolds)
{
    ASSERT_NO_FATAL_FAILURE(prepareSession());
    EXPECT_TRUE(m_Workbench->mayQuit());
    EXPECT_EQ(m_Asked, 0);
    m_Workbench->closeObjects({&family()});
    EXPECT_EQ(m_Asked, 0);
}

TEST_F(SessionsTest, WhatIsDoneAfterwardsIsAskedAboutUntilItIsUndone)
{
    openFamily("y.fasta").moveGap(0, 2, 1, true);
    ASSERT_NO_FATAL_FAILURE(prepareSession());
    Alignment &second = *dynamic_cast<Alignment *>(space().object(space().objectCount() - 1));
    second.insertGap(0, 1);
    answerUnsaved("Stay");
    EXPECT_FALSE(m_Workbench->mayQuit());
    EXPECT_EQ(m_Listed, QStringList({"x"}));
    EXPECT_TRUE(m_HasSessionButton);
    history().undo();
    EXPECT_TRUE(m_Workbench->mayQuit());
    EXPECT_EQ(m_Asked, 1);
}

TEST_F(SessionsTest, TheQuestionOffersToSaveItInOneGo)
{
    ASSERT_NO_FATAL_FAILURE(prepareSession());
    family().insertGap(0, 1);
    answerUnsaved("SaveSession");
    EXPECT_TRUE(m_Workbench->mayQuit());
    EXPECT_FALSE(window().isWindowModified());
    EXPECT_EQ(m_Asked, 1);
}

TEST_F(SessionsTest, ASessionWithoutAFileIsNotOfferedToBeSaved)
{
    openFamily().moveGap(0, 2, 1, true);
    answerUnsaved("Discard");
    EXPECT_TRUE(m_Workbench->mayQuit());
    EXPECT_FALSE(m_HasSessionButton);
}

TEST_F(SessionsTest, ChangesThatNoObjectHasAreAskedAboutForTheSession)
{
    ASSERT_NO_FATAL_FAILURE(prepareSession());
    openFamily("z.fasta");
    answerUnsaved("Stay");
    EXPECT_FALSE(m_Workbench->mayQuit());
    EXPECT_EQ(m_Listed, QStringList());
    EXPECT_TRUE(m_HasSessionButton);
}

// ---- Opening

// What only a running workbench and the next one can use stays out of files.
TEST_F(SessionsTest, ItsFileHasNothingOfTheRunningWorkbench)
{
    m_Workbench->keepWork();
    ASSERT_NO_FATAL_FAILURE(prepareSession());
    auto store =
        sessions::StoreReader::open(session().toStdString(), sessions::StoreReader::Kind::Whole);
    ASSERT_TRUE(store);
    QStringList names;
    ASSERT_TRUE(store.value()->forEachValue([&](std::string_view name, std::string_view) {
        names << QString::fromUtf8(name.data(), qsizetype(name.size()));
        return Result<void>();
    }));
    EXPECT_TRUE(names.contains("files")) << names.join(u' ').toStdString();
    for (const char *name : {"summary", "unsaved", "arriving", "session-file"})
        EXPECT_FALSE(names.contains(name)) << name;
}

TEST_F(SessionsTest, WhatIsNotedOfObjectsIsThereAgain)
{
    const app::ObjectNote note{"Model of globins", {{"Identity (%)", "35.2"}}};
    openFamily();
    m_Workbench->notes().set(family(), note);
    ASSERT_NO_FATAL_FAILURE(saveSessionAs("work.tambo"));
    end();
    begin();
    openSession(session());
    ASSERT_NE(m_Workbench->notes().of(family()), nullptr);
    EXPECT_EQ(*m_Workbench->notes().of(family()), note);
}

TEST_F(SessionsTest, ItOpensAsItWasWithAllStepsOfUndo)
{
    ASSERT_NO_FATAL_FAILURE(prepareSession());
    const std::vector<std::string> rows = rowsOf(family());
    const std::vector<std::string> names = topLevelNames();
    end();
    begin();
    openSession(session());
    EXPECT_EQ(topLevelNames(), names);
    EXPECT_EQ(rowsOf(family()), rows);
    EXPECT_FALSE(window().isWindowModified());
    EXPECT_EQ(window().windowTitle(), "work.tambo[*] – Tambo");
    EXPECT_TRUE(m_Workbench->mayQuit());
    history().undo();
    EXPECT_EQ(rowsOf(family()), (std::vector<std::string>{"AC-D", "ACCD"}));
    EXPECT_TRUE(window().isWindowModified());
    history().undo();
    EXPECT_EQ(space().objectCount(), 0u);
    history().goTo(history().size());
    EXPECT_FALSE(window().isWindowModified());
    EXPECT_EQ(m_Asked, 0);
}

TEST_F(SessionsTest, WhatIsOpenStaysWhenTheUserCallsItOff)
{
    ASSERT_NO_FATAL_FAILURE(prepareSession());
    family().insertGap(0, 1);
    const std::vector<std::string> rows = rowsOf(family());
    answerBox<QMessageBox>(nullptr);
    openSession(session());
    EXPECT_EQ(m_Asked, 1);
    EXPECT_EQ(m_Said, "Close what is open and open work.tambo?");
    EXPECT_EQ(rowsOf(family()), rows);
}

TEST_F(SessionsTest, WhatIsOpenIsClosedOnceUnsavedWorkWasAskedAbout)
{
    ASSERT_NO_FATAL_FAILURE(prepareSession());
    const std::vector<std::string> rows = rowsOf(family());
    family().insertGap(0, 1);
    openFamily("z.fasta");
    answerBox<QMessageBox>("Replace");
    answerUnsaved("Discard");
    openSession(session());
    waitUntil([this] { return m_Asked == 2 && !window().isWindowModified(); });
    EXPECT_EQ(m_Listed, QStringList({"x"}));
    EXPECT_EQ(rowsOf(family()), rows);
    EXPECT_EQ(topLevelNames().back(), "x");
    history().goTo(0);
    EXPECT_EQ(space().objectCount(), 0u);
}

TEST_F(SessionsTest, WhatIsOpenStaysWhenTheSessionIsDamaged)
{
    ASSERT_NO_FATAL_FAILURE(prepareSession());
    ASSERT_TRUE(QFile::copy(session(), path("bad.tambo")));
    sqlite3 *connection = nullptr;
    ASSERT_EQ(sqlite3_open(path("bad.tambo").toUtf8().constData(), &connection), SQLITE_OK);
    EXPECT_EQ(sqlite3_exec(connection, "UPDATE state SET content = x'ff' WHERE number = 1", nullptr,
                           nullptr, nullptr),
              SQLITE_OK);
    sqlite3_close(connection);
    const std::vector<std::string> rows = rowsOf(family());
    const std::size_t steps = history().size();
    answerBox<QMessageBox>("Replace");
    openSession(path("bad.tambo"));
    waitUntil([this] { return failures().size() == 1; });
    EXPECT_EQ(failures()[0]->text(), "The session could not be opened.");
    EXPECT_TRUE(failures()[0]->informativeText().startsWith(path("bad.tambo") + ": "))
        << failures()[0]->informativeText().toStdString();
    EXPECT_EQ(rowsOf(family()), rows);
    EXPECT_EQ(history().size(), steps);
    EXPECT_EQ(m_Workbench->session().file(), session());
}

TEST_F(SessionsTest, ItIsOpenedBeforeTheFilesThatComeWithIt)
{
    ASSERT_NO_FATAL_FAILURE(prepareSession());
    end();
    begin();
    const int before = m_Opened;
    m_Workbench->open({write("z.fasta", kFasta), session()});
    waitUntil([&] { return m_Opened > before; });
    EXPECT_EQ(topLevelNames().back(), "z");
    EXPECT_EQ(m_Workbench->session().file(), session());
    EXPECT_TRUE(window().isWindowModified());
    history().undo();
    EXPECT_EQ(topLevelNames().back(), "x");
    EXPECT_FALSE(window().isWindowModified());
}

// What the user has asked for before he has all closed is closed with it.
TEST_F(SessionsTest, WhatIsStillToBeOpenedIsGivenUpForIt)
{
    ASSERT_NO_FATAL_FAILURE(prepareSession());
    const std::vector<std::string> names = topLevelNames();
    beginToOpen();
    answerBox<QMessageBox>("Replace");
    openSession(session());
    EXPECT_EQ(m_Asked, 1);
    endPipe({});
    waitUntil([this] { return !m_Workbench->loader().isBusy(); });
    EXPECT_EQ(m_Opened, 3);
    EXPECT_EQ(topLevelNames(), names);
    EXPECT_FALSE(window().isWindowModified());
}

TEST_F(SessionsTest, WhatIsStillToBeOpenedComesWhenTheUserCallsItOff)
{
    ASSERT_NO_FATAL_FAILURE(prepareSession());
    beginToOpen();
    answerBox<QMessageBox>(nullptr);
    openSession(session());
    endPipe(kFasta);
    waitUntil([this] { return m_Opened == 3; });
    EXPECT_EQ(topLevelNames().back(), "late");
}

TEST_F(SessionsTest, WhatIsStillToBeOpenedComesWhenSomethingOpenIsLocked)
{
    ASSERT_NO_FATAL_FAILURE(prepareSession());
    ASSERT_TRUE(setObjectLocked(family(), true));
    beginToOpen();
    answerBox<QMessageBox>("Replace");
    openSession(session());
    EXPECT_EQ(m_Asked, 1);
    endPipe(kFasta);
    waitUntil([this] { return m_Opened == 3; });
    EXPECT_EQ(topLevelNames().back(), "late");
    setObjectLocked(family(), false);
}

TEST_F(SessionsTest, WhatIsAskedForAfterItIsAddedToIt)
{
    ASSERT_NO_FATAL_FAILURE(prepareSession());
    beginToOpen();
    answerBox<QMessageBox>("Replace");
    openSession(session());
    EXPECT_EQ(m_Asked, 1);
    m_Workbench->open({write("after.fasta", kFasta)});
    endPipe({});
    waitUntil([this] { return m_Opened == 4; });
    EXPECT_EQ(topLevelNames().back(), "after");
    history().undo();
    EXPECT_EQ(topLevelNames().back(), "x");
}

TEST_F(SessionsTest, FilesThatComeWithItGoToAWorkbenchOfItsOwn)
{
    ASSERT_NO_FATAL_FAILURE(prepareSession());
    const std::vector<std::string> names = topLevelNames();
    QStringList started;
    bool starts = true;
    m_Workbench->setStarter([&](const QStringList &files) {
        started = files;
        return starts;
    });
    const QString other = write("z.fasta", kFasta);
    answerBox<QMessageBox>("New");
    m_Workbench->open({other, session()});
    waitUntil([&] { return !started.isEmpty(); });
    EXPECT_EQ(started, QStringList({session(), other}));
    QCoreApplication::processEvents();
    EXPECT_FALSE(m_Workbench->loader().isBusy());
    EXPECT_EQ(topLevelNames(), names);
    // When it does not start they come here.
    starts = false;
    answerBox<QMessageBox>("New");
    const int before = m_Opened;
    m_Workbench->open({other, session()});
    waitUntil([&] { return m_Opened > before; });
    EXPECT_EQ(topLevelNames().back(), "z");
    ASSERT_EQ(failures().size(), 1U);
    EXPECT_EQ(failures()[0]->informativeText(),
              session() + ": cannot be opened: a new workbench does not start");
}

TEST_F(SessionsTest, AtTheStartItIsThereBeforeTheStartIsTold)
{
    ASSERT_NO_FATAL_FAILURE(prepareSession());
    end();
    begin();
    int started = 0;
    app::LoadReport told;
    QObject::connect(m_Workbench.get(), &Workbench::started, m_Workbench.get(),
                     [&](const app::LoadReport &report) {
                         ++started;
                         told = report;
                     });
    m_Workbench->openAtStart({session().toStdString()});
    waitUntil([&] { return started == 1; });
    EXPECT_TRUE(told.failures.empty());
    EXPECT_EQ(topLevelNames().back(), "x");
    m_Workbench->openAtStart({path("none.tambo").toStdString()});
    waitUntil([&] { return started == 2; });
    ASSERT_EQ(told.failures.size(), 1u);
    EXPECT_EQ(told.failures[0].failure.message(),
              path("none.tambo").toStdString() + ": there is no such file");
}

// ---- What survives a crash

TEST_F(SessionsTest, TheFileIsKnownAgainAfterARecovery)
{
    ASSERT_NO_FATAL_FAILURE(prepareSession());
    family().insertGap(0, 1);
    const std::string stored = m_Workbench->session().store();
    app::SessionDocument again(history());
    EXPECT_FALSE(again.hasFile());
    ASSERT_TRUE(again.load(stored, ObjectIndex()));
    EXPECT_EQ(again.file(), session());
    EXPECT_TRUE(again.isModified());
    history().undo();
    EXPECT_FALSE(again.isModified());
    EXPECT_TRUE(again.fileState());
    EXPECT_FALSE(again.load("\x05", ObjectIndex()));
    EXPECT_EQ(again.file(), session());
}

} // namespace SessionsTest
