// SPDX-License-Identifier: GPL-3.0-or-later
// Undo and redo of every kind of change give back exactly what was there.
#include "unit/history/HistoryFixture.h"

#include "Atom.h"
#include "Element.h"
#include "ResidueGroup.h"

#include <gmock/gmock.h>

#include <functional>

using testing::ElementsAre;
using testing::IsEmpty;

namespace HistoryEditsTest {

class HistoryEditsTest : public HistoryFixture
{
protected:
    HistoryEditsTest()
    {
        TAMBO::StructureRecord record;
        record.name = "1abc";
        record.chains.push_back(chainRecord("A", "AGAGAGA"));
        record.chains.back().residues.push_back(residueRecord("HEM", 'X', "200"));
        record.chains.back().residues.back().isAminoAcid = false;
        record.chains.push_back(chainRecord("B", "GGGG"));
        record.elements.push_back(
            {"H1", 'H', "A", TAMBO::SequenceNumber(1), TAMBO::SequenceNumber(3)});
        loaded = TAMBO::ObjectFactory::adopt(std::move(record));
        auto made = std::make_unique<TAMBO::Peptide>("tied", "MAGAW");
        made->tie(1, *loaded->chain(0), 0, 3);
        tied = &static_cast<TAMBO::Peptide &>(space().add(std::move(made)));
        alignment = TAMBO::DataMaker::makeAlignment(
            "SeqAli", {&free, loaded->chain(0), tied, &free, loaded->chain(1)});
        history.clear();
    }

    // One step; undone, redone and undone again.
    void expectReversible(const std::function<void()> &change)
    {
        const std::string before = portrait();
        const std::size_t position = history.position();
        {
            const Guard guard(Publisher::Update, space());
            change();
        }
        ASSERT_EQ(history.position(), position + 1) << "one step";
        const std::string after = portrait();
        ASSERT_NE(after, before);
        for (int round = 0; round < 2; ++round) {
            EXPECT_TRUE(history.undo());
            EXPECT_EQ(portrait(), before);
            EXPECT_TRUE(history.redo());
            EXPECT_EQ(portrait(), after);
        }
        EXPECT_TRUE(history.undo());
        EXPECT_EQ(portrait(), before);
    }

    TAMBO::Peptide &free = peptide("free", "ACDEFGHIKL");
    TAMBO::Structure *loaded = nullptr;
    TAMBO::Peptide *tied = nullptr;
    TAMBO::Alignment *alignment = nullptr;
};

TEST_F(HistoryEditsTest, Rename)
{
    expectReversible([&] { TAMBO::renameObject(*alignment, "kinases"); });
    expectReversible([&] { TAMBO::renameObject(*loaded->chain(0), "Z"); });
}

TEST_F(HistoryEditsTest, ColourOfEachKindOfObject)
{
    const std::vector<TAMBO::Compound *> objects{loaded,
                                                 loaded->chain(0),
                                                 loaded->chain(0)->object(0),
                                                 alignment,
                                                 loaded->chain(0)->object(1),
                                                 free.residue(3),
                                                 tied->residue(1),
                                                 tied->residue(0)};
    for (TAMBO::Compound *object : objects)
        expectReversible([object] { object->SetColor(Color(0xabcdefU)); });
}

TEST_F(HistoryEditsTest, ColourOfAnAtom)
{
    TAMBO::Atom &atom = *loaded->chain(0)->atom(0, 0);
    const Color before = atom.OwnColor();
    atom.SetColor(Color(0x123U));
    history.undo();
    EXPECT_EQ(atom.OwnColor(), before);
    history.redo();
    EXPECT_EQ(atom.OwnColor().rgb(), 0x123U);
}

TEST_F(HistoryEditsTest, ColourPassOverAllResiduesByLetter)
{
    expectReversible([&] {
        for (TAMBO::Peptide *sequence : {&free, loaded->chain(0), tied}) {
            for (std::size_t i = 0; i < sequence->residueCount(); ++i)
                sequence->residue(i)->SetColor(Color(unsigned(sequence->letter(i)) * 0x10101U));
        }
    });
}

TEST_F(HistoryEditsTest, ResidueColouredSeveralTimesInOneStep)
{
    expectReversible([&] {
        free.setColor(2, Color(0x1U));
        free.setColor(3, Color(0x1U));
        free.setColor(2, Color(0x2U));
        free.setColor(2, std::nullopt);
        free.setColor(2, Color(0x3U));
        free.setColor(0, Color(0x4U));
    });
}

TEST_F(HistoryEditsTest, ColourPassUponAColourPass)
{
    TAMBO::Peptide &sequence = peptide("long", std::string(2000, 'A'));
    history.clear();
    const auto pass = [&](unsigned factor, unsigned limit) {
        for (std::size_t i = 0; i < sequence.residueCount(); ++i)
            sequence.setColor(i, Color(unsigned(i) * factor % limit));
    };
    expectReversible([&] { pass(7, 200); });
    history.redo();
    expectReversible([&] { pass(13, 100000); });
    history.redo();
    expectReversible([&] { pass(5, 3); });
}

TEST_F(HistoryEditsTest, ResidueNumbers)
{
    expectReversible([&] { free.residue(3)->SetSeqId(TAMBO::SequenceNumber("60A")); });
    expectReversible([&] {
        TAMBO::SequenceNumber number(100);
        for (std::size_t i = 2; i < free.residueCount(); ++i, ++number)
            free.residue(i)->SetSeqId(number);
        tied->residue(2)->SetSeqId(TAMBO::SequenceNumber(-5));
        tied->residue(0)->SetSeqId(TAMBO::SequenceNumber("1B"));
    });
    expectReversible([&] {
        dynamic_cast<TAMBO::Group &>(*loaded->chain(0)->object(0))
            .SetSeqId(TAMBO::SequenceNumber(500));
    });
}

TEST_F(HistoryEditsTest, ElementMade)
{
    expectReversible([&] {
        TAMBO::DataMaker::makeSSE(&free, "unkE",
                                  {free.residue(1), free.residue(2), free.residue(4)}, 'E');
    });
    expectReversible([&] {
        TAMBO::DataMaker::makeSSE(
            tied, "unkT", {tied->residue(0), tied->residue(1), tied->residue(2), tied->residue(3)},
            'T');
    });
}

TEST_F(HistoryEditsTest, ObjectsMade)
{
    expectReversible([&] { peptide("new", "AAA"); });
    expectReversible([&] { TAMBO::DataMaker::makeAlignment("second", {&free, tied}); });
    expectReversible([&] { structure("2def", {{"A", "AG"}}); });
    expectReversible([&] { alignment->duplicate(2); });
}

TEST_F(HistoryEditsTest, ObjectsDestroyed)
{
    expectReversible([&] { TAMBO::DataMaker::Destroy(alignment); });
    expectReversible([&] { TAMBO::DataMaker::Destroy(&free); });
    expectReversible([&] { TAMBO::DataMaker::Destroy(tied); });
    expectReversible([&] { TAMBO::DataMaker::Destroy(loaded); });
    expectReversible([&] { TAMBO::DataMaker::Destroy(loaded->chain(0)); });
    expectReversible([&] { TAMBO::DataMaker::Destroy(loaded->chain(1)); });
    expectReversible([&] { TAMBO::DataMaker::Destroy(loaded->chain(0)->object(0)); });
    expectReversible([&] { TAMBO::DataMaker::Destroy(loaded->chain(0)->elementAt(0)); });
}

TEST_F(HistoryEditsTest, EverythingDestroyedInOneStep)
{
    expectReversible([&] {
        while (space().begin() != space().end())
            TAMBO::DataMaker::Destroy(*space().begin());
    });
    expectReversible([&] {
        while (space().begin() != space().end())
            TAMBO::DataMaker::Destroy(*(space().end() - 1));
    });
}

TEST_F(HistoryEditsTest, ObjectMadeChangedAndDestroyedInOneStep)
{
    const std::string before = portrait();
    {
        const Guard guard(Publisher::Update, space());
        TAMBO::Peptide &brief = peptide("brief", "ACD");
        TAMBO::renameObject(brief, "renamed");
        brief.setColor(0, Color(0x1U));
        brief.setNumber(0, TAMBO::SequenceNumber(5));
        TAMBO::DataMaker::Destroy(&brief);
    }
    EXPECT_EQ(portrait(), before);
    EXPECT_TRUE(history.undo());
    EXPECT_EQ(portrait(), before);
    EXPECT_TRUE(history.redo());
    EXPECT_EQ(portrait(), before);
}

TEST_F(HistoryEditsTest, AlignmentEditsMixedWithOthers)
{
    expectReversible([&] {
        alignment->insertGap(1, 2);
        TAMBO::renameObject(*alignment, "edited");
        alignment->bubbleRow(0, 3);
        free.setColor(1, Color(0x55U));
        alignment->remove({1, 3});
        TAMBO::DataMaker::Destroy(loaded->chain(0));
        alignment->insertGapCol(0, 2);
        TAMBO::Alignment *const other = TAMBO::DataMaker::makeAlignment("other", {tied, &free});
        other->removeRow(0);
        alignment->combine(*other);
        TAMBO::DataMaker::Destroy(tied);
    });
}

TEST_F(HistoryEditsTest, DestroyedObjectComesBackAtItsPlaceAndAddress)
{
    TAMBO::DataMaker::Destroy(&free);
    EXPECT_THAT(topLevelNames(), ElementsAre("1abc", "tied", "SeqAli"));
    EXPECT_EQ(alignment->height(), 3U);
    history.undo();
    EXPECT_THAT(topLevelNames(), ElementsAre("free", "1abc", "tied", "SeqAli"));
    EXPECT_EQ(*space().begin(), &free);
    ASSERT_EQ(alignment->height(), 5U);
    EXPECT_EQ(alignment->GetSeq(0), &free);
    EXPECT_EQ(alignment->GetSeq(3), &free);
}

TEST_F(HistoryEditsTest, ResidueHandlesOfADestroyedSequenceAreTheSameAfterUndo)
{
    TAMBO::Residue *const residue = free.residue(4);
    TAMBO::DataMaker::Destroy(&free);
    history.undo();
    EXPECT_EQ(free.residue(4), residue);
    EXPECT_EQ(residue->TypeCode(), 'F');
}

TEST_F(HistoryEditsTest, TiesComeBackWithTheStructure)
{
    TAMBO::DataMaker::Destroy(loaded);
    EXPECT_FALSE(tied->hasTies());
    history.undo();
    EXPECT_TRUE(tied->hasTies());
    EXPECT_EQ(tied->residue(1)->Position().x(), 1.0F);
}

TEST_F(HistoryEditsTest, SelectionIsNotTouchedByUndo)
{
    free.setColor(1, Color(0x1U));
    free.setSelected(1, true);
    history.undo();
    EXPECT_TRUE(free.isSelected(1));
}

} // namespace HistoryEditsTest
