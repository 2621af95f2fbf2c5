// SPDX-License-Identifier: GPL-3.0-or-later
#include "StoreFixture.h"

#include "Database.h"

#include <fstream>
#include <iterator>
#include <random>

namespace StoreFileTest {

using namespace TAMBO::sessions;

class AStoreFile : public StoreFixture
{
protected:
    void write(const std::vector<StoreEntry> &entries, StoreFile::Kind kind = StoreFile::Kind::Live,
               const std::string &name = "work.session")
    {
        auto store = StoreFile::open(file(name), kind);
        ASSERT_TRUE(store) << complaintOf(store);
        ASSERT_EQ(complaintOf(store.value()->write(entries)), "");
    }

    // What a statement of somebody else does to the file.
    void tamper(const std::string &statements)
    {
        auto database = Database::open(file(), Database::Access::Write);
        ASSERT_TRUE(database);
        ASSERT_EQ(complaintOf(database->run(statements.c_str())), "");
    }
};

TEST_F(AStoreFile, GivesBackWhatWasWrittenInItsOrder)
{
    write({StatePart{1, "first"}, StatePart{2, "second"}, StateSwitch(), record("a"), record("b"),
           NamedValue{"windows", "w"}});
    EXPECT_EQ(contentOf(file()), (Lines{"part 1 first", "part 2 second", "record 7 a", "record 7 b",
                                        "value windows w"}));
}

TEST_F(AStoreFile, KeepsTimeAndLabelOfARecord)
{
    write({record("a")});
    auto reader = StoreReader::open(file(), StoreReader::Kind::LeftBehind);
    ASSERT_TRUE(reader) << complaintOf(reader);
    EXPECT_EQ(reader.value()->recordCount().value(), 1u);
    ASSERT_TRUE(reader.value()->forEachRecord([](const StoreReader::SeenRecord &record) {
        EXPECT_EQ(record.time, 1'700'000'000'123);
        EXPECT_EQ(record.label, "move gap in A");
        return TAMBO::Result<void>();
    }));
}

TEST_F(AStoreFile, KeepsEveryByteOfAContent)
{
    std::string all;
    for (int byte = 0; byte < 256; ++byte)
        all += static_cast<char>(byte);
    write({StatePart{1, all}, StatePart{2, ""}, StateSwitch(), record(all), record("")});
    EXPECT_EQ(contentOf(file()),
              (Lines{"part 1 " + all, "part 2 ", "record 7 " + all, "record 7 "}));
}

TEST_F(AStoreFile, ShowsNoPartBeforeTheSwitch)
{
    write({StatePart{1, "old"}, StateSwitch(), record("a"), StatePart{1, "new"}});
    EXPECT_EQ(contentOf(file()), (Lines{"part 1 old", "record 7 a"}));
}

TEST_F(AStoreFile, AStateThatBeginsAnewHasNoPartOfTheOneThatWasGivenUp)
{
    write({StateBegin(), StatePart{1, "old"}, StateSwitch(), record("a"), StateBegin(),
           StatePart{1, "given up"}, record("b")});
    EXPECT_EQ(contentOf(file()), (Lines{"part 1 old", "record 7 a", "record 7 b"}));
    write({StateBegin(), StatePart{1, "new"}, StateSwitch(), record("c")});
    EXPECT_EQ(contentOf(file()), (Lines{"part 1 new", "record 7 c"}));
}

TEST_F(AStoreFile, AStateThatGoesBackKeepsItsFirstParts)
{
    const std::vector<StoreEntry> entries{
        StateBegin(),      StatePart{1, "old"}, StateSwitch(), StateBegin(),      StatePart{1, "a"},
        StatePart{1, "b"}, StatePart{1, "c"},   StateBegin{2}, StatePart{1, "d"}, StateBegin{1}};
    write(entries);
    EXPECT_EQ(contentOf(file()), Lines{"part 1 old"});
    std::vector<StoreEntry> whole = entries;
    whole.insert(whole.end(), {StatePart{1, "e"}, StateSwitch(), record("a")});
    write(whole);
    EXPECT_EQ(contentOf(file()), (Lines{"part 1 a", "part 1 e", "record 7 a"}));
}

TEST_F(AStoreFile, AStateKeepsNoMorePartsThanItHas)
{
    write({StateBegin(), StatePart{1, "a"}, StateBegin{5}, StatePart{1, "b"}, StateSwitch()});
    EXPECT_EQ(contentOf(file()), (Lines{"part 1 a", "part 1 b"}));
}

TEST_F(AStoreFile, PartsThatWereGivenUpTakeNoRoom)
{
    const std::string large(1'000'000, 'x');
    std::vector<StoreEntry> entries{StateBegin(), StatePart{1, "old"}, StateSwitch()};
    for (int i = 0; i < 5; ++i) {
        entries.push_back(StateBegin());
        entries.push_back(StatePart{1, large});
    }
    write(entries);
    EXPECT_LT(std::filesystem::file_size(file()), 2'000'000u);
}

TEST_F(AStoreFile, ASwitchReplacesTheStateAndTheRecordsInIt)
{
    write({StatePart{1, "old"}, StateSwitch(), record("a"), StatePart{1, "new"}, StateSwitch(),
           record("b")});
    EXPECT_EQ(contentOf(file()), (Lines{"part 1 new", "record 7 b"}));
}

TEST_F(AStoreFile, ASwitchWithoutPartsLeavesNoState)
{
    write({StatePart{1, "old"}, StateSwitch(), record("a"), StateSwitch()});
    EXPECT_EQ(contentOf(file()), Lines{});
}

TEST_F(AStoreFile, AValueReplacesTheOneOfItsName)
{
    write({NamedValue{"windows", "one"}, NamedValue{"range", "r"}, NamedValue{"windows", "two"}});
    EXPECT_EQ(contentOf(file()), (Lines{"value range r", "value windows two"}));
}

TEST_F(AStoreFile, GoesOnWhereItEnded)
{
    write({StatePart{1, "s"}, StateSwitch(), record("a")});
    // Left over from a state that was never completed.
    write({StatePart{1, "lost"}});
    write({record("b")});
    EXPECT_EQ(contentOf(file()), (Lines{"part 1 s", "record 7 a", "record 7 b"}));
    write({StatePart{1, "t"}, StateSwitch()});
    EXPECT_EQ(contentOf(file()), Lines{"part 1 t"});
}

TEST_F(AStoreFile, NumbersRecordsOnAfterASwitchThatLeftNone)
{
    write({record("a"), StateSwitch()});
    write({record("b")});
    EXPECT_EQ(contentOf(file()), Lines{"record 7 b"});
}

TEST_F(AStoreFile, AWholeOneIsASingleFile)
{
    write({StatePart{1, "s"}, StateSwitch(), record("a")}, StoreFile::Kind::Whole);
    EXPECT_EQ(contentOf(file(), StoreReader::Kind::Whole), (Lines{"part 1 s", "record 7 a"}));
    const std::filesystem::directory_iterator files(file().parent_path());
    EXPECT_EQ(std::distance(begin(files), end(files)), 1);
}

TEST_F(AStoreFile, IsInUseForOthersWhileItIsWritten)
{
    auto store = StoreFile::open(file(), StoreFile::Kind::Live);
    ASSERT_TRUE(store);
    ASSERT_TRUE(store.value()->write(std::vector<StoreEntry>{record("a")}));
    auto other = StoreReader::open(file(), StoreReader::Kind::LeftBehind);
    ASSERT_FALSE(other);
    EXPECT_TRUE(Database::isInUse(other.error())) << other.error().message();
    auto second = StoreFile::open(file(), StoreFile::Kind::Live);
    ASSERT_FALSE(second);
    EXPECT_TRUE(Database::isInUse(second.error())) << second.error().message();
}

TEST_F(AStoreFile, OfANewerVersionSaysSo)
{
    write({record("a")});
    tamper("PRAGMA user_version = " + std::to_string(kStoreVersion + 1));
    EXPECT_EQ(contentOf(file()),
              Lines{"failure: the session was saved by a newer version of the program"});
}

TEST_F(AStoreFile, IsNotAnotherFile)
{
    std::ofstream(file()) << ">A\nMKV\n";
    EXPECT_EQ(contentOf(file()), Lines{"failure: this is no file of a session"});
    std::filesystem::remove(file());
    EXPECT_EQ(contentOf(file()), Lines{"failure: there is no such file"});
    tamper("CREATE TABLE place(name)");
    EXPECT_EQ(contentOf(file()), Lines{"failure: this is no file of a session"});
}

TEST_F(AStoreFile, WithTablesBesideItsOwnIsNoStore)
{
    write({record("a")});
    tamper("CREATE TABLE extra(name)");
    EXPECT_EQ(contentOf(file()), Lines{"failure: this is no file of a session"});
}

TEST_F(AStoreFile, WithoutOneOfItsTablesIsDamaged)
{
    write({record("a")});
    tamper("DROP TABLE value");
    EXPECT_EQ(contentOf(file()),
              Lines{"failure: the file of the session is damaged: a table is missing"});
}

TEST_F(AStoreFile, NothingOfAFailedWriteIsKept)
{
    auto store = StoreFile::open(file(), StoreFile::Kind::Live);
    ASSERT_TRUE(store);
    StoreFile &live = *store.value();
    ASSERT_TRUE(live.write(std::vector<StoreEntry>{StatePart{1, "s"}, StateSwitch()}));
    // Longer than a value may be.
    EXPECT_FALSE(live.write(
        std::vector<StoreEntry>{record("a"), Record{7, 0, "", std::string(600 << 20, 'x')}}));
    EXPECT_TRUE(live.write(std::vector<StoreEntry>{record("b")}));
    store.value().reset();
    EXPECT_EQ(contentOf(file()), (Lines{"part 1 s", "record 7 b"}));
}

// Whatever other people send: a failure or what can be read, never a crash.
TEST_F(AStoreFile, DamagedAnywhereItCanBeReadInPartOrSaysWhy)
{
    std::vector<StoreEntry> entries;
    for (int i = 0; i < 40; ++i)
        entries.emplace_back(StatePart{1, std::string(static_cast<std::size_t>(i) * 50, 's')});
    entries.emplace_back(StateSwitch());
    for (int i = 0; i < 40; ++i)
        entries.emplace_back(record(std::string(static_cast<std::size_t>(i) * 30, 'r')));
    write(entries, StoreFile::Kind::Whole);
    std::string bytes;
    {
        std::ifstream in(file(), std::ios::binary);
        bytes.assign(std::istreambuf_iterator<char>(in), {});
    }
    std::mt19937 random(20261122);
    const auto any = [&](std::size_t end) {
        return std::uniform_int_distribution<std::size_t>(0, end - 1)(random);
    };
    int failures = 0;
    for (int round = 0; round < 300; ++round) {
        std::string damaged = bytes;
        if (round % 3 == 0)
            damaged.resize(any(bytes.size()));
        for (int flips = 1 + static_cast<int>(any(8)); flips > 0 && !damaged.empty(); --flips)
            damaged[any(round % 2 == 0 ? std::min<std::size_t>(damaged.size(), 200)
                                       : damaged.size())] ^= static_cast<char>(1 + any(255));
        std::ofstream(file("damaged"), std::ios::binary) << damaged;
        const Lines lines = contentOf(file("damaged"), StoreReader::Kind::Whole);
        failures += !lines.empty() && lines.back().starts_with("failure: ");
    }
    EXPECT_GT(failures, 100);
}

} // namespace StoreFileTest
