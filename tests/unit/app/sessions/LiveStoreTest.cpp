// SPDX-License-Identifier: GPL-3.0-or-later
// The work of a workbench on the disk: what is left of it, what is asked about, what the user hears
// of a disk that does not take it.
#include "LiveStore.h"
#include "AppFixture.h"
#include "KeptValues.h"
#include "ObjectIndex.h"
#include "ObjectOperations.h"
#include "Recovery.h"
#include "RecoveryDialog.h"
#include "SessionFolder.h"
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
    [[nodiscard]] std::unique_ptr<LiveStore> begin()
    {
        const Result<QString> file = sessions().newFile();
        EXPECT_TRUE(file);
        return std::make_unique<LiveStore>(space(), m_History, m_Values, file.value());
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
            EXPECT_TRUE(QFile::copy(folder() + u'/' + name, copy + name.mid(ending + 8)));
        }
        return copy;
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

    std::string text;
    std::uint32_t object = 0;
    bool isThere = false;
    mutable int stores = 0;
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
        session.changes = 12;
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
    EXPECT_EQ(list->topLevelItem(1)->text(2), "kinases");
    list->setCurrentItem(list->topLevelItem(1));
    QTest::mouseClick(dialog.findChild<QPushButton *>("Recover"), Qt::LeftButton);
    EXPECT_EQ(dialog.answer(), RecoveryDialog::Answer::Recover);
    EXPECT_EQ(dialog.chosen().file, "b");
}

TEST_F(RecoveryDialogTest, ClosedIsLater)
{
    RecoveryDialog dialog({left("a", "globins")}, nullptr);
    dialog.reject();
    EXPECT_EQ(dialog.answer(), RecoveryDialog::Answer::Later);
}

} // namespace LiveStoreTest
