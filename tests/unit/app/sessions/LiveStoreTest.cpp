// SPDX-License-Identifier: GPL-3.0-or-later
// The work of a workbench on the disk: what is left of it, what is asked about, what the user hears
// of a disk that does not take it.
#include "LiveStore.h"
#include "AppFixture.h"
#include "FileReader.h"
#include "Hooks.h"
#include "KeptValues.h"
#include "ObjectIndex.h"
#include "ObjectOperations.h"
#include "Recovery.h"
#include "RecoveryDialog.h"
#include "SessionFolder.h"
#include "SessionKinds.h"
#include "StoreFile.h"
#include "StoredObject.h"
#include "support/ExpectMessage.h"
#include "support/WaitUntil.h"
#include "unit/sessions/store/FailingDisk.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QTreeWidget>

namespace LiveStoreTest {

using namespace TAMBO;
using app::LeftSession;
using app::LiveStore;
using app::RecoveryDialog;
using app::SessionFolder;

class LiveStoreTest : public RecordedFixture
{
protected:
    [[nodiscard]] QString folder() const { return m_Folder.filePath("sessions"); }
    [[nodiscard]] SessionFolder sessions() const { return SessionFolder(folder()); }
    [[nodiscard]] std::unique_ptr<LiveStore> begin(const LiveStore::Pace &pace = {})
    {
        const Result<QString> file = sessions().newFile();
        EXPECT_TRUE(file);
        return std::make_unique<LiveStore>(space(), m_History, m_Values, file.value(), pace);
    }
    static void waitUntilSafe(LiveStore &store)
    {
        bool isSafe = false;
        store.whenSafe([&] { isSafe = true; });
        waitUntil([&] { return isSafe; });
    }
    [[nodiscard]] QStringList files() const
    {
        return QDir(folder()).entryList(QDir::Files, QDir::Name);
    }
    // As if the workbench had been killed: its files as they are, under another name.
    QString leave()
    {
        const QString copy = folder() + QStringLiteral("/left.session");
        const QStringList there = files();
        for (const QString &name : there) {
            const auto ending = name.indexOf(QStringLiteral(".session"));
            if (ending < 0)
                continue;
            // A store that is still at work may have taken one away meanwhile.
            if (!QFile::copy(folder() + u'/' + name, copy + name.mid(ending + 8))) {
                EXPECT_FALSE(QFile::exists(folder() + u'/' + name)) << name.toStdString();
            }
        }
        return copy;
    }
    // Nothing is left of the workbench but that.
    QString endAndLeave(std::unique_ptr<LiveStore> &store)
    {
        waitUntilSafe(*store);
        QString left = leave();
        store.reset();
        m_History.clear();
        space().reset();
        return left;
    }
    static QStringList fileRows(const app::WorkAsFiles &files, const QString &name)
    {
        QStringList rows;
        auto contents = readFile((files.folder + u'/' + name).toStdString());
        EXPECT_TRUE(contents) << contents.error().message();
        if (contents) {
            for (const RowRecord &row : contents->alignments.at(0).rows)
                rows << QString::fromStdString(row.sequence.text());
        }
        return rows;
    }
    static QString textOf(const app::WorkAsFiles &files)
    {
        QFile file(files.folder + "/CONTENTS.txt");
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return QString::fromUtf8(file.readAll());
    }
    sessions::KeptValues m_Values;

    static void rename(Compound &object, const std::string &name) { renameObject(object, name); }
};

TEST_F(LiveStoreTest, ItsFileIsThereWhileItRunsAndGoesWithIt)
{
    auto store = begin();
    waitUntilSafe(*store);
    EXPECT_FALSE(files().isEmpty());
    EXPECT_EQ(QFileInfo(folder()).permissions() &
                  (QFile::ReadGroup | QFile::ReadOther | QFile::ExeGroup | QFile::ExeOther),
              QFile::Permissions());
    store.reset();
    EXPECT_EQ(files(), QStringList());
}

TEST_F(LiveStoreTest, WhatWaitsForSafetyIsDoneWhenTheProgramEndsAsItShould)
{
    bool isDone = false;
    auto store = begin();
    store->whenSafe([&] { isDone = true; });
    store.reset();
    EXPECT_TRUE(isDone);
}

TEST_F(LiveStoreTest, TheWorkOfOneThatRunsIsNotLeftBehind)
{
    const auto store = begin();
    alignment("family", {"AC-D", "A-CD"});
    waitUntilSafe(*store);
    EXPECT_TRUE(sessions().hasFiles());
    EXPECT_TRUE(sessions().leftBehind().empty());
}

TEST_F(LiveStoreTest, WhatWasLeftBehindIsListedAndRecovered)
{
    auto store = begin();
    Alignment &made = alignment("family", {"AC-D", "A-CD"});
    renameObject(made, "globins");
    waitUntilSafe(*store);
    const QString left = leave();
    store.reset();
    m_History.clear();
    space().reset();

    const std::vector<LeftSession> found = sessions().leftBehind();
    ASSERT_EQ(found.size(), 1u);
    EXPECT_EQ(found[0].file, left);
    EXPECT_EQ(found[0].attempts, 0);
    EXPECT_GT(found[0].changes, 0u);
    const auto loaded = app::recover(found[0], space(), m_History, m_Values);
    ASSERT_TRUE(loaded) << loaded.error().message();
    EXPECT_FALSE(loaded.value().problem);
    EXPECT_EQ(topLevelNames().back(), "globins");
    EXPECT_TRUE(m_History.canUndo());
    EXPECT_EQ(sessions().leftBehind().at(0).attempts, 0);
    SessionFolder::remove(left);
    EXPECT_EQ(files(), QStringList());
}

class Note : public sessions::KeptValue
{
public:
    std::string name() const override { return "note"; }
    std::string store() const override
    {
        ++stores;
        return text;
    }
    Result<void> load(std::string_view content, const ObjectIndex &objects) override
    {
        text = content;
        isThere = objects.find(object) != nullptr;
        return {};
    }

    bool prepare() override
    {
        slices -= slices > 0 ? 1 : 0;
        return slices > 0;
    }

    std::string text;
    std::uint32_t object = 0;
    bool isThere = false;
    mutable int stores = 0;
    int slices = 0;
};

TEST_F(LiveStoreTest, ValuesAreWrittenAtRestAndRecoveredBehindTheObjects)
{
    Note note;
    m_Values.add(note);
    auto store = begin();
    note.object = identityOf(alignment("family", {"AC-D", "A-CD"}));
    note.text = "kept";
    const int stores = note.stores;
    waitUntil([&] { return note.stores > stores; });
    waitUntilSafe(*store);
    leave();
    store.reset();
    m_History.clear();
    space().reset();
    note.text.clear();
    const auto loaded = app::recover(sessions().leftBehind().at(0), space(), m_History, m_Values);
    ASSERT_TRUE(loaded) << loaded.error().message();
    EXPECT_EQ(note.text, "kept");
    EXPECT_TRUE(note.isThere);
    m_Values.remove(note);
}

// What was recovered may have a million objects that are marked.
TEST_F(LiveStoreTest, ValuesThatTakeLongArePreparedInSlicesFromTheStartOn)
{
    Note note;
    note.text = "kept";
    note.slices = 4;
    m_Values.add(note);
    auto store = begin();
    EXPECT_EQ(note.slices, 3);
    EXPECT_EQ(note.stores, 0);
    waitUntil([&] { return note.stores > 0; });
    EXPECT_EQ(note.slices, 0);
    store.reset();
    m_Values.remove(note);
}

TEST_F(LiveStoreTest, ARecoveryThatEndedTheProgramIsTriedWithoutTheLastChange)
{
    auto store = begin();
    Alignment &made = alignment("family", {"AC-D", "A-CD"});
    rename(made, "before");
    rename(made, "after");
    waitUntilSafe(*store);
    leave();
    store.reset();
    m_History.clear();
    space().reset();
    SessionFolder::noteAttempt(sessions().leftBehind().at(0));
    const auto loaded = app::recover(sessions().leftBehind().at(0), space(), m_History, m_Values);
    ASSERT_TRUE(loaded) << loaded.error().message();
    EXPECT_EQ(topLevelNames().back(), "before");
}

// ---- As files

TEST_F(LiveStoreTest, TheNumberOfUnsavedChangesIsKnown)
{
    auto store = begin();
    Alignment &made = alignment("family", {"AC-D", "A-CD"});
    rename(made, "globins");
    m_History.markSaved(made);
    rename(made, "kinases");
    rename(made, "proteases");
    EXPECT_EQ(m_History.unsavedSteps(), 2u);
    const auto isKnown = [&] {
        leave();
        const std::vector<LeftSession> found = sessions().leftBehind();
        const bool isThere = found.size() == 1 && found[0].unsaved == 2u;
        SessionFolder::remove(folder() + "/left.session");
        return isThere;
    };
    waitUntil(isKnown);
}

TEST_F(LiveStoreTest, TheTimeIsThatOfTheLastChange)
{
    auto store = begin();
    Alignment &made = alignment("family", {"AC-D", "A-CD"});
    waitUntilSafe(*store);
    const QDateTime before = QDateTime::currentDateTime();
    rename(made, "globins");
    const QString left = endAndLeave(store);
    {
        QFile file(left);
        ASSERT_TRUE(file.open(QIODevice::ReadWrite));
        ASSERT_TRUE(file.setFileTime(before.addYears(-1), QFileDevice::FileModificationTime));
    }
    EXPECT_GE(sessions().leftBehind().at(0).time, before);
}

TEST_F(LiveStoreTest, WhatWasLeftBehindIsSavedAsFiles)
{
    auto store = begin();
    alignment("Family", {"AC-D", "A-CD"});
    alignment("family", {"AC-DE", "A-CDE"});
    sequence("alone", "MKV");
    structure("1abc", "A", "MKV");
    endAndLeave(store);

    const LeftSession session = sessions().leftBehind().at(0);
    const auto saved = app::saveAsFiles(session, space(), m_History, m_Folder.path());
    ASSERT_TRUE(saved) << saved.error().message();
    EXPECT_EQ(saved.value().problems, QStringList());
    EXPECT_EQ(saved.value().files, 4);
    EXPECT_EQ(QDir(saved.value().folder).entryList(QDir::Files, QDir::Name | QDir::IgnoreCase),
              QStringList({"1abc.cif", "alone.ali", "CONTENTS.txt", "family-2.ali", "Family.ali"}));
    EXPECT_EQ(fileRows(saved.value(), "Family.ali"), QStringList({"AC-D", "A-CD"}));
    EXPECT_EQ(fileRows(saved.value(), "family-2.ali"), QStringList({"AC-DE", "A-CDE"}));
    EXPECT_EQ(fileRows(saved.value(), "alone.ali"), QStringList("MKV"));
    auto contents = readFile((saved.value().folder + "/1abc.cif").toStdString());
    ASSERT_TRUE(contents) << contents.error().message();
    EXPECT_EQ(contents->structures.at(0).chains.at(0).residues.size(), 3u);
    EXPECT_TRUE(textOf(saved.value()).contains("family-2.ali\n    family: alignment of 2 rows"))
        << textOf(saved.value()).toStdString();
    // The workbench is empty, and all is as it was.
    EXPECT_EQ(space().objectCount(), 0u);
    EXPECT_EQ(m_History.size(), 0u);
    EXPECT_EQ(sessions().leftBehind().at(0).attempts, 0);
}

TEST_F(LiveStoreTest, FilesAreSavedOfLockedObjects)
{
    auto store = begin();
    ASSERT_TRUE(setObjectLocked(alignment("family", {"AC-D", "A-CD"}), true));
    endAndLeave(store);
    const auto saved =
        app::saveAsFiles(sessions().leftBehind().at(0), space(), m_History, m_Folder.path());
    ASSERT_TRUE(saved) << saved.error().message();
    EXPECT_EQ(saved.value().files, 1);
    EXPECT_EQ(space().objectCount(), 0u);
}

// As a window does that shows a list of the objects.
class ListedObjects final : public Subscriber
{
public:
    void commUpdate() override { listed = {Space::instance()->begin(), Space::instance()->end()}; }
    void commAdd() override { commUpdate(); }
    void commDelete() override { commUpdate(); }

    std::vector<Compound *> listed;
};

TEST_F(LiveStoreTest, WhoeverShowsObjectsHearsThatTheyAreGoneOnceTheirFilesAreSaved)
{
    Alignment &made = alignment("family", {"AC-D", "A-CD"});
    rename(made, "globins");
    // Locked in the state that the store begins with, and only there.
    ASSERT_TRUE(setObjectLocked(made, true));
    auto store = begin();
    waitUntilSafe(*store);
    ASSERT_TRUE(setObjectLocked(made, false));
    ASSERT_TRUE(m_History.undo());
    endAndLeave(store);
    const ListedObjects window;
    const auto saved =
        app::saveAsFiles(sessions().leftBehind().at(0), space(), m_History, m_Folder.path());
    ASSERT_TRUE(saved) << saved.error().message();
    EXPECT_EQ(saved.value().files, 1);
    EXPECT_TRUE(window.listed.empty());
    EXPECT_EQ(space().objectCount(), 0U);
}

// What can be done again is.
TEST_F(LiveStoreTest, FilesAreSavedThoughTheChangesCannotAllBeDoneAgain)
{
    auto store = begin();
    Alignment &made = alignment("family", {"AC-D", "A-CD"});
    rename(made, "globins");
    const QString left = endAndLeave(store);
    {
        auto file = sessions::StoreFile::open(left.toStdString(), sessions::StoreFile::Kind::Live);
        ASSERT_TRUE(file);
        const sessions::Record damaged{std::uint32_t(sessions::RecordKind::Change), 0, {}, "x"};
        ASSERT_TRUE(file.value()->write(std::vector<sessions::StoreEntry>{damaged}));
    }
    const auto saved =
        app::saveAsFiles(sessions().leftBehind().at(0), space(), m_History, m_Folder.path());
    ASSERT_TRUE(saved) << saved.error().message();
    EXPECT_EQ(fileRows(saved.value(), "globins.ali"), QStringList({"AC-D", "A-CD"}));
    EXPECT_TRUE(textOf(saved.value()).contains("could not be done again"));
}

TEST_F(LiveStoreTest, FilesAreSavedOfTheStateAloneAfterManyAttempts)
{
    Alignment &made = alignment("family", {"AC-D", "A-CD"});
    auto store = begin();
    waitUntilSafe(*store);
    rename(made, "globins");
    endAndLeave(store);
    LeftSession session = sessions().leftBehind().at(0);
    for (; session.attempts < 3; ++session.attempts)
        SessionFolder::noteAttempt(session);
    const auto saved = app::saveAsFiles(session, space(), m_History, m_Folder.path());
    ASSERT_TRUE(saved) << saved.error().message();
    EXPECT_EQ(fileRows(saved.value(), "family.ali"), QStringList({"AC-D", "A-CD"}));
    EXPECT_EQ(sessions().leftBehind().at(0).attempts, 3);
}

TEST_F(LiveStoreTest, FilesThatCannotBeWrittenAreTold)
{
    auto store = begin();
    alignment("family", {"AC-D", "A-CD"});
    endAndLeave(store);
    const auto saved = app::saveAsFiles(sessions().leftBehind().at(0), space(), m_History,
                                        m_Folder.filePath("nowhere"));
    ASSERT_FALSE(saved);
    EXPECT_EQ(saved.error().kind, FailureKind::System);
    EXPECT_EQ(space().objectCount(), 0u);
    EXPECT_EQ(sessions().leftBehind().size(), 1u);
}

// Whenever he does so.
TEST_F(LiveStoreTest, NothingIsLeftOfFilesThatTheUserGivesUp)
{
    auto store = begin();
    alignment("family", {"AC-D", "A-CD"});
    sequence("alone", "MKV");
    structure("1abc", "A", "MKV");
    endAndLeave(store);
    const LeftSession session = sessions().leftBehind().at(0);
    const QStringList before = QDir(m_Folder.path()).entryList(QDir::NoDotAndDotDot | QDir::Dirs);
    int last = 0;
    double share = 0;
    for (;; ++last) {
        ASSERT_LT(last, 1000);
        int looks = 0;
        share = 0;
        modelHooks().working = [&](const char *what, double done, bool canBeGivenUp) {
            if (std::string_view(what) != "Saving as files")
                return true;
            EXPECT_TRUE(canBeGivenUp);
            EXPECT_GE(done, share);
            share = done;
            return ++looks <= last;
        };
        const auto saved = app::saveAsFiles(session, space(), m_History, m_Folder.path());
        EXPECT_EQ(space().objectCount(), 0U);
        EXPECT_EQ(m_History.size(), 0U);
        if (saved)
            break;
        EXPECT_EQ(saved.error().kind, FailureKind::Cancelled);
        EXPECT_EQ(QDir(m_Folder.path()).entryList(QDir::NoDotAndDotDot | QDir::Dirs), before)
            << "at look " << last;
        EXPECT_EQ(sessions().leftBehind().at(0).attempts, 0);
    }
    modelHooks().working = nullptr;
    // Of each of the three files some steps at least.
    EXPECT_GT(last, 9);
    EXPECT_GT(share, 0.9);
}

TEST_F(LiveStoreTest, NothingIsWrittenWhenTheUserGivesUpTheLoading)
{
    auto store = begin();
    alignment("family", {"AC-D", "A-CD"});
    endAndLeave(store);
    const LeftSession session = sessions().leftBehind().at(0);
    modelHooks().working = [](const char *, double, bool) { return false; };
    const auto saved = app::saveAsFiles(session, space(), m_History, m_Folder.path());
    modelHooks().working = nullptr;
    ASSERT_FALSE(saved);
    EXPECT_EQ(saved.error().kind, FailureKind::Cancelled);
    EXPECT_TRUE(QDir(m_Folder.path()).entryList({"recovered-*"}, QDir::Dirs).isEmpty());
    EXPECT_EQ(space().objectCount(), 0U);
}

// ---- Folds

class FoldedStore : public LiveStoreTest
{
protected:
    static constexpr std::uint64_t kChanges = 100;
    // Less than so many changes take.
    static constexpr std::uint64_t kMostReplay = 100'000;

    static void renameOften(Compound &object)
    {
        for (std::uint64_t i = 0; i < kChanges; ++i)
            rename(object, "name" + std::to_string(i));
    }
    // Of what is on the disk at this moment; nothing when that cannot be read.
    std::optional<std::uint64_t> changesLeft()
    {
        const QString copy = m_Folder.filePath("copy");
        QDir(copy).removeRecursively();
        QDir().mkpath(copy);
        for (const QString &name : files())
            QFile::copy(folder() + u'/' + name, copy + u'/' + name);
        const std::vector<LeftSession> left = SessionFolder(copy).leftBehind();
        return left.empty() ? std::nullopt : std::optional(left.front().changes);
    }
};

TEST_F(FoldedStore, BeginsByItselfWhenTheUserRests)
{
    auto store = begin({kMostReplay, std::chrono::milliseconds(1)});
    Alignment &made = alignment("family", {"AC-D", "A-CD"});
    renameOften(made);
    waitUntil([this] { return changesLeft() == 0U; });
    endAndLeave(store);
    const auto saved =
        app::saveAsFiles(sessions().leftBehind().at(0), space(), m_History, m_Folder.path());
    ASSERT_TRUE(saved) << saved.error().message();
    EXPECT_EQ(fileRows(saved.value(), "name99.ali"), QStringList({"AC-D", "A-CD"}));
}

TEST_F(FoldedStore, WaitsUntilHeRests)
{
    auto store = begin({kMostReplay, std::chrono::hours(1)});
    Alignment &made = alignment("family", {"AC-D", "A-CD"});
    renameOften(made);
    waitUntilSafe(*store);
    EXPECT_GE(changesLeft(), kChanges);
}

// ---- What nobody asks about

TEST_F(LiveStoreTest, OneInWhichNothingHappenedIsRemoved)
{
    auto store = begin();
    waitUntilSafe(*store);
    leave();
    store.reset();
    EXPECT_TRUE(sessions().leftBehind().empty());
    EXPECT_EQ(files(), QStringList());
}

TEST_F(LiveStoreTest, OneThatCannotBeReadStaysAndIsLogged)
{
    ASSERT_TRUE(QDir().mkpath(folder()));
    QFile file(folder() + "/damaged.session");
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("nothing that SQLite knows, and longer than its header would be, as far as that "
               "matters to anybody at all in this place");
    file.close();
    EXPECT_TRUE(sessions().leftBehind().empty());
    EXPECT_EQ(files(), QStringList("damaged.session"));
}

TEST_F(LiveStoreTest, AFullDiskIsToldAndWrittenWhenThereIsRoom)
{
    FailingDisk disk;
    const auto store = begin();
    waitUntilSafe(*store);
    const QSignalSpy warnings(store.get(), &LiveStore::warningChanged);
    disk.fill();
    Alignment &made = alignment("family", {"AC-D"});
    waitUntil([&] { return warnings.count() == 1; });
    EXPECT_TRUE(store->warning().startsWith("A crash would lose what you do now: "))
        << store->warning().toStdString();
    EXPECT_TRUE(store->warning().contains("full"));
    rename(made, "goes on");
    disk.free();
    waitUntil([&] { return warnings.count() == 2; });
    EXPECT_EQ(store->warning(), QString());
    waitUntilSafe(*store);
}

TEST_F(LiveStoreTest, AFileThatSomebodyDeletedIsWrittenAgain)
{
    const auto store = begin();
    alignment("family", {"AC-D"});
    waitUntilSafe(*store);
    const QStringList there = files();
    for (const QString &name : there)
        QFile::remove(folder() + u'/' + name);
    alignment("other", {"AC-D"});
    waitUntil([&] { return sessions().hasFiles(); });
    waitUntilSafe(*store);
    EXPECT_EQ(store->warning(), QString());
}

// ---- The question

class RecoveryDialogTest : public LiveStoreTest
{
protected:
    static LeftSession left(const QString &file, const QString &objects)
    {
        LeftSession session;
        session.file = file;
        session.time = QDateTime::currentDateTime();
        session.changes = 20;
        session.unsaved = 12;
        session.objects = objects;
        return session;
    }
};

TEST_F(RecoveryDialogTest, RecoversTheNewestUnlessAnotherIsChosen)
{
    RecoveryDialog dialog({left("a", "globins"), left("b", "kinases")}, nullptr);
    EXPECT_EQ(dialog.chosen().file, "a");
    auto *list = dialog.findChild<QTreeWidget *>("LeftSessions");
    ASSERT_NE(list, nullptr);
    EXPECT_EQ(list->topLevelItem(1)->text(1), "12");
    EXPECT_EQ(list->topLevelItem(1)->text(2), "kinases");
    list->setCurrentItem(list->topLevelItem(1));
    QTest::mouseClick(dialog.findChild<QPushButton *>("Recover"), Qt::LeftButton);
    EXPECT_EQ(dialog.answer(), RecoveryDialog::Answer::Recover);
    EXPECT_EQ(dialog.chosen().file, "b");
}

TEST_F(RecoveryDialogTest, FilesAreWantedOfTheChosenOneAndItGoesOnAsking)
{
    RecoveryDialog dialog({left("a", "globins"), left("b", "kinases")}, nullptr);
    QString wanted;
    QObject::connect(&dialog, &RecoveryDialog::filesWanted,
                     [&](const LeftSession &session) { wanted = session.file; });
    auto *list = dialog.findChild<QTreeWidget *>("LeftSessions");
    list->setCurrentItem(list->topLevelItem(1));
    dialog.show();
    QTest::mouseClick(dialog.findChild<QPushButton *>("SaveAsFiles"), Qt::LeftButton);
    EXPECT_EQ(wanted, "b");
    EXPECT_TRUE(dialog.isVisible());
}

TEST_F(RecoveryDialogTest, ClosedIsLater)
{
    RecoveryDialog dialog({left("a", "globins")}, nullptr);
    dialog.reject();
    EXPECT_EQ(dialog.answer(), RecoveryDialog::Answer::Later);
}

} // namespace LiveStoreTest
