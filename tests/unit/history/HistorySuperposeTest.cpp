// SPDX-License-Identifier: GPL-3.0-or-later
// Superposing and its way back.
#include "unit/model/SuperposeFixture.h"

#include "DataMaker.h"
#include "History.h"
#include "ObjectOperations.h"

using namespace TAMBO;

namespace HistorySuperposeTest {

class HistorySuperposeTest : public SuperposeFixture
{
protected:
    HistorySuperposeTest()
    {
        const Points points = randomFold(40, 1);
        one = &structureAt("one", points);
        two = &structureAt("two", turned(points, 2));
        three = &structureAt("three", turned(points, 3));
        alignment = &ungapped({one, two, three});
        setEditRecorder(&history);
    }
    ~HistorySuperposeTest() override { history.clear(); }

    using Bits = std::vector<std::vector<std::uint32_t>>;
    [[nodiscard]] Bits bits() const { return {bitsOf(*one), bitsOf(*two), bitsOf(*three)}; }

    Structure *one;
    Structure *two;
    Structure *three;
    Alignment *alignment;
    History history;
};

TEST_F(HistorySuperposeTest, UndoGivesBackEveryBitOfTheCoordinates)
{
    const Bits before = bits();
    superpose(*alignment, {0, 1, 2});
    const Bits after = bits();
    EXPECT_NE(before[1], after[1]);
    EXPECT_NE(before[2], after[2]);
    for (int round = 0; round < 5; ++round) {
        ASSERT_TRUE(history.undo());
        EXPECT_EQ(bits(), before);
        ASSERT_TRUE(history.redo());
        EXPECT_EQ(bits(), after);
    }
}

TEST_F(HistorySuperposeTest, ItIsOneStepThatNamesWhatMoved)
{
    superpose(*alignment, {0, 1});
    EXPECT_EQ(history.size(), 1U);
    EXPECT_EQ(history.undoLabel(), "superpose two");
    superpose(*alignment, {0, 1, 2});
    EXPECT_EQ(history.size(), 2U);
    EXPECT_EQ(history.undoLabel(), "superpose two and another");
    history.undo();
    EXPECT_EQ(history.redoLabel(), "superpose two and another");
}

TEST_F(HistorySuperposeTest, TheOldCoordinatesCountInTheLimit)
{
    superpose(*alignment, {0, 1, 2});
    const std::size_t atoms = atomsOf(*two).size() + atomsOf(*three).size();
    EXPECT_GE(history.bytes(), atoms * 3 * sizeof(float));
    EXPECT_LE(history.bytes(), atoms * 3 * sizeof(float) + 300);
    const std::size_t one = history.bytes();
    history.undo();
    EXPECT_EQ(history.bytes(), one);
    history.redo();
    history.setLimit(2 * one);
    for (int i = 0; i < 5; ++i)
        superpose(*alignment, {0, 1, 2});
    EXPECT_EQ(history.size(), 2U);
}

TEST_F(HistorySuperposeTest, OnlyStructuresThatMovedAreModified)
{
    history.markSaved(*one);
    history.markSaved(*two);
    history.markSaved(*alignment);
    superpose(*alignment, {0, 1});
    EXPECT_FALSE(history.isModified(*one));
    EXPECT_TRUE(history.isModified(*two));
    EXPECT_FALSE(history.isModified(*alignment));
    history.undo();
    EXPECT_FALSE(history.isModified(*two));
}

TEST_F(HistorySuperposeTest, ALockOnAnyOfThemKeepsThemFromGoingBack)
{
    superpose(*alignment, {0, 1, 2});
    const Bits after = bits();
    setObjectLocked(*three->chain(0), true);
    EXPECT_FALSE(history.undo());
    EXPECT_EQ(bits(), after);
    EXPECT_EQ(refused, Texts{"A"});
    setObjectLocked(*three->chain(0), false);
    EXPECT_TRUE(history.undo());
}

TEST_F(HistorySuperposeTest, EverybodyIsToldOnceThereAndBack)
{
    RecordingSubscriber window;
    superpose(*alignment, {0, 1, 2});
    EXPECT_EQ(window.calls, Texts{"update"});
    history.undo();
    EXPECT_EQ(window.calls, (Texts{"update", "update"}));
}

TEST_F(HistorySuperposeTest, AStructureThatWasDeletedMeanwhileComesBackWhereItWas)
{
    const Bits before = bits();
    superpose(*alignment, {0, 1, 2});
    const Bits after = bits();
    DataMaker::Destroy(two);
    ASSERT_TRUE(history.undo());
    EXPECT_EQ(bits(), after);
    ASSERT_TRUE(history.undo());
    EXPECT_EQ(bits(), before);
}

} // namespace HistorySuperposeTest
