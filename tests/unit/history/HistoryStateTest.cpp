// SPDX-License-Identifier: GPL-3.0-or-later
// States by their numbers, which a file that holds all of one is known by.
#include "unit/history/HistoryFixture.h"

#include <cstdint>
#include <optional>

namespace HistoryStateTest {

class HistoryState : public HistoryFixture
{
protected:
    HistoryState() { history.clear(); }

    [[nodiscard]] bool isAsInState(const TAMBO::Compound &object, std::uint64_t state) const
    {
        return history.areAsInState({&object}, state).front();
    }

    TAMBO::Peptide &sequence = peptide("sequence", "ACDEF");
    TAMBO::Alignment &first = *TAMBO::DataMaker::makeAlignment("first", {&sequence});
    TAMBO::Alignment &second = *TAMBO::DataMaker::makeAlignment("second", {&sequence});
};

TEST_F(HistoryState, IsTheSameAgainAfterUndoAndRedo)
{
    const std::uint64_t before = history.state();
    first.insertGap(0, 1);
    const std::uint64_t after = history.state();
    EXPECT_NE(before, after);
    history.undo();
    EXPECT_EQ(history.state(), before);
    history.redo();
    EXPECT_EQ(history.state(), after);
}

TEST_F(HistoryState, IsNoOtherOneThatTakesThePlaceOfWhatWasUndone)
{
    first.insertGap(0, 1);
    const std::uint64_t dropped = history.state();
    history.undo();
    first.insertGap(0, 1);
    EXPECT_NE(history.state(), dropped);
    EXPECT_FALSE(history.stepsTo(dropped));
    EXPECT_FALSE(isAsInState(first, dropped));
}

TEST_F(HistoryState, IsFoundByItsSteps)
{
    const std::uint64_t before = history.state();
    const std::size_t steps = history.stepsTo(before).value_or(99);
    first.insertGap(0, 1);
    EXPECT_EQ(history.stepsTo(history.state()), steps + 1);
    EXPECT_EQ(history.stateAfter(steps), before);
    EXPECT_EQ(history.stateAfter(steps + 1), history.state());
    EXPECT_FALSE(history.stateAfter(steps + 2));
}

TEST_F(HistoryState, OutlivesStepsThatAreForgottenBeforeIt)
{
    first.insertGap(0, 1);
    first.insertGap(0, 2);
    const std::uint64_t kept = history.state();
    const std::optional<std::size_t> steps = history.stepsTo(kept);
    first.insertGap(0, 3);
    history.setLimit(0);
    history.undo();
    EXPECT_EQ(history.state(), kept);
    EXPECT_EQ(history.stepsTo(kept), steps);
    EXPECT_EQ(history.stateAfter(*steps), kept);
    EXPECT_FALSE(history.stateAfter(*steps - 1));
}

TEST_F(HistoryState, OfAClearedHistoryIsNoneThatWasBefore)
{
    const std::uint64_t before = history.state();
    history.clear();
    EXPECT_NE(history.state(), before);
    EXPECT_FALSE(history.stepsTo(before));
}

TEST_F(HistoryState, TellsWhichObjectsHaveChangedSince)
{
    const std::uint64_t saved = history.state();
    EXPECT_TRUE(isAsInState(first, saved));
    first.insertGap(0, 1);
    EXPECT_FALSE(isAsInState(first, saved));
    EXPECT_TRUE(isAsInState(second, saved));
    history.undo();
    EXPECT_TRUE(isAsInState(first, saved));
}

TEST_F(HistoryState, ASequenceIsAsItWasOnceItsNewNameIsUndone)
{
    const std::uint64_t saved = history.state();
    TAMBO::renameObject(sequence, "another");
    EXPECT_FALSE(isAsInState(sequence, saved));
    history.undo();
    EXPECT_TRUE(isAsInState(sequence, saved));
}

} // namespace HistoryStateTest
