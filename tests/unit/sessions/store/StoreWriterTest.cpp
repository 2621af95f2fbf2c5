// SPDX-License-Identifier: GPL-3.0-or-later
#include "StoreWriter.h"
#include "FailingDisk.h"
#include "StoreFixture.h"

#include "Database.h"

#include <atomic>
#include <fstream>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <random>

namespace StoreWriterTest {

using namespace TAMBO::sessions;
using namespace std::chrono_literals;

constexpr auto kLong = 120s;

class AStoreWriter : public StoreFixture
{
protected:
    // Waits for what another thread brings about.
    template <typename Condition> static bool comesTrue(Condition condition)
    {
        const auto end = std::chrono::steady_clock::now() + kLong;
        while (!condition()) {
            if (std::chrono::steady_clock::now() > end)
                return false;
            std::this_thread::yield();
        }
        return true;
    }
    static StoreWriter::Limits quickRetry() { return {std::size_t(1) << 20, 1ms}; }
};

TEST_F(AStoreWriter, WritesWhatIsHandedOverInItsOrder)
{
    {
        StoreWriter writer(file());
        writer.put(StatePart{1, "s"});
        writer.put(StateSwitch());
        for (int i = 0; i < 1000; ++i)
            writer.put(record(std::to_string(i)));
        EXPECT_TRUE(writer.waitUntilDurable(kLong));
        EXPECT_EQ(writer.status().durable, 1002u);
        EXPECT_EQ(writer.status().waitingSince, std::nullopt);
        EXPECT_EQ(writer.status().problem, std::nullopt);
    }
    const Lines lines = contentOf(file());
    ASSERT_EQ(lines.size(), 1001u);
    EXPECT_EQ(lines[0], "part 1 s");
    for (std::size_t i = 0; i < 1000; ++i)
        EXPECT_EQ(lines[i + 1], "record 7 " + std::to_string(i));
}

TEST_F(AStoreWriter, WritesWhatWaitsWhenItEnds)
{
    {
        StoreWriter writer(file());
        for (int i = 0; i < 100; ++i)
            writer.put(record("x"));
    }
    EXPECT_EQ(contentOf(file()).size(), 100u);
}

TEST_F(AStoreWriter, HandingOverDoesNotWaitForTheDisk)
{
    FailingDisk disk;
    disk.stall();
    StoreWriter writer(file());
    writer.put(record("a"));
    ASSERT_TRUE(comesTrue([&] { return disk.writesTried() > 0; }));
    // It would never come back if it waited.
    writer.put(record("b"));
    EXPECT_EQ(writer.status().handed, 2u);
    EXPECT_EQ(writer.status().durable, 0u);
    EXPECT_NE(writer.status().waitingSince, std::nullopt);
    EXPECT_FALSE(writer.waitUntilDurable(1ms));
    disk.free();
    EXPECT_TRUE(writer.waitUntilDurable(kLong));
}

TEST_F(AStoreWriter, KeepsWhatAFullDiskDoesNotTakeAndTriesAgain)
{
    FailingDisk disk;
    std::atomic<int> news = 0;
    {
        StoreWriter writer(
            file(), [&] { ++news; }, quickRetry());
        writer.put(record("a"));
        ASSERT_TRUE(writer.waitUntilDurable(kLong));
        disk.fill();
        writer.put(record("b"));
        ASSERT_TRUE(comesTrue([&] { return news == 1; }));
        ASSERT_TRUE(writer.status().problem);
        EXPECT_EQ(writer.status().problem->cause, "database or disk is full");
        EXPECT_EQ(writer.status().durable, 1u);
        EXPECT_NE(writer.status().waitingSince, std::nullopt);
        writer.put(record("c"));
        disk.free();
        EXPECT_TRUE(writer.waitUntilDurable(kLong));
        ASSERT_TRUE(comesTrue([&] { return news == 2; }));
        EXPECT_EQ(writer.status().problem, std::nullopt);
    }
    EXPECT_EQ(contentOf(file()), (Lines{"record 7 a", "record 7 b", "record 7 c"}));
}

TEST_F(AStoreWriter, WritesOnceTheFolderIsThere)
{
    const std::filesystem::path late = file("later") / "work.session";
    StoreWriter writer(late, {}, quickRetry());
    writer.put(record("a"));
    ASSERT_TRUE(comesTrue([&] { return writer.status().problem.has_value(); }));
    std::filesystem::create_directory(late.parent_path());
    EXPECT_TRUE(writer.waitUntilDurable(kLong));
}

TEST_F(AStoreWriter, GivesUpWhenTooMuchWaits)
{
    FailingDisk disk;
    disk.fill();
    {
        StoreWriter writer(file(), {}, quickRetry());
        for (int i = 0; i < 3; ++i)
            writer.put(record(std::string(500'000, 'x')));
        EXPECT_TRUE(writer.status().hasGivenUp);
        EXPECT_EQ(writer.status().waitingSince, std::nullopt);
        EXPECT_FALSE(writer.waitUntilDurable(kLong));
        disk.free();
        writer.put(record("of no use without those before"));
        writer.startAnew();
        EXPECT_FALSE(writer.status().hasGivenUp);
        writer.put(StatePart{1, "everything"});
        writer.put(StateSwitch());
        EXPECT_TRUE(writer.waitUntilDurable(kLong));
        EXPECT_TRUE(comesTrue([&] { return !writer.status().problem; }));
    }
    EXPECT_EQ(contentOf(file()), Lines{"part 1 everything"});
}

TEST_F(AStoreWriter, NoticesThatItsFileIsGone)
{
    StoreWriter writer(file(), {}, quickRetry());
    writer.put(record("a"));
    ASSERT_TRUE(writer.waitUntilDurable(kLong));
    std::filesystem::remove(file());
    writer.put(record("b"));
    ASSERT_TRUE(comesTrue([&] { return writer.status().hasGivenUp; }));
    ASSERT_TRUE(writer.status().problem);
    EXPECT_EQ(writer.status().problem->cause, "it was moved or deleted");
    writer.startAnew();
    writer.put(record("c"));
    EXPECT_TRUE(writer.waitUntilDurable(kLong));
}

TEST_F(AStoreWriter, StartsAnewWithoutWhatWasThere)
{
    {
        StoreWriter writer(file());
        writer.put(record("a"));
        ASSERT_TRUE(writer.waitUntilDurable(kLong));
        writer.put(record("b"));
        writer.startAnew();
        writer.put(record("c"));
    }
    EXPECT_EQ(contentOf(file()), Lines{"record 7 c"});
}

TEST_F(AStoreWriter, LeavesAFileAloneThatAnotherProcessWrites)
{
    StoreWriter first(file());
    first.put(record("a"));
    ASSERT_TRUE(first.waitUntilDurable(kLong));
    StoreWriter second(file(), {}, quickRetry());
    second.put(record("b"));
    ASSERT_TRUE(comesTrue([&] { return second.status().problem.has_value(); }));
    EXPECT_TRUE(Database::isInUse(*second.status().problem));
}

// ---- Deaths

// A child that hands over records for ever and tells, through a pipe, which of them are safe.
class ADyingProcess : public StoreFixture
{
protected:
    void killAfter(std::chrono::microseconds moment)
    {
        int ends[2];
        ASSERT_EQ(pipe(ends), 0);
        const pid_t child = fork();
        ASSERT_GE(child, 0);
        if (child == 0)
            writeForEver(ends[1]);
        close(ends[1]);
        // Not before it has begun.
        ASSERT_TRUE(readSafe(ends[0]));
        std::this_thread::sleep_for(moment);
        kill(child, SIGKILL);
        int status = 0;
        ASSERT_EQ(waitpid(child, &status, 0), child);
        while (readSafe(ends[0])) {
        }
        close(ends[0]);
    }

    [[nodiscard]] std::uint64_t safe() const { return m_Safe; }

private:
    bool readSafe(int end)
    {
        std::uint64_t number = 0;
        if (read(end, &number, sizeof(number)) != sizeof(number))
            return false;
        m_Safe = number;
        return true;
    }

    [[noreturn]] void writeForEver(int end)
    {
        StoreWriter writer(file());
        std::uint64_t told = 0;
        for (std::uint64_t number = 1;; ++number) {
            // A state now and then, as when a store is folded.
            if (number % 50 == 0) {
                writer.put(StatePart{1, std::to_string(number)});
                writer.put(StateSwitch());
            } else {
                writer.put(record(std::to_string(number)));
            }
            if (number % 7 == 0)
                static_cast<void>(writer.waitUntilDurable(kLong));
            const std::uint64_t entries = writer.status().durable;
            // A state is two entries.
            const std::uint64_t safe = entries - (entries + 1) / 51;
            if (safe != told && write(end, &safe, sizeof(safe)) != sizeof(safe))
                _exit(1);
            told = safe;
        }
    }

    std::uint64_t m_Safe = 0;
};

TEST_F(ADyingProcess, LosesNothingThatWasOnTheDisk)
{
    std::mt19937 random(15);
    for (int round = 0; round < 40; ++round) {
        std::filesystem::remove(file());
        std::filesystem::remove(file().string() + "-wal");
        killAfter(std::chrono::microseconds(std::uniform_int_distribution<int>(0, 20'000)(random)));
        if (HasFatalFailure())
            return;
        const Lines lines = contentOf(file());
        ASSERT_FALSE(lines.empty());
        // The state, if there is one, and the records behind it, without a hole.
        std::uint64_t last = 0;
        for (const std::string &line : lines) {
            const std::uint64_t number = std::stoull(line.substr(line.rfind(' ') + 1));
            if (last != 0) {
                ASSERT_EQ(number, last + 1);
            } else {
                ASSERT_TRUE(line.starts_with("part") ? number % 50 == 0 : number == 1) << line;
            }
            last = number;
        }
        ASSERT_GE(last, safe());
    }
}

// After a power cut the end of the journal may be anything.
TEST_F(ADyingProcess, AJournalDamagedAtItsEndCostsTheLastRecordsAlone)
{
    std::mt19937 random(16);
    for (int round = 0; round < 20; ++round) {
        std::filesystem::remove(file());
        std::filesystem::remove(file().string() + "-wal");
        killAfter(3ms);
        if (HasFatalFailure())
            return;
        const std::filesystem::path journal = file().string() + "-wal";
        const auto size = std::filesystem::file_size(journal);
        const auto place = std::uniform_int_distribution<std::uintmax_t>(32, size)(random);
        {
            std::fstream out(journal, std::ios::in | std::ios::out | std::ios::binary);
            out.seekp(static_cast<std::streamoff>(place));
            for (std::uintmax_t i = place; i < size; ++i)
                out.put(static_cast<char>(random()));
        }
        const Lines lines = contentOf(file());
        std::uint64_t last = 0;
        for (const std::string &line : lines) {
            ASSERT_FALSE(line.starts_with("failure: ")) << line;
            const std::uint64_t number = std::stoull(line.substr(line.rfind(' ') + 1));
            if (last != 0) {
                ASSERT_EQ(number, last + 1);
            }
            last = number;
        }
    }
}

} // namespace StoreWriterTest
