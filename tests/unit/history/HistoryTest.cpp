// SPDX-License-Identifier: GPL-3.0-or-later
#include "unit/history/HistoryFixture.h"

#include "DestroyedObjects.h"
#include "LongWork.h"

#include <gmock/gmock.h>

#include <algorithm>

using testing::ElementsAre;
using testing::IsEmpty;

namespace HistoryTest {

class HistoryTest : public HistoryFixture
{
protected:
    TAMBO::Peptide &object = peptide("object", "ACDEF");
};

TEST_F(HistoryTest, BeginsEmpty)
{
    const TAMBO::History empty;
    EXPECT_FALSE(empty.canUndo());
    EXPECT_FALSE(empty.canRedo());
    EXPECT_EQ(empty.size(), 0U);
    EXPECT_EQ(empty.undoLabel(), "");
    EXPECT_EQ(empty.redoLabel(), "");
    EXPECT_EQ(empty.label(0), "");
}

TEST_F(HistoryTest, UndoAndRedoWithNothingToDoAreRefused)
{
    history.clear();
    EXPECT_FALSE(history.undo());
    EXPECT_FALSE(history.redo());
    EXPECT_FALSE(history.goTo(1));
    EXPECT_TRUE(history.goTo(0));
}

TEST_F(HistoryTest, OutermostGuardIsOneStep)
{
    history.clear();
    {
        const Guard outer(Publisher::Update, object);
        TAMBO::renameObject(object, "renamed");
        const Guard inner(Publisher::Update, object);
        object.setColor(0, Color(0x1U));
        object.setNumber(4, TAMBO::SequenceNumber(99));
    }
    EXPECT_EQ(history.size(), 1U);
    EXPECT_TRUE(history.undo());
    EXPECT_EQ(object.Name(), "object");
    EXPECT_EQ(object.number(4).getValue(), "5");
    EXPECT_FALSE(history.canUndo());
}

TEST_F(HistoryTest, GuardInsideWhichNothingWasRecordedLeavesNothing)
{
    history.clear();
    {
        const Guard guard(Publisher::Update, object);
        object.SetSelected(true);
    }
    EXPECT_EQ(history.size(), 0U);
}

TEST_F(HistoryTest, ChangeThatChangesNothingLeavesNoStep)
{
    history.clear();
    TAMBO::renameObject(object, "object");
    object.residue(0)->SetColor(object.residue(0)->GetColor());
    object.residue(0)->SetSeqId(TAMBO::SequenceNumber(1));
    EXPECT_EQ(history.size(), 0U);
}

TEST_F(HistoryTest, NewStepAfterUndoReplacesWhatWasUndone)
{
    history.clear();
    TAMBO::renameObject(object, "first");
    TAMBO::renameObject(object, "second");
    history.undo();
    TAMBO::renameObject(object, "third");
    EXPECT_EQ(history.size(), 2U);
    EXPECT_FALSE(history.canRedo());
    history.undo();
    EXPECT_EQ(object.Name(), "first");
}

TEST_F(HistoryTest, GoingToAPositionCarriesOutAllStepsBetween)
{
    history.clear();
    for (const char *name : {"1", "2", "3", "4", "5"})
        TAMBO::renameObject(object, name);
    RecordingSubscriber window;
    EXPECT_TRUE(history.goTo(1));
    EXPECT_EQ(object.Name(), "1");
    EXPECT_EQ(history.position(), 1U);
    EXPECT_TRUE(history.goTo(4));
    EXPECT_EQ(object.Name(), "4");
    EXPECT_THAT(window.calls, ElementsAre("update", "update")) << "once for each jump";
    EXPECT_TRUE(history.goTo(4));
    EXPECT_FALSE(history.goTo(6));
    EXPECT_EQ(object.Name(), "4");
    EXPECT_EQ(window.calls.size(), 2U);
}

TEST_F(HistoryTest, UndoAndRedoArePublishedAsUpdatesToEverybody)
{
    TAMBO::renameObject(object, "renamed");
    RecordingSubscriber window;
    history.undo();
    EXPECT_THAT(window.calls, ElementsAre("update"));
    history.redo();
    EXPECT_THAT(window.calls, ElementsAre("update", "update"));
}

TEST_F(HistoryTest, ObjectsThatComeAndGoArePublishedAsAddsAndDeletions)
{
    history.clear();
    TAMBO::DataMaker::makeAlignment("SeqAli", {&object});
    RecordingSubscriber window;
    history.undo();
    EXPECT_THAT(window.calls, ElementsAre("delete", "update"));
    window.calls.clear();
    history.redo();
    EXPECT_THAT(window.calls, ElementsAre("add", "update"));
}

TEST_F(HistoryTest, WorkbenchIsToldOfUndoAndRedo)
{
    TAMBO::renameObject(object, "renamed");
    const int before = changes;
    history.undo();
    EXPECT_EQ(changes, before + 1);
    history.redo();
    EXPECT_EQ(changes, before + 2);
}

TEST_F(HistoryTest, UndoIsRefusedWhileChangesArePublished)
{
    TAMBO::renameObject(object, "renamed");
    RecordingSubscriber window;
    bool wasUndone = true;
    window.reaction = [&] { wasUndone = history.undo(); };
    {
        const Guard guard(Publisher::Update, object);
    }
    EXPECT_FALSE(wasUndone);
    EXPECT_EQ(object.Name(), "renamed");
}

TEST_F(HistoryTest, UndoIsRefusedInsideAGuard)
{
    TAMBO::renameObject(object, "renamed");
    const Guard guard(Publisher::Update, object);
    EXPECT_FALSE(history.undo());
    EXPECT_FALSE(history.goTo(0));
    EXPECT_EQ(object.Name(), "renamed");
}

TEST_F(HistoryTest, StepOfALockedObjectIsRefusedAndTheHookTold)
{
    TAMBO::renameObject(object, "renamed");
    TAMBO::setObjectLocked(object, true);
    RecordingSubscriber window;
    EXPECT_FALSE(history.undo());
    EXPECT_EQ(object.Name(), "renamed");
    EXPECT_THAT(refused, ElementsAre("renamed"));
    EXPECT_THAT(window.calls, IsEmpty());
    TAMBO::setObjectLocked(object, false);
    EXPECT_TRUE(history.undo());
    TAMBO::setObjectLocked(object, true);
    EXPECT_FALSE(history.redo());
    EXPECT_EQ(object.Name(), "object");
}

TEST_F(HistoryTest, LockedObjectIsNotTakenAwayByUndoingThatItWasMade)
{
    TAMBO::Alignment *const alignment = TAMBO::DataMaker::makeAlignment("SeqAli", {&object});
    TAMBO::setObjectLocked(*alignment, true);
    EXPECT_FALSE(history.undo());
    EXPECT_THAT(topLevelNames(), ElementsAre("object", "SeqAli"));
}

TEST_F(HistoryTest, NothingComesBackBelowALockedObject)
{
    TAMBO::Structure &loaded = structure("1abc", {{"A", "AG"}, {"B", "GGG"}});
    TAMBO::DataMaker::Destroy(loaded.chain(0));
    TAMBO::setObjectLocked(loaded, true);
    EXPECT_FALSE(history.undo());
    EXPECT_EQ(loaded.ChildCount(), 1U);
    EXPECT_THAT(refused, ElementsAre("1abc"));
}

TEST_F(HistoryTest, JumpStopsWhereALockForbidsTheNextStep)
{
    TAMBO::Peptide &other = peptide("other", "AC");
    history.clear();
    TAMBO::renameObject(other, "other 1");
    TAMBO::renameObject(object, "object 1");
    TAMBO::renameObject(object, "object 2");
    TAMBO::setObjectLocked(other, true);
    EXPECT_FALSE(history.goTo(0));
    EXPECT_EQ(history.position(), 1U);
    EXPECT_EQ(object.Name(), "object");
    EXPECT_EQ(other.Name(), "other 1");
}

TEST_F(HistoryTest, LabelsSayWhatWasDoneToWhat)
{
    TAMBO::Structure &loaded = structure("1abc", {{"A", "AGA"}});
    EXPECT_EQ(history.undoLabel(), "add 1abc");
    TAMBO::Alignment *const alignment =
        TAMBO::DataMaker::makeAlignment("SeqAli", {&object, loaded.chain(0)});
    EXPECT_EQ(history.undoLabel(), "add SeqAli");
    alignment->insertGap(0, 2);
    alignment->moveGap(0, 2, 0, true);
    EXPECT_EQ(history.undoLabel(), "move gap in SeqAli");
    object.setColor(0, Color(0x1U));
    EXPECT_EQ(history.undoLabel(), "color residues in object");
    loaded.chain(0)->setNumber(0, TAMBO::SequenceNumber(7));
    EXPECT_EQ(history.undoLabel(), "renumber in 1abc/A");
    TAMBO::renameObject(*alignment, "kinases");
    EXPECT_EQ(history.undoLabel(), "rename kinases");
    {
        const Guard guard(Publisher::Update, space());
        for (TAMBO::Peptide *row : {&object, loaded.chain(0)})
            row->AssignColor(Color(0x2U));
    }
    TAMBO::DataMaker::Destroy(&loaded);
    EXPECT_EQ(history.undoLabel(), "delete 1abc");
    const std::string whenDone = history.undoLabel();
    history.undo();
    EXPECT_EQ(history.redoLabel(), whenDone);
    EXPECT_EQ(history.label(history.position()), whenDone);
}

TEST_F(HistoryTest, LabelOfAPassOverSeveralObjectsCountsThem)
{
    TAMBO::Peptide &second = peptide("second", "AC");
    TAMBO::Peptide &third = peptide("third", "AC");
    {
        const Guard guard(Publisher::Update, space());
        for (TAMBO::Peptide *row : {&object, &second})
            row->setColor(0, Color(0x1U));
    }
    EXPECT_EQ(history.undoLabel(), "color residues in object and another");
    {
        const Guard guard(Publisher::Update, space());
        for (TAMBO::Peptide *row : {&object, &second, &third})
            row->setColor(0, Color(0x2U));
    }
    EXPECT_EQ(history.undoLabel(), "color residues in object and 2 others");
    history.undo();
    EXPECT_EQ(history.redoLabel(), "color residues in object and 2 others");
}

TEST_F(HistoryTest, LabelOfALoadedFileNamesTheAlignmentNotItsSequences)
{
    TAMBO::AlignmentRecord record;
    record.name = "family";
    for (const char *name : {"one", "two", "three"}) {
        record.rows.emplace_back();
        record.rows.back().name = name;
        record.rows.back().sequence.append("AC-D");
    }
    history.clear();
    {
        const Guard guard(Publisher::Add, space());
        TAMBO::ObjectFactory::adopt(std::move(record));
    }
    EXPECT_EQ(history.size(), 1U);
    EXPECT_EQ(history.undoLabel(), "add family");
    history.undo();
    EXPECT_THAT(topLevelNames(), ElementsAre("object"));
    EXPECT_EQ(history.redoLabel(), "add family");
}

TEST_F(HistoryTest, LabelFollowsTheNameOfTheObject)
{
    object.setNumber(0, TAMBO::SequenceNumber(7));
    TAMBO::renameObject(object, "renamed");
    EXPECT_EQ(history.label(history.size() - 2), "renumber in renamed");
}

TEST_F(HistoryTest, MenusAreToldOfEveryChangeOfTheList)
{
    int told = 0;
    history.setChangeCallback([&] { ++told; });
    TAMBO::renameObject(object, "renamed");
    EXPECT_EQ(told, 1);
    history.undo();
    EXPECT_EQ(told, 2);
    history.redo();
    EXPECT_EQ(told, 3);
    history.markSaved(object);
    EXPECT_EQ(told, 4);
    history.clear();
    EXPECT_EQ(told, 5);
    object.SetSelected(true);
    EXPECT_EQ(told, 5);
    history.setChangeCallback({});
}

TEST_F(HistoryTest, HistoryThatGoesIsNoRecorderAnyMore)
{
    {
        TAMBO::History inner;
        TAMBO::setEditRecorder(&inner);
        TAMBO::renameObject(object, "renamed");
        EXPECT_EQ(inner.size(), 1U);
    }
    EXPECT_EQ(TAMBO::editRecorder(), nullptr);
    TAMBO::renameObject(object, "again");
}

TEST_F(HistoryTest, ChangesOfTheModelDuringUndoAreNoSteps)
{
    class Restless : public RecordingSubscriber
    {
    };
    TAMBO::renameObject(object, "renamed");
    Restless window;
    window.reaction = [&] { object.SetSelected(true); };
    const std::size_t before = history.size();
    history.undo();
    EXPECT_EQ(history.size(), before);
    EXPECT_TRUE(history.canRedo());
}

TEST_F(HistoryTest, WindowThatRenamesWhileItIsToldOfAnUndoKeepsTheRedo)
{
    // An operation that needs no guard may come from a window that follows the change.
    TAMBO::Peptide &other = peptide("other", "AC");
    TAMBO::renameObject(object, "renamed");
    RecordingSubscriber window;
    window.reaction = [&] { TAMBO::renameObject(other, "from the window"); };
    history.undo();
    EXPECT_EQ(object.Name(), "object");
    EXPECT_TRUE(history.canRedo());
    EXPECT_TRUE(history.redo());
    EXPECT_EQ(object.Name(), "renamed");
}

// ---- Many objects that go

TEST_F(HistoryTest, AFamilyThatGoesIsOneChangeOfWhatShowsIt)
{
    std::vector<TAMBO::Compound *> family;
    for (int i = 0; i < 300; ++i)
        family.push_back(&peptide("member" + std::to_string(i), "ACD"));
    TAMBO::Alignment &alignment = *TAMBO::DataMaker::makeAlignment("family", family);
    std::vector<TAMBO::Compound *> going;
    for (std::size_t i = 0; i < family.size(); i += 2)
        going.push_back(family[i]);
    const unsigned long layout = alignment.layoutRevision();
    TAMBO::destroyObjects(going);
    EXPECT_EQ(alignment.height(), 150U);
    EXPECT_LE(alignment.layoutRevision(), layout + 2);
    EXPECT_EQ(history.undoLabel(), "delete member0 and 149 others");
    ASSERT_TRUE(history.undo());
    EXPECT_EQ(alignment.height(), 300U);
    EXPECT_LE(alignment.layoutRevision(), layout + 4);
    for (std::size_t i = 0; i < family.size(); ++i)
        ASSERT_EQ(alignment.GetSeq(i), family[i]);
}

TEST_F(HistoryTest, WhatALockedAlignmentShowsStaysAndTheOthersGo)
{
    TAMBO::Peptide &shown = peptide("shown", "ACD");
    TAMBO::Peptide &other = peptide("other", "ACD");
    TAMBO::Alignment &alignment = *TAMBO::DataMaker::makeAlignment("kept", {&shown, &shown});
    TAMBO::setObjectLocked(alignment, true);
    log.clear();
    TAMBO::destroyObjects({&shown, &other});
    EXPECT_THAT(log, ElementsAre("\"shown\" was not deleted: the locked alignment \"kept\" "
                                 "holds its sequence."));
    EXPECT_EQ(shown.Parent(), &space());
    EXPECT_EQ(other.Parent(), nullptr);
    TAMBO::setObjectLocked(alignment, false);
}

// Of a step that colors a thousand sequences, and one before it.
class ALongStep : public HistoryTest
{
protected:
    ALongStep()
    {
        for (std::size_t i = 0; i < kMany; ++i)
            all.push_back(&peptide("s", "A"));
        for (const std::uint32_t color : {0x00ff00U, 0xff0000U}) {
            const TAMBO::ChangeScope scope;
            for (TAMBO::Peptide *sequence : all)
                sequence->setColor(0, Color(color));
        }
    }
    ~ALongStep() override { TAMBO::modelHooks().working = nullptr; }

    static constexpr std::size_t kMany = 1000;

    std::vector<TAMBO::Peptide *> all;
};

TEST_F(ALongStep, ShowsHowFarItIsUndoneAndRedone)
{
    std::vector<std::string> told;
    TAMBO::modelHooks().working = [&](const char *what, double share, bool canBeGivenUp) {
        EXPECT_TRUE(canBeGivenUp);
        if (told.empty() || told.back() != what + std::to_string(int(4 * share)))
            told.push_back(what + std::to_string(int(4 * share)));
        return true;
    };
    ASSERT_TRUE(history.undo());
    ASSERT_TRUE(history.redo());
    EXPECT_THAT(told, ElementsAre("Undoing0", "Undoing1", "Undoing2", "Undoing3", "Redoing0",
                                  "Redoing1", "Redoing2", "Redoing3"));
}

TEST_F(ALongStep, IsAsItWasWhenUndoIsGivenUpAtAnyMoment)
{
    const std::string before = portrait();
    const std::size_t position = history.position();
    const std::size_t bytes = history.bytes();
    int most = 0;
    for (bool isGivenUp = true; isGivenUp; ++most) {
        int looks = 0;
        TAMBO::modelHooks().working = [&](const char *, double, bool) { return looks++ < most; };
        // The second step of the two, and then the first.
        isGivenUp = !history.goTo(position - 2);
        TAMBO::modelHooks().working = nullptr;
        if (!isGivenUp)
            break;
        ASSERT_EQ(portrait(), before) << most;
        ASSERT_EQ(history.position(), position) << most;
        ASSERT_EQ(history.bytes(), bytes) << most;
    }
    EXPECT_GT(most, 20);
    EXPECT_EQ(history.position(), position - 2);
    EXPECT_TRUE(log.empty());
    ASSERT_TRUE(history.goTo(position));
    EXPECT_EQ(portrait(), before);
}

TEST_F(ALongStep, OfObjectsIsAsItWasWhenUndoIsGivenUp)
{
    {
        const TAMBO::ChangeScope scope;
        for (std::size_t i = 0; i < kMany; ++i) {
            TAMBO::renameObject(*all[i], "t");
            peptide("more", "MK");
        }
    }
    const std::string before = portrait();
    TAMBO::modelHooks().working = [](const char *, double share, bool) { return share < 0.5; };
    EXPECT_FALSE(history.undo());
    EXPECT_EQ(portrait(), before);
    TAMBO::modelHooks().working = nullptr;
    EXPECT_TRUE(history.undo());
    EXPECT_NE(portrait(), before);
    EXPECT_TRUE(history.redo());
    EXPECT_EQ(portrait(), before);
}

} // namespace HistoryTest
