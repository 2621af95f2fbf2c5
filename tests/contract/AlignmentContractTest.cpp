// SPDX-License-Identifier: GPL-3.0-or-later
// What plug-ins rely on of an alignment: how it is read, what each operation does, that a change is
// published and undone as one, and that nothing ever throws or reports.
#include "Alignment.h"
#include "DataAdder.h"
#include "DataMaker.h"
#include "DataPoint.h"
#include "Space.h"

#include "ObjectOperations.h"
#include "unit/history/HistoryFixture.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <map>
#include <type_traits>

using TAMBO::Alignment;
using TAMBO::Compound;
using TAMBO::DataMaker;
using TAMBO::Peptide;
using TAMBO::Space;
using testing::ElementsAre;
using testing::IsEmpty;

namespace AlignmentContractTest {

using Cell = std::pair<unsigned long, unsigned long>;

class AlignmentContract : public HistoryFixture
{
protected:
    AlignmentContract()
    {
        // "AC-D", "A-CD"
        alignment->insertGap(0, 2);
        alignment->insertGap(1, 1);
        history.clear();
        window.calls.clear();
        log.clear();
    }

    [[nodiscard]] Texts rows() const { return rowsOf(*alignment); }
    static Texts rowsOf(const Alignment &shown)
    {
        Texts texts;
        for (unsigned long row = 0; row < shown.height(); ++row)
            texts.push_back(shown.GetSequence(row, false));
        return texts;
    }
    static bool isTopLevel(const Compound *object)
    {
        return std::find(Space::instance()->begin(), Space::instance()->end(), object) !=
               Space::instance()->end();
    }

    Peptide &first = peptide("first", "ACD");
    Peptide &second = peptide("second", "ACD");
    Peptide &third = peptide("third", "MKLVI");
    Alignment *alignment = DataMaker::makeAlignment("SeqAli", {&first, &second});
    RecordingSubscriber window;
};

// ---- Shape of the interface

static_assert(std::is_base_of_v<Compound, Alignment>);
static_assert(std::is_same_v<Alignment::Range, std::pair<unsigned long, unsigned long>>);
static_assert(
    std::is_same_v<decltype(std::declval<const Alignment &>().getItem(0UL, 0UL)), Compound *>);
static_assert(std::is_same_v<decltype(std::declval<const Alignment &>().getCol(0UL)),
                             std::vector<Compound *>>);
static_assert(std::is_same_v<decltype(std::declval<const Alignment &>().GetSeq(0UL)), Compound *>);
static_assert(
    std::is_same_v<decltype(std::declval<const Alignment &>().GetSeqName(0UL)), std::string>);
static_assert(std::is_same_v<decltype(std::declval<const Alignment &>().GetSequence(0UL, false)),
                             std::string>);
static_assert(
    std::is_same_v<decltype(std::declval<const Alignment &>().duplicate(0UL)), Alignment *>);
// Operations report nothing.
static_assert(std::is_void_v<decltype(std::declval<Alignment &>().range(Alignment::Range()))>);
static_assert(std::is_void_v<decltype(std::declval<Alignment &>().rangeAll())>);
static_assert(
    std::is_void_v<decltype(std::declval<Alignment &>().select(Alignment::Range(), true))>);
static_assert(std::is_void_v<decltype(std::declval<Alignment &>().remove(Alignment::Range()))>);
static_assert(std::is_void_v<decltype(std::declval<Alignment &>().remove(0UL))>);
static_assert(std::is_void_v<decltype(std::declval<Alignment &>().removeRow(0UL))>);
static_assert(std::is_void_v<decltype(std::declval<Alignment &>().insertGapCol(0UL, 1UL))>);
static_assert(std::is_void_v<decltype(std::declval<Alignment &>().insertGap(0UL, 0UL))>);
static_assert(std::is_void_v<decltype(std::declval<Alignment &>().moveGap(0UL, 0UL, 0UL, true))>);
static_assert(std::is_void_v<decltype(std::declval<Alignment &>().bubbleRow(0UL, 0UL))>);
static_assert(std::is_void_v<
              decltype(std::declval<Alignment &>().reorderRows(std::vector<unsigned long>()))>);
static_assert(
    std::is_void_v<decltype(std::declval<Alignment &>().addRows(std::vector<Compound *>()))>);
static_assert(std::is_void_v<
              decltype(std::declval<Alignment &>().combine(std::declval<const Alignment &>()))>);

// ---- Reading

TEST_F(AlignmentContract, NewAlignmentHasOneUngappedRowPerSequenceInOrder)
{
    const Alignment *const made = DataMaker::makeAlignment("SeqAli", {&third, &first});
    EXPECT_EQ(made->Name(), "SeqAli");
    EXPECT_THAT(rowsOf(*made), ElementsAre("MKLVI", "ACD--"));
    EXPECT_EQ(made->GetSeq(0), &third);
    EXPECT_EQ(made->GetSeq(1), &first);
    EXPECT_TRUE(isTopLevel(made));
    EXPECT_NE(made, alignment) << "several alignments may have one name";
}

TEST_F(AlignmentContract, CellsAreReadByRowAndColumn)
{
    EXPECT_EQ(alignment->width(), 4U);
    EXPECT_EQ(alignment->height(), 2U);
    EXPECT_EQ(alignment->getItem(0, 1), first.residue(1));
    EXPECT_EQ(alignment->getItem(1, 2), second.residue(1));
    EXPECT_EQ(alignment->getItem(0, 2), nullptr) << "a gap";
    EXPECT_EQ(alignment->getItem(0, 1)->TypeCode(), 'C');
}

TEST_F(AlignmentContract, ResiduesOfARowAreCountedAndFound)
{
    EXPECT_EQ(alignment->residueCount(0, 0), 0U);
    EXPECT_EQ(alignment->residueCount(0, 2), 2U);
    EXPECT_EQ(alignment->residueCount(0, 3), 2U);
    EXPECT_EQ(alignment->residueCount(0, 4), 3U);
    EXPECT_EQ(alignment->residueCount(0, 100), 3U);
    EXPECT_EQ(alignment->residueCount(2, 4), 0U) << "there is no such row";
    EXPECT_EQ(alignment->columnOfResidue(0, 1), 1U);
    EXPECT_EQ(alignment->columnOfResidue(0, 2), 3U);
    EXPECT_EQ(alignment->columnOfResidue(0, 3), alignment->width());
    EXPECT_EQ(alignment->columnOfResidue(2, 0), alignment->width());
}

TEST_F(AlignmentContract, ColumnStoreAgreesWithTheCells)
{
    const auto columns = alignment->columns();
    ASSERT_EQ(columns.size(), alignment->width());
    for (unsigned long col = 0; col < alignment->width(); ++col) {
        EXPECT_EQ(alignment->getCol(col), columns[col]);
        ASSERT_EQ(columns[col].size(), alignment->height());
        for (unsigned long row = 0; row < alignment->height(); ++row)
            EXPECT_EQ(columns[col][row], alignment->getItem(row, col));
    }
}

TEST_F(AlignmentContract, RowTextHasOneCharacterPerColumn)
{
    EXPECT_EQ(alignment->GetSequence(0, false), "AC-D");
    EXPECT_EQ(alignment->GetSequence(1, false), "A-CD");
    EXPECT_EQ(alignment->GetSeqName(1), "second");
}

TEST_F(AlignmentContract, AlignmentWithoutColumnsHasWidthZeroAndNoRows)
{
    alignment->remove(Alignment::Range(0, 4));
    EXPECT_EQ(alignment->width(), 0U);
    EXPECT_EQ(alignment->height(), 0U);
    EXPECT_EQ(alignment->getItem(0, 0), nullptr);
    EXPECT_TRUE(alignment->getCol(0).empty());
}

TEST_F(AlignmentContract, BeyondTheBoundsThereIsNothing)
{
    for (const auto &[row, col] : {Cell(2, 0), Cell(0, 4), Cell(~0UL, ~0UL)}) {
        EXPECT_EQ(alignment->getItem(row, col), nullptr);
        EXPECT_EQ(alignment->letterAt(row, col), '\0');
    }
    EXPECT_TRUE(alignment->getCol(4).empty());
    EXPECT_EQ(alignment->GetSeq(2), nullptr);
    EXPECT_EQ(alignment->GetSeqName(2), "");
    EXPECT_EQ(alignment->GetSequence(2, false), "");
}

TEST_F(AlignmentContract, ReadingWithoutResidueObjectsAgreesWithThem)
{
    alignment->getItem(0, 0)->SetSelected(true);
    for (unsigned long row = 0; row < alignment->height(); ++row) {
        std::vector<TAMBO::AlignmentCell> cells;
        alignment->readRow(row, 0, alignment->width(), cells);
        for (unsigned long col = 0; col < alignment->width(); ++col) {
            const Compound *const residue = alignment->getItem(row, col);
            EXPECT_EQ(cells[col].isGap(), residue == nullptr);
            if (residue != nullptr) {
                EXPECT_EQ(cells[col].letter, residue->TypeCode());
                EXPECT_EQ(cells[col].color, residue->GetColor());
                EXPECT_EQ(alignment->letterAt(row, col), residue->TypeCode());
            }
        }
    }
}

// ---- Consensus and selection, as the header and the names show them

TEST_F(AlignmentContract, TiesOfTheConsensusGoToTheSmallestCode)
{
    EXPECT_EQ(alignment->majority(0).letter, 'A');
    EXPECT_EQ(alignment->majority(0).count, 2U);
    EXPECT_EQ(alignment->majority(1).count, 1U);
    alignment->addRows({&third});
    EXPECT_EQ(alignment->majority(1).letter, 'C') << "C and K once each";
    alignment->insertGapCol(0, 1);
    EXPECT_EQ(alignment->majority(0).letter, '-');
    EXPECT_EQ(alignment->majority(0).count, 0U);
}

TEST_F(AlignmentContract, CellsAreSelectedByRowsAndColumns)
{
    using How = TAMBO::Alignment::Selecting;
    const auto selected = [this](unsigned long row, unsigned long col) {
        const Compound *const residue = alignment->getItem(row, col);
        return residue != nullptr && residue->IsSelected();
    };
    const std::vector<bool> all(alignment->height(), true);
    alignment->selectCells(all, {true, true}, How::Add);
    EXPECT_TRUE(alignment->isColumnSelected(0));
    EXPECT_TRUE(alignment->isColumnSelected(1));
    alignment->selectCells({true}, {true}, How::Remove);
    EXPECT_FALSE(selected(0, 0));
    EXPECT_TRUE(selected(0, 1));
    alignment->selectCells({true}, {true, true}, How::Toggle);
    EXPECT_TRUE(selected(0, 0));
    EXPECT_FALSE(selected(0, 1));
    alignment->selectCells({true}, {true}, How::Replace);
    EXPECT_TRUE(selected(0, 0));
    EXPECT_FALSE(alignment->isColumnSelected(0));
    alignment->selectCells({}, all, How::Replace);
    EXPECT_FALSE(selected(0, 0));
}

TEST_F(AlignmentContract, RowOfGapsCountsAsSelectedAndAColumnOfGapsDoesNot)
{
    Peptide &empty = peptide("empty", "");
    alignment->addRows({&empty});
    alignment->insertGapCol(4, 1);
    EXPECT_TRUE(alignment->isRowSelected(2));
    EXPECT_FALSE(alignment->isColumnSelected(4));
    alignment->select(Alignment::Range(0, 1), true);
    EXPECT_TRUE(alignment->isColumnSelected(0));
    EXPECT_FALSE(alignment->isColumnSelected(1));
    EXPECT_FALSE(alignment->isRowSelected(0));
    alignment->select(Alignment::Range(0, 5), true);
    EXPECT_TRUE(alignment->isRowSelected(0));
    alignment->select(Alignment::Range(0, 5), false);
    EXPECT_FALSE(alignment->isRowSelected(0));
}

TEST_F(AlignmentContract, SelectTouchesTheColumnsOfTheRangeOnly)
{
    alignment->select(Alignment::Range(1, 3), true);
    EXPECT_FALSE(first.isSelected(0));
    EXPECT_TRUE(first.isSelected(1));
    EXPECT_FALSE(first.isSelected(2));
    EXPECT_TRUE(second.isSelected(1));
    alignment->select(Alignment::Range(1, 3), false);
    EXPECT_EQ(first.selectedCount(), 0U);
}

// ---- Range

TEST_F(AlignmentContract, RangeIsHalfOpenAndEmptyUnlessItsBeginIsBelowItsEnd)
{
    alignment->range(Alignment::Range(1, 3));
    EXPECT_EQ(alignment->range(), Alignment::Range(1, 3));
    alignment->range(Alignment::Range(3, 3));
    EXPECT_EQ(alignment->range(), Alignment::Range(3, 3));
    alignment->range(Alignment::Range(6, 2));
    EXPECT_FALSE(alignment->range().first < alignment->range().second);
    alignment->rangeAll();
    EXPECT_EQ(alignment->range(), Alignment::Range(0, 4));
}

// ---- Operations

TEST_F(AlignmentContract, ColumnsAreInsertedAndRemoved)
{
    alignment->insertGapCol(2, 1);
    EXPECT_THAT(rows(), ElementsAre("AC--D", "A--CD"));
    alignment->insertGapCol(alignment->width(), 1);
    EXPECT_THAT(alignment->getCol(5), ElementsAre(nullptr, nullptr));
    alignment->insertGapCol(0, 1);
    EXPECT_THAT(rows(), ElementsAre("-AC--D-", "-A--CD-"));
    alignment->remove(0);
    alignment->remove(Alignment::Range(1, 3));
    EXPECT_THAT(rows(), ElementsAre("A-D-", "ACD-"));
}

TEST_F(AlignmentContract, RowsAreMovedRemovedAndAdded)
{
    alignment->addRows({&third, &first});
    EXPECT_THAT(rows(), ElementsAre("AC-D-", "A-CD-", "MKLVI", "ACD--"));
    alignment->bubbleRow(0, 2);
    EXPECT_THAT(rows(), ElementsAre("A-CD-", "MKLVI", "AC-D-", "ACD--"));
    alignment->bubbleRow(3, 1);
    EXPECT_THAT(rows(), ElementsAre("A-CD-", "ACD--", "MKLVI", "AC-D-"));
    alignment->removeRow(1);
    EXPECT_THAT(rows(), ElementsAre("A-CD-", "MKLVI", "AC-D-"));
}

TEST_F(AlignmentContract, RowsAreReorderedAtOnce)
{
    alignment->addRows({&third, &first});
    alignment->reorderRows({3, 1, 0, 2});
    EXPECT_THAT(rows(), ElementsAre("ACD--", "A-CD-", "AC-D-", "MKLVI"));
    history.clear();
    alignment->reorderRows({0, 1, 2});
    alignment->reorderRows({0, 1, 2, 2});
    alignment->reorderRows({0, 1, 2, 3});
    EXPECT_THAT(rows(), ElementsAre("ACD--", "A-CD-", "AC-D-", "MKLVI"));
    EXPECT_EQ(history.position(), 0U) << "nothing has changed";
}

TEST_F(AlignmentContract, GapsAreInsertedAndMovedWithinTheirRow)
{
    alignment->insertGap(1, 3);
    EXPECT_THAT(rows(), ElementsAre("AC-D-", "A-C-D"));
    alignment->moveGap(1, 1, 3, true);
    EXPECT_THAT(rows(), ElementsAre("AC-D-", "AC--D"));
    alignment->moveGap(1, 2, 1, false);
    EXPECT_THAT(rows(), ElementsAre("AC-D-", "A--CD"));
    alignment->moveGap(1, 3, 1, false);
    EXPECT_THAT(rows(), ElementsAre("AC-D-", "ACD--")) << "from a residue, into the gaps";
}

TEST_F(AlignmentContract, SeveralGapsAreInsertedAndMovedInOneEdit)
{
    history.clear();
    alignment->insertGaps(1, 3, 3);
    EXPECT_THAT(rows(), ElementsAre("AC-D---", "A-C---D"));
    EXPECT_EQ(history.position(), 1U);
    alignment->moveGaps(1, 3, 2, 0);
    EXPECT_THAT(rows(), ElementsAre("AC-D---", "--A-C-D"));
    EXPECT_EQ(history.position(), 2U);
    history.clear();
    alignment->moveGaps(1, 1, 2, 0);
    alignment->moveGaps(1, 0, 2, 6);
    alignment->moveGaps(1, 0, 2, ~0UL);
    alignment->moveGaps(1, ~0UL, 2, 0);
    alignment->moveGaps(1, 0, ~0UL, 1);
    alignment->moveGaps(2, 0, 1, 3);
    alignment->insertGaps(1, 7, 1);
    alignment->insertGaps(1, 0, 0);
    alignment->insertGaps(1, 0, ~0UL);
    EXPECT_THAT(rows(), ElementsAre("AC-D---", "--A-C-D"));
    EXPECT_EQ(history.position(), 0U) << "nothing has changed";
}

TEST_F(AlignmentContract, GapsAreInsertedIntoWhatIsFreeBehindTheRow)
{
    alignment->insertGapCol(4, 2);
    alignment->insertGaps(0, 2, 3);
    EXPECT_THAT(rows(), ElementsAre("AC----D", "A-CD---"));
}

TEST_F(AlignmentContract, FlaggedRowsAndColumnsAreRemovedAtOnce)
{
    alignment->addRows({&third});
    EXPECT_TRUE(alignment->removeColumns({false, true, false, true, false, true, true}));
    EXPECT_THAT(rows(), ElementsAre("A--", "AC-", "MLI"));
    alignment->removeRows({true, false, true, true});
    EXPECT_THAT(rows(), ElementsAre("AC-"));
    history.undo();
    history.undo();
    EXPECT_THAT(rows(), ElementsAre("AC-D-", "A-CD-", "MKLVI"));
    history.clear();
    EXPECT_TRUE(alignment->removeColumns({false, false}));
    alignment->removeRows({});
    EXPECT_EQ(history.position(), 0U) << "nothing has changed";
}

TEST_F(AlignmentContract, DuplicateOfSomeRowsAndColumnsHasCellsOfItsOwn)
{
    alignment->addRows({&third});
    history.clear();
    Alignment *const part = alignment->duplicate({true, false, true}, {false, true, true}, "part");
    ASSERT_NE(part, nullptr);
    EXPECT_TRUE(isTopLevel(part));
    EXPECT_EQ(part->Name(), "part");
    EXPECT_THAT(rowsOf(*part), ElementsAre("C-", "KL"));
    EXPECT_EQ(part->GetSeq(1), &third);
    EXPECT_EQ(history.position(), 1U) << "one step";
    part->insertGap(0, 0);
    EXPECT_THAT(rows(), ElementsAre("AC-D-", "A-CD-", "MKLVI"));
    EXPECT_EQ(alignment->duplicate({true}, {true}, "part")->Name(), "part 2");
}

TEST_F(AlignmentContract, DuplicateIsAddedToTheObjectsByTheCallAndNeverNull)
{
    // A part is not taken for the whole.
    const std::map<unsigned long, std::string> names = {
        {0, "SeqAli (no rows)"}, {1, "SeqAli (first row)"}, {2, "SeqAli"}, {9, "SeqAli"}};
    for (const auto &[count, name] : names) {
        const Alignment *copy = nullptr;
        {
            const DataAdder<Space> guard(nullptr, Space::instance());
            copy = alignment->duplicate(count);
        }
        ASSERT_NE(copy, nullptr);
        EXPECT_TRUE(isTopLevel(copy));
        EXPECT_EQ(copy->height(), std::min(count, 2UL));
        EXPECT_EQ(copy->width(), 4U);
        EXPECT_EQ(copy->Name(), name);
    }
    EXPECT_THAT(window.calls, ElementsAre("add", "add", "add", "add"));
}

TEST_F(AlignmentContract, CombineLeavesTheOtherAlignmentAsItIs)
{
    Alignment *const other = DataMaker::makeAlignment("other", {&first, &third});
    alignment->combine(*other);
    EXPECT_THAT(rows(), ElementsAre("AC-D--", "A-CD--", "MK-LVI"));
    EXPECT_THAT(rowsOf(*other), ElementsAre("ACD--", "MKLVI"));
    EXPECT_TRUE(isTopLevel(other));
    alignment->combine(*alignment);
    EXPECT_EQ(alignment->height(), 3U);
}

// ---- Guards, publication and undo

TEST_F(AlignmentContract, ChangeInAGuardIsPublishedOnceAndUndoneAsOneStep)
{
    {
        const DataPoint<Alignment> guard(nullptr, alignment);
        ASSERT_TRUE(guard.m_good);
        guard->insertGap(0, 0);
        guard->moveGap(0, 0, 3, true);
        guard->insertGapCol(0, 2);
        guard->removeRow(1);
        EXPECT_THAT(window.calls, IsEmpty());
    }
    EXPECT_THAT(window.calls, ElementsAre("update"));
    EXPECT_EQ(history.position(), 1U);
    history.undo();
    EXPECT_THAT(rows(), ElementsAre("AC-D", "A-CD"));
    history.redo();
    EXPECT_EQ(alignment->height(), 1U);
    EXPECT_THAT(window.calls, ElementsAre("update", "update", "update"));
}

TEST_F(AlignmentContract, RefusedGuardChangesAndPublishesNothing)
{
    TAMBO::setObjectLocked(*alignment, true);
    {
        const DataPoint<Alignment> guard(nullptr, alignment);
        EXPECT_FALSE(guard.m_good);
    }
    EXPECT_THAT(window.calls, IsEmpty());
    EXPECT_THAT(rows(), ElementsAre("AC-D", "A-CD"));
    EXPECT_EQ(history.position(), 0U);
}

TEST_F(AlignmentContract, ChangeWithoutAGuardIsAStepOfItsOwnAndIsNotPublished)
{
    alignment->bubbleRow(0, 1);
    alignment->insertGapCol(4, 1);
    alignment->range(Alignment::Range(0, 2));
    EXPECT_THAT(window.calls, IsEmpty());
    EXPECT_EQ(history.position(), 2U) << "the range is no step";
    EXPECT_EQ(history.label(0), "move row in SeqAli");
    EXPECT_EQ(history.label(1), "insert column in SeqAli");
    history.undo();
    history.undo();
    EXPECT_THAT(rows(), ElementsAre("AC-D", "A-CD"));
}

TEST_F(AlignmentContract, LockedAlignmentRefusesAChangeWithoutAGuard)
{
    TAMBO::setObjectLocked(*alignment, true);
    alignment->bubbleRow(0, 1);
    alignment->reorderRows({1, 0});
    alignment->insertGapCol(4, 1);
    alignment->range(Alignment::Range(0, 2));
    EXPECT_THAT(rows(), ElementsAre("AC-D", "A-CD"));
    EXPECT_EQ(alignment->range(), Alignment::Range(0, 0));
    EXPECT_EQ(history.position(), 0U);
    EXPECT_EQ(log.size(), 4U);
}

TEST_F(AlignmentContract, SelectingIsPublishedButNoStep)
{
    {
        const DataPoint<Alignment> guard(nullptr, alignment);
        guard->select(Alignment::Range(0, 4), true);
    }
    EXPECT_THAT(window.calls, ElementsAre("update"));
    EXPECT_EQ(history.position(), 0U);
}

TEST_F(AlignmentContract, GuardAroundAnOperationThatChangesNothingLeavesNoStep)
{
    {
        const DataPoint<Alignment> guard(nullptr, alignment);
        guard->moveGap(0, 2, 2, true);
        guard->moveGap(0, 9, 1, false);
        guard->insertGap(7, 0);
        guard->addRows({});
        guard->combine(*alignment);
    }
    EXPECT_THAT(window.calls, ElementsAre("update"));
    EXPECT_EQ(history.position(), 0U);
}

TEST_F(AlignmentContract, UndoNamesTheKindOfChange)
{
    Alignment *const other = DataMaker::makeAlignment("other", {&first, &third});
    history.clear();
    const std::vector<std::pair<std::string, std::function<void()>>> changes{
        {"insert gaps", [&] { alignment->insertGaps(0, 1, 3); }},
        {"move gap", [&] { alignment->moveGaps(0, 1, 3, 0); }},
        {"remove columns",
         [&] {
             alignment->removeColumns({true, false, true});
         }},
        {"insert gap", [&] { alignment->insertGap(0, 0); }},
        {"move gap", [&] { alignment->moveGap(0, 0, 2, true); }},
        {"insert column", [&] { alignment->insertGapCol(0, 1); }},
        {"remove columns", [&] { alignment->remove(0); }},
        {"move row", [&] { alignment->bubbleRow(0, 1); }},
        {"reorder rows",
         [&] {
             alignment->reorderRows({1, 0});
         }},
        {"remove row", [&] { alignment->removeRow(1); }},
        {"add sequences", [&] { alignment->addRows({&first}); }},
        {"remove rows", [&] { alignment->removeRows({true}); }},
        {"combine", [&] { alignment->combine(*other); }},
    };
    for (const auto &[kind, change] : changes) {
        const Texts before = rows();
        change();
        EXPECT_EQ(history.undoLabel(), kind + " in SeqAli");
        const Texts after = rows();
        history.undo();
        EXPECT_EQ(rows(), before) << kind;
        history.redo();
        EXPECT_EQ(rows(), after) << kind;
    }
}

TEST_F(AlignmentContract, StepOfAGapMoveKeepsItsBarWithAllThatTheHistoryAdds)
{
    Peptide &wide = peptide("wide", std::string(10000, 'A'));
    Alignment *const large = DataMaker::makeAlignment("large", {&wide, &wide, &wide});
    large->insertGap(1, 5000);
    history.clear();
    const std::size_t before = history.bytes();
    large->moveGap(1, 5000, 17, true);
    EXPECT_GT(history.bytes(), before);
    EXPECT_LE(history.bytes() - before, 200U);
}

TEST_F(AlignmentContract, DestroyedSequenceTakesItsRowsAlong)
{
    DataMaker::Destroy(&first);
    EXPECT_THAT(rows(), ElementsAre("A-CD"));
    EXPECT_EQ(alignment->GetSeq(0), &second);
    history.undo();
    EXPECT_THAT(rows(), ElementsAre("AC-D", "A-CD"));
}

TEST_F(AlignmentContract, LayoutRevisionTellsWhenAViewMustBeBuiltAnew)
{
    const unsigned long before = alignment->layoutRevision();
    alignment->select(Alignment::Range(0, 4), true);
    alignment->range(Alignment::Range(0, 2));
    EXPECT_EQ(alignment->layoutRevision(), before);
    alignment->moveGap(0, 2, 1, true);
    const unsigned long moved = alignment->layoutRevision();
    EXPECT_NE(moved, before);
    history.undo();
    EXPECT_NE(alignment->layoutRevision(), moved);
    EXPECT_NE(alignment->layoutRevision(), before) << "an earlier value never comes back";
}

} // namespace AlignmentContractTest
