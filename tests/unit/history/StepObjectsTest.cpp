// SPDX-License-Identifier: GPL-3.0-or-later
// Steps of undo whose bytes are in a wrong order: an object goes with the step that owns it, so no
// other step may change it where it is not.
#include "unit/history/ReplayFixture.h"

#include <gmock/gmock.h>

#include <limits>
#include <memory>
#include <utility>
#include <vector>

namespace StepObjectsTest {

using testing::HasSubstr;

class StepObjectsTest : public ReplayFixture
{
protected:
    StepObjectsTest() : ReplayFixture(1) { }

    static TAMBO::Alignment &aligned(const std::vector<TAMBO::Compound *> &sequences)
    {
        return *TAMBO::DataMaker::makeAlignment("rows", sequences);
    }

    static constexpr const char *kNotThere = "a step changes an object that is not there then";

    // What is stored with two steps in each other's place.
    Stored swapped(std::size_t first, std::size_t second) const
    {
        Stored kept = stored();
        std::swap(kept.steps[first], kept.steps[second]);
        return kept;
    }
    // The last of the steps, which are all done, is missing. There are few of them.
    Stored withoutLast() const
    {
        Stored kept = stored();
        kept.steps.pop_back();
        --kept.state[0];
        --kept.state[1];
        return kept;
    }
    void expectRefused(const Stored &kept, const std::string &cause)
    {
        endProgram();
        const TAMBO::Result<void> done = load(kept);
        ASSERT_FALSE(done);
        EXPECT_THAT(done.error().message(), HasSubstr("A step of undo cannot be read: " + cause));
        EXPECT_FALSE(history.canUndo());
    }
    void expectLoaded(const Stored &kept)
    {
        endProgram();
        const TAMBO::Result<void> done = load(kept);
        ASSERT_TRUE(done) << done.error().message();
        EXPECT_TRUE(history.goTo(0));
        EXPECT_TRUE(history.goTo(history.size()));
    }
};

// The way of it: undo takes the object out, a new change drops the step that owns it then, and the
// older step is still there.
TEST_F(StepObjectsTest, DoneStepBeforeTheOneThatAddsItsObjectIsRefused)
{
    TAMBO::Peptide &added = peptide("added", "ACDE");
    added.setColor(1, Color(3));
    expectLoaded(stored());
    expectRefused(swapped(0, 1), kNotThere);
}

TEST_F(StepObjectsTest, UndoneStepBeforeTheOneThatAddsItsObjectIsRefused)
{
    TAMBO::renameObject(peptide("added", "ACDE"), "renamed");
    ASSERT_TRUE(history.goTo(0));
    expectLoaded(stored());
    ASSERT_TRUE(history.goTo(0));
    expectRefused(swapped(0, 1), kNotThere);
}

TEST_F(StepObjectsTest, DoneStepBehindTheOneThatDeletesItsObjectIsRefused)
{
    TAMBO::Peptide &gone = peptide("gone", "ACDE");
    history.clear();
    TAMBO::renameObject(gone, "renamed");
    TAMBO::DataMaker::Destroy(&gone);
    expectLoaded(stored());
    expectRefused(swapped(0, 1), kNotThere);
}

TEST_F(StepObjectsTest, UndoneStepBehindTheOneThatDeletesItsObjectIsRefused)
{
    TAMBO::Peptide &gone = peptide("gone", "ACDE");
    history.clear();
    PluginValues::Set(&gone, "test", "key", "value");
    TAMBO::DataMaker::Destroy(&gone);
    ASSERT_TRUE(history.goTo(0));
    expectRefused(swapped(0, 1), kNotThere);
}

TEST_F(StepObjectsTest, UndoStopsAtAStepThatDoesNotFitAndNamesIt)
{
    TAMBO::Alignment &rows = aligned({&peptide("a", "ACDE"), &peptide("b", "AC")});
    history.clear();
    rows.insertGap(0, 0);
    rows.remove(0);
    const Stored wrong = swapped(0, 1);
    endProgram();
    ASSERT_TRUE(load(wrong));
    log.clear();
    const std::string before = lastingPortrait();
    EXPECT_FALSE(history.undo());
    EXPECT_EQ(lastingPortrait(), before);
    EXPECT_EQ(log,
              (std::vector<std::string>{
                  "Undo and redo stop at the step \"" + history.undoLabel() +
                  "\": what the session has of it does not fit the objects, or would take more "
                  "memory than there is."}));
}

TEST_F(StepObjectsTest, RowWhoseSequenceIsDeletedBeforeIsRefused)
{
    TAMBO::Peptide &gone = peptide("gone", "ACDE");
    TAMBO::Alignment &rows = aligned({&gone, &peptide("b", "AC")});
    history.clear();
    rows.removeRow(0);
    TAMBO::DataMaker::Destroy(&gone);
    expectLoaded(stored());
    expectRefused(swapped(0, 1), kNotThere);
}

TEST_F(StepObjectsTest, AlignmentWhoseSequenceIsDeletedBeforeIsRefused)
{
    TAMBO::Peptide &gone = peptide("gone", "ACDE");
    TAMBO::Alignment &rows = aligned({&gone});
    history.clear();
    TAMBO::DataMaker::Destroy(&rows);
    TAMBO::DataMaker::Destroy(&gone);
    expectLoaded(stored());
    expectRefused(swapped(0, 1), kNotThere);
}

TEST_F(StepObjectsTest, TieToAChainWhoseStructureIsDeletedBeforeIsRefused)
{
    TAMBO::Structure &gone = structure("gone", {{"A", "ACDE"}});
    TAMBO::Peptide &tied = peptide("tied", "ACDE");
    TAMBO::ResidueTies ties;
    ties.append({0, 4, 0, gone.chain(0)});
    tied.retie(std::move(ties));
    history.clear();
    tied.retie({});
    TAMBO::DataMaker::Destroy(&gone);
    expectLoaded(stored());
    expectRefused(swapped(0, 1), kNotThere);
}

TEST_F(StepObjectsTest, ChainOfAStructureThatIsDeletedBeforeIsRefused)
{
    TAMBO::Structure &gone = structure("gone", {{"A", "ACDE"}, {"B", "KLMN"}});
    history.clear();
    TAMBO::DataMaker::Destroy(gone.chain(0));
    TAMBO::DataMaker::Destroy(&gone);
    expectLoaded(stored());
    expectRefused(swapped(0, 1), kNotThere);
}

TEST_F(StepObjectsTest, ObjectThatIsDeletedTwiceIsRefused)
{
    TAMBO::DataMaker::Destroy(&peptide("gone", "ACDE"));
    Stored kept = stored();
    kept.steps.push_back(kept.steps.back());
    ++kept.state[0];
    ++kept.state[1];
    expectRefused(kept, "object ");
}

TEST_F(StepObjectsTest, ObjectThatIsAddedTwiceIsRefused)
{
    peptide("added", "ACDE");
    Stored kept = stored();
    kept.steps.push_back(kept.steps.back());
    ++kept.state[0];
    ++kept.state[1];
    expectRefused(kept, kNotThere);
}

TEST_F(StepObjectsTest, StepThatChangesAnObjectOfNobodyIsRefused)
{
    TAMBO::Peptide &gone = peptide("gone", "ACDE");
    history.clear();
    TAMBO::renameObject(gone, "renamed");
    TAMBO::DataMaker::Destroy(&gone);
    expectRefused(withoutLast(), kNotThere);
}

TEST_F(StepObjectsTest, MarkOfAnObjectOfNobodyIsRefused)
{
    TAMBO::Peptide &gone = peptide("gone", "ACDE");
    history.clear();
    history.markSaved(gone);
    TAMBO::DataMaker::Destroy(&gone);
    expectLoaded(stored());
    expectRefused(withoutLast(), "a mark is of an object that belongs to nothing");
}

TEST_F(StepObjectsTest, StepMayChangeWhatItDeletesItself)
{
    TAMBO::Peptide &gone = peptide("gone", "ACDE");
    history.clear();
    const Stored beginning = stored();
    keepJournal();
    {
        const Guard guard(Publisher::Update, space());
        TAMBO::DataMaker::Destroy(&gone);
        TAMBO::renameObject(gone, "renamed");
    }
    TAMBO::setStepJournal(nullptr);
    ASSERT_EQ(history.size(), 1U);
    expectLoaded(stored());
    endProgram();
    ASSERT_TRUE(load(beginning));
    const TAMBO::Result<void> done = replay(records);
    ASSERT_TRUE(done) << done.error().message();
    EXPECT_TRUE(history.goTo(0));
    EXPECT_EQ(topLevelNames(), Texts{"gone"});
}

// ---- Records

class RecordObjectsTest : public StepObjectsTest
{
protected:
    // Of all that is done behind the state.
    void expectRecordRefused(const Stored &state, const std::string &record,
                             const std::string &cause)
    {
        endProgram();
        ASSERT_TRUE(load(state));
        const std::string before = lastingPortrait();
        const std::size_t steps = history.size();
        const TAMBO::Result<void> done = replay({record});
        ASSERT_FALSE(done);
        EXPECT_THAT(done.error().message(), HasSubstr(cause));
        EXPECT_EQ(lastingPortrait(), before);
        EXPECT_EQ(history.size(), steps);
        EXPECT_TRUE(history.goTo(0));
        EXPECT_TRUE(history.goTo(history.size()));
    }
};

TEST_F(RecordObjectsTest, ChangeOfAnObjectThatAnEarlierStepHasDeletedIsRefused)
{
    TAMBO::Peptide &gone = peptide("gone", "ACDE");
    history.clear();
    TAMBO::DataMaker::Destroy(&gone);
    const Stored deleted = stored();
    ASSERT_TRUE(history.undo());
    keepJournal();
    gone.setColor(1, Color(3));
    expectRecordRefused(deleted, records.back(), "it changes an object that is not there then");
}

TEST_F(RecordObjectsTest, ChangeOfAnObjectThatIsNotAddedYetIsRefused)
{
    TAMBO::Peptide &added = peptide("added", "ACDE");
    ASSERT_TRUE(history.undo());
    const Stored undone = stored();
    ASSERT_TRUE(history.redo());
    keepJournal();
    TAMBO::renameObject(added, "renamed");
    expectRecordRefused(undone, records.back(), "it changes an object that is not there then");
}

TEST_F(RecordObjectsTest, ObjectThatComesIntoADeletedOneIsRefused)
{
    TAMBO::Structure &gone = structure("gone", {{"A", "ACDE"}});
    history.clear();
    TAMBO::DataMaker::Destroy(&gone);
    const Stored deleted = stored();
    ASSERT_TRUE(history.undo());
    keepJournal();
    gone.add(std::make_unique<TAMBO::Peptide>("B", "KLMN"));
    expectRecordRefused(deleted, records.back(), "it changes an object that is not there then");
}

// It may refer to them, and nobody would own them.
TEST_F(RecordObjectsTest, ObjectThatBringsOthersAlongIsRefused)
{
    const Stored nothing = stored();
    TAMBO::Peptide &sequence = peptide("sequence", "ACDE");
    TAMBO::Alignment &rows = aligned({&sequence});
    TAMBO::ObjectStore both(
        {TAMBO::StoredObject::from(&sequence), TAMBO::StoredObject::from(&rows)});
    TAMBO::ObjectWriter parts;
    while (both.writeNext(parts, std::numeric_limits<std::size_t>::max()))
        ;
    TAMBO::ObjectEditWriter edit(TAMBO::ObjectContents::Elsewhere);
    edit.tag(TAMBO::EditTag::Objects);
    edit.reference(space());
    edit.text("add");
    edit.number(0);
    const std::size_t first = 0;
    edit.ascendingNumbers({&first, 1});
    edit.flag(true);
    edit.content(rows);
    edit.text(parts.bytes());
    TAMBO::ValueWriter record;
    record.character(static_cast<char>(TAMBO::StepRecords::Kind::Step));
    record.text("");
    record.number(1);
    record.number(1);
    record.text(edit.bytes());
    expectRecordRefused(nothing, record.bytes(), "brings others along");
}

// ---- Marks

TEST_F(StepObjectsTest, MarkOfAChainGoesWithItsStructure)
{
    const std::string nothing = [&] {
        peptide("first", "ACDE");
        return stored().state;
    }();
    history.clear();
    TAMBO::Structure &dropped = structure("dropped", {{"A", "ACDE"}});
    history.markSaved(*dropped.chain(0));
    ASSERT_TRUE(history.undo());
    peptide("other", "ACDE");
    EXPECT_EQ(stored().state, nothing);
}

} // namespace StepObjectsTest
