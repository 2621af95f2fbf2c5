// SPDX-License-Identifier: GPL-3.0-or-later
// What counts as work that is in no file, of structures, sequences and alignments.
#include "unit/history/HistoryFixture.h"

#include "AlignmentTable.h"
#include "ChangeScope.h"
#include "Element.h"
#include "FreedObjects.h"
#include "LongWork.h"
#include "PositionEdit.h"
#include "ResidueTies.h"

#include <gmock/gmock.h>

using TAMBO::EditPart;
using TAMBO::EditParts;
using testing::ElementsAre;
using testing::IsEmpty;

namespace UnsavedWorkTest {

class UnsavedWorkTest : public HistoryFixture
{
protected:
    UnsavedWorkTest()
    {
        for (const TAMBO::Compound *object :
             std::initializer_list<const TAMBO::Compound *>{&known, &family})
            history.markSaved(*object);
    }

    // The chain of "1abc", and the sequence "loaded" as it comes out of a file.
    TAMBO::Alignment &makeFamily() const
    {
        TAMBO::AlignmentRecord record;
        record.name = "family";
        for (const auto &[name, text] :
             {std::pair("1abc_A", "AGA-G"), std::pair("loaded", "AC-DE")}) {
            TAMBO::RowRecord &row = record.rows.emplace_back();
            row.name = name;
            row.sequence.append(text);
        }
        record.rows.front().link.change() = {"1abc", "A", "1", "4", "A"};
        return *TAMBO::ObjectFactory::adopt(std::move(record));
    }
    // "1abc: numbers", in the order of the tree.
    [[nodiscard]] Texts unsaved() const
    {
        const std::vector<std::pair<EditPart, std::string>> words = {
            {EditPart::Whole, "whole"},
            {EditPart::Members, "members"},
            {EditPart::Cells, "cells"},
            {EditPart::Name, "name"},
            {EditPart::Numbers, "numbers"},
            {EditPart::Places, "places"},
            {EditPart::Elements, "elements"},
            {EditPart::RowNames, "row names"},
            {EditPart::HeaderNumbers, "header numbers"}};
        Texts texts;
        for (const TAMBO::UnsavedObject &found : history.unsavedObjects()) {
            std::string text = found.object->Name() + ':';
            for (const auto &[part, word] : words)
                text += found.parts.has(part) ? ' ' + word : "";
            texts.push_back(text);
        }
        return texts;
    }
    static TAMBO::Compound *addHelix(TAMBO::Peptide &sequence)
    {
        return TAMBO::DataMaker::makeSSE(
            &sequence, "unkH", {sequence.residue(0), sequence.residue(1), sequence.residue(2)},
            'H');
    }

    TAMBO::Structure &known = structure("1abc", {{"A", "AGAG"}, {"B", "GGG"}});
    TAMBO::Peptide &chain = *known.chain(0);
    TAMBO::Alignment &family = makeFamily();
    TAMBO::Peptide &loaded = *TAMBO::Peptide::from(family.GetSeq(1));
};

TEST_F(UnsavedWorkTest, WhatCameOutOfFilesIsNoUnsavedWork)
{
    ASSERT_EQ(TAMBO::Peptide::from(family.GetSeq(0)), &chain);
    EXPECT_THAT(unsaved(), IsEmpty());
}

TEST_F(UnsavedWorkTest, RenumberingAChainChangesItsStructureAndTheHeadersThatNameIt)
{
    chain.setNumber(0, TAMBO::SequenceNumber(100));
    EXPECT_THAT(unsaved(), ElementsAre("1abc: numbers", "family: header numbers"));
    EXPECT_TRUE(history.isModified(known));
    history.undo();
    EXPECT_THAT(unsaved(), IsEmpty());
    history.redo();
    history.markSaved(known);
    EXPECT_THAT(unsaved(), ElementsAre("family: header numbers"));
    history.markSaved(family);
    EXPECT_THAT(unsaved(), IsEmpty());
}

TEST_F(UnsavedWorkTest, AChainThatNoRowShowsChangesItsStructureOnly)
{
    known.chain(1)->setNumber(0, TAMBO::SequenceNumber(100));
    EXPECT_THAT(unsaved(), ElementsAre("1abc: numbers"));
}

TEST_F(UnsavedWorkTest, AnAddedElementChangesTheStructureAndGoesWithUndo)
{
    ASSERT_NE(addHelix(chain), nullptr);
    EXPECT_THAT(unsaved(), ElementsAre("1abc: elements"));
    history.undo();
    EXPECT_THAT(unsaved(), IsEmpty());
}

TEST_F(UnsavedWorkTest, ADeletedElementChangesTheStructure)
{
    TAMBO::Compound *const helix = addHelix(chain);
    history.markSaved(known);
    TAMBO::DataMaker::Destroy(helix);
    EXPECT_THAT(unsaved(), ElementsAre("1abc: elements"));
}

TEST_F(UnsavedWorkTest, NewCoordinatesChangeTheStructure)
{
    ASSERT_TRUE(TAMBO::moveStructures({{&known, TAMBO::Superposition({})}}));
    EXPECT_THAT(unsaved(), ElementsAre("1abc: places"));
}

TEST_F(UnsavedWorkTest, ADeletedChainChangesTheStructureAndTheRowsThatGo)
{
    TAMBO::DataMaker::Destroy(&chain);
    EXPECT_THAT(unsaved(), ElementsAre("1abc: members", "family: cells"));
}

TEST_F(UnsavedWorkTest, RenamedThingsAreUnsaved)
{
    TAMBO::renameObject(known, "2abc");
    TAMBO::renameObject(family, "relatives");
    TAMBO::renameObject(loaded, "renamed");
    EXPECT_THAT(unsaved(), ElementsAre("2abc: name", "relatives: name row names"));
}

TEST_F(UnsavedWorkTest, ARenamedStructureChangesTheNamesOfRowsThatFollowIt)
{
    TAMBO::Alignment &made = *TAMBO::DataMaker::makeAlignment("made", {&chain});
    history.markSaved(made);
    TAMBO::renameObject(known, "2abc");
    EXPECT_THAT(unsaved(), ElementsAre("2abc: name", "made: row names"));
}

TEST_F(UnsavedWorkTest, NumbersAndElementsOfAPlainSequenceAreTheAlignments)
{
    loaded.setNumber(0, TAMBO::SequenceNumber(100));
    addHelix(loaded);
    EXPECT_THAT(unsaved(), ElementsAre("family: numbers elements"));
    history.markSaved(family);
    EXPECT_THAT(unsaved(), IsEmpty());
    TAMBO::DataMaker::Destroy(&family);
    EXPECT_THAT(unsaved(), IsEmpty()) << "the sequence was saved with its alignment";
}

TEST_F(UnsavedWorkTest, AnEditedSequenceThatNoAlignmentShowsStandsForItself)
{
    TAMBO::DataMaker::Destroy(&family);
    EXPECT_THAT(unsaved(), IsEmpty());
    TAMBO::renameObject(loaded, "renamed");
    EXPECT_THAT(unsaved(), ElementsAre("renamed: name"));
}

TEST_F(UnsavedWorkTest, ColorsSelectionAndTiesAreInNoFile)
{
    family.select({0, 5}, true);
    family.SetColor(Color(0x112233));
    known.SetColor(Color(0x112233));
    loaded.retie({});
    EXPECT_THAT(unsaved(), IsEmpty());
}

TEST_F(UnsavedWorkTest, ACopyOfAllRowsIsNewWork)
{
    EXPECT_EQ(family.duplicate(2)->Name(), "family");
    EXPECT_THAT(unsaved(), ElementsAre("family: whole"));
}

TEST_F(UnsavedWorkTest, ACopyOfTheFirstRowsHasANameOfItsOwnAndIsNoWorkUntilItIsEdited)
{
    TAMBO::Alignment *const copy = family.duplicate(1);
    EXPECT_EQ(copy->Name(), "family (first row)");
    EXPECT_THAT(unsaved(), IsEmpty());
    chain.setNumber(0, TAMBO::SequenceNumber(100));
    EXPECT_THAT(unsaved(), ElementsAre("1abc: numbers", "family: header numbers"));
    copy->insertGap(0, 1);
    EXPECT_THAT(unsaved(), ElementsAre("1abc: numbers", "family: header numbers",
                                       "family (first row): cells"));
}

TEST_F(UnsavedWorkTest, CopiesOfTheFirstRowsCanBeToldApart)
{
    TAMBO::AlignmentRecord record;
    record.name = "three";
    for (const char *text : {"AC", "AD", "AE"})
        record.rows.emplace_back().sequence.append(text);
    const TAMBO::Alignment &three = *TAMBO::ObjectFactory::adopt(std::move(record));
    EXPECT_EQ(three.duplicate(2)->Name(), "three (first 2 rows)");
    EXPECT_EQ(three.duplicate(2)->Name(), "three (first 2 rows) 2");
}

TEST_F(UnsavedWorkTest, HeadersNameNumbersThatAreInNoFileUntilTheStructureIsSaved)
{
    known.chain(1)->setNumber(0, TAMBO::SequenceNumber(100));
    EXPECT_THAT(history.renumberedStructures(family), IsEmpty()) << "no row shows that chain";
    chain.setNumber(0, TAMBO::SequenceNumber(100));
    EXPECT_THAT(history.renumberedStructures(family), ElementsAre(&known));
    history.markSaved(family);
    EXPECT_THAT(history.renumberedStructures(family), ElementsAre(&known));
    history.markSaved(known);
    EXPECT_THAT(history.renumberedStructures(family), IsEmpty());
}

TEST_F(UnsavedWorkTest, WhoAsksIsToldWhatIsFreed)
{
    std::set<const TAMBO::Compound *> told;
    history.setFreeCallback(
        [&](const TAMBO::FreedObjects &freed) { told.insert(freed.begin(), freed.end()); });
    TAMBO::DataMaker::Destroy(&family);
    EXPECT_THAT(told, IsEmpty()) << "undo brings it back";
    history.setLimit(1);
    TAMBO::renameObject(loaded, "renamed");
    EXPECT_THAT(told, ElementsAre(&family));
    history.setFreeCallback({});
}

// ---- What a question costs

// Counts how often its objects are asked for.
class AskedEdit final : public TAMBO::Edit
{
public:
    AskedEdit(TAMBO::Compound &object, unsigned &asked) : m_Object(object), m_Asked(asked) { }

    std::unique_ptr<Edit> apply() override
    {
        return std::make_unique<AskedEdit>(m_Object, m_Asked);
    }
    std::size_t bytes() const override { return sizeof(*this); }
    const char *kind() const override { return "ask"; }
    TAMBO::Compound *subject() const override { return &m_Object; }
    EditPart part() const override { return EditPart::Cells; }
    void appendSubjects(std::vector<const TAMBO::Compound *> &out) const override
    {
        ++m_Asked;
        Edit::appendSubjects(out);
    }
    void store(TAMBO::EditWriter &) const override { }
    void storeInverse(TAMBO::EditWriter &) const override { }
    bool fits() const override { return true; }

private:
    TAMBO::Compound &m_Object;
    unsigned &m_Asked;
};

TEST_F(UnsavedWorkTest, OnlyStepsSinceTheSavedStateAreLookedAt)
{
    unsigned asked = 0;
    const auto change = [&] {
        const TAMBO::ChangeScope scope;
        TAMBO::recordInverse(std::make_unique<AskedEdit>(family, asked));
    };
    for (int i = 0; i < 100; ++i)
        change();
    history.markSaved(family);
    change();
    asked = 0;
    EXPECT_TRUE(history.isModified(family));
    EXPECT_EQ(asked, 2U) << "once for its parts, once for what its rows show";
    history.undo();
    asked = 0;
    EXPECT_FALSE(history.isModified(family));
    EXPECT_EQ(asked, 0U);
}

TEST_F(UnsavedWorkTest, WhatIsTakenBackIsNotLookedAtForTheListOfUnsavedObjects)
{
    unsigned asked = 0;
    for (int i = 0; i < 100; ++i) {
        const TAMBO::ChangeScope scope;
        TAMBO::recordInverse(std::make_unique<AskedEdit>(family, asked));
    }
    const std::size_t position = history.position();
    ASSERT_TRUE(history.goTo(position - 100));
    asked = 0;
    EXPECT_THAT(unsaved(), IsEmpty());
    EXPECT_EQ(asked, 0U);
    ASSERT_TRUE(history.goTo(position));
    asked = 0;
    EXPECT_THAT(unsaved(), ElementsAre("family: cells"));
    EXPECT_EQ(asked, 200U) << "once for the parts of all objects, once for what the rows show";
}

TEST_F(UnsavedWorkTest, ALabelThatIsShownAgainLooksAtNoObject)
{
    unsigned asked = 0;
    {
        const TAMBO::ChangeScope scope;
        for (int i = 0; i < 100; ++i)
            TAMBO::recordInverse(std::make_unique<AskedEdit>(i % 2 == 0 ? loaded : chain, asked));
    }
    EXPECT_EQ(history.undoLabel(), "ask in loaded and another");
    EXPECT_EQ(asked, 100U);
    TAMBO::renameObject(loaded, "renamed");
    EXPECT_EQ(history.label(history.size() - 2), "ask in renamed and another");
    EXPECT_EQ(asked, 100U);
    history.undo();
    history.undo();
    EXPECT_EQ(history.redoLabel(), "ask in loaded and another");
    EXPECT_EQ(asked, 200U);
}

// ---- Files that lack something

TEST_F(UnsavedWorkTest, WhatWasWrittenWithLossesIsSavedOnceTheyAreAccepted)
{
    family.insertGap(1, 1);
    history.markWritten(family);
    EXPECT_THAT(unsaved(), ElementsAre("family: cells"));
    history.acceptWritten(family);
    EXPECT_THAT(unsaved(), IsEmpty());
}

TEST_F(UnsavedWorkTest, AcceptingTheLossesSavesTheStateThatWasWritten)
{
    family.insertGap(1, 1);
    history.markWritten(family);
    family.insertGap(1, 2);
    history.acceptWritten(family);
    EXPECT_THAT(unsaved(), ElementsAre("family: cells"));
    history.undo();
    EXPECT_THAT(unsaved(), IsEmpty());
}

TEST_F(UnsavedWorkTest, AcceptingWhatWasReplacedByOtherStepsLeavesItUnsaved)
{
    family.insertGap(1, 1);
    history.markWritten(family);
    history.undo();
    family.insertGap(1, 3);
    history.acceptWritten(family);
    EXPECT_THAT(unsaved(), ElementsAre("family: cells"));
}

TEST_F(UnsavedWorkTest, NothingWrittenCannotBeAccepted)
{
    family.insertGap(1, 1);
    history.acceptWritten(family);
    EXPECT_THAT(unsaved(), ElementsAre("family: cells"));
}

TEST_F(UnsavedWorkTest, LookingThroughManyChangesShowsHowFarItIsAndComesToItsEnd)
{
    {
        const TAMBO::ChangeScope scope;
        for (std::size_t i = 0; i < TAMBO::LongWork::kStride; ++i)
            TAMBO::renameObject(peptide("s", "A"), "t" + std::to_string(i));
    }
    int looks = 0;
    double last = 0;
    TAMBO::modelHooks().working = [&](const char *what, double share, bool canBeGivenUp) {
        EXPECT_STREQ(what, "Looking for changes");
        EXPECT_FALSE(canBeGivenUp);
        EXPECT_GE(share, last);
        last = share;
        ++looks;
        return false;
    };
    EXPECT_GE(history.unsavedObjects().size(), TAMBO::LongWork::kStride);
    EXPECT_GE(looks, 2);
    TAMBO::modelHooks().working = nullptr;
}

// ---- The limit of the history

TEST_F(UnsavedWorkTest, WhatDroppedStepsHaveChangedStaysUnsaved)
{
    chain.setNumber(0, TAMBO::SequenceNumber(100));
    history.setLimit(1);
    TAMBO::renameObject(loaded, "renamed");
    ASSERT_EQ(history.size(), 1U);
    EXPECT_THAT(unsaved(), ElementsAre("1abc: numbers", "family: row names header numbers"));
    history.markSaved(known);
    EXPECT_THAT(unsaved(), ElementsAre("family: row names header numbers"));
}

TEST_F(UnsavedWorkTest, WhatAnObjectWasIsForgottenWhenItIsFreed)
{
    TAMBO::renameObject(loaded, "renamed");
    TAMBO::DataMaker::Destroy(&family);
    TAMBO::DataMaker::Destroy(&loaded);
    TAMBO::DataMaker::Destroy(&known);
    history.setLimit(1);
    for (int i = 0; i < 3; ++i)
        peptide("next", "ACD").setNumber(0, TAMBO::SequenceNumber(2));
    for (const TAMBO::UnsavedObject &found : history.unsavedObjects())
        EXPECT_EQ(found.object->Name(), "next");
    EXPECT_EQ(history.unsavedObjects().size(), 3U);
}

} // namespace UnsavedWorkTest
