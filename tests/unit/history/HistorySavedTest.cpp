// SPDX-License-Identifier: GPL-3.0-or-later
#include "unit/history/HistoryFixture.h"

#include "KeptState.h"

#include <gmock/gmock.h>

using testing::IsEmpty;
using testing::UnorderedElementsAre;

namespace HistorySavedTest {

class HistorySavedTest : public HistoryFixture
{
protected:
    HistorySavedTest() { history.clear(); }

    [[nodiscard]] std::vector<const TAMBO::Compound *> modified() const
    {
        std::vector<const TAMBO::Compound *> objects;
        for (const TAMBO::UnsavedObject &unsaved : history.unsavedObjects())
            objects.push_back(unsaved.object);
        return objects;
    }

    TAMBO::Peptide &sequence = peptide("sequence", "ACDEF");
    TAMBO::Alignment &first = *TAMBO::DataMaker::makeAlignment("first", {&sequence});
    TAMBO::Alignment &second = *TAMBO::DataMaker::makeAlignment("second", {&sequence});
};

TEST_F(HistorySavedTest, NothingIsModifiedAtTheBeginning)
{
    EXPECT_FALSE(history.isModified(first));
    EXPECT_THAT(modified(), IsEmpty());
}

TEST_F(HistorySavedTest, ObjectIsModifiedByAStepThatChangesIt)
{
    first.insertGap(0, 1);
    EXPECT_TRUE(history.isModified(first));
    EXPECT_FALSE(history.isModified(second));
    EXPECT_THAT(modified(), UnorderedElementsAre(&first));
}

TEST_F(HistorySavedTest, StepsAreCountedWhoseChangesAreInNoFile)
{
    EXPECT_EQ(history.unsavedSteps(), 0u);
    first.insertGap(0, 1);
    second.insertGap(0, 1);
    first.insertGap(0, 2);
    EXPECT_EQ(history.unsavedSteps(), 3u);
    history.markSaved(first);
    EXPECT_EQ(history.unsavedSteps(), 1u);
    history.undo();
    EXPECT_EQ(history.unsavedSteps(), 2u) << "the saved file holds the second gap";
    history.redo();
    history.markSaved(second);
    EXPECT_EQ(history.unsavedSteps(), 0u);
}

TEST_F(HistorySavedTest, AStepOfAGreatManyEditsCountsOnce)
{
    {
        const Guard guard(Publisher::Update, space());
        for (int i = 0; i < 3000; ++i)
            first.insertGap(0, 1);
    }
    EXPECT_EQ(history.unsavedSteps(), 1u);
    history.markSaved(first);
    EXPECT_EQ(history.unsavedSteps(), 0u);
}

TEST_F(HistorySavedTest, StepsThatTheLimitDroppedAreUnsavedStill)
{
    first.insertGap(0, 1);
    second.insertGap(0, 1);
    history.setLimit(1);
    EXPECT_EQ(history.size(), 1u);
    EXPECT_EQ(history.unsavedSteps(), 2u);
}

TEST_F(HistorySavedTest, ARevisionIsAnotherOneAfterEachChange)
{
    std::uint64_t last = history.revision();
    const auto isAnother = [&] { return std::exchange(last, history.revision()) != last; };
    first.insertGap(0, 1);
    EXPECT_TRUE(isAnother());
    history.markSaved(first);
    EXPECT_TRUE(isAnother());
    history.undo();
    EXPECT_TRUE(isAnother());
    EXPECT_FALSE(isAnother());
}

TEST_F(HistorySavedTest, UndoToTheSavedStateMakesItClean)
{
    first.insertGap(0, 1);
    history.markSaved(first);
    EXPECT_FALSE(history.isModified(first));
    first.insertGap(0, 2);
    EXPECT_TRUE(history.isModified(first));
    history.undo();
    EXPECT_FALSE(history.isModified(first));
    history.undo();
    EXPECT_TRUE(history.isModified(first)) << "the saved file holds the gap";
    history.redo();
    EXPECT_FALSE(history.isModified(first));
}

TEST_F(HistorySavedTest, WhatWasDoneAfterAStateWasKeptIsUnsaved)
{
    first.insertGap(0, 1);
    const TAMBO::KeptState state(history, first);
    first.insertGap(0, 2);
    history.markSaved(state);
    EXPECT_TRUE(history.isModified(first));
    history.undo();
    EXPECT_FALSE(history.isModified(first));
}

TEST_F(HistorySavedTest, OfTwoKeptStatesEachIsItsOwn)
{
    const TAMBO::KeptState before(history, first);
    first.insertGap(0, 1);
    const TAMBO::KeptState after(history, first);
    history.markSaved(after);
    EXPECT_FALSE(history.isModified(first));
    history.markSaved(before);
    EXPECT_TRUE(history.isModified(first));
}

TEST_F(HistorySavedTest, AKeptStateThatNoStepLeadsBackToIsLost)
{
    first.insertGap(0, 1);
    const TAMBO::KeptState state(history, first);
    history.undo();
    first.insertGap(0, 3);
    history.markSaved(state);
    EXPECT_TRUE(history.isModified(first));
    history.undo();
    EXPECT_TRUE(history.isModified(first)) << "the saved file holds the other gap";
}

TEST_F(HistorySavedTest, AKeptStateOfAFreedObjectSavesNothing)
{
    const TAMBO::KeptState state(history, first);
    TAMBO::DataMaker::Destroy(&first);
    history.clear();
    history.markSaved(state);
    EXPECT_FALSE(history.isModified(second));
}

TEST_F(HistorySavedTest, AWrittenStateIsAcceptedAsItWasKept)
{
    const TAMBO::KeptState state(history, first);
    first.insertGap(0, 1);
    history.markWritten(state);
    history.acceptWritten(first);
    EXPECT_TRUE(history.isModified(first));
    history.undo();
    EXPECT_FALSE(history.isModified(first));
}

TEST_F(HistorySavedTest, ChangeOfAnotherObjectDoesNotMatter)
{
    history.markSaved(first);
    second.insertGap(0, 1);
    second.insertGap(0, 1);
    EXPECT_FALSE(history.isModified(first));
    EXPECT_TRUE(history.isModified(second));
}

TEST_F(HistorySavedTest, NewObjectIsUnsavedUntilItIsMarked)
{
    TAMBO::Alignment *const made = TAMBO::DataMaker::makeAlignment("made", {&sequence});
    EXPECT_TRUE(history.isModified(*made));
    history.markSaved(*made);
    EXPECT_FALSE(history.isModified(*made));
}

TEST_F(HistorySavedTest, DestroyedObjectIsNotListed)
{
    first.insertGap(0, 1);
    TAMBO::DataMaker::Destroy(&first);
    EXPECT_THAT(modified(), IsEmpty());
    history.undo();
    EXPECT_THAT(modified(), UnorderedElementsAre(&first));
}

TEST_F(HistorySavedTest, AlignmentThatLostRowsWithTheirSequenceIsModified)
{
    TAMBO::DataMaker::Destroy(&sequence);
    EXPECT_TRUE(history.isModified(first));
    EXPECT_TRUE(history.isModified(second));
}

TEST_F(HistorySavedTest, SavedStateThatWasReplacedByOtherStepsIsLost)
{
    first.insertGap(0, 1);
    history.markSaved(first);
    history.undo();
    first.insertGap(0, 3);
    EXPECT_TRUE(history.isModified(first));
    history.undo();
    EXPECT_TRUE(history.isModified(first)) << "the saved file holds the other gap";
    history.markSaved(first);
    EXPECT_FALSE(history.isModified(first));
}

TEST_F(HistorySavedTest, ReplacedStepsOfOtherObjectsDoNotLoseTheSavedState)
{
    second.insertGap(0, 1);
    history.markSaved(first);
    history.undo();
    second.insertGap(0, 3);
    EXPECT_FALSE(history.isModified(first));
    first.insertGap(0, 1);
    EXPECT_TRUE(history.isModified(first));
    history.undo();
    EXPECT_FALSE(history.isModified(first));
}

TEST_F(HistorySavedTest, ObjectChangedByADroppedStepStaysModified)
{
    first.insertGap(0, 1);
    history.setLimit(1);
    second.insertGap(0, 1);
    ASSERT_EQ(history.size(), 1U);
    EXPECT_TRUE(history.isModified(first));
    EXPECT_TRUE(history.isModified(second));
    EXPECT_THAT(modified(), UnorderedElementsAre(&first, &second));
    history.markSaved(first);
    EXPECT_FALSE(history.isModified(first));
}

TEST_F(HistorySavedTest, ObjectSavedAfterADroppedStepIsClean)
{
    first.insertGap(0, 1);
    history.markSaved(first);
    history.setLimit(1);
    second.insertGap(0, 1);
    second.insertGap(0, 1);
    ASSERT_EQ(history.size(), 1U);
    EXPECT_FALSE(history.isModified(first));
    EXPECT_TRUE(history.isModified(second));
}

TEST_F(HistorySavedTest, SelectionIsNoUnsavedWork)
{
    first.select({0, 3}, true);
    EXPECT_THAT(modified(), IsEmpty());
}

} // namespace HistorySavedTest
