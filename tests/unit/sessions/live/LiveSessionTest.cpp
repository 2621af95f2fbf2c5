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
#include <cstdlib>
#include <functional>
#include <limits>
#include <map>
#include <thread>
#include <tuple>
#include <utility>

namespace LiveSessionTest {

using namespace TAMBO::sessions;

constexpr std::size_t kEverythingInside = std::numeric_limits<std::size_t>::max();

class ALiveSession : public LiveFixture,
                     public testing::WithParamInterface<std::tuple<unsigned, std::size_t>>
{
protected:
    // Every other one waits for next to nothing before a change.
    ALiveSession() : LiveFixture(std::get<0>(GetParam()))
    {
        if (std::get<0>(GetParam()) % 2 == 0)
            atOnce = 300;
    }

    [[nodiscard]] static std::size_t small() { return std::get<1>(GetParam()); }

    // Behind the last state.
    [[nodiscard]] std::size_t recordsOfState() const
    {
        std::size_t count = 0;
        for (auto entry = entries.rbegin();
             entry != entries.rend() && !std::holds_alternative<StateSwitch>(*entry); ++entry)
            count += std::holds_alternative<Record>(*entry) ? 1 : 0;
        return count;
    }

    // In between the user rests now and then, for a shorter or a longer while.
    void workAndRest(int rounds)
    {
        for (int round = 0; round < rounds; ++round) {
            ASSERT_NO_FATAL_FAILURE(workOnce());
            rest();
        }
    }
    void rest()
    {
        if (below(6) == 0)
            session->fold();
        if (below(3) == 0)
            session->writeMore(1 + below(3000));
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
    ASSERT_NO_FATAL_FAILURE(beginAgain(kept));
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
    ASSERT_NO_FATAL_FAILURE(beginAgain(kept));
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
    ASSERT_NO_FATAL_FAILURE(beginAgain(kept));
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
        rest();
        // Of a fold that goes on, or is given up by what comes next.
        portraits.push_back(portraits.back());
        ends.push_back(entries.size());
    }
    const Entries kept = entries;
    for (int round = 0; round < 15; ++round) {
        const std::size_t cut = ends[0] + below(unsigned(kept.size() - ends[0]) + 1);
        ASSERT_NO_FATAL_FAILURE(beginAgain({kept.begin(), kept.begin() + std::ptrdiff_t(cut)}));
        // A command that an arrival interrupts is more than one change.
        const auto next = std::ranges::upper_bound(ends, cut);
        if (std::ranges::binary_search(ends, cut)) {
            EXPECT_EQ(lastingPortrait(), portraits[std::size_t(next - ends.begin()) - 1]);
        }
        EXPECT_TRUE(history.goTo(0));
        EXPECT_EQ(lastingPortrait(), "");
    }
}

TEST_P(ALiveSession, WhatItSaysIsHandedOverIsThere)
{
    beginSession(small());
    std::vector<std::pair<std::size_t, std::string>> handed;
    for (int round = 0; round < 60; ++round) {
        ASSERT_NO_FATAL_FAILURE(workOnce());
        const std::uint64_t records = session->recordCount();
        for (unsigned slices = below(8); slices > 0 && !session->hasHandedOver(records); --slices)
            session->writeMore(1 + below(3000));
        if (session->hasHandedOver(records))
            handed.emplace_back(entries.size(), lastingPortrait());
    }
    session->finish();
    EXPECT_TRUE(session->hasHandedOver(session->recordCount()));
    EXPECT_FALSE(session->hasHandedOver(session->recordCount() + 1));
    handed.emplace_back(entries.size(), lastingPortrait());
    const Entries kept = entries;
    for (int round = 0; round < 8; ++round) {
        const auto &[count, portrait] = handed[below(unsigned(handed.size()))];
        ASSERT_NO_FATAL_FAILURE(beginAgain({kept.begin(), kept.begin() + std::ptrdiff_t(count)}));
        EXPECT_EQ(lastingPortrait(), portrait);
    }
}

// Also while it lacks changes.
TEST_P(ALiveSession, CutAnywhereIsWhole)
{
    beginSession(small());
    ASSERT_NO_FATAL_FAILURE(workAndRest(80));
    const Entries kept = entries;
    for (int round = 0; round < 15; ++round) {
        const std::size_t cut = below(unsigned(kept.size()) + 1);
        ASSERT_NO_FATAL_FAILURE(beginAgain({kept.begin(), kept.begin() + std::ptrdiff_t(cut)}));
        EXPECT_TRUE(history.goTo(history.size()));
        EXPECT_TRUE(history.goTo(0));
        EXPECT_EQ(lastingPortrait(), "");
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
    session->finish();
    // Some steps are in the state that comes of them.
    for (int round = 0; round < 40 || recordsOfState() < 20; ++round) {
        ASSERT_NO_FATAL_FAILURE(workOnce());
        session->finish();
    }
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

// What a store has of it in the end: the last state and what has happened since.
std::vector<StoreEntry> lasting(const std::vector<StoreEntry> &all)
{
    std::vector<StoreEntry> state;
    std::vector<StoreEntry> begun;
    std::vector<StoreEntry> records;
    for (const StoreEntry &entry : all) {
        if (std::holds_alternative<StatePart>(entry)) {
            begun.push_back(entry);
        } else if (const auto *const begin = std::get_if<StateBegin>(&entry)) {
            begun.resize(std::min(begun.size(), begin->kept));
        } else if (std::holds_alternative<StateSwitch>(entry)) {
            state = std::exchange(begun, {});
            state.push_back(entry);
            records.clear();
        } else if (std::holds_alternative<Record>(entry)) {
            records.push_back(entry);
        }
    }
    state.insert(state.end(), records.begin(), records.end());
    return state;
}

// Other people's files: what is whole before the damage, or nothing. A byte that is another one may
// be as good, and so may what is cut off at the end of a piece be.
TEST_P(ALiveSession, DamagedGivesWhatWasBeforeTheDamageOrNothing)
{
    ASSERT_NO_FATAL_FAILURE(work(30));
    beginSession(small());
    ASSERT_NO_FATAL_FAILURE(workAndRest(30));
    session->finish();
    const Entries kept = lasting(entries);
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

    void bringSequences(int count)
    {
        const Guard guard(Publisher::Add, space());
        for (int i = 0; i < count; ++i)
            peptide("s" + std::to_string(i), std::string(200, 'A'));
    }
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

// What one change costs: a slice, and no more of the sequences.
TEST_F(ALargeArrival, IsNotWaitedForByTheNextChange)
{
    beginSession(0);
    session->finish();
    bringSequences(600);
    entries.clear();
    EXPECT_TRUE(session->writeMore(1000));
    TAMBO::renameObject(**space().begin(), "renamed");
    std::size_t bytes = 0;
    for (const StoreEntry &entry : entries)
        bytes += bytesOf(entry);
    EXPECT_LT(bytes, 100'000u);
    EXPECT_FALSE(session->isUpToDate());

    session->finish();
    endSession();
    const std::vector<std::string> states = allStates(true);
    ASSERT_NO_FATAL_FAILURE(beginAgain(entries));
    EXPECT_EQ(allStates(true), states);
}

// Of what most people work on, so that the change is safe as soon as any other.
TEST_F(ALargeArrival, IsHandedOverBeforeTheNextChangeUnlessThatTakesLong)
{
    session.emplace(space(), history,
                    [this](StoreEntry entry) { entries.push_back(std::move(entry)); });
    session->finish();
    bringSequences(3000);
    EXPECT_FALSE(session->isUpToDate());
    TAMBO::renameObject(**space().begin(), "renamed");
    EXPECT_TRUE(session->isUpToDate());
    EXPECT_FALSE(session->lacksChanges());
}

TEST_F(ALargeArrival, IsWaitedForByTheChangeThatComesAfterManyOthers)
{
    beginSession(0);
    session->finish();
    bringSequences(600);
    for (std::size_t i = 0; i < LiveSession::kMostRestarts; ++i) {
        TAMBO::renameObject(**space().begin(), "name" + std::to_string(i));
        EXPECT_FALSE(session->isUpToDate());
        EXPECT_TRUE(session->lacksChanges());
        session->writeMore(1000);
    }
    {
        const Guard guard(Publisher::Update, space());
        EXPECT_TRUE(session->isUpToDate());
    }
    const Entries kept = entries;
    endSession();
    const std::vector<std::string> states = allStates(true);
    ASSERT_NO_FATAL_FAILURE(beginAgain(kept));
    EXPECT_EQ(allStates(true), states);
}

// Else nothing would be safe of somebody who goes on editing.
TEST_F(ALargeArrival, IsNotWrittenOnceMoreForEachChangeOfAnAlignment)
{
    bringSequences(600);
    TAMBO::Alignment &rows = annotated("family");
    atOnce = 0;
    beginSession(0);
    while (session->writeMore(1))
        ;
    const std::size_t once = entries.size();
    endSession();

    beginSession(0);
    // Among the sequences, and among the steps behind the alignment.
    for (const std::size_t place : {once / 4, once / 2, once + 1}) {
        while (entries.size() < place)
            ASSERT_TRUE(session->writeMore(1));
        rows.insertGap(0, 1);
        EXPECT_TRUE(session->lacksChanges()) << place;
        history.markSaved(rows);
    }
    while (session->writeMore(1))
        ;
    EXPECT_FALSE(session->lacksChanges());
    EXPECT_LT(entries.size(), once + 50);
    endSession();
    const std::vector<std::string> states = allStates(true);
    ASSERT_NO_FATAL_FAILURE(beginAgain(entries));
    EXPECT_EQ(allStates(true), states);
}

// No change waits for all of it.
TEST_F(ALargeArrival, OfSequencesIsWaitedForLittleByEachChangeOfAnAlignment)
{
    bringSequences(1000);
    TAMBO::Alignment &rows = annotated("family");
    atOnce = 10'000;
    beginSession(0);
    session->writeMore(1000);
    std::size_t changes = 0;
    while (session->hasMore() && changes < 100) {
        const std::size_t before = entries.size();
        rows.insertGapCol(0, 1);
        ++changes;
        std::size_t bytes = 0;
        for (std::size_t i = before; i < entries.size(); ++i)
            bytes += bytesOf(entries[i]);
        EXPECT_LT(bytes, 2 * atOnce) << changes;
        session->writeMore(10'000);
    }
    EXPECT_GT(changes, LiveSession::kMostRestarts);
    EXPECT_LT(changes, 100u);
    endSession();
    const std::vector<std::string> states = allStates(true);
    ASSERT_NO_FATAL_FAILURE(beginAgain(entries));
    EXPECT_EQ(allStates(true), states);
}

// Somebody who drags gaps right after a family has come.
TEST_F(ALargeArrival, IsNeitherWaitedForNorGivenUpWhenSingleRowsChange)
{
    atOnce = 0;
    beginSession(0);
    session->finish();
    TAMBO::Alignment *rows = nullptr;
    {
        const Guard guard(Publisher::Add, space());
        bringSequences(600);
        rows = &annotated("family");
    }
    for (int i = 0; i < 40; ++i) {
        const std::size_t before = entries.size();
        switch (i % 4) {
        case 0:
            rows->insertGap(i % 2, 1);
            break;
        case 1:
            rows->bubbleRow(0, 1);
            break;
        case 2:
            ASSERT_TRUE(history.undo());
            break;
        default:
            ASSERT_TRUE(history.redo());
        }
        EXPECT_EQ(entries.size(), before) << i;
        EXPECT_TRUE(session->lacksChanges());
        session->writeMore(2000);
    }
    session->finish();
    EXPECT_FALSE(session->lacksChanges());
    EXPECT_EQ(countOf<StateBegin>(), 1u) << "it has been written as a state instead";
    endSession();
    const std::vector<std::string> states = allStates(true);
    ASSERT_NO_FATAL_FAILURE(beginAgain(entries));
    EXPECT_EQ(allStates(true), states);
}

// At each point of what is written of an alignment, and of the steps behind it.
TEST_F(ALargeArrival, OfAStateIsNotGivenUpWhenSingleRowsChange)
{
    atOnce = 0;
    constexpr std::size_t kSteps = 20;
    for (std::size_t place = 1; place < kSteps + 6; ++place) {
        endProgram();
        bringSequences(30);
        TAMBO::Alignment &rows = annotated("family");
        for (std::size_t i = 0; i < kSteps; ++i)
            rows.insertGap(i % 2, 1);
        beginSession(0);
        // The beginning and the sequences, with those of the alignment.
        const std::size_t sequences = 1 + space().objectCount() - 1;
        while (entries.size() < sequences + place)
            ASSERT_TRUE(session->writeMore(1)) << place;
        const std::size_t before = entries.size();
        rows.insertGap(0, 1);
        rows.bubbleRow(1, 0);
        rows.insertGap(0, 1);
        rows.bubbleRow(0, 1);
        ASSERT_TRUE(history.undo());
        EXPECT_EQ(entries.size(), before);
        session->finish();
        endSession();
        EXPECT_EQ(countOf<StateBegin>(), 1u) << place;
        const std::vector<std::string> states = allStates(true);
        ASSERT_NO_FATAL_FAILURE(beginAgain(entries));
        ASSERT_EQ(allStates(true), states) << place;
    }
}

// At each point of what is written, and of the steps behind it.
TEST_F(ALargeArrival, IsWholeWhenItsRowsChangePlacesWhileItIsWritten)
{
    atOnce = 0;
    for (std::size_t place = 1; place < 40; ++place) {
        endProgram();
        bringSequences(30);
        TAMBO::Alignment &rows = annotated("family");
        rows.addRows({rows.GetSeq(0), rows.GetSeq(1)});
        beginSession(0);
        while (entries.size() < place)
            if (!session->writeMore(1))
                break;
        rows.insertGap(0, 1);
        rows.reorderRows({3, 1, 0, 2});
        rows.insertGap(0, 1);
        session->writeMore(1);
        ASSERT_TRUE(history.undo());
        ASSERT_TRUE(history.undo());
        session->finish();
        endSession();
        const std::vector<std::string> states = allStates(true);
        ASSERT_NO_FATAL_FAILURE(beginAgain(entries));
        ASSERT_EQ(allStates(true), states) << place;
    }
}

// They would go with the next step, and are in what has been written.
TEST_F(ALargeArrival, OfAStateIsWrittenOnceMoreWhenAChangeOfARowTakesSteps)
{
    atOnce = 0;
    bringSequences(30);
    TAMBO::Alignment &rows = annotated("family");
    rows.insertGap(0, 1);
    rows.insertGap(0, 1);
    ASSERT_TRUE(history.undo());
    beginSession(0);
    while (entries.size() < space().objectCount() + 2)
        ASSERT_TRUE(session->writeMore(1));
    rows.insertGap(1, 1);
    session->finish();
    EXPECT_EQ(countOf<StateBegin>(), 2u);
    endSession();
    const std::vector<std::string> states = allStates(true);
    ASSERT_NO_FATAL_FAILURE(beginAgain(entries));
    EXPECT_EQ(allStates(true), states);
}

// What steps own goes with them.
TEST_F(ALargeArrival, IsWrittenOnceMoreWhenAChangeTakesStepsWithTheirObjects)
{
    bringSequences(600);
    TAMBO::Alignment &rows = annotated("family");
    peptide("undone", "MKV");
    ASSERT_TRUE(history.undo());
    atOnce = 0;
    beginSession(0);
    for (int i = 0; i < 10; ++i)
        EXPECT_TRUE(session->writeMore(1000));
    rows.insertGap(0, 1);
    session->finish();
    endSession();
    const std::vector<std::string> states = allStates(true);
    ASSERT_NO_FATAL_FAILURE(beginAgain(entries));
    EXPECT_EQ(allStates(true), states);
}

// A guard may be open while the user is asked something.
TEST_F(ALargeArrival, IsNotWrittenInTheMiddleOfAChange)
{
    beginSession(0);
    session->finish();
    bringSequences(600);
    const Guard guard(Publisher::Update, space());
    TAMBO::renameObject(**space().begin(), "renamed");
    entries.clear();
    EXPECT_TRUE(session->writeMore(1000));
    EXPECT_TRUE(entries.empty());
}

TEST_F(ALargeArrival, InTheMiddleOfAChangeIsWrittenBeforeThatGoesOn)
{
    beginSession(0);
    peptide("one", "MKV");
    session->finish();
    const Guard guard(Publisher::Update, space());
    TAMBO::renameObject(**space().begin(), "renamed");
    {
        const TAMBO::ArrivalScope arrival;
        bringSequences(600);
    }
    EXPECT_TRUE(session->isUpToDate());
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
    ASSERT_NO_FATAL_FAILURE(beginAgain(kept));
    EXPECT_EQ(lastingPortrait(), portrait);
    EXPECT_TRUE(history.undo());
    EXPECT_EQ(space().objectCount(), 0u);
    EXPECT_TRUE(history.redo());
    EXPECT_EQ(lastingPortrait(), portrait);
}

// Contents are written as they are at the end of the step, and read where their object comes.
class ALargeObject : public LiveFixture
{
protected:
    ALargeObject() : LiveFixture(1)
    {
        peptide("one", "MKVLA");
        TAMBO::DataMaker::makeAlignment("family", {space().object(0)});
    }

    static TAMBO::Peptide &one() { return *TAMBO::Peptide::from(space().object(0)); }
    static TAMBO::Alignment &family()
    {
        return dynamic_cast<TAMBO::Alignment &>(*space().object(1));
    }
    static void tie(TAMBO::Peptide &sequence, TAMBO::Peptide &chain)
    {
        TAMBO::ResidueTies ties;
        ties.append({0, 5, 0, &chain});
        sequence.retie(std::move(ties));
    }

    void expectIsThereAgainAfter(const std::function<void()> &changes)
    {
        beginSession(0);
        session->finish();
        {
            const Guard guard(Publisher::Update, space());
            changes();
        }
        EXPECT_TRUE(session->lacksChanges());
        session->finish();
        TAMBO::renameObject(one(), "renamed");
        session->finish();
        EXPECT_FALSE(session->lacksChanges());
        const Entries kept = entries;
        const std::vector<std::string> states = allStates(true);
        ASSERT_NO_FATAL_FAILURE(beginAgain(kept));
        EXPECT_EQ(allStates(true), states);
    }
    // Something is done with its first chain, and that chain goes.
    void
    expectIsThereAgainWithoutChainAfter(const std::function<void(TAMBO::Peptide &chain)> &change)
    {
        expectIsThereAgainAfter([&] {
            TAMBO::Structure &made = structure("made", {{"A", "MKVLA"}, {"B", "ACDEF"}});
            change(*made.chain(0));
            TAMBO::DataMaker::Destroy(made.chain(0));
        });
    }
};

TEST_F(ALargeObject, WhoseChainGoesInTheSameStepWithItsColorsIsThereAgain)
{
    expectIsThereAgainWithoutChainAfter(
        [](TAMBO::Peptide &chain) { chain.residue(1)->SetColor(Color(2)); });
}

TEST_F(ALargeObject, WhoseChainGoesInTheSameStepFromASequenceTiedToItIsThereAgain)
{
    expectIsThereAgainWithoutChainAfter([](TAMBO::Peptide &chain) { tie(one(), chain); });
}

TEST_F(ALargeObject, WhoseChainGoesInTheSameStepFromAnAlignmentIsThereAgain)
{
    expectIsThereAgainWithoutChainAfter([](TAMBO::Peptide &chain) { family().addRows({&chain}); });
}

TEST_F(ALargeObject, ThatGetsRowsOfASequenceThatComesLaterInTheSameStepIsThereAgain)
{
    expectIsThereAgainAfter([] {
        auto *const made =
            dynamic_cast<TAMBO::Alignment *>(TAMBO::DataMaker::makeAlignment("made", {&one()}));
        made->addRows({&peptide("two", "ACDEF")});
    });
}

TEST_F(ALargeObject, ThatIsTiedToAChainThatComesLaterInTheSameStepIsThereAgain)
{
    expectIsThereAgainAfter([] {
        TAMBO::Peptide &made = peptide("made", "MKVLA");
        tie(made, *structure("later", {{"A", "MKVLA"}}).chain(0));
    });
}

// ---- Folds

class AFold : public LiveFixture
{
protected:
    AFold() : LiveFixture(1) { }

    void rename(int times)
    {
        for (int i = 0; i < times; ++i)
            TAMBO::renameObject(**space().begin(), "name" + std::to_string(i % 7));
    }
};

TEST_F(AFold, IsDueWhenWhatIsRecordedTakesLongToDoAgain)
{
    beginSession(LiveSession::kSmall, 1'000'000);
    peptide("one", "MKV");
    session->finish();
    EXPECT_FALSE(session->isFoldDue());
    rename(100);
    EXPECT_FALSE(session->isFoldDue());
    rename(400);
    EXPECT_TRUE(session->isFoldDue());
    session->fold();
    EXPECT_FALSE(session->isFoldDue());
    session->finish();
    EXPECT_FALSE(session->isFoldDue());
    rename(500);
    EXPECT_TRUE(session->isFoldDue());
}

// Else the same objects were written again and again.
TEST_F(AFold, IsNotDueBeforeTheRecordsTakeLongerThanTheState)
{
    beginSession(LiveSession::kSmall, 1'000'000);
    peptide("large", std::string(1'000'000, 'A'));
    session->finish();
    session->fold();
    session->finish();
    rename(500);
    EXPECT_FALSE(session->isFoldDue());
}

TEST_F(AFold, CountsTheRowsThatColumnEditsGoThrough)
{
    beginSession(LiveSession::kSmall, 200'000);
    TAMBO::Alignment &rows = annotated("family");
    session->finish();
    session->fold();
    session->finish();
    int edits = 0;
    for (; !session->isFoldDue() && edits < 1000; ++edits)
        rows.insertGapCol(0, 1);
    session->fold();
    session->finish();
    int gaps = 0;
    for (; !session->isFoldDue() && gaps < 1000; ++gaps)
        rows.insertGap(0, 0);
    EXPECT_LT(edits, gaps);
}

TEST_F(AFold, LeavesNoRecord)
{
    beginSession(LiveSession::kSmall);
    peptide("one", "MKV");
    rename(20);
    session->fold();
    session->finish();
    endSession();
    const std::vector<std::string> states = allStates(true);
    endProgram();
    ASSERT_NO_FATAL_FAILURE(writeStore(entries));
    const auto loaded = loadStore();
    ASSERT_TRUE(loaded) << complaintOf(loaded);
    EXPECT_EQ(loaded.value().changes, 0u);
    EXPECT_EQ(allStates(true), states);
}

TEST_F(AFold, IsGivenUpByAChangeAndDueAgain)
{
    beginSession(LiveSession::kSmall, 30'000);
    for (int i = 0; i < 20; ++i)
        peptide("s" + std::to_string(i), std::string(100, 'A'));
    session->finish();
    rename(20);
    ASSERT_TRUE(session->isFoldDue());
    session->fold();
    EXPECT_TRUE(session->writeMore(1000));
    EXPECT_TRUE(session->hasMore());
    EXPECT_TRUE(session->isUpToDate());
    const std::size_t before = entries.size();
    rename(1);
    // The change is there, and nothing else was.
    EXPECT_EQ(entries.size(), before + 1);
    EXPECT_FALSE(session->hasMore());
    EXPECT_TRUE(session->isFoldDue());
    EXPECT_EQ(countOf<StateSwitch>(), 1u);
    endSession();
    const std::vector<std::string> states = allStates(true);
    ASSERT_NO_FATAL_FAILURE(beginAgain(entries));
    EXPECT_EQ(allStates(true), states);
}

TEST_F(AFold, KeepsWhatIsSavedMeanwhile)
{
    beginSession(LiveSession::kSmall);
    TAMBO::Alignment &rows = annotated("family");
    session->finish();
    rows.insertGap(0, 1);
    for (const bool isGivenUp : {false, true}) {
        session->fold();
        EXPECT_TRUE(session->writeMore(1));
        history.markSaved(rows);
        if (isGivenUp)
            rows.insertGap(0, 1);
        session->finish();
        EXPECT_EQ(history.unsavedObjects().empty(), !isGivenUp);
    }
    endSession();
    const std::vector<std::string> states = allStates(true);
    ASSERT_NO_FATAL_FAILURE(beginAgain(entries));
    EXPECT_EQ(allStates(true), states);
}

// ---- Deaths

class AKilledWorkbench : public LiveFixture, public testing::WithParamInterface<unsigned>
{
protected:
    AKilledWorkbench() : LiveFixture(GetParam()) { }

    struct Told
    {
        // Of work, numbered in the order in which it is done.
        std::uint64_t round = 0;
        std::size_t portrait = 0;
        bool isDurable = false;
    };

    // Each round is in the store as well, before its changes.
    [[noreturn]] void workForEver(int end)
    {
        StoreWriter writer(file());
        session.emplace(
            space(), history, [&](StoreEntry entry) { writer.put(std::move(entry)); },
            below(2) == 0 ? LiveSession::kSmall : 300, LiveSession::kMostReplay, kAtOnce);
        session->finish();
        if (writer.waitUntilDurable(std::chrono::minutes(2)))
            tell(end, {0, std::hash<std::string>()(""), false});
        for (std::uint64_t round = 1; true; ++round) {
            writer.put(NamedValue{"round", std::to_string(round)});
            workOnce();
            session->finish();
            tell(end, {round, std::hash<std::string>()(lastingPortrait()), false});
            if (below(4) == 0 && writer.waitUntilDurable(std::chrono::minutes(2)))
                tell(end, {round, 0, true});
            if (below(4) == 0)
                session->fold();
            if (below(2) == 0)
                session->writeMore(1 + below(5000));
        }
    }
    [[nodiscard]] std::uint64_t roundOfStore() const
    {
        auto reader = StoreReader::open(file(), StoreReader::Kind::LeftBehind);
        std::uint64_t round = 0;
        EXPECT_TRUE(reader && reader.value()->forEachValue([&](std::string_view, auto content) {
            round = std::stoull(std::string(content));
            return TAMBO::Result<void>();
        }));
        return round;
    }
    // Of each of the eight cases. TAMBO_TEST_DEATHS asks for more.
    static unsigned deaths()
    {
        const char *const wanted = std::getenv("TAMBO_TEST_DEATHS");
        return wanted == nullptr ? 5 : unsigned(std::strtoul(wanted, nullptr, 10));
    }
    static void tell(int end, const Told &told)
    {
        if (write(end, &told, sizeof(told)) != sizeof(told))
            _exit(1);
    }
};

TEST_P(AKilledWorkbench, HasWhatWasOnTheDiskAndNothingHalf)
{
    int known = 0;
    for (unsigned round = 0; round < deaths(); ++round) {
        std::filesystem::remove(file());
        std::filesystem::remove(file().string() + "-wal");
        int ends[2];
        ASSERT_EQ(pipe(ends), 0);
        const pid_t child = fork();
        ASSERT_GE(child, 0);
        if (child == 0) {
            random.seed(GetParam() * 10'000 + round);
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
                durable = told.round;
            else
                portraits[told.round] = told.portrait;
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
        const std::uint64_t begun = roundOfStore();
        EXPECT_GE(begun, durable);
        // What it was before the round that the store ends in, or after it. A command that arrivals
        // interrupt is several changes, and the last round was maybe not told any more.
        const std::size_t found = std::hash<std::string>()(lastingPortrait());
        if (begun == durable) {
            EXPECT_EQ(found, portraits.at(durable));
        }
        known += begun == 0 || portraits[begun - 1] == found || portraits[begun] == found ? 1 : 0;
        EXPECT_TRUE(history.goTo(0));
        EXPECT_EQ(lastingPortrait(), "");
        EXPECT_TRUE(history.goTo(history.size()));
        endProgram();
    }
    EXPECT_GT(known, 0);
}

INSTANTIATE_TEST_SUITE_P(Random, AKilledWorkbench, testing::Range(1U, 9U));

} // namespace LiveSessionTest
