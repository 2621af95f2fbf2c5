// SPDX-License-Identifier: GPL-3.0-or-later
// Each kind of edit, and its inverse, does as bytes what it does itself.
#include "unit/history/ReplayFixture.h"

#include "RowLayouts.h"
#include "StepReplay.h"

#include <functional>
#include <map>
#include <numeric>
#include <set>

namespace EditKindsTest {

using TAMBO::EditTag;

class EditKindsTest : public ReplayFixture
{
protected:
    EditKindsTest() : ReplayFixture(7)
    {
        structure("model", {{"A", "ACDEFG"}, {"B", "KLMN"}});
        complex("complex");
        annotated("family");
        annotated("other");
        // Without annotation its columns go alone.
        TAMBO::DataMaker::makeAlignment("plain", {&peptide("p", "ACDEFG"), &peptide("q", "KLMN")});
        history.clear();
        m_Beginning = stored();
    }

    TAMBO::Alignment &family() { return *all<TAMBO::Alignment>().front(); }
    TAMBO::Alignment &plain() { return *all<TAMBO::Alignment>().back(); }
    TAMBO::Structure &model() { return *all<TAMBO::Structure>().front(); }
    TAMBO::Structure &withLigand() { return *all<TAMBO::Structure>().back(); }
    TAMBO::Peptide &sequence() { return *all<TAMBO::Peptide>().front(); }
    TAMBO::AlignmentTable::Column gapOf(std::size_t row)
    {
        unsigned long column = 0;
        while (family().table().row(row).cells().isResidue(column))
            ++column;
        return column;
    }

    // What the change does, as bytes does the same, and so does taking it back and repeating it.
    void check(const std::string &name, const std::function<void()> &change);

    // Of all edits that have gone by.
    std::set<EditTag> m_Seen;

private:
    void noteTags(const std::string &step);
    static std::string changes(const Stored &kept) { return kept.steps.front(); }

    Stored m_Beginning;
};

// Of the first edit in a stored step.
void EditKindsTest::noteTags(const std::string &step)
{
    TAMBO::ValueReader in(step);
    static_cast<void>(in.flag());
    static_cast<void>(in.text());
    static_cast<void>(in.number());
    static_cast<void>(in.number());
    m_Seen.insert(static_cast<EditTag>(in.number()));
}

void EditKindsTest::check(const std::string &name, const std::function<void()> &change)
{
    SCOPED_TRACE(name);
    endProgram();
    ASSERT_TRUE(load(m_Beginning));
    const std::string before = lastingPortrait();
    keepJournal();
    {
        const Guard guard(Publisher::Update, space());
        change();
    }
    TAMBO::setStepJournal(nullptr);
    ASSERT_EQ(history.size(), 1U) << testing::PrintToString(log);
    const std::string after = lastingPortrait();
    ASSERT_NE(after, before);
    const Stored done = stored();
    ASSERT_TRUE(history.undo());
    ASSERT_EQ(lastingPortrait(), before);
    const Stored undone = stored();
    noteTags(changes(done));
    noteTags(changes(undone));
    const auto expectWay = [&] {
        ASSERT_TRUE(history.goTo(0));
        EXPECT_EQ(lastingPortrait(), before);
        ASSERT_TRUE(history.goTo(1));
        EXPECT_EQ(lastingPortrait(), after);
        ASSERT_TRUE(history.goTo(0));
        EXPECT_EQ(lastingPortrait(), before);
    };
    const std::vector<std::string> kept = records;
    endProgram();
    ASSERT_TRUE(load(m_Beginning));
    const TAMBO::Result<void> replayed = replay(kept);
    ASSERT_TRUE(replayed) << replayed.error().message();
    EXPECT_EQ(lastingPortrait(), after);
    ASSERT_NO_FATAL_FAILURE(expectWay());
    for (const Stored *const one : {&done, &undone}) {
        endProgram();
        const TAMBO::Result<void> loaded = load(*one);
        ASSERT_TRUE(loaded) << loaded.error().message();
        EXPECT_EQ(lastingPortrait(), one == &done ? after : before);
        ASSERT_NO_FATAL_FAILURE(expectWay());
    }
}

TEST_F(EditKindsTest, EachDoesAsBytesWhatItDoesItself)
{
    check("gap", [&] { family().insertGap(0, 1); });
    check("gaps that widen", [&] {
        for (int i = 0; i < 40; ++i)
            family().insertGap(1, 0);
    });
    check("moved gap with a break", [&] { family().moveGap(0, gapOf(0), 12, false); });
    check("order of rows", [&] {
        std::vector<unsigned long> order(family().height());
        std::iota(order.rbegin(), order.rend(), 0);
        family().reorderRows(order);
    });
    check("row", [&] { family().bubbleRow(0, 1); });
    check("more rows", [&] { family().addRows({model().chain(0), &sequence()}); });
    check("one row less", [&] { family().removeRow(1); });
    check("more columns", [&] { family().insertGapCol(3, 2); });
    check("less columns", [&] { family().remove({2, 7}); });
    check("less columns in several places", [&] {
        family().removeColumns({true, false, true, true, false, false, true, false, true});
    });
    check("less columns of a plain one in several places", [&] {
        plain().removeColumns({false, true, false, true});
    });
    check("several gaps", [&] { family().insertGaps(0, 1, 30); });
    check("moved gaps", [&] { family().moveGaps(0, gapOf(0), 1, 12); });
    check("less rows", [&] { family().removeRows({true, true}); });
    check("a part of an alignment", [&] {
        static_cast<void>(
            family().duplicate({true, false}, {true, false, true, true, false, true}, "part"));
    });
    check("realigned columns", [&] { realign(family()); });
    check("less columns of a plain one", [&] { plain().remove({2, 5}); });
    check("realigned columns of a plain one", [&] {
        const auto cells = TAMBO::OccupancyRow::filled(2);
        auto shifted = cells;
        shifted.insertGaps(0, 2);
        TAMBO::replaceColumns(plain().table(), {1, 3}, {cells, shifted}, 5);
    });
    check("placed residues", [&] {
        EXPECT_TRUE(TAMBO::RowLayouts::place(plain(), {1, 3}, 5, {{0b11}, {0b1100}}));
    });
    check("what is said of an alignment", [&] {
        TAMBO::annotate(family().table(), {{"ID", "other"}, {"CC", "a remark"}},
                        {{"new", std::string(family().width(), 'x')}}, "annotate columns");
    });
    check("nothing is said of an alignment any more",
          [&] { TAMBO::annotate(family().table(), {}, {}, "annotate columns"); });
    check("something is said of a plain one, of which a column goes", [&] {
        TAMBO::annotate(plain().table(), {}, {{"new", std::string(plain().width(), 'x')}},
                        "annotate columns");
        plain().insertGapCol(1, 2);
        plain().remove({2, 5});
    });
    check("combined alignments", [&] { family().combine(*all<TAMBO::Alignment>()[1]); });
    check("a sequence", [&] { peptide("new", "ACDE"); });
    check("a structure", [&] { complex("new"); });
    check("an alignment", [&] { annotated("new"); });
    check("no structure", [&] { TAMBO::DataMaker::Destroy(&model()); });
    check("no ligand", [&] { TAMBO::DataMaker::Destroy(withLigand().chain(0)->object(0)); });
    check("a helix", [&] {
        TAMBO::DataMaker::makeSSE(model().chain(0), "helix",
                                  {model().chain(0)->residue(1), model().chain(0)->residue(2),
                                   model().chain(0)->residue(3)},
                                  'H');
    });
    check("name", [&] { TAMBO::renameObject(family(), "renamed"); });
    check("color", [&] { family().SetColor(Color(0x123456)); });
    check("color of an atom", [&] { model().chain(0)->atom(0, 1)->SetColor(Color(0x123456)); });
    check("color of a ligand",
          [&] { withLigand().chain(0)->object(0)->SetColor(Color::fromArgb(0x123456)); });
    check("value", [&] { PluginValues::Set(&family(), "test", "key", "value"); });
    check("colors of some residues", [&] {
        sequence().residue(1)->SetColor(Color(1));
        sequence().residue(2)->SetColor(Color(2));
        sequence().residue(1)->SetColor(Color(3));
    });
    check("colors of all residues", [&] {
        TAMBO::ResidueSelection all(sequence().residueCount());
        all.set(0, sequence().residueCount(), true);
        sequence().setColors(all, TAMBO::LetterColors(Color(5)));
    });
    check("numbers", [&] { sequence().setNumber(1, TAMBO::SequenceNumber(-7, 'B')); });
    check("ties", [&] {
        TAMBO::ResidueTies ties;
        ties.append({0, 2, 1, model().chain(1)});
        sequence().retie(std::move(ties));
    });
    check("places", [&] {
        const TAMBO::Superposition motion({{{0, 0, 0}, {1, 2, 3}}, {{1, 0, 0}, {1, 3, 3}}});
        TAMBO::moveStructures({{&model(), motion}});
    });
    check("places of waters", [&] {
        const TAMBO::Superposition motion({{{0, 0, 0}, {1, 2, 3}}, {{1, 0, 0}, {1, 3, 3}}});
        TAMBO::moveStructures({{&withLigand(), motion}});
    });
    check("number of a ligand", [&] {
        auto &ligand = dynamic_cast<TAMBO::ResidueGroup &>(*withLigand().chain(0)->object(0));
        ligand.SetSeqId(TAMBO::SequenceNumber(12, 'A'));
    });
    // All there are. Whoever adds a kind shows it here.
    constexpr unsigned kLast = unsigned(EditTag::Annotation);
    for (unsigned tag = 1; tag <= kLast; ++tag)
        EXPECT_TRUE(m_Seen.contains(static_cast<EditTag>(tag))) << tag;
    EXPECT_EQ(m_Seen.size(), kLast);
}

TEST_F(EditKindsTest, RangeThatWasSetBetweenTwoStepsMovesWithTheColumnsAgain)
{
    const Stored beginning = stored();
    keepJournal();
    family().range({2, 9});
    family().insertGapCol(4, 2);
    const TAMBO::Alignment::Range after = family().range();
    TAMBO::setStepJournal(nullptr);
    endProgram();
    ASSERT_TRUE(load(beginning));
    ASSERT_TRUE(replay(records));
    EXPECT_EQ(family().range(), after);
    ASSERT_TRUE(history.undo());
    EXPECT_EQ(family().range(), TAMBO::Alignment::Range(2, 9));
}

TEST_F(EditKindsTest, LockThatCameLaterDoesNotStopWhatWasDoneBefore)
{
    const Stored beginning = stored();
    keepJournal();
    family().insertGap(0, 1);
    ASSERT_TRUE(history.undo());
    const std::string portrait = lastingPortrait();
    TAMBO::setStepJournal(nullptr);
    endProgram();
    ASSERT_TRUE(load(beginning));
    TAMBO::setObjectLocked(family(), true);
    ASSERT_TRUE(replay(records));
    EXPECT_EQ(lastingPortrait(), portrait);
    EXPECT_EQ(history.position(), 0U);
    EXPECT_EQ(history.size(), 1U);
}

TEST_F(EditKindsTest, StepWithNameHasItAgain)
{
    const Stored beginning = stored();
    keepJournal();
    {
        const Guard guard(Publisher::Update, space());
        const StepName named("tidy up");
        family().insertGap(0, 1);
    }
    const std::string label = history.label(0);
    TAMBO::setStepJournal(nullptr);
    endProgram();
    ASSERT_TRUE(load(beginning));
    ASSERT_TRUE(replay(records));
    EXPECT_EQ(history.label(0), label);
    EXPECT_EQ(label.find("tidy up"), 0U);
}

TEST_F(EditKindsTest, WithoutARecorderNothingIsTold)
{
    keepJournal();
    TAMBO::setEditRecorder(nullptr);
    family().insertGap(0, 1);
    TAMBO::setEditRecorder(&history);
    EXPECT_TRUE(records.empty());
    family().insertGap(0, 1);
    EXPECT_EQ(records.size(), 1U);
}

// The middle edit of the step fails: what was done of it is taken back.
TEST_F(EditKindsTest, StepThatFailsHalfwayIsTakenBack)
{
    const Stored beginning = stored();
    keepJournal();
    {
        const Guard guard(Publisher::Update, space());
        peptide("new", "ACDE");
        family().insertGap(0, 1);
        TAMBO::renameObject(family(), "renamed");
    }
    const std::string record = records.front();
    std::string damaged = record;
    damaged.replace(damaged.find("insert gap") - 2, 1, "\x7f");
    TAMBO::setStepJournal(nullptr);
    endProgram();
    ASSERT_TRUE(load(beginning));
    const std::string before = lastingPortrait();
    EXPECT_FALSE(replay({damaged}));
    EXPECT_EQ(lastingPortrait(), before);
    EXPECT_EQ(history.size(), 0U);
    EXPECT_TRUE(replay({record}));
    EXPECT_EQ(history.size(), 1U);
}

} // namespace EditKindsTest
