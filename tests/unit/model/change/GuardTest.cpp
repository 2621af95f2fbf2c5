// SPDX-License-Identifier: GPL-3.0-or-later
#include "unit/model/ModelFixture.h"

#include "Alignment.h"
#include "Atom.h"
#include "DataMaker.h"
#include "Edit.h"
#include "ObjectOperations.h"

#include <gmock/gmock.h>

#include <memory>
#include <optional>
#include <stdexcept>
#include <type_traits>

using testing::ElementsAre;
using testing::IsEmpty;

namespace GuardTest {

// Counts steps and their edits.
class CountingRecorder : public TAMBO::EditRecorder
{
public:
    void begin() override { steps.push_back(0); }
    void record(std::unique_ptr<TAMBO::Edit>) override { ++steps.back(); }
    void end() override { ++ended; }

    std::vector<int> steps;
    int ended = 0;
};

class GuardTest : public ModelFixture
{
protected:
    GuardTest() { TAMBO::setEditRecorder(&recorder); }

    TAMBO::Peptide &object = peptide("object", "ACD");
    CountingRecorder recorder;
};

static_assert(std::is_nothrow_destructible_v<DataPointBase>);
static_assert(!std::is_copy_constructible_v<DataPointBase>);

TEST_F(GuardTest, EachTypePublishesItsOwnCallback)
{
    RecordingSubscriber subscriber;
    {
        const Guard guard(Publisher::Update, object);
    }
    EXPECT_THAT(subscriber.calls, ElementsAre("update"));
    {
        const Guard guard(Publisher::Add, object);
    }
    EXPECT_THAT(subscriber.calls, ElementsAre("update", "add"));
    {
        const Guard guard(Publisher::Delete, object);
    }
    EXPECT_THAT(subscriber.calls, ElementsAre("update", "add", "delete"));
}

TEST_F(GuardTest, NothingIsPublishedBeforeTheEnd)
{
    RecordingSubscriber subscriber;
    const Guard guard(Publisher::Update, object);
    object.SetColor(Color(0x123456U));
    EXPECT_THAT(subscriber.calls, IsEmpty());
}

TEST_F(GuardTest, OriginatorIsNotNotifiedAndAllOthersAre)
{
    RecordingSubscriber originator;
    RecordingSubscriber first;
    RecordingSubscriber second;
    {
        const Guard guard(Publisher::Update, object, &originator);
    }
    EXPECT_THAT(originator.calls, IsEmpty());
    EXPECT_THAT(first.calls, ElementsAre("update"));
    EXPECT_THAT(second.calls, ElementsAre("update"));
}

TEST_F(GuardTest, NullOriginatorMeansThatEverybodyIsNotified)
{
    RecordingSubscriber first;
    RecordingSubscriber second;
    {
        const Guard guard(Publisher::Delete, object);
    }
    EXPECT_THAT(first.calls, ElementsAre("delete"));
    EXPECT_THAT(second.calls, ElementsAre("delete"));
}

TEST_F(GuardTest, GuardWithoutAnObjectIsGranted)
{
    RecordingSubscriber subscriber;
    {
        const Guard guard(Publisher::Add);
        EXPECT_TRUE(guard.m_good);
    }
    EXPECT_THAT(subscriber.calls, ElementsAre("add"));
}

TEST_F(GuardTest, LockedObjectRefusesAndTellsTheHook)
{
    RecordingSubscriber subscriber;
    ASSERT_TRUE(TAMBO::setObjectLocked(object, true));
    {
        const Guard guard(Publisher::Update, object);
        EXPECT_FALSE(guard.m_good);
    }
    EXPECT_THAT(subscriber.calls, IsEmpty());
    EXPECT_THAT(refused, ElementsAre("object"));
    EXPECT_THAT(recorder.steps, IsEmpty());
}

TEST_F(GuardTest, ObjectBelowALockedOneIsRefused)
{
    TAMBO::Structure &above = structure("1abc", {{"A", "AG"}});
    ASSERT_TRUE(TAMBO::setObjectLocked(above, true));

    EXPECT_FALSE(Guard(Publisher::Update, *above.chain(0)).m_good);
    EXPECT_FALSE(Guard(Publisher::Update, *above.chain(0)->residue(0)).m_good);
    EXPECT_FALSE(Guard(Publisher::Update, *above.chain(0)->atom(0, 0)).m_good);
    EXPECT_THAT(refused, ElementsAre("1abc", "1abc", "1abc"));
}

TEST_F(GuardTest, LockedSpaceRefusesEverything)
{
    ASSERT_TRUE(TAMBO::setObjectLocked(space(), true));
    EXPECT_FALSE(Guard(Publisher::Update, object).m_good);
    EXPECT_FALSE(Guard(Publisher::Add, space()).m_good);
}

TEST_F(GuardTest, UnlockedObjectIsGrantedAgain)
{
    TAMBO::setObjectLocked(object, true);
    TAMBO::setObjectLocked(object, false);
    EXPECT_TRUE(Guard(Publisher::Update, object).m_good);
}

TEST_F(GuardTest, LockIsNoStepOfUndo)
{
    const auto before = recorder.steps.size();
    TAMBO::setObjectLocked(object, true);
    EXPECT_EQ(recorder.steps.size(), before);
}

TEST_F(GuardTest, NestedGuardsPublishOnceAtTheOutermostsEnd)
{
    RecordingSubscriber subscriber;
    {
        const Guard outer(Publisher::Update, object);
        {
            const Guard inner(Publisher::Update, object);
        }
        {
            const Guard inner(Publisher::Update, space());
        }
        EXPECT_THAT(subscriber.calls, IsEmpty());
    }
    EXPECT_THAT(subscriber.calls, ElementsAre("update"));
}

TEST_F(GuardTest, NestedGuardsOfSeveralTypesPublishEachTypeOnceDeletionsFirst)
{
    RecordingSubscriber subscriber;
    {
        const Guard outer(Publisher::Update, object);
        {
            const Guard inner(Publisher::Add, space());
        }
        {
            const Guard inner(Publisher::Add, space());
        }
        {
            const Guard inner(Publisher::Delete, space());
        }
    }
    EXPECT_THAT(subscriber.calls, ElementsAre("delete", "add", "update"));
}

TEST_F(GuardTest, OriginatorIsSkippedOnlyForTypesThatAllHaveIt)
{
    RecordingSubscriber window;
    {
        const Guard outer(Publisher::Update, object, &window);
        {
            const Guard inner(Publisher::Update, object, &window);
        }
        {
            const Guard inner(Publisher::Add, space(), &window);
        }
        {
            const Guard inner(Publisher::Add, space());
        }
    }
    EXPECT_THAT(window.calls, ElementsAre("add"));
}

TEST_F(GuardTest, TwoOriginatorsOfOneTypeAreBothNotified)
{
    RecordingSubscriber first;
    RecordingSubscriber second;
    {
        const Guard outer(Publisher::Update, object, &first);
        {
            const Guard inner(Publisher::Update, object, &second);
        }
        {
            const Guard again(Publisher::Update, object, &first);
        }
    }
    EXPECT_THAT(first.calls, ElementsAre("update"));
    EXPECT_THAT(second.calls, ElementsAre("update"));
}

TEST_F(GuardTest, RefusedGuardInsideAGrantedOneAddsNothing)
{
    TAMBO::Peptide &locked = peptide("locked", "AC");
    TAMBO::setObjectLocked(locked, true);
    RecordingSubscriber subscriber;
    {
        const Guard outer(Publisher::Update, object);
        const Guard inner(Publisher::Delete, locked);
        EXPECT_TRUE(outer.m_good);
        EXPECT_FALSE(inner.m_good);
    }
    EXPECT_THAT(subscriber.calls, ElementsAre("update"));
}

TEST_F(GuardTest, OriginatorThatDiesInsideTheGuardSparesNobodyAtItsAddress)
{
    alignas(RecordingSubscriber) unsigned char place[sizeof(RecordingSubscriber)];
    auto *const originator = new (place) RecordingSubscriber;
    std::optional<Guard> guard;
    guard.emplace(Publisher::Update, object, originator);
    originator->~RecordingSubscriber();
    auto *const newcomer = new (place) RecordingSubscriber;
    guard.reset();
    EXPECT_THAT(newcomer->calls, ElementsAre("update"));
    newcomer->~RecordingSubscriber();
}

TEST_F(GuardTest, AddInsideAnAlignmentIsAnAddAndAnUpdate)
{
    TAMBO::Alignment *const alignment = TAMBO::DataMaker::makeAlignment("SeqAli", {&object});
    RecordingSubscriber subscriber;
    {
        const Guard guard(Publisher::Add, *alignment);
    }
    EXPECT_THAT(subscriber.calls, ElementsAre("add", "update"));
}

TEST_F(GuardTest, AddInsideAnAlignmentSparesItsOriginatorBoth)
{
    TAMBO::Alignment *const alignment = TAMBO::DataMaker::makeAlignment("SeqAli", {&object});
    RecordingSubscriber window;
    {
        const Guard guard(Publisher::Add, *alignment, &window);
    }
    EXPECT_THAT(window.calls, IsEmpty());
}

TEST_F(GuardTest, GuardMadeDuringANotificationIsRefusedAndPublishesNothing)
{
    RecordingSubscriber subscriber;
    RecordingSubscriber other;
    bool wasGood = true;
    bool wasPublishing = false;
    subscriber.reaction = [&] {
        const Guard guard(Publisher::Delete, object);
        wasGood = guard.m_good;
        wasPublishing = Publisher::isPublishing();
    };
    {
        const Guard guard(Publisher::Update, object);
    }
    EXPECT_FALSE(wasGood);
    EXPECT_TRUE(wasPublishing);
    EXPECT_FALSE(Publisher::isPublishing());
    EXPECT_THAT(other.calls, ElementsAre("update"));
    EXPECT_THAT(refused, IsEmpty()) << "the hook is for locks";
}

TEST_F(GuardTest, OutermostGuardIsOneStep)
{
    const auto before = recorder.steps.size();
    {
        const Guard outer(Publisher::Update, object);
        TAMBO::renameObject(object, "other");
        {
            const Guard inner(Publisher::Add, space());
            peptide("new", "AAA");
        }
        object.setNumber(0, TAMBO::SequenceNumber(10));
        EXPECT_EQ(recorder.steps.size(), before);
    }
    ASSERT_EQ(recorder.steps.size(), before + 1);
    EXPECT_EQ(recorder.steps.back(), 3);
    EXPECT_EQ(recorder.ended, int(before) + 1);
}

TEST_F(GuardTest, GuardInsideWhichNothingWasChangedLeavesNoStepButPublishes)
{
    RecordingSubscriber subscriber;
    const auto before = recorder.steps.size();
    {
        const Guard guard(Publisher::Update, object);
    }
    EXPECT_EQ(recorder.steps.size(), before);
    EXPECT_THAT(subscriber.calls, ElementsAre("update"));
}

TEST_F(GuardTest, SelectionAloneLeavesNoStep)
{
    const auto before = recorder.steps.size();
    {
        const Guard guard(Publisher::Update, object);
        object.SetSelected(true);
        object.residue(1)->ToggleSelected();
    }
    EXPECT_EQ(recorder.steps.size(), before);
}

TEST_F(GuardTest, ChangeWithoutAGuardIsAStepOfItsOwnAndPublishesNothing)
{
    RecordingSubscriber subscriber;
    const auto before = recorder.steps.size();
    TAMBO::renameObject(object, "first");
    TAMBO::renameObject(object, "second");
    EXPECT_EQ(recorder.steps.size(), before + 2);
    EXPECT_THAT(subscriber.calls, IsEmpty());
}

TEST_F(GuardTest, WorkbenchIsToldOfEveryChangePublishedOrNot)
{
    const int before = changes;
    TAMBO::renameObject(object, "first");
    EXPECT_EQ(changes, before + 1);
    {
        const Guard guard(Publisher::Update, object);
        TAMBO::renameObject(object, "second");
        TAMBO::renameObject(object, "third");
        EXPECT_EQ(changes, before + 1);
    }
    EXPECT_EQ(changes, before + 2);
    object.SetSelected(true);
    EXPECT_EQ(changes, before + 3);
}

TEST_F(GuardTest, RefusedGuardTellsTheWorkbenchOfNoChange)
{
    TAMBO::setObjectLocked(object, true);
    const int before = changes;
    {
        const Guard guard(Publisher::Update, object);
    }
    EXPECT_EQ(changes, before);
}

TEST_F(GuardTest, SubscriberThatThrowsIsLoggedAndTheOthersAreTold)
{
    RecordingSubscriber bad;
    RecordingSubscriber good;
    bad.reaction = [] { throw std::runtime_error("broken window"); };
    {
        const Guard guard(Publisher::Update, object);
    }
    EXPECT_THAT(good.calls, ElementsAre("update"));
    EXPECT_THAT(log, ElementsAre("A view failed to follow a change: broken window"));
    EXPECT_FALSE(Publisher::isPublishing());

    bad.reaction = [] { throw 42; };
    {
        const Guard guard(Publisher::Update, object);
    }
    EXPECT_THAT(good.calls, ElementsAre("update", "update"));
    EXPECT_EQ(log.back(), "A view failed to follow a change.");
}

TEST_F(GuardTest, ExceptionThroughAGuardsScopeStillEndsIt)
{
    RecordingSubscriber subscriber;
    try {
        const Guard guard(Publisher::Update, object);
        throw std::runtime_error("in the middle");
    } catch (const std::runtime_error &) {
    }
    EXPECT_THAT(subscriber.calls, ElementsAre("update"));
    EXPECT_FALSE(TAMBO::isChanging());
}

TEST_F(GuardTest, SelectionMadeWhileBeingNotifiedIsCarriedOut)
{
    RecordingSubscriber subscriber;
    subscriber.reaction = [&] { object.SetSelected(true); };
    {
        const Guard guard(Publisher::Update, object);
    }
    EXPECT_TRUE(object.IsSelected());
    EXPECT_THAT(subscriber.calls, ElementsAre("update"));
}

TEST_F(GuardTest, RecorderThatThrowsDoesNotStopThePublication)
{
    class ThrowingRecorder : public CountingRecorder
    {
        void record(std::unique_ptr<TAMBO::Edit>) override { throw std::runtime_error("no room"); }
    };
    ThrowingRecorder throwing;
    TAMBO::setEditRecorder(&throwing);
    RecordingSubscriber subscriber;
    {
        const Guard guard(Publisher::Update, object);
        TAMBO::renameObject(object, "other");
    }
    EXPECT_THAT(subscriber.calls, ElementsAre("update"));
    EXPECT_THAT(log, ElementsAre("A change could not be concluded: no room"));
    TAMBO::setEditRecorder(&recorder);
}

// ---- What the user is told

class RefusalTest : public GuardTest
{
protected:
    RefusalTest()
    {
        TAMBO::modelHooks().denied = [this](const std::string &reason, const TAMBO::Compound *) {
            denied.push_back(reason);
        };
    }

    Texts denied;
};

TEST_F(RefusalTest, GuardWhileAnotherChangeIsPublishedSaysWhy)
{
    RecordingSubscriber subscriber;
    subscriber.reaction = [&] {
        EXPECT_FALSE(Guard(Publisher::Update, object).m_good);
        EXPECT_FALSE(Guard(Publisher::Add).m_good);
    };
    {
        const Guard guard(Publisher::Update, object);
    }
    const std::string reason = "Nothing can be changed while another change is shown.";
    EXPECT_THAT(denied, ElementsAre(reason, reason));
}

TEST_F(RefusalTest, WhatAnOperationRefusesIsSaidOncePerStep)
{
    const std::string reason = "\"x\" is no residue number; object keeps its numbers.";
    {
        const Guard guard(Publisher::Update, object);
        object.setNumber(0, TAMBO::SequenceNumber("x"));
        object.setNumber(1, TAMBO::SequenceNumber("x"));
        EXPECT_THAT(denied, ElementsAre(reason));
    }
    EXPECT_THAT(log, ElementsAre(reason));
    TAMBO::DataMaker::makeSSE(&object, "unkQ", {}, 'Q');
    EXPECT_THAT(denied, ElementsAre(reason, "\"Q\" is no type of secondary structure (H, E, T)."));
}

TEST_F(RefusalTest, LockedPartIsSaidWhenTheCommandDoesNothingElse)
{
    TAMBO::Peptide &other = peptide("other", "ACD");
    ASSERT_TRUE(TAMBO::setObjectLocked(object, true));
    {
        const Guard guard(Publisher::Update, space());
        object.setNumber(0, TAMBO::SequenceNumber(9));
        object.setNumber(1, TAMBO::SequenceNumber(10));
        EXPECT_THAT(denied, IsEmpty());
    }
    EXPECT_THAT(denied, ElementsAre("\"object\" is locked and was not changed."));
    denied.clear();
    {
        const Guard guard(Publisher::Update, space());
        object.setNumber(0, TAMBO::SequenceNumber(9));
        other.setNumber(0, TAMBO::SequenceNumber(9));
    }
    EXPECT_THAT(denied, IsEmpty()) << "the user sees what was done";
}

} // namespace GuardTest
