// SPDX-License-Identifier: GPL-3.0-or-later
#include "LiveFixture.h"

#include "ObjectOperations.h"
#include "SessionKinds.h"
#include "StoreWriter.h"

#include <gmock/gmock.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <functional>
#include <limits>
#include <thread>
#include <tuple>

namespace LiveSessionTest {

using namespace TAMBO::sessions;

constexpr std::size_t kEverythingInside = std::numeric_limits<std::size_t>::max();

class ALiveSession : public LiveFixture,
                     public testing::WithParamInterface<std::tuple<unsigned, std::size_t>>
{
protected:
    ALiveSession() : LiveFixture(std::get<0>(GetParam())) { }

    [[nodiscard]] static std::size_t small() { return std::get<1>(GetParam()); }

    // In between the user rests now and then, for a shorter or a longer while.
    void workAndRest(int rounds)
    {
        for (int round = 0; round < rounds; ++round) {
            ASSERT_NO_FATAL_FAILURE(workOnce());
            if (below(3) == 0)
                session->writeMore(1 + below(3000));
        }
    }

    void expectSame(const std::vector<std::string> &states)
    {
        const std::vector<std::string> found = allStates(small() == kEverythingInside);
        ASSERT_EQ(found.size(), states.size());
        for (std::size_t i = 0; i < states.size(); ++i)
            ASSERT_EQ(found[i], states[i]) << "state " << i;
    }
};

TEST_P(ALiveSession, IsThereAgainAfterTheProgramEnded)
{
    const CountingFollower follower;
    beginSession(small());
    ASSERT_NO_FATAL_FAILURE(workAndRest(120));
    session->finish();
    EXPECT_TRUE(session->isUpToDate());
    const Entries kept = entries;
    endSession();
    const std::string portrait = lastingPortrait();
    const std::size_t position = history.position();
    const std::vector<std::string> states = allStates(small() == kEverythingInside);
    endProgram();

    ASSERT_NO_FATAL_FAILURE(writeStore(kept));
    const auto loaded = loadStore();
    ASSERT_TRUE(loaded) << complaintOf(loaded);
    EXPECT_FALSE(loaded.value().problem) << loaded.value().problem->message();
    EXPECT_EQ(lastingPortrait(), portrait);
    EXPECT_EQ(history.position(), position);
    ASSERT_NO_FATAL_FAILURE(expectSame(states));
}

TEST_P(ALiveSession, BeginsWithWhatIsThereAlready)
{
    ASSERT_NO_FATAL_FAILURE(work(60));
    beginSession(small());
    ASSERT_NO_FATAL_FAILURE(workAndRest(60));
    session->finish();
    const Entries kept = entries;
    endSession();
    const std::vector<std::string> states = allStates(small() == kEverythingInside);
    endProgram();

    ASSERT_NO_FATAL_FAILURE(writeStore(kept));
    const auto loaded = loadStore();
    ASSERT_TRUE(loaded) << complaintOf(loaded);
    EXPECT_FALSE(loaded.value().problem) << loaded.value().problem->message();
    ASSERT_NO_FATAL_FAILURE(expectSame(states));
}

TEST_P(ALiveSession, CanStartAnewAtAnyMoment)
{
    beginSession(small());
    ASSERT_NO_FATAL_FAILURE(workAndRest(40));
    entries.clear();
    session->startAnew();
    ASSERT_NO_FATAL_FAILURE(workAndRest(40));
    session->finish();
    const Entries kept = entries;
    endSession();
    const std::vector<std::string> states = allStates(small() == kEverythingInside);
    endProgram();

    ASSERT_NO_FATAL_FAILURE(writeStore(kept));
    const auto loaded = loadStore();
    ASSERT_TRUE(loaded) << complaintOf(loaded);
    EXPECT_FALSE(loaded.value().problem) << loaded.value().problem->message();
    ASSERT_NO_FATAL_FAILURE(expectSame(states));
}

// Wherever the program ends, what is there is what was there after one of the changes.
TEST_P(ALiveSession, CutAnywhereIsWhatItWasAfterAChange)
{
    beginSession(small());
    session->finish();
    std::vector<std::string> portraits{lastingPortrait()};
    // Of the entries behind which each portrait holds.
    std::vector<std::size_t> ends{entries.size()};
    for (int round = 0; round < 60; ++round) {
        ASSERT_NO_FATAL_FAILURE(workOnce());
        session->finish();
        portraits.push_back(lastingPortrait());
        ends.push_back(entries.size());
    }
    const Entries kept = entries;
    endProgram();
    for (int round = 0; round < 15; ++round) {
        const std::size_t cut = ends[0] + below(unsigned(kept.size() - ends[0]) + 1);
        ASSERT_NO_FATAL_FAILURE(writeStore({kept.begin(), kept.begin() + std::ptrdiff_t(cut)}));
        const auto loaded = loadStore();
        ASSERT_TRUE(loaded) << complaintOf(loaded);
        ASSERT_FALSE(loaded.value().problem) << loaded.value().problem->message();
        // A command that an arrival interrupts is more than one change.
        const auto next = std::ranges::upper_bound(ends, cut);
        if (std::ranges::binary_search(ends, cut)) {
            EXPECT_EQ(lastingPortrait(), portraits[std::size_t(next - ends.begin()) - 1]);
        }
        endProgram();
    }
}

TEST_P(ALiveSession, CanBeLoadedWithoutItsLastChange)
{
    beginSession(small());
    // Changes of values alone: one record each.
    TAMBO::Peptide &sequence = peptide("one", "MKV");
    session->finish();
    TAMBO::Peptide *const named = &sequence;
    std::vector<std::string> portraits;
    for (int i = 0; i < 3; ++i) {
        portraits.push_back(lastingPortrait());
        named->SetColor(Color(std::uint32_t(i + 1)));
    }
    session->finish();
    const Entries kept = entries;
    endProgram();
    ASSERT_NO_FATAL_FAILURE(writeStore(kept));
    const auto loaded = loadStore({.leftOut = 2, .step = {}});
    ASSERT_TRUE(loaded) << complaintOf(loaded);
    EXPECT_EQ(lastingPortrait(), portraits[1]);
}

TEST_P(ALiveSession, LoadingCanBeCancelled)
{
    beginSession(small());
    ASSERT_NO_FATAL_FAILURE(workAndRest(40));
    session->finish();
    const Entries kept = entries;
    endProgram();
    ASSERT_NO_FATAL_FAILURE(writeStore(kept));
    const auto loaded =
        loadStore({.leftOut = 0, .step = [](std::uint64_t changes) { return changes < 10; }});
    ASSERT_FALSE(loaded);
    EXPECT_EQ(loaded.error().kind, TAMBO::FailureKind::Cancelled);
    EXPECT_EQ(space().objectCount(), 0u);
    EXPECT_EQ(history.size(), 0u);
}

// Other people's files: what is whole before the damage, or nothing.
TEST_P(ALiveSession, DamagedGivesWhatWasBeforeTheDamageOrNothing)
{
    ASSERT_NO_FATAL_FAILURE(work(30));
    beginSession(small());
    ASSERT_NO_FATAL_FAILURE(workAndRest(30));
    session->finish();
    const Entries kept = entries;
    endProgram();
    int problems = 0;
    for (int round = 0; round < 60; ++round) {
        Entries damaged = kept;
        StoreEntry &entry = damaged[below(unsigned(damaged.size()))];
        std::string *content = nullptr;
        if (auto *const part = std::get_if<StatePart>(&entry))
            content = &part->content;
        else if (auto *const record = std::get_if<Record>(&entry))
            content = &record->content;
        if (content == nullptr || content->empty())
            continue;
        if (below(3) == 0)
            content->resize(below(unsigned(content->size())));
        else
            (*content)[below(unsigned(content->size()))] = char(random());
        ASSERT_NO_FATAL_FAILURE(writeStore(damaged));
        const auto loaded = loadStore();
        problems += !loaded || loaded.value().problem ? 1 : 0;
        if (!loaded) {
            EXPECT_EQ(space().objectCount(), 0u);
            EXPECT_EQ(history.size(), 0u);
        }
        // A step that does not fit stops on the way, and breaks nothing.
        static_cast<void>(history.goTo(0));
        static_cast<void>(history.goTo(history.size()));
        EXPECT_EQ(lastingPortrait().empty(), space().objectCount() == 0);
        endProgram();
    }
    EXPECT_GT(problems, 10);
}

INSTANTIATE_TEST_SUITE_P(Random, ALiveSession,
                         testing::Combine(testing::Range(1U, 7U),
                                          testing::Values(std::size_t(0), std::size_t(700),
                                                          kEverythingInside)));

// ---- Slices

class ALargeArrival : public LiveFixture
{
protected:
    ALargeArrival() : LiveFixture(1) { }
};

TEST_F(ALargeArrival, IsHandedOverInSlicesAndBeforeTheNextChange)
{
    beginSession(LiveSession::kSmall);
    session->finish();
    entries.clear();
    TAMBO::Peptide &large = peptide("large", std::string(200'000, 'A'));
    EXPECT_FALSE(session->isUpToDate());
    EXPECT_TRUE(entries.empty());
    EXPECT_TRUE(session->writeMore(1000));
    EXPECT_EQ(entries.size(), 1u);
    large.SetSelected(true);
    EXPECT_TRUE(session->isUpToDate());
    EXPECT_EQ(entries.size(), 2u);
    EXPECT_FALSE(session->writeMore(1000));
}

TEST_F(ALargeArrival, WhatIsDoneWithItInTheSameStepIsInIt)
{
    beginSession(0);
    {
        const Guard guard(Publisher::Add, space());
        TAMBO::Alignment &made = annotated("family");
        made.insertGap(0, 1);
        made.insertGapCol(0, 2);
        TAMBO::renameObject(made, "renamed");
    }
    session->finish();
    const Entries kept = entries;
    const std::string portrait = lastingPortrait();
    endProgram();
    ASSERT_NO_FATAL_FAILURE(writeStore(kept));
    const auto loaded = loadStore();
    ASSERT_TRUE(loaded) << complaintOf(loaded);
    ASSERT_FALSE(loaded.value().problem) << loaded.value().problem->message();
    EXPECT_EQ(lastingPortrait(), portrait);
    EXPECT_TRUE(history.undo());
    EXPECT_EQ(space().objectCount(), 0u);
    EXPECT_TRUE(history.redo());
    EXPECT_EQ(lastingPortrait(), portrait);
}

// ---- Deaths

class AKilledWorkbench : public LiveFixture, public testing::WithParamInterface<unsigned>
{
protected:
    AKilledWorkbench() : LiveFixture(GetParam()) { }

    struct Told
    {
        std::uint64_t changes = 0;
        std::size_t portrait = 0;
        bool isDurable = false;
    };

    [[noreturn]] void workForEver(int end)
    {
        StoreWriter writer(file());
        std::uint64_t changes = 0;
        session.emplace(space(), history, [&](StoreEntry entry) {
            const auto *const record = std::get_if<Record>(&entry);
            if (record != nullptr && record->kind == std::uint32_t(RecordKind::Change))
                ++changes;
            writer.put(std::move(entry));
        });
        session->finish();
        if (writer.waitUntilDurable(std::chrono::minutes(2)))
            tell(end, {0, std::hash<std::string>()(""), false});
        while (true) {
            workOnce();
            session->finish();
            tell(end, {changes, std::hash<std::string>()(lastingPortrait()), false});
            if (below(4) == 0 && writer.waitUntilDurable(std::chrono::minutes(2)))
                tell(end, {changes, 0, true});
        }
    }
    static void tell(int end, const Told &told)
    {
        if (write(end, &told, sizeof(told)) != sizeof(told))
            _exit(1);
    }
};

TEST_P(AKilledWorkbench, HasWhatWasOnTheDiskAndNothingHalf)
{
    for (int round = 0; round < 5; ++round) {
        std::filesystem::remove(file());
        std::filesystem::remove(file().string() + "-wal");
        int ends[2];
        ASSERT_EQ(pipe(ends), 0);
        const pid_t child = fork();
        ASSERT_GE(child, 0);
        if (child == 0) {
            random.seed(GetParam() * 100 + unsigned(round));
            workForEver(ends[1]);
        }
        close(ends[1]);
        std::map<std::uint64_t, std::size_t> portraits;
        std::uint64_t durable = 0;
        const auto hear = [&] {
            Told told;
            if (read(ends[0], &told, sizeof(told)) != sizeof(told))
                return false;
            if (told.isDurable)
                durable = told.changes;
            else
                portraits[told.changes] = told.portrait;
            return true;
        };
        ASSERT_TRUE(hear());
        std::this_thread::sleep_for(std::chrono::microseconds(below(60'000)));
        kill(child, SIGKILL);
        int status = 0;
        ASSERT_EQ(waitpid(child, &status, 0), child);
        while (hear())
            ;
        close(ends[0]);

        const auto loaded = loadStore({}, StoreReader::Kind::LeftBehind);
        ASSERT_TRUE(loaded) << complaintOf(loaded);
        ASSERT_FALSE(loaded.value().problem) << loaded.value().problem->message();
        EXPECT_GE(loaded.value().changes, durable);
        const auto known = portraits.find(loaded.value().changes);
        // Not of one in the middle of a command that an arrival interrupted, nor of the last one.
        if (known != portraits.end()) {
            EXPECT_EQ(std::hash<std::string>()(lastingPortrait()), known->second);
        }
        EXPECT_TRUE(history.goTo(0));
        EXPECT_EQ(lastingPortrait(), "");
        EXPECT_TRUE(history.goTo(history.size()));
        endProgram();
    }
}

INSTANTIATE_TEST_SUITE_P(Random, AKilledWorkbench, testing::Range(1U, 9U));

} // namespace LiveSessionTest
