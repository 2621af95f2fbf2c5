// SPDX-License-Identifier: GPL-3.0-or-later
// What plug-ins rely on when they name a step of undo, or add to the steps of others.
#include "StepFollower.h"
#include "StepName.h"

#include "Alignment.h"
#include "DataAdder.h"
#include "DataDelete.h"
#include "DataMaker.h"
#include "DataPoint.h"
#include "Space.h"
#include "unit/history/HistoryFixture.h"

#include <gmock/gmock.h>

#include <functional>
#include <random>
#include <stdexcept>
#include <utility>

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace StepContractTest {

using Update = DataPoint<TAMBO::Alignment>;

class Follower : public StepFollower
{
public:
    void stepEnds(const StepChanges &changes) override
    {
        calls.push_back(changes);
        if (reaction)
            reaction();
    }

    // Name, and in brackets what is said of it.
    [[nodiscard]] std::vector<std::string> texts(std::size_t call) const
    {
        std::vector<std::string> texts;
        for (const StepChange &change : calls.at(call).objects)
            texts.push_back(change.object->Name() + (change.isNew ? " (new)" : "") +
                            (change.isDisplayOnly ? " (display)" : ""));
        return texts;
    }

    std::vector<StepChanges> calls;
    std::function<void()> reaction;
};

class StepContract : public HistoryFixture
{
protected:
    StepContract() { history.clear(); }

    void insertGap(TAMBO::Alignment &changed, unsigned long column = 0)
    {
        const Update guard(nullptr, &changed);
        guard->insertGap(0, column);
    }

    TAMBO::Peptide &sequence = peptide("sequence", "ACDEF");
    TAMBO::Peptide &second = peptide("second", "GHIKL");
    TAMBO::Alignment *alignment = TAMBO::DataMaker::makeAlignment("SeqAli", {&sequence});
    TAMBO::Alignment *other = TAMBO::DataMaker::makeAlignment("Other", {&second});
};

// ---- Names

TEST_F(StepContract, ANameStandsWhereTheKindOfEditWould)
{
    {
        const Update guard(nullptr, alignment);
        const StepName name("Make room");
        guard->insertGap(0, 1);
    }
    EXPECT_EQ(history.undoLabel(), "Make room in SeqAli");
    ASSERT_TRUE(history.undo());
    EXPECT_EQ(history.redoLabel(), "Make room in SeqAli");
    ASSERT_TRUE(history.redo());
    EXPECT_EQ(history.label(0), "Make room in SeqAli");
    insertGap(*alignment);
    EXPECT_EQ(history.undoLabel(), "insert gap in SeqAli") << "a name is that of one step";
}

TEST_F(StepContract, TheOutermostNameWins)
{
    {
        const Update outer(nullptr, alignment);
        {
            const Update inner(nullptr, alignment);
            const StepName name("Inner");
            inner->insertGap(0, 1);
        }
        const StepName name("Outer");
        const StepName late("Too late");
        {
            const Update inner(nullptr, alignment);
            const StepName again("Inner again");
            inner->insertGap(0, 1);
        }
    }
    ASSERT_EQ(history.size(), 1U);
    EXPECT_EQ(history.undoLabel(), "Outer in SeqAli");
}

TEST_F(StepContract, ANameOutsideOfAGuardNamesNothing)
{
    const StepName name("Nothing");
    insertGap(*alignment);
    EXPECT_EQ(history.undoLabel(), "insert gap in SeqAli");
}

TEST_F(StepContract, AStepThatChangesNothingHasNoName)
{
    {
        const Update guard(nullptr, alignment);
        const StepName name("Nothing");
    }
    EXPECT_EQ(history.size(), 0U);
    insertGap(*alignment);
    EXPECT_EQ(history.undoLabel(), "insert gap in SeqAli");
}

TEST_F(StepContract, ANameIsFitToBeShown)
{
    const auto labelOf = [this](const std::string &text) {
        {
            const Update guard(nullptr, alignment);
            const StepName name(text);
            guard->insertGap(0, 1);
        }
        return history.undoLabel();
    };
    EXPECT_EQ(labelOf(""), "insert gap in SeqAli");
    EXPECT_EQ(labelOf("Two\nlines"), "Two lines in SeqAli");
    EXPECT_EQ(labelOf("Not \xff UTF-8"), "insert gap in SeqAli");
    EXPECT_EQ(labelOf(std::string(300, 'x')), std::string(100, 'x') + " in SeqAli");
}

TEST_F(StepContract, ANameCountsInWhatTheHistoryOccupies)
{
    insertGap(*alignment);
    const std::size_t plain = history.bytes();
    {
        const Update guard(nullptr, alignment);
        const StepName name(std::string(90, 'x'));
        guard->insertGap(0, 0);
    }
    EXPECT_GE(history.bytes(), 2 * plain + 90);
}

// ---- Followers

TEST_F(StepContract, OneUndoTakesBackTheChangeAndWhatFollowed)
{
    Follower follower;
    follower.reaction = [this] {
        const Update guard(nullptr, other);
        ASSERT_TRUE(guard.m_good);
        guard->insertGap(0, 2);
    };
    const std::string before = portrait();
    insertGap(*alignment);
    EXPECT_EQ(alignment->GetSequence(0, false), "-ACDEF");
    EXPECT_EQ(other->GetSequence(0, false), "GH-IKL");
    ASSERT_EQ(history.size(), 1U);
    EXPECT_EQ(history.undoLabel(), "insert gap in SeqAli");
    const std::string after = portrait();
    const std::size_t done = history.bytes();
    ASSERT_TRUE(history.undo());
    EXPECT_EQ(portrait(), before);
    EXPECT_EQ(history.redoLabel(), "insert gap in SeqAli");
    const std::size_t undone = history.bytes();
    ASSERT_TRUE(history.redo());
    EXPECT_EQ(portrait(), after);
    EXPECT_EQ(history.bytes(), done);
    ASSERT_TRUE(history.undo());
    EXPECT_EQ(history.bytes(), undone);
    EXPECT_EQ(follower.calls.size(), 1U) << "undo and redo are no steps";
}

TEST_F(StepContract, AFollowerIsCalledAfterTheChangesAndBeforeSubscribers)
{
    RecordingSubscriber window;
    Follower follower;
    std::vector<std::size_t> toldBefore;
    follower.reaction = [&] {
        toldBefore.push_back(window.calls.size());
        EXPECT_EQ(alignment->GetSequence(0, false), "-ACDEF");
        EXPECT_EQ(history.size(), 0U);
    };
    insertGap(*alignment);
    EXPECT_THAT(toldBefore, ElementsAre(0U));
    EXPECT_THAT(window.calls, ElementsAre("update"));
}

TEST_F(StepContract, SubscribersAreToldOfWhatAFollowerDid)
{
    RecordingSubscriber window;
    Follower follower;
    follower.reaction = [] {
        const DataAdder<TAMBO::Space> guard(nullptr, TAMBO::Space::instance());
        TAMBO::DataMaker::makeSequence("made", "ACD");
    };
    {
        const Update guard(&window, alignment);
        guard->insertGap(0, 0);
    }
    EXPECT_THAT(window.calls, ElementsAre("add"));
    EXPECT_EQ(history.undoLabel(), "insert gap in SeqAli") << "it is called after the user's deed";
    history.undo();
    EXPECT_EQ(history.redoLabel(), "insert gap in SeqAli");
}

TEST_F(StepContract, OnlyTheOutermostGuardCallsFollowers)
{
    Follower follower;
    {
        const Update outer(nullptr, alignment);
        insertGap(*alignment);
        insertGap(*alignment);
        EXPECT_THAT(follower.calls, IsEmpty());
    }
    EXPECT_EQ(follower.calls.size(), 1U);
}

TEST_F(StepContract, AStepThatChangedNothingCallsNobody)
{
    const Follower follower;
    {
        const Update guard(nullptr, alignment);
    }
    {
        const Update guard(nullptr, alignment);
        guard->getItem(0, 0)->SetSelected(true);
    }
    TAMBO::setObjectLocked(*alignment, true);
    {
        const Update guard(nullptr, alignment);
        ASSERT_FALSE(guard.m_good);
    }
    EXPECT_THAT(follower.calls, IsEmpty());
}

TEST_F(StepContract, AFollowerIsToldWhichObjectsHaveChangedAndHow)
{
    Follower follower;
    insertGap(*alignment);
    EXPECT_THAT(follower.texts(0), ElementsAre("SeqAli"));
    EXPECT_FALSE(follower.calls[0].hasDeletions);

    TAMBO::Structure &loaded = structure("1abc", {{"A", "AGA"}});
    EXPECT_THAT(follower.texts(1), ElementsAre("1abc (new)"));

    {
        const DataPoint<TAMBO::Space> guard(nullptr, TAMBO::Space::instance());
        loaded.chain(0)->residue(0)->SetColor(Color(0xff0000U));
        sequence.residue(1)->SetSeqId(TAMBO::SequenceNumber(100));
        sequence.residue(1)->SetColor(Color(0xff0000U));
    }
    EXPECT_THAT(follower.texts(2), ElementsAre("1abc (display)", "sequence"));

    {
        const DataDelete<TAMBO::Space> guard(nullptr, TAMBO::Space::instance());
        TAMBO::DataMaker::Destroy(&second);
    }
    EXPECT_THAT(follower.texts(3), ElementsAre("Other"));
    EXPECT_TRUE(follower.calls[3].hasDeletions);
    EXPECT_EQ(follower.calls.size(), 4U);
}

TEST_F(StepContract, EachFollowerIsCalledOnceAndSeesWhatThoseBeforeItDid)
{
    Follower first;
    Follower last;
    first.reaction = [this] { insertGap(*other); };
    last.reaction = [this] { insertGap(*alignment); };
    insertGap(*alignment);
    ASSERT_EQ(first.calls.size(), 1U);
    ASSERT_EQ(last.calls.size(), 1U);
    EXPECT_THAT(first.texts(0), ElementsAre("SeqAli"));
    EXPECT_THAT(last.texts(0), ElementsAre("SeqAli", "Other"));
    EXPECT_EQ(alignment->GetSequence(0, false), "--ACDEF");
    EXPECT_EQ(history.size(), 1U);
}

TEST_F(StepContract, AFollowerThatThrowsIsLoggedAndTheStepEndsWell)
{
    RecordingSubscriber window;
    Follower bad;
    Follower good;
    bad.reaction = [this] {
        const Update guard(nullptr, other);
        guard->insertGap(0, 0);
        throw std::runtime_error("boom");
    };
    insertGap(*alignment);
    EXPECT_THAT(log, ElementsAre("A plug-in failed to follow a change: boom"));
    EXPECT_EQ(good.calls.size(), 1U);
    EXPECT_THAT(window.calls, ElementsAre("update"));
    EXPECT_FALSE(TAMBO::isChanging());
    ASSERT_TRUE(history.undo());
    EXPECT_EQ(alignment->GetSequence(0, false), "ACDEF");
    EXPECT_EQ(other->GetSequence(0, false), "GHIKL");
}

TEST_F(StepContract, FollowersMayComeAndGoWhileTheyAreCalled)
{
    auto first = std::make_unique<Follower>();
    auto second = std::make_unique<Follower>();
    std::unique_ptr<Follower> late;
    int calls = 0;
    first->reaction = [&] {
        ++calls;
        second.reset();
        late = std::make_unique<Follower>();
        first.reset();
    };
    insertGap(*alignment);
    EXPECT_EQ(calls, 1);
    ASSERT_NE(late, nullptr);
    EXPECT_THAT(late->calls, IsEmpty());
    insertGap(*alignment);
    EXPECT_EQ(late->calls.size(), 1U);
}

TEST_F(StepContract, AFollowerDoesNotNameTheStep)
{
    Follower follower;
    follower.reaction = [this] {
        const Update guard(nullptr, other);
        const StepName name("Mine");
        guard->insertGap(0, 0);
    };
    insertGap(*alignment);
    EXPECT_EQ(history.undoLabel(), "insert gap in SeqAli");
}

TEST_F(StepContract, WhatArrivesIsAStepThatIsFollowed)
{
    Follower follower;
    {
        const Update guard(nullptr, alignment);
        guard->insertGap(0, 0);
        {
            const TAMBO::ArrivalScope arrival;
            TAMBO::publishAtEnd(Publisher::Add);
            structure("1abc", {{"A", "AGA"}});
        }
        ASSERT_EQ(follower.calls.size(), 1U);
        EXPECT_THAT(follower.texts(0), ElementsAre("1abc (new)"));
    }
    ASSERT_EQ(follower.calls.size(), 2U);
    EXPECT_THAT(follower.texts(1), ElementsAre("SeqAli"));
}

TEST_F(StepContract, WhatArrivesWhileFollowersAreCalledWaits)
{
    Follower follower;
    bool isFirst = true;
    follower.reaction = [&] {
        // What arrives is followed, too.
        if (!std::exchange(isFirst, false))
            return;
        TAMBO::whenNothingIsPublished([] {
            const TAMBO::ArrivalScope arrival;
            structure("1abc", {{"A", "AGA"}});
        });
        EXPECT_EQ(topLevelNames().size(), 4U);
    };
    insertGap(*alignment);
    EXPECT_EQ(topLevelNames().size(), 5U);
    EXPECT_EQ(history.size(), 2U);
    EXPECT_EQ(history.label(0), "insert gap in SeqAli");
}

TEST_F(StepContract, RandomStepsWithAFollowerAreTakenBackAndRepeatedOneByOne)
{
    std::mt19937 random(20260712);
    const auto below = [&random](unsigned long count) { return random() % count; };
    Follower follower;
    follower.reaction = [&] {
        if (below(4) == 0)
            return;
        const Update guard(nullptr, other);
        guard->insertGap(0, below(other->width()));
    };
    std::vector<std::string> portraits{portrait()};
    std::vector<std::string> labels;
    for (int i = 0; i < 200; ++i) {
        {
            const Update guard(nullptr, alignment);
            const StepName name(below(2) == 0 ? "Named" : "");
            if (below(3) == 0)
                guard->moveGap(0, below(alignment->width()), below(alignment->width()), true);
            guard->insertGap(0, below(alignment->width()));
        }
        // A gap among the last ones changes nothing.
        if (history.size() < portraits.size())
            continue;
        portraits.push_back(portrait());
        labels.push_back(history.undoLabel());
        ASSERT_EQ(history.size(), portraits.size() - 1);
    }
    ASSERT_GT(history.size(), 100U);
    const std::size_t bytes = history.bytes();
    for (std::size_t i = portraits.size() - 1; i-- > 0;) {
        ASSERT_TRUE(history.undo());
        ASSERT_EQ(portrait(), portraits[i]);
        ASSERT_EQ(history.redoLabel(), labels[i]);
    }
    for (std::size_t i = 1; i < portraits.size(); ++i) {
        ASSERT_TRUE(history.redo());
        ASSERT_EQ(portrait(), portraits[i]);
        ASSERT_EQ(history.undoLabel(), labels[i - 1]);
    }
    EXPECT_EQ(history.bytes(), bytes);
}

} // namespace StepContractTest
