// SPDX-License-Identifier: GPL-3.0-or-later
// What comes by itself while a command waits inside its guard.
#include "unit/history/HistoryFixture.h"

#include "ResidueTies.h"

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::IsEmpty;

namespace HistoryArrivalTest {

class HistoryArrivalTest : public HistoryFixture
{
protected:
    HistoryArrivalTest()
    {
        first.setNumber(0, TAMBO::SequenceNumber(5));
        history.clear();
    }

    // A file with one sequence.
    static void bring(const std::string &name)
    {
        const TAMBO::ArrivalScope arrival;
        const Guard guard(Publisher::Add, space());
        EXPECT_TRUE(guard.m_good);
        peptide(name, "MKV");
    }
    static std::string numberOf(const TAMBO::Peptide &sequence, std::size_t index = 0)
    {
        return sequence.number(index).getValue();
    }
    Texts labels() const
    {
        Texts found;
        for (std::size_t i = 0; i < history.size(); ++i)
            found.push_back(history.label(i));
        return found;
    }

    TAMBO::Peptide &first = peptide("first", "ACD");
    TAMBO::Peptide &second = peptide("second", "EFG");
};

TEST_F(HistoryArrivalTest, UndoingTheCommandKeepsWhatArrived)
{
    {
        const Guard guard(Publisher::Update, space());
        first.setNumber(0, TAMBO::SequenceNumber(100));
        bring("file");
        second.setNumber(0, TAMBO::SequenceNumber(200));
    }
    EXPECT_THAT(labels(), ElementsAre("add file", "renumber in first and another"));
    ASSERT_TRUE(history.undo());
    EXPECT_THAT(topLevelNames(), ElementsAre("first", "second", "file"));
    EXPECT_EQ(numberOf(first), "5");
    EXPECT_EQ(numberOf(second), "1");
    ASSERT_TRUE(history.redo());
    EXPECT_EQ(numberOf(first), "100");
    EXPECT_EQ(numberOf(second), "200");
    EXPECT_THAT(topLevelNames(), ElementsAre("first", "second", "file"));
}

TEST_F(HistoryArrivalTest, TheArrivalIsTheStepBeforeTheCommand)
{
    {
        const Guard guard(Publisher::Add, space());
        peptide("made", "AC");
        bring("file");
    }
    EXPECT_THAT(topLevelNames(), ElementsAre("first", "second", "made", "file"));
    ASSERT_TRUE(history.undo());
    EXPECT_THAT(topLevelNames(), ElementsAre("first", "second", "file"));
    ASSERT_TRUE(history.undo());
    EXPECT_THAT(topLevelNames(), ElementsAre("first", "second"));
    ASSERT_TRUE(history.redo());
    EXPECT_THAT(topLevelNames(), ElementsAre("first", "second", "file"));
    ASSERT_TRUE(history.redo());
    EXPECT_THAT(topLevelNames(), ElementsAre("first", "second", "made", "file"));
}

TEST_F(HistoryArrivalTest, ACommandThatDoesNothingLeavesTheArrivalAlone)
{
    {
        const Guard guard(Publisher::Update, space());
        bring("file");
        bring("another");
    }
    EXPECT_THAT(labels(), ElementsAre("add file", "add another"));
}

TEST_F(HistoryArrivalTest, TheArrivalIsPublishedAtOnceToEverybodyAndTheCommandAtItsEnd)
{
    RecordingSubscriber commander;
    RecordingSubscriber other;
    {
        const Guard guard(Publisher::Update, space(), &commander);
        first.setNumber(0, TAMBO::SequenceNumber(100));
        bring("file");
        EXPECT_THAT(commander.calls, ElementsAre("add"));
        EXPECT_THAT(other.calls, ElementsAre("add"));
    }
    EXPECT_THAT(commander.calls, ElementsAre("add"));
    EXPECT_THAT(other.calls, ElementsAre("add", "update"));
}

TEST_F(HistoryArrivalTest, WhoeverHearsOfTheArrivalSeesWhatTheCommandHasDone)
{
    RecordingSubscriber subscriber;
    std::string seen;
    subscriber.reaction = [&] { seen = numberOf(first); };
    const Guard guard(Publisher::Update, space());
    first.setNumber(0, TAMBO::SequenceNumber(100));
    peptide("made", "AC");
    bring("file");
    EXPECT_EQ(seen, "100");
    EXPECT_THAT(subscriber.calls, ElementsAre("add")) << "nothing has gone, nothing has changed";
    EXPECT_THAT(topLevelNames(), ElementsAre("first", "second", "made", "file"));
}

TEST_F(HistoryArrivalTest, WhatASubscriberDoesMeanwhileBelongsToTheCommand)
{
    RecordingSubscriber subscriber;
    subscriber.reaction = [&] { second.residue(0)->SetColor(Color(0x123456U)); };
    {
        const Guard guard(Publisher::Update, space(), &subscriber);
        first.setNumber(0, TAMBO::SequenceNumber(100));
        bring("file");
    }
    subscriber.reaction = nullptr;
    const std::string now = portrait();
    EXPECT_EQ(history.size(), 2U);
    ASSERT_TRUE(history.goTo(0));
    ASSERT_TRUE(history.goTo(2));
    EXPECT_EQ(portrait(), now);
}

TEST_F(HistoryArrivalTest, ChangesThatGrowGoOnAfterTheArrival)
{
    const std::string before = portrait();
    {
        const Guard guard(Publisher::Update, space());
        first.residue(0)->SetColor(Color(1U));
        first.residue(1)->SetColor(Color(2U));
        bring("file");
        first.residue(1)->SetColor(Color(3U));
        first.residue(2)->SetColor(Color(4U));
        first.setNumber(1, TAMBO::SequenceNumber(70));
    }
    EXPECT_THAT(colorsOf(first), ElementsAre(1U, 3U, 4U));
    ASSERT_TRUE(history.goTo(0));
    EXPECT_EQ(portrait(), before);
    ASSERT_TRUE(history.goTo(2));
    EXPECT_THAT(colorsOf(first), ElementsAre(1U, 3U, 4U));
    EXPECT_EQ(numberOf(first, 1), "70");
}

TEST_F(HistoryArrivalTest, NewNumbersGoOverToTheModelThatArrives)
{
    {
        const Guard guard(Publisher::Update, space());
        second.setNumber(0, TAMBO::SequenceNumber(200));
        {
            const TAMBO::ArrivalScope arrival;
            EXPECT_EQ(numberOf(second), "1") << "as without the command";
            TAMBO::Structure &model = structure("model", {{"A", "EFG"}});
            TAMBO::ResidueTies ties;
            ties.append({0, 3, 0, model.chain(0)});
            second.retie(std::move(ties));
        }
        EXPECT_THAT(numbersOf(second), ElementsAre("200", "2", "3"));
    }
    ASSERT_TRUE(history.undo());
    EXPECT_THAT(numbersOf(second), ElementsAre("1", "2", "3"));
    EXPECT_THAT(topLevelNames(), ElementsAre("first", "second", "model"));
    ASSERT_TRUE(history.undo());
    EXPECT_THAT(numbersOf(second), ElementsAre("1", "2", "3"));
    ASSERT_TRUE(history.goTo(2));
    EXPECT_THAT(numbersOf(second), ElementsAre("200", "2", "3"));
}

// What arrives must not come to refer to what the command has deleted.
TEST_F(HistoryArrivalTest, ACommandThatHasDeletedSomethingIsTwoStepsAroundTheArrival)
{
    {
        const Guard guard(Publisher::Delete, space());
        TAMBO::DataMaker::Destroy(&first);
        bring("file");
        EXPECT_THAT(topLevelNames(), ElementsAre("second", "file"));
        TAMBO::DataMaker::Destroy(&second);
    }
    EXPECT_THAT(labels(), ElementsAre("delete first", "add file", "delete second"));
    for (const std::size_t count : {2U, 2U, 1U, 2U}) {
        EXPECT_EQ(topLevelNames().size(), count == 2 && history.position() == 3 ? 1U : count);
        if (history.position() > 0) {
            ASSERT_TRUE(history.undo());
        }
    }
    EXPECT_THAT(topLevelNames(), ElementsAre("first", "second"));
}

TEST_F(HistoryArrivalTest, OutsideOfACommandAnArrivalIsAStepLikeAnyOther)
{
    RecordingSubscriber subscriber;
    bring("file");
    EXPECT_THAT(subscriber.calls, ElementsAre("add"));
    EXPECT_THAT(labels(), ElementsAre("add file"));
    EXPECT_FALSE(TAMBO::isChanging());
}

TEST_F(HistoryArrivalTest, WithoutAHistoryTheCommandGoesOnAsItWas)
{
    TAMBO::setEditRecorder(nullptr);
    {
        const Guard guard(Publisher::Update, space());
        first.setNumber(0, TAMBO::SequenceNumber(100));
        bring("file");
    }
    TAMBO::setEditRecorder(&history);
    EXPECT_EQ(numberOf(first), "100");
    EXPECT_THAT(topLevelNames(), ElementsAre("first", "second", "file"));
}

// ---- While changes are being published

TEST_F(HistoryArrivalTest, WhatArrivesDuringAPublicationIsAddedAfterIt)
{
    RecordingSubscriber subscriber;
    bool isFirst = true;
    subscriber.reaction = [&] {
        if (std::exchange(isFirst, false)) {
            TAMBO::whenNothingIsPublished([] { bring("file"); });
            TAMBO::whenNothingIsPublished([] { bring("another"); });
            EXPECT_THAT(topLevelNames(), ElementsAre("first", "second"));
        }
    };
    {
        const Guard guard(Publisher::Update, space());
        first.setNumber(0, TAMBO::SequenceNumber(100));
    }
    EXPECT_THAT(topLevelNames(), ElementsAre("first", "second", "file", "another"));
    EXPECT_THAT(subscriber.calls, ElementsAre("update", "add", "add"));
    EXPECT_THAT(labels(), ElementsAre("renumber in first", "add file", "add another"));
}

TEST_F(HistoryArrivalTest, WhatArrivesWhileUndoIsPublishedIsAStepOfItsOwn)
{
    first.setNumber(0, TAMBO::SequenceNumber(100));
    RecordingSubscriber subscriber;
    bool isFirst = true;
    subscriber.reaction = [&] {
        if (std::exchange(isFirst, false))
            TAMBO::whenNothingIsPublished([] { bring("file"); });
    };
    ASSERT_TRUE(history.undo());
    EXPECT_THAT(labels(), ElementsAre("add file"));
    EXPECT_EQ(history.position(), 1U);
    ASSERT_TRUE(history.undo());
    EXPECT_THAT(topLevelNames(), ElementsAre("first", "second"));
}

TEST_F(HistoryArrivalTest, WhatCanBeAddedAtOnceIsAddedAtOnce)
{
    TAMBO::whenNothingIsPublished([] { bring("file"); });
    EXPECT_THAT(topLevelNames(), ElementsAre("first", "second", "file"));
}

TEST_F(HistoryArrivalTest, AnArrivalThatFailsDoesNotKeepTheOthersWaiting)
{
    TAMBO::whenNothingIsPublished([] { throw std::runtime_error("no memory"); });
    TAMBO::whenNothingIsPublished([] { bring("file"); });
    EXPECT_THAT(topLevelNames(), ElementsAre("first", "second", "file"));
    EXPECT_THAT(log, ElementsAre("A change could not be concluded: no memory"));
}

} // namespace HistoryArrivalTest
