// SPDX-License-Identifier: GPL-3.0-or-later
#include "unit/history/HistoryFixture.h"

#include <gmock/gmock.h>

using testing::ElementsAre;

namespace HistoryLimitTest {

class HistoryLimitTest : public HistoryFixture
{
protected:
    TAMBO::Peptide &object = peptide("object", std::string(10000, 'A'));
};

TEST_F(HistoryLimitTest, LimitIsAQuarterGigabyteUnlessSet)
{
    EXPECT_EQ(history.limit(), std::size_t(256) * 1024 * 1024);
}

TEST_F(HistoryLimitTest, BytesAreTheSumOfTheSteps)
{
    history.clear();
    EXPECT_EQ(history.bytes(), 0U);
    TAMBO::renameObject(object, "first");
    const std::size_t one = history.bytes();
    EXPECT_GT(one, 0U);
    TAMBO::renameObject(object, "other");
    EXPECT_EQ(history.bytes(), 2 * one);
    history.undo();
    history.undo();
    TAMBO::renameObject(object, "again");
    EXPECT_EQ(history.bytes(), one);
    history.clear();
    EXPECT_EQ(history.bytes(), 0U);
}

TEST_F(HistoryLimitTest, OldestStepsAreDroppedBeyondTheLimit)
{
    history.clear();
    TAMBO::renameObject(object, "0");
    history.setLimit(3 * history.bytes());
    for (const char *name : {"1", "2", "3", "4"})
        TAMBO::renameObject(object, name);
    EXPECT_EQ(history.size(), 3U);
    EXPECT_LE(history.bytes(), history.limit());
    while (history.undo()) {
    }
    EXPECT_EQ(object.Name(), "1");
}

TEST_F(HistoryLimitTest, LowerLimitDropsAtOnce)
{
    history.clear();
    for (const char *name : {"1", "2", "3", "4"})
        TAMBO::renameObject(object, name);
    history.setLimit(history.bytes() / 2);
    EXPECT_EQ(history.size(), 2U);
    EXPECT_EQ(history.position(), 2U);
}

TEST_F(HistoryLimitTest, NextStepsToUndoAndToRedoAreKeptWhateverTheySize)
{
    history.clear();
    for (const char *name : {"1", "2", "3", "4", "5"})
        TAMBO::renameObject(object, name);
    history.goTo(3);
    history.setLimit(1);
    EXPECT_EQ(history.size(), 2U);
    EXPECT_EQ(history.position(), 1U);
    EXPECT_TRUE(history.undo());
    EXPECT_EQ(object.Name(), "2");
    EXPECT_EQ(history.size(), 1U);
    EXPECT_TRUE(history.redo());
    EXPECT_EQ(object.Name(), "3");
}

TEST_F(HistoryLimitTest, DestroyedObjectsCountAsLongAsUndoHoldsThem)
{
    history.clear();
    TAMBO::DataMaker::Destroy(&object);
    EXPECT_GT(history.bytes(), 10000U);
    history.undo();
    EXPECT_LT(history.bytes(), 1000U);
}

TEST_F(HistoryLimitTest, ObjectOfADroppedStepIsFreedOnlyAfterTheWindowsAreTold)
{
    TAMBO::Alignment *const alignment = TAMBO::DataMaker::makeAlignment("SeqAli", {&object});
    history.clear();
    history.setLimit(1);
    RecordingSubscriber window;
    std::string name;
    // Two deletions in a row: the second pushes the first out.
    TAMBO::DataMaker::Destroy(alignment);
    TAMBO::Peptide &other = peptide("other", "AC");
    window.reaction = [&] { name = object.Name(); };
    TAMBO::DataMaker::Destroy(&object);
    EXPECT_EQ(name, "object");
    TAMBO::DataMaker::Destroy(&other);
    EXPECT_EQ(history.size(), 1U);
    EXPECT_THAT(topLevelNames(), ElementsAre());
}

TEST_F(HistoryLimitTest, ColourPassCostsAByteAResidueAtMost)
{
    history.clear();
    {
        const Guard guard(Publisher::Update, object);
        for (std::size_t i = 0; i < object.residueCount(); ++i)
            object.setColor(i, Color(unsigned(i % 20)));
    }
    EXPECT_LT(history.bytes(), 300U) << "all were coloured by type";
    history.clear();
    {
        const Guard guard(Publisher::Update, object);
        for (std::size_t i = 0; i < object.residueCount(); ++i)
            object.setColor(i, Color(unsigned(i % 7)));
    }
    EXPECT_LT(history.bytes(), 11000U);
}

TEST_F(HistoryLimitTest, ColourPassInColumnOrderIsOneEditASequence)
{
    TAMBO::Peptide &other = peptide("other", std::string(10000, 'C'));
    history.clear();
    {
        const Guard guard(Publisher::Update, space());
        for (std::size_t i = 0; i < object.residueCount(); ++i) {
            object.setColor(i, Color(unsigned(i % 20)));
            other.setColor(i, Color(unsigned(i % 20)));
        }
    }
    EXPECT_LT(history.bytes(), 500U);
}

TEST_F(HistoryLimitTest, RenumberingAWholeSequenceCostsNextToNothing)
{
    history.clear();
    {
        const Guard guard(Publisher::Update, object);
        TAMBO::SequenceNumber number(500);
        for (std::size_t i = 0; i < object.residueCount(); ++i, ++number)
            object.residue(i)->SetSeqId(number);
    }
    EXPECT_LT(history.bytes(), 300U);
}

TEST_F(HistoryLimitTest, ManySequencesOfOneFileAreOneEdit)
{
    history.clear();
    {
        const Guard guard(Publisher::Add, space());
        for (int i = 0; i < 1000; ++i)
            peptide("s" + std::to_string(i), "AC");
    }
    EXPECT_LT(history.bytes(), 1000U * sizeof(void *) * 3);
    EXPECT_EQ(history.undoLabel(), "add s0 and 999 others");
    history.undo();
    EXPECT_THAT(topLevelNames(), ElementsAre("object"));
    history.redo();
    EXPECT_EQ(topLevelNames().size(), 1001U);
    EXPECT_EQ(topLevelNames().back(), "s999");
}

TEST_F(HistoryLimitTest, GapMoveTakesAtMost200Bytes)
{
    TAMBO::Alignment *const alignment = TAMBO::DataMaker::makeAlignment("SeqAli", {&object});
    alignment->insertGap(0, 2);
    history.clear();
    alignment->moveGap(0, 2, 5000, true);
    EXPECT_EQ(history.size(), 1U);
    EXPECT_LE(history.bytes(), 200U);
    history.undo();
    EXPECT_LE(history.bytes(), 200U);
}

} // namespace HistoryLimitTest
