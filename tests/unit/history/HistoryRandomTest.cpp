// SPDX-License-Identifier: GPL-3.0-or-later
// Whatever was done in whatever order: each state comes back exactly when undo and redo pass by it.
#include "unit/history/RandomChanges.h"
#include "unit/history/UnsavedModel.h"

#include "DestroyedObjects.h"

#include <functional>
#include <map>

namespace HistoryRandomTest {

class HistoryRandomTest : public RandomChanges, public testing::WithParamInterface<unsigned>
{
protected:
    HistoryRandomTest() : RandomChanges(GetParam()) { }

    // Commands of some changes each, and now and then to any state, which is as it was.
    void walk(int rounds, const std::function<void()> &afterChange);
    void expectEveryState();

    // By the position in the history.
    std::map<std::size_t, std::string> states;
};

void HistoryRandomTest::walk(int rounds, const std::function<void()> &afterChange)
{
    states = {{0, portrait()}};
    for (int round = 0; round < rounds; ++round) {
        if (below(4) == 0) {
            const std::size_t position = below(history.size() + 1);
            ASSERT_TRUE(history.goTo(position));
            ASSERT_EQ(portrait(), states[position]) << "round " << round;
            continue;
        }
        {
            const Guard guard(Publisher::Update, space());
            for (unsigned i = 1 + below(4); i > 0; --i) {
                changeSomething();
                afterChange();
            }
        }
        states[history.position()] = portrait();
    }
}

void HistoryRandomTest::expectEveryState()
{
    ASSERT_TRUE(history.goTo(0));
    for (std::size_t i = 0; i <= history.size(); ++i) {
        ASSERT_TRUE(history.goTo(i));
        ASSERT_EQ(portrait(), states[i]) << "step " << i << ": " << history.undoLabel();
    }
}

TEST_P(HistoryRandomTest, WhatArrivesDuringCommandsIsAStepOfItsOwn)
{
    int arrivals = 0;
    ASSERT_NO_FATAL_FAILURE(walk(200, [&] {
        if (below(3) != 0)
            return;
        const std::size_t before = history.position();
        {
            const TAMBO::ArrivalScope arrival;
            states[history.position()] = portrait();
            bringSomething();
            states[history.position() + 1] = portrait();
        }
        ASSERT_GT(history.position(), before);
        ++arrivals;
    }));
    EXPECT_GT(arrivals, 20);
    expectEveryState();
}

TEST_P(HistoryRandomTest, EveryStateComesBackWhenUndoAndRedoPassByIt)
{
    ASSERT_NO_FATAL_FAILURE(walk(400, [] {}));
    expectEveryState();
}

TEST_P(HistoryRandomTest, SmallLimitDropsStepsAndNeverHarmsTheOthers)
{
    history.setLimit(20000);
    std::vector<std::string> undone;
    for (int round = 0; round < 300; ++round) {
        {
            const Guard guard(Publisher::Update, space());
            changeSomething();
        }
        if (below(10) == 0) {
            const std::string now = portrait();
            const std::size_t position = history.position();
            ASSERT_TRUE(history.goTo(below(position + 1)));
            // Memory may have been short on the way, but what is left is consistent.
            if (history.size() == position) {
                ASSERT_TRUE(history.goTo(position));
                ASSERT_EQ(portrait(), now) << "round " << round;
            }
        }
    }
    EXPECT_LE(history.size(), 300U);
}

// Whatever was saved and dropped on the way.
TEST_P(HistoryRandomTest, WhatIsUnsavedIsWhatTheSimplestWayFinds)
{
    UnsavedModel model(history);
    history.setLimit(below(2) == 0 ? 20000 : TAMBO::History::kDefaultLimit);
    std::size_t found = 0;
    for (int round = 0; round < 300; ++round) {
        const unsigned kind = below(8);
        TAMBO::Compound *const object = space().objectCount() == 0
                                            ? nullptr
                                            : *(space().begin() + below(space().objectCount()));
        if (kind == 0) {
            ASSERT_TRUE(model.goTo(below(history.size() + 1)));
        } else if (kind == 1 && object != nullptr) {
            model.markSaved(*object);
        } else if (kind == 2 && object != nullptr) {
            model.markWritten(*object);
        } else if (kind == 3 && object != nullptr) {
            model.acceptWritten(*object);
        } else {
            const Guard guard(Publisher::Update, space());
            for (unsigned i = 1 + below(3); i > 0; --i)
                changeSomething();
        }
        UnsavedModel::Unsaved unsaved;
        for (const TAMBO::UnsavedObject &one : history.unsavedObjects())
            unsaved.emplace_back(one.object, one.parts);
        ASSERT_EQ(unsaved, model.unsaved()) << "round " << round;
        for (const TAMBO::Compound *one : space())
            ASSERT_EQ(history.unsavedParts(*one), model.partsOf(*one)) << "round " << round;
        found += unsaved.size();
    }
    EXPECT_GT(found, 300U);
    history.clear();
}

// Sequences that rows show, structures that they are tied to, alignments, in one step.
TEST_P(HistoryRandomTest, SeveralObjectsGoAndComeBackTogether)
{
    for (int round = 0; round < 60; ++round) {
        for (int i = 0; i < 8; ++i)
            changeSomething();
        const std::string before = portrait();
        std::vector<TAMBO::Compound *> going;
        std::vector<TAMBO::Compound *> staying;
        for (TAMBO::Compound *object : space())
            (below(3) == 0 ? going : staying).push_back(object);
        const std::size_t position = history.position();
        TAMBO::destroyObjects(going);
        ASSERT_LE(history.position(), position + 1);
        ASSERT_EQ(std::vector<TAMBO::Compound *>(space().begin(), space().end()), staying);
        for (const TAMBO::Compound *object : going) {
            const TAMBO::Peptide *const gone =
                TAMBO::Peptide::from(const_cast<TAMBO::Compound *>(object));
            for (const TAMBO::Alignment *alignment : all<TAMBO::Alignment>())
                ASSERT_FALSE(gone != nullptr && alignment->table().holds(*gone));
        }
        const std::string after = portrait();
        ASSERT_TRUE(history.goTo(position));
        ASSERT_EQ(portrait(), before) << "round " << round;
        while (history.canRedo())
            ASSERT_TRUE(history.redo());
        ASSERT_EQ(portrait(), after) << "round " << round;
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, HistoryRandomTest, testing::Range(1U, 13U));

} // namespace HistoryRandomTest
