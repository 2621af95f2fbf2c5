// SPDX-License-Identifier: GPL-3.0-or-later
// The program ends without a warning, and begins again with all that was done.
#include "unit/history/ReplayFixture.h"

#include <gmock/gmock.h>

#include <random>
#include <utility>

namespace HistoryReplayTest {

class HistoryReplayTest : public ReplayFixture, public testing::WithParamInterface<unsigned>
{
protected:
    HistoryReplayTest() : ReplayFixture(GetParam()) { }

    void expectSame(const std::vector<std::string> &states);
};

void HistoryReplayTest::expectSame(const std::vector<std::string> &states)
{
    const std::vector<std::string> found = allStates();
    ASSERT_EQ(found.size(), states.size());
    for (std::size_t i = 0; i < states.size(); ++i)
        ASSERT_EQ(found[i], states[i]) << "state " << i;
}

TEST_P(HistoryReplayTest, WhatWasDoneIsThereAgain)
{
    const CountingFollower follower;
    const Stored beginning = stored();
    keepJournal();
    ASSERT_NO_FATAL_FAILURE(work(150));
    TAMBO::setStepJournal(nullptr);
    const std::string portrait = lastingPortrait();
    const std::size_t position = history.position();
    const std::vector<std::string> states = allStates();
    endProgram();
    const TAMBO::Result<void> loaded = load(beginning);
    ASSERT_TRUE(loaded) << loaded.error().message();
    const TAMBO::Result<void> done = replay(records);
    ASSERT_TRUE(done) << done.error().message();
    EXPECT_EQ(lastingPortrait(), portrait);
    EXPECT_EQ(history.position(), position);
    ASSERT_NO_FATAL_FAILURE(expectSame(states));
}

TEST_P(HistoryReplayTest, WhatWasDoneBeforeAndAfterItWasStoredIsThereAgain)
{
    ASSERT_NO_FATAL_FAILURE(work(80));
    const Stored middle = stored();
    keepJournal();
    ASSERT_NO_FATAL_FAILURE(work(80));
    TAMBO::setStepJournal(nullptr);
    const std::string portrait = lastingPortrait();
    const std::vector<std::string> states = allStates();
    endProgram();
    const TAMBO::Result<void> loaded = load(middle);
    ASSERT_TRUE(loaded) << loaded.error().message();
    const TAMBO::Result<void> done = replay(records);
    ASSERT_TRUE(done) << done.error().message();
    EXPECT_EQ(lastingPortrait(), portrait);
    ASSERT_NO_FATAL_FAILURE(expectSame(states));
}

TEST_P(HistoryReplayTest, WhatIsStoredAgainHasTheSameBytes)
{
    ASSERT_NO_FATAL_FAILURE(work(80));
    const Stored first = stored();
    endProgram();
    const TAMBO::Result<void> loaded = load(first);
    ASSERT_TRUE(loaded) << loaded.error().message();
    const Stored again = stored();
    EXPECT_EQ(again.objects, first.objects);
    EXPECT_EQ(again.steps, first.steps);
    EXPECT_EQ(again.state, first.state);
}

// A file of a session may have steps of which no one follows from the other.
TEST_P(HistoryReplayTest, AStepThatDoesNotFitIsRefusedAndLeavesAllAsItWas)
{
    do {
        ASSERT_NO_FATAL_FAILURE(work(60));
    } while (history.size() < 10);
    history.goTo(history.size());
    const Stored kept = stored();
    std::mt19937 random(GetParam());
    std::size_t refused = 0;
    for (int round = 0; round < 40; ++round) {
        endProgram();
        Stored mixed = kept;
        std::swap(mixed.steps[random() % mixed.steps.size()],
                  mixed.steps[random() % mixed.steps.size()]);
        // It may need an object that has come with another one by then.
        if (!load(mixed))
            continue;
        for (bool isUndone = true; isUndone && history.canUndo();) {
            const std::string before = lastingPortrait();
            const std::size_t position = history.position();
            isUndone = history.undo();
            if (isUndone) {
                const std::string undone = lastingPortrait();
                ASSERT_TRUE(history.redo()) << round;
                ASSERT_EQ(lastingPortrait(), before) << round;
                ASSERT_TRUE(history.undo()) << round;
                ASSERT_EQ(lastingPortrait(), undone) << round;
                continue;
            }
            ++refused;
            ASSERT_EQ(history.position(), position) << round;
            ASSERT_EQ(lastingPortrait(), before) << round;
        }
    }
    EXPECT_GT(refused, 0U);
}

TEST_P(HistoryReplayTest, StepsThatTheLimitDropsAreDroppedAgain)
{
    history.setLimit(20000);
    const Stored beginning = stored();
    keepJournal();
    ASSERT_NO_FATAL_FAILURE(work(150));
    TAMBO::setStepJournal(nullptr);
    history.setLimit(TAMBO::History::kDefaultLimit);
    const std::vector<std::string> states = allStates();
    endProgram();
    ASSERT_TRUE(load(beginning));
    const TAMBO::Result<void> done = replay(records);
    ASSERT_TRUE(done) << done.error().message();
    ASSERT_NO_FATAL_FAILURE(expectSame(states));
}

// Whatever the bytes say: what was there before the record is there still.
TEST_P(HistoryReplayTest, DamagedRecordsFailAndLeaveEverythingAsItWas)
{
    const Stored beginning = stored();
    keepJournal();
    ASSERT_NO_FATAL_FAILURE(work(60));
    std::vector<std::string> kept = records;
    int failures = 0;
    for (int round = 0; round < 40; ++round) {
        endProgram();
        ASSERT_TRUE(load(beginning));
        const std::size_t damaged = below(kept.size());
        ASSERT_TRUE(replay({kept.begin(), kept.begin() + std::ptrdiff_t(damaged)}));
        const std::string before = lastingPortrait();
        const std::size_t position = history.position();
        std::string record = kept[damaged];
        const unsigned kind = below(3);
        if (kind == 0)
            record.resize(below(record.size()));
        else
            for (unsigned i = 0; i < kind; ++i)
                record[below(record.size())] = char(random());
        const bool isDone = bool(replay({record}));
        EXPECT_TRUE(kind != 0 || !isDone);
        failures += isDone ? 0 : 1;
        if (!isDone) {
            ASSERT_EQ(lastingPortrait(), before);
            ASSERT_EQ(history.position(), position);
        }
        // Nothing is broken either.
        ASSERT_TRUE(history.goTo(0));
        ASSERT_TRUE(history.goTo(history.size()));
    }
    EXPECT_GT(failures, 10);
}

TEST_P(HistoryReplayTest, DamagedStepsFailOrCannotBeToggled)
{
    ASSERT_NO_FATAL_FAILURE(work(60));
    const Stored good = stored();
    const std::string portrait = lastingPortrait();
    for (int round = 0; round < 40 && !good.steps.empty(); ++round) {
        endProgram();
        Stored bad = good;
        std::string &step = bad.steps[below(bad.steps.size())];
        const bool isShort = below(2) == 0;
        if (isShort)
            step.resize(below(step.size()));
        else
            step[below(step.size())] = char(random());
        const bool isLoaded = bool(load(bad));
        EXPECT_FALSE(isShort && isLoaded);
        if (!isLoaded) {
            history.clear();
            EXPECT_EQ(lastingPortrait(), portrait);
            continue;
        }
        history.goTo(0);
        history.goTo(history.size());
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, HistoryReplayTest, testing::Range(1U, 13U));

} // namespace HistoryReplayTest
