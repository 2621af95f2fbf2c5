// SPDX-License-Identifier: GPL-3.0-or-later
// A whole session in a file: what comes back of it, and what becomes of the old file.
#include "SessionFile.h"
#include "FailingDisk.h"
#include "FileCheck.h"
#include "FileWriter.h"
#include "Hooks.h"
#include "ObjectIndex.h"
#include "SessionReading.h"
#include "StoreReader.h"
#include "StoreTables.h"
#include "unit/sessions/live/LiveFixture.h"

#include <gmock/gmock.h>
#include <sqlite3.h>
#include <sys/stat.h>

#include <fstream>
#include <iterator>

namespace SessionFileTest {

namespace fs = std::filesystem;
using namespace TAMBO;
using namespace TAMBO::sessions;
using testing::HasSubstr;

std::string bytesOf(const fs::path &file)
{
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

void writeBytes(const fs::path &file, const std::string &bytes)
{
    std::ofstream(file, std::ios::binary) << bytes;
}

class ASessionFile : public LiveFixture, public testing::WithParamInterface<unsigned>
{
protected:
    explicit ASessionFile(unsigned seed) : LiveFixture(seed) { }
    ASessionFile() : LiveFixture(GetParam()) { }

    [[nodiscard]] fs::path folder() const { return LiveFixture::file().parent_path(); }
    [[nodiscard]] fs::path file() const { return folder() / "work.tambo"; }

    [[nodiscard]] SessionContent content(std::vector<NamedValue> values = {})
    {
        auto taken = takeSession(space(), history, std::move(values), {"1.2.3", 1'700'000'000'123});
        EXPECT_TRUE(taken) << complaintOf(taken);
        return taken ? std::move(taken).value() : SessionContent();
    }
    Result<void> save(const fs::path &target)
    {
        WriteAids aids;
        return writeSession(content(), target, aids);
    }
    Result<void> save() { return save(file()); }
    Result<void> load(const fs::path &source)
    {
        auto session = openSession(source);
        ObjectIndex index;
        return session ? readSession(*session.value(), space(), history, index) : session.error();
    }
    Result<void> load() { return load(file()); }
    // The only one in its folder.
    void expectAlone(const fs::path &kept) const
    {
        for (const auto &entry : fs::directory_iterator(folder()))
            EXPECT_EQ(entry.path(), kept);
    }
    void run(const char *statement)
    {
        sqlite3 *connection = nullptr;
        ASSERT_EQ(sqlite3_open(file().c_str(), &connection), SQLITE_OK);
        EXPECT_EQ(sqlite3_exec(connection, statement, nullptr, nullptr, nullptr), SQLITE_OK);
        sqlite3_close(connection);
    }
};

class SessionFile : public ASessionFile
{
protected:
    SessionFile() : ASessionFile(11) { }
};

TEST_P(ASessionFile, GivesBackObjectsAndAllStatesOfUndo)
{
    ASSERT_NO_FATAL_FAILURE(work(80));
    const std::string portrait = lastingPortrait();
    const std::size_t position = history.position();
    const std::vector<std::string> states = allStates(true);
    ASSERT_EQ(complaintOf(save()), "");
    endProgram();
    ASSERT_EQ(complaintOf(load()), "");
    EXPECT_EQ(lastingPortrait(), portrait);
    EXPECT_EQ(history.position(), position);
    const std::vector<std::string> found = allStates(true);
    ASSERT_EQ(found.size(), states.size());
    for (std::size_t i = 0; i < states.size(); ++i)
        ASSERT_EQ(found[i], states[i]) << "state " << i;
}

TEST_P(ASessionFile, OfWhatWasOpenedHasTheSameBytesAfterUndoAndRedo)
{
    ASSERT_NO_FATAL_FAILURE(work(60));
    static_cast<void>(allStates(false));
    ASSERT_EQ(complaintOf(save()), "");
    endProgram();
    ASSERT_EQ(complaintOf(load()), "");
    const fs::path again = folder() / "again.tambo";
    ASSERT_EQ(complaintOf(save(again)), "");
    EXPECT_TRUE(bytesOf(again) == bytesOf(file()));
    static_cast<void>(allStates(false));
    ASSERT_EQ(complaintOf(save(again)), "");
    EXPECT_TRUE(bytesOf(again) == bytesOf(file()));
}

INSTANTIATE_TEST_SUITE_P(Seeds, ASessionFile, testing::Range(1u, 9u));

// ---- What is in it

TEST_F(SessionFile, SaysWhatMadeItAndWhen)
{
    ASSERT_EQ(complaintOf(save()), "");
    auto session = openSession(file());
    ASSERT_TRUE(session) << complaintOf(session);
    const auto origin = originOf(*session.value());
    ASSERT_TRUE(origin) << complaintOf(origin);
    EXPECT_EQ(origin.value().program, "1.2.3");
    EXPECT_EQ(origin.value().time, 1'700'000'000'123);
}

TEST_F(SessionFile, KeepsNamedValuesAndNobodyElseSaysWhatMadeIt)
{
    WriteAids aids;
    ASSERT_EQ(complaintOf(writeSession(content({{"a", "x"}, {kMadeBy, "somebody"}, {"b", "y"}}),
                                       file(), aids)),
              "");
    auto session = openSession(file());
    ASSERT_TRUE(session) << complaintOf(session);
    std::vector<std::string> values;
    ASSERT_EQ(complaintOf(session.value()->forEachValue(
                  [&](std::string_view name, std::string_view content) {
                      values.push_back(std::string(name) + '=' + std::string(content));
                      return Result<void>();
                  })),
              "");
    EXPECT_THAT(values,
                testing::ElementsAre("a=x", "b=y", "made-at=1700000000123", "made-by=1.2.3"));
}

TEST_F(SessionFile, OfAnEmptyWorkbenchIsOpenedAsOne)
{
    ASSERT_EQ(complaintOf(save()), "");
    ASSERT_EQ(complaintOf(load()), "");
    EXPECT_EQ(space().objectCount(), 0u);
    EXPECT_EQ(history.size(), 0u);
}

TEST_F(SessionFile, IsKnownByItsEndingOrByItsBeginning)
{
    ASSERT_EQ(complaintOf(save()), "");
    const fs::path plain = folder() / "renamed.dat";
    fs::copy(file(), plain);
    EXPECT_TRUE(isSessionFile(file()));
    EXPECT_TRUE(isSessionFile(plain));
    EXPECT_TRUE(isSessionFile(folder() / "missing.tambo"));
    EXPECT_FALSE(isSessionFile(folder() / "missing.fasta"));
    std::string other = bytesOf(plain);
    other[71] = 'X';
    writeBytes(plain, other);
    EXPECT_FALSE(isSessionFile(plain));
    writeBytes(plain, "SQLite format 3");
    EXPECT_FALSE(isSessionFile(plain));
}

// ---- Putting it in place

TEST_F(SessionFile, IsTheOnlyFileThatIsLeft)
{
    ASSERT_NO_FATAL_FAILURE(work(20));
    ASSERT_EQ(complaintOf(save()), "");
    expectAlone(file());
    ASSERT_NO_FATAL_FAILURE(work(20));
    ASSERT_EQ(complaintOf(save()), "");
    expectAlone(file());
}

TEST_F(SessionFile, HasTheRightsThatNewFilesHaveAndKeepsThoseOfAnOldOne)
{
    const mode_t before = ::umask(027);
    const Result<void> saved = save();
    ::umask(before);
    ASSERT_EQ(complaintOf(saved), "");
    EXPECT_EQ(fs::status(file()).permissions(), fs::perms(0640));
    fs::permissions(file(), fs::perms(0604));
    ASSERT_EQ(complaintOf(save()), "");
    EXPECT_EQ(fs::status(file()).permissions(), fs::perms(0604));
}

TEST_F(SessionFile, TellsTheStateOfTheNewFile)
{
    WriteAids aids;
    ASSERT_EQ(complaintOf(writeSession(content(), file(), aids)), "");
    ASSERT_TRUE(aids.written);
    EXPECT_EQ(checkFile(file(), *aids.written).change, FileChange::None);
}

TEST_F(SessionFile, KeepsItsLastVersionsOnRequest)
{
    ASSERT_EQ(complaintOf(save()), "");
    const std::string old = bytesOf(file());
    ASSERT_NO_FATAL_FAILURE(work(20));
    WriteAids aids;
    aids.keepsBackups = true;
    ASSERT_EQ(complaintOf(writeSession(content(), file(), aids)), "");
    EXPECT_TRUE(bytesOf(folder() / "work.tambo.1.bak~") == old);
    EXPECT_FALSE(bytesOf(file()) == old);
}

TEST_F(SessionFile, IsNotReplacedWhenAnotherProgramHasChangedIt)
{
    ASSERT_EQ(complaintOf(save()), "");
    WriteAids aids;
    aids.expected = lookAt(file());
    writeBytes(file(), "somebody else's");
    const Result<void> saved = writeSession(content(), file(), aids);
    ASSERT_FALSE(saved);
    EXPECT_EQ(saved.error().kind, FailureKind::Refused);
    EXPECT_EQ(bytesOf(file()), "somebody else's");
    expectAlone(file());
}

TEST_F(SessionFile, CalledOffAtAnyMomentIsAsItWasUnlessItWasWritten)
{
    ASSERT_EQ(complaintOf(save()), "");
    const std::string old = bytesOf(file());
    ASSERT_NO_FATAL_FAILURE(work(40));
    int most = 0;
    for (bool isCancelled = true; isCancelled; ++most) {
        WriteAids aids;
        int steps = 0;
        aids.step = [&](WriteStage, double) { return steps++ < most; };
        const Result<void> saved = writeSession(content(), file(), aids);
        isCancelled = !saved;
        if (!isCancelled)
            break;
        EXPECT_EQ(saved.error().kind, FailureKind::Cancelled);
        EXPECT_TRUE(bytesOf(file()) == old);
        expectAlone(file());
    }
    EXPECT_GE(most, 5);
    EXPECT_FALSE(bytesOf(file()) == old);
}

TEST_F(SessionFile, IsAsItWasWhenTheDiskIsFull)
{
    ASSERT_EQ(complaintOf(save()), "");
    const std::string old = bytesOf(file());
    ASSERT_NO_FATAL_FAILURE(work(20));
    FailingDisk disk;
    disk.fill();
    const Result<void> saved = save();
    disk.free();
    ASSERT_FALSE(saved);
    EXPECT_EQ(saved.error().message(), "work.tambo: cannot be written: database or disk is full");
    EXPECT_TRUE(bytesOf(file()) == old);
    expectAlone(file());
}

TEST_F(SessionFile, CannotBeWrittenIntoAFolderThatIsNotThere)
{
    const Result<void> saved = save(folder() / "none" / "work.tambo");
    ASSERT_FALSE(saved);
    EXPECT_EQ(saved.error().message(), "work.tambo: cannot be written: No such file or directory");
}

TEST_F(SessionFile, IsNotCompressed)
{
    const Result<void> saved = save(folder() / "work.tambo.gz");
    ASSERT_FALSE(saved);
    EXPECT_THAT(saved.error().message(), HasSubstr("work.tambo.gz: cannot be written"));
    EXPECT_TRUE(fs::is_empty(folder()));
}

TEST_F(SessionFile, WrittenInPlaceHasTheSameContent)
{
    ASSERT_EQ(complaintOf(save()), "");
    const fs::path link = folder() / "link.tambo";
    fs::create_hard_link(file(), link);
    ASSERT_NO_FATAL_FAILURE(work(20));
    const std::string portrait = lastingPortrait();
    WriteAids aids;
    ASSERT_EQ(complaintOf(writeSession(content(), file(), aids)), "");
    EXPECT_THAT(aids.remarks, testing::ElementsAre(HasSubstr("was written in place")));
    endProgram();
    ASSERT_EQ(complaintOf(load(link)), "");
    EXPECT_EQ(lastingPortrait(), portrait);
}

// ---- Reading

TEST_F(SessionFile, MayBeCalledAnything)
{
    ASSERT_NO_FATAL_FAILURE(work(20));
    const std::string portrait = lastingPortrait();
    const fs::path odd = folder() / "a ?mode=rw&x=%41#1 é.tambo";
    ASSERT_EQ(complaintOf(save(odd)), "");
    endProgram();
    ASSERT_EQ(complaintOf(load(odd)), "");
    EXPECT_EQ(lastingPortrait(), portrait);
    expectAlone(odd);
}

TEST_F(SessionFile, IsReadWithoutAGlanceAtWhatStandsBesideIt)
{
    ASSERT_NO_FATAL_FAILURE(work(20));
    ASSERT_EQ(complaintOf(save()), "");
    const std::string portrait = lastingPortrait();
    endProgram();
    const fs::path journal = folder() / "work.tambo-journal";
    const fs::path log = folder() / "work.tambo-wal";
    writeBytes(journal, bytesOf(file()));
    writeBytes(log, bytesOf(file()));
    ASSERT_EQ(complaintOf(load()), "");
    EXPECT_EQ(lastingPortrait(), portrait);
    EXPECT_EQ(bytesOf(journal), bytesOf(file()));
    EXPECT_EQ(std::distance(fs::directory_iterator(folder()), {}), 3);
}

TEST_F(SessionFile, OfANewerVersionSaysSoAndNamesTheFile)
{
    ASSERT_EQ(complaintOf(save()), "");
    run(("PRAGMA user_version = " + std::to_string(kStoreVersion + 1)).c_str());
    EXPECT_EQ(complaintOf(load()), file().string() + ": the session was saved by a newer version "
                                                     "of the program");
}

TEST_F(SessionFile, OfAnUnknownKindOfPartNamesTheFile)
{
    ASSERT_NO_FATAL_FAILURE(work(20));
    ASSERT_EQ(complaintOf(save()), "");
    run("UPDATE state SET kind = 99 WHERE number = 1");
    endProgram();
    EXPECT_EQ(complaintOf(load()),
              file().string() + ": the session has a part of an unknown kind (99)");
    EXPECT_EQ(space().objectCount(), 0u);
}

TEST_F(SessionFile, WithoutAStateIsDamaged)
{
    ASSERT_EQ(complaintOf(save()), "");
    run("DELETE FROM place");
    EXPECT_EQ(complaintOf(load()), file().string() + ": the session is damaged: it has no state");
}

TEST_F(SessionFile, WithRecordsIsDamaged)
{
    ASSERT_EQ(complaintOf(save()), "");
    run("INSERT INTO record VALUES(1, 2, 0, '', x'00')");
    EXPECT_EQ(complaintOf(load()), file().string() + ": the session is damaged: there is "
                                                     "something behind its state");
}

TEST_F(SessionFile, ThatIsNoneSaysSo)
{
    writeBytes(file(), "no session");
    EXPECT_THAT(complaintOf(load()), HasSubstr("work.tambo"));
    EXPECT_THAT(complaintOf(load(folder() / "none.tambo")), HasSubstr("there is no such file"));
}

TEST_F(SessionFile, DamagedAnywhereIsOpenedInWholeOrNotAtAll)
{
    ASSERT_NO_FATAL_FAILURE(work(30));
    ASSERT_EQ(complaintOf(save()), "");
    const std::string bytes = bytesOf(file());
    endProgram();
    int refused = 0;
    for (int round = 0; round < 300; ++round) {
        std::string damaged = bytes;
        damaged[below(unsigned(damaged.size()))] ^= char(1u << below(8));
        if (below(10) == 0)
            damaged.resize(below(unsigned(damaged.size())));
        writeBytes(file(), damaged);
        const Result<void> done = load();
        if (!done) {
            ++refused;
            EXPECT_THAT(done.error().message(), HasSubstr("work.tambo"));
            EXPECT_EQ(space().objectCount(), 0u);
            EXPECT_EQ(history.size(), 0u);
        }
        endProgram();
    }
    EXPECT_GT(refused, 0);
}

TEST_F(SessionFile, IsCheckedWithoutAChangeOfWhatIsThere)
{
    ASSERT_NO_FATAL_FAILURE(work(40));
    ASSERT_EQ(complaintOf(save()), "");
    ASSERT_NO_FATAL_FAILURE(work(40));
    // What has no edit, as a key, stays where the first journey has left it.
    static_cast<void>(allStates(true));
    const std::vector<std::string> states = allStates(true);
    auto session = openSession(file());
    ASSERT_TRUE(session) << complaintOf(session);
    EXPECT_EQ(complaintOf(checkSession(*session.value())), "");
    EXPECT_EQ(allStates(true), states);
    ASSERT_NO_FATAL_FAILURE(work(40));

    run("UPDATE state SET content = x'ff' WHERE number = 1");
    session = openSession(file());
    ASSERT_TRUE(session) << complaintOf(session);
    EXPECT_THAT(complaintOf(checkSession(*session.value())), HasSubstr("work.tambo"));
}

// ---- Giving up

class HookedWork
{
public:
    explicit HookedWork(int looks)
    {
        modelHooks().working = [this, looks](const char *, double share, bool canBeGivenUp) {
            m_Share = share;
            m_CanBeGivenUp = canBeGivenUp;
            return ++m_Looks < looks;
        };
    }
    ~HookedWork() { modelHooks().working = nullptr; }
    HookedWork(const HookedWork &) = delete;
    HookedWork &operator=(const HookedWork &) = delete;

    [[nodiscard]] int looks() const { return m_Looks; }
    [[nodiscard]] double share() const { return m_Share; }
    [[nodiscard]] bool canBeGivenUp() const { return m_CanBeGivenUp; }

private:
    int m_Looks = 0;
    double m_Share = 0;
    bool m_CanBeGivenUp = false;
};

TEST_F(SessionFile, TakingItIsToldAndCanBeGivenUp)
{
    ASSERT_NO_FATAL_FAILURE(work(40));
    const std::string portrait = lastingPortrait();
    {
        const HookedWork hook(1000);
        EXPECT_FALSE(content().parts.empty());
        EXPECT_GE(hook.looks(), 2);
        EXPECT_TRUE(hook.canBeGivenUp());
        EXPECT_EQ(hook.share(), 1);
    }
    const HookedWork hook(1);
    const auto taken = takeSession(space(), history, {}, {});
    ASSERT_FALSE(taken);
    EXPECT_EQ(taken.error().kind, FailureKind::Cancelled);
    EXPECT_EQ(hook.looks(), 1);
    EXPECT_EQ(lastingPortrait(), portrait);
}

TEST_F(SessionFile, OpeningCanBeGivenUp)
{
    ASSERT_NO_FATAL_FAILURE(work(40));
    ASSERT_EQ(complaintOf(save()), "");
    endProgram();
    const HookedWork hook(2);
    const Result<void> done = load();
    ASSERT_FALSE(done);
    EXPECT_EQ(done.error().kind, FailureKind::Cancelled);
    EXPECT_EQ(space().objectCount(), 0u);
    EXPECT_EQ(history.size(), 0u);
}

} // namespace SessionFileTest
