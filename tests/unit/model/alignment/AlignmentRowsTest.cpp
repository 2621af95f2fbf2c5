// SPDX-License-Identifier: GPL-3.0-or-later
#include "unit/model/AlignmentFixture.h"

#include "AlignmentEdits.h"
#include "DataMaker.h"
#include "ObjectOperations.h"
#include "Structure.h"
#include "TableChanges.h"

using TAMBO::Alignment;
using TAMBO::AlignmentTable;
using TAMBO::Compound;
using TAMBO::Peptide;

namespace AlignmentRowsTest {

class AlignmentRows : public AlignmentFixture
{
protected:
    // Letters of one residue a row name the rows.
    std::string order(const Alignment &sample)
    {
        std::string letters;
        for (unsigned long row = 0; row < sample.height(); ++row)
            letters += sample.letterAt(row, 0);
        return letters;
    }
};

// ---- bubbleRow

TEST_F(AlignmentRows, RowMovesAndTheRowsBetweenCloseUp)
{
    Alignment &sample = alignment({"A", "C", "D", "E"});
    const auto moved = [&](unsigned long from, unsigned long to) {
        sample.bubbleRow(from, to);
        const std::string after = order(sample);
        history.undo();
        EXPECT_EQ(order(sample), "ACDE");
        history.redo();
        EXPECT_EQ(order(sample), after);
        history.undo();
        history.clear();
        return after;
    };
    EXPECT_EQ(moved(0, 2), "CDAE");
    EXPECT_EQ(moved(3, 1), "AECD");
    EXPECT_EQ(moved(0, 3), "CDEA");
    EXPECT_EQ(moved(3, 0), "EACD");
    EXPECT_EQ(moved(1, 2), "ADCE");
}

TEST_F(AlignmentRows, RowStaysWhenItIsMovedNowhereOrOutOfBounds)
{
    Alignment &sample = alignment({"A", "C"});
    sample.bubbleRow(1, 1);
    sample.bubbleRow(0, 2);
    sample.bubbleRow(2, 0);
    sample.bubbleRow(~0UL, 0);
    EXPECT_EQ(order(sample), "AC");
    EXPECT_EQ(history.undoCount(), 0U);
}

// ---- reorderRows

TEST_F(AlignmentRows, RowsComeToStandInTheOrderThatIsSaid)
{
    Alignment &sample = alignment({"A--", "-C-", "--D", "EEE"});
    const Texts names = namesOf(sample);
    const Texts rows = rowsOf(sample);
    const unsigned long revision = sample.layoutRevision();
    sample.reorderRows({2, 0, 3, 1});
    EXPECT_EQ(rowsOf(sample), (Texts{"--D", "A--", "EEE", "-C-"}));
    EXPECT_EQ(namesOf(sample), (Texts{names[2], names[0], names[3], names[1]}));
    EXPECT_NE(sample.layoutRevision(), revision);
    EXPECT_EQ(history.lastKinds(), Texts{"reorder rows"});
    history.undo();
    EXPECT_EQ(rowsOf(sample), rows);
    EXPECT_EQ(namesOf(sample), names);
    history.redo();
    EXPECT_EQ(rowsOf(sample), (Texts{"--D", "A--", "EEE", "-C-"}));
}

TEST_F(AlignmentRows, RowsStayWhenTheirOrderIsTheOneThereIsOrNone)
{
    Alignment &sample = alignment({"A", "C", "D"});
    const std::vector<std::vector<unsigned long>> orders = {
        {0, 1, 2}, {}, {1, 0}, {2, 1, 0, 3}, {0, 0, 1}, {1, 2, 3}, {2, 1, (1UL << 32U) + 0}};
    for (const std::vector<unsigned long> &places : orders)
        sample.reorderRows(places);
    EXPECT_EQ(order(sample), "ACD");
    EXPECT_EQ(history.undoCount(), 0U);
}

TEST_F(AlignmentRows, OrderOfRowsWithoutColumnsCannotBeSaid)
{
    Alignment &sample = alignment({"A", "C"});
    sample.remove(0);
    history.clear();
    sample.reorderRows({1, 0});
    EXPECT_EQ(history.undoCount(), 0U);
}

// The bytes of an edit may be anybody's.
TEST_F(AlignmentRows, OrderThatLacksARowOrHasOneTwiceDoesNotFit)
{
    Alignment &sample = alignment({"A", "C", "D"});
    const auto fits = [&](TAMBO::RowOrderEdit::Order places) {
        return TAMBO::RowOrderEdit(sample.table(), std::move(places)).fits();
    };
    EXPECT_TRUE(fits({2, 0, 1}));
    EXPECT_FALSE(fits({0, 1}));
    EXPECT_FALSE(fits({0, 1, 2, 3}));
    EXPECT_FALSE(fits({0, 1, 1}));
    EXPECT_FALSE(fits({0, 1, 3}));
    EXPECT_FALSE(fits({0, 1, 0xffffffffU}));
}

// ---- removeRow

TEST_F(AlignmentRows, RemovedRowComesBackAtItsPlace)
{
    Alignment &sample = alignment({"AC-", "-DE", "F--"});
    const Texts names = namesOf(sample);
    Compound *const residue = sample.getItem(1, 2);
    sample.removeRow(1);
    EXPECT_EQ(rowsOf(sample), (Texts{"AC-", "F--"}));
    EXPECT_EQ(sample.width(), 3U);
    EXPECT_EQ(history.lastKinds(), Texts{"remove row"});
    history.undo();
    EXPECT_EQ(rowsOf(sample), (Texts{"AC-", "-DE", "F--"}));
    EXPECT_EQ(namesOf(sample), names);
    EXPECT_EQ(sample.getItem(1, 2), residue);
}

TEST_F(AlignmentRows, LastRowCanBeRemovedAndComesBack)
{
    Alignment &sample = alignment({"AC"});
    sample.removeRow(0);
    EXPECT_EQ(sample.height(), 0U);
    EXPECT_TRUE(sample.getCol(0).empty());
    EXPECT_EQ(sample.majority(0).letter, '-');
    history.undo();
    EXPECT_EQ(rowsOf(sample), Texts{"AC"});
}

TEST_F(AlignmentRows, RowOutOfBoundsIsNotRemoved)
{
    Alignment &sample = alignment({"AC"});
    sample.removeRow(1);
    sample.removeRow(~0UL);
    EXPECT_EQ(sample.height(), 1U);
    EXPECT_EQ(history.undoCount(), 0U);
}

// ---- addRows

TEST_F(AlignmentRows, AddedSequencesStandUngappedBelowTheOthers)
{
    Alignment &sample = alignment({"AC-D", "A-CD"});
    Peptide &shorter = peptide("shorter", "MK");
    Peptide &longer = peptide("longer", "MKLVI");
    sample.range(Range(1, 3));
    sample.addRows({&longer, &shorter});
    EXPECT_EQ(rowsOf(sample), (Texts{"AC-D-", "A-CD-", "MKLVI", "MK---"}));
    EXPECT_EQ(sample.GetSeq(2), &longer);
    EXPECT_EQ(sample.range(), Range(1, 3));
    EXPECT_EQ(history.undoCount(), 1U);
    EXPECT_EQ(history.lastKinds(), Texts{"add sequences"});
    history.undo();
    EXPECT_EQ(rowsOf(sample), (Texts{"AC-D", "A-CD"}));
    history.redo();
    EXPECT_EQ(rowsOf(sample), (Texts{"AC-D-", "A-CD-", "MKLVI", "MK---"}));
}

TEST_F(AlignmentRows, SequenceThatIsThereAlreadyCanBeAddedAgain)
{
    Alignment &sample = alignment({"A-C"});
    sample.addRows({sample.GetSeq(0), sample.GetSeq(0)});
    EXPECT_EQ(rowsOf(sample), (Texts{"A-C", "AC-", "AC-"}));
}

TEST_F(AlignmentRows, SequenceWithoutResiduesMakesARowOfGaps)
{
    Alignment &sample = alignment({"AC"});
    sample.addRows({&peptide("empty", "")});
    EXPECT_EQ(rowsOf(sample), (Texts{"AC", "--"}));
}

TEST_F(AlignmentRows, WhatIsNoSequenceIsLeftOutWithALineInTheLog)
{
    Alignment &sample = alignment({"AC"});
    TAMBO::Structure &structure = static_cast<TAMBO::Structure &>(
        TAMBO::ObjectSpace::get().add(std::make_unique<TAMBO::Structure>("1abc")));
    history.clear();
    sample.addRows({nullptr, &structure, sample.getItem(0, 0), &sample});
    EXPECT_EQ(rowsOf(sample), Texts{"AC"});
    EXPECT_EQ(history.undoCount(), 0U);
    EXPECT_EQ(log,
              (Texts{"A missing sequence was not added to the alignment.",
                     structure.GetFQName() + " is no sequence and was not added to the alignment.",
                     sample.getItem(0, 0)->GetFQName() +
                         " is no sequence and was not added to the alignment.",
                     sample.GetFQName() + " is no sequence and was not added to the alignment."}));
    sample.addRows({nullptr, sample.GetSeq(0)});
    EXPECT_EQ(rowsOf(sample), (Texts{"AC", "AC"}));
}

TEST_F(AlignmentRows, NothingToAddIsNoStep)
{
    Alignment &sample = alignment({"AC"});
    sample.addRows({});
    EXPECT_EQ(history.undoCount(), 0U);
}

// ---- duplicate

TEST_F(AlignmentRows, RowsWithGapsAreAddedAndWidenTheAlignment)
{
    Alignment &sample = alignment({"AC-D"});
    AlignmentTable::Rows rows;
    auto cells = TAMBO::OccupancyRow::filled(3);
    cells.insertGaps(1, 3);
    rows.push_back(std::make_unique<TAMBO::AlignmentRow>(peptide("new", "MKV"), cells));
    TAMBO::addRowsTo(sample.table(), std::move(rows));
    EXPECT_EQ(sample.GetSequence(1, false), "M---KV");
    EXPECT_EQ(sample.GetSequence(0, false), "AC-D--");
    history.undo();
    EXPECT_EQ(sample.width(), 4U);
    EXPECT_EQ(sample.height(), 1U);
}

TEST_F(AlignmentRows, RelabelledRowStaysAsItIsButForWhatIsSaidOfIt)
{
    Alignment &sample = alignment({"AC-D", "-MK-"});
    const Compound *const sequence = sample.GetSeq(0);
    TAMBO::RowLabel label = TAMBO::labelOf(sample.table().row(0));
    label.name = "other";
    label.description = "a row";
    TAMBO::relabelRow(sample.table(), 0, label, "rename row");
    EXPECT_EQ(sample.GetSeqName(0), "other");
    EXPECT_EQ(TAMBO::labelOf(sample.table().row(0)).description, "a row");
    EXPECT_EQ(sample.GetSequence(0, false), "AC-D");
    EXPECT_EQ(sample.GetSeq(0), sequence);
    EXPECT_EQ(history.undoCount(), 1U);
    history.undo();
    EXPECT_EQ(sample.table().row(0).label(), nullptr);
    history.redo();
    EXPECT_EQ(sample.GetSeqName(0), "other");
    EXPECT_EQ(sample.width(), 4U);
    EXPECT_EQ(sample.GetSequence(1, false), "-MK-");
}

TEST_F(AlignmentRows, LockedAlignmentTakesNoRowsAndNoLabels)
{
    Alignment &sample = alignment({"AC-D"});
    AlignmentTable::Rows rows;
    rows.push_back(std::make_unique<TAMBO::AlignmentRow>(peptide("new", "MKV"),
                                                         TAMBO::OccupancyRow::filled(3)));
    TAMBO::setObjectLocked(sample, true);
    TAMBO::addRowsTo(sample.table(), std::move(rows));
    TAMBO::relabelRow(sample.table(), 0, {.name = "other"}, "rename row");
    EXPECT_EQ(sample.height(), 1U);
    EXPECT_EQ(sample.table().row(0).label(), nullptr);
    EXPECT_EQ(history.undoCount(), 0U);
}

TEST_F(AlignmentRows, DuplicateHasCellsOfItsOwnOverTheSameSequences)
{
    Alignment &sample = alignment({"AC-D", "A-CD", "---E"}, "globins");
    sample.remove(0);
    history.clear();
    Alignment *const copy = sample.duplicate(3);
    ASSERT_NE(copy, nullptr);
    EXPECT_EQ(copy->Name(), "globins");
    EXPECT_EQ(rowsOf(*copy), (Texts{"C-D", "-CD", "--E"}));
    EXPECT_EQ(copy->getItem(0, 0), sample.getItem(0, 0));
    EXPECT_EQ(history.undoCount(), 1U);
    EXPECT_EQ(copy->Parent(), &TAMBO::ObjectSpace::get());
    copy->moveGap(0, 1, 0, true);
    EXPECT_EQ(rowsOf(sample), (Texts{"C-D", "-CD", "--E"}));
    EXPECT_EQ(rowsOf(*copy), (Texts{"-CD", "-CD", "--E"}));
}

TEST_F(AlignmentRows, DuplicateTakesTheFirstRowsOverAllColumns)
{
    const Alignment &sample = alignment({"AC--", "-D--", "---E"});
    EXPECT_EQ(rowsOf(*sample.duplicate(2)), (Texts{"AC--", "-D--"}));
    EXPECT_EQ(sample.duplicate(0)->height(), 0U);
    EXPECT_EQ(rowsOf(*sample.duplicate(~0UL)), rowsOf(sample)) << "more than there are means all";
}

TEST_F(AlignmentRows, DuplicateOfAnAlignmentWithoutColumnsIsEmptyToo)
{
    Alignment &sample = alignment({"AC"});
    sample.remove(Range(0, 2));
    const Alignment *const copy = sample.duplicate(0);
    ASSERT_NE(copy, nullptr);
    EXPECT_EQ(copy->width(), 0U);
    EXPECT_EQ(copy->height(), 0U);
}

TEST_F(AlignmentRows, UndoOfDuplicateTakesTheCopyOut)
{
    const Alignment &sample = alignment({"AC"});
    const std::size_t before = TAMBO::ObjectSpace::get().objectCount();
    sample.duplicate(1);
    EXPECT_EQ(TAMBO::ObjectSpace::get().objectCount(), before + 1);
    history.undo();
    EXPECT_EQ(TAMBO::ObjectSpace::get().objectCount(), before);
}

// ---- Destroyed sequences

TEST_F(AlignmentRows, DestroyedSequenceTakesItsRowsAlongAndUndoBringsThemBack)
{
    Peptide &gone = peptide("gone", "AC");
    Peptide &kept = peptide("kept", "DEF");
    Alignment &first = alignmentOf({{&gone, "A-C"}, {&kept, "DEF"}, {&gone, "-AC"}});
    Alignment &second = alignmentOf({{&kept, "DEF-"}, {&gone, "--AC"}});
    TAMBO::DataMaker::Destroy(&gone);
    EXPECT_EQ(rowsOf(first), Texts{"DEF"});
    EXPECT_EQ(rowsOf(second), Texts{"DEF-"});
    EXPECT_EQ(history.undoCount(), 1U);
    history.undo();
    EXPECT_EQ(rowsOf(first), (Texts{"A-C", "DEF", "-AC"}));
    EXPECT_EQ(rowsOf(second), (Texts{"DEF-", "--AC"}));
    EXPECT_EQ(first.GetSeq(2), &gone);
    history.redo();
    EXPECT_EQ(rowsOf(first), Texts{"DEF"});
}

TEST_F(AlignmentRows, RowsOfASequenceThatIsNotThereAreNoStep)
{
    Alignment &sample = alignment({"AC"});
    Peptide &other = peptide("other", "AC");
    EXPECT_FALSE(sample.table().holds(other));
    TAMBO::removeRowsOf(sample.table(), other);
    EXPECT_EQ(history.undoCount(), 0U);
    EXPECT_TRUE(sample.table().holds(sequence(sample, 0)));
}

// ---- combine

class AlignmentCombine : public AlignmentFixture
{
protected:
    void SetUp() override
    {
        one = &peptide("one", "ACD");
        two = &peptide("two", "ACD");
        three = &peptide("three", "AEE");
        four = &peptide("four", "FGHIK");
    }
    // The rows of the first after the second has been combined into it; undo gives them back.
    Texts combined(Alignment &first, const Alignment &second)
    {
        const Texts before = rowsOf(first);
        const Texts other = rowsOf(second);
        first.combine(second);
        const Texts after = rowsOf(first);
        EXPECT_EQ(rowsOf(second), other) << "the other one does not change";
        if (after != before) {
            EXPECT_EQ(history.undoCount(), 1U);
            for (const std::string &kind : history.lastKinds())
                EXPECT_EQ(kind, "combine");
            history.undo();
            EXPECT_EQ(rowsOf(first), before);
            history.redo();
            EXPECT_EQ(rowsOf(first), after);
        } else {
            EXPECT_EQ(history.undoCount(), 0U);
        }
        return after;
    }

    Peptide *one = nullptr;
    Peptide *two = nullptr;
    Peptide *three = nullptr;
    Peptide *four = nullptr;
};

TEST_F(AlignmentCombine, ColumnsAreMatchedAlongTheFirstSequenceThatBothHold)
{
    Alignment &first = alignmentOf({{one, "AC-D"}, {two, "A-CD"}});
    const Alignment &second = alignmentOf({{one, "ACD"}, {three, "AEE"}});
    EXPECT_EQ(combined(first, second), (Texts{"AC-D", "A-CD", "AE-E"}));
}

TEST_F(AlignmentCombine, GapColumnsOpenWhereTheOtherSideHasMore)
{
    Alignment &first = alignmentOf({{one, "ACD"}, {two, "ACD"}});
    const Alignment &second = alignmentOf({{four, "FGHIK"}, {one, "A-C-D"}});
    EXPECT_EQ(combined(first, second), (Texts{"A-C-D", "A-C-D", "FGHIK"}));
}

TEST_F(AlignmentCombine, ColumnsBetweenMatchesBeginTogether)
{
    Alignment &first = alignmentOf({{one, "A-CD"}, {two, "AC-D"}});
    const Alignment &second = alignmentOf({{one, "A--CD"}, {four, "FGHIK"}});
    EXPECT_EQ(combined(first, second), (Texts{"A--CD", "AC--D", "FGHIK"}));
}

TEST_F(AlignmentCombine, ColumnsBeforeTheFirstMatchEndTogetherAndThoseBehindTheLastBeginTogether)
{
    Alignment &first = alignmentOf({{one, "-ACD"}, {two, "ACD-"}});
    const Alignment &second = alignmentOf({{one, "---ACD--"}, {four, "FGH--IK-"}});
    EXPECT_EQ(combined(first, second), (Texts{"---ACD--", "--ACD---", "FGH--IK-"}));
    Alignment &third = alignmentOf({{one, "--ACD--"}});
    const Alignment &fourth = alignmentOf({{one, "ACD"}, {three, "AEE"}});
    history.clear();
    EXPECT_EQ(combined(third, fourth), (Texts{"--ACD--", "--AEE--"}));
}

TEST_F(AlignmentCombine, RowsThatArePresentAreNotDoubled)
{
    Alignment &first = alignmentOf({{one, "ACD"}, {two, "ACD"}});
    const Alignment &second = alignmentOf({{two, "A-CD"}, {one, "AC-D"}, {three, "AE-E"}});
    // The anchor is the first of this alignment's rows that the other has.
    EXPECT_EQ(combined(first, second), (Texts{"AC-D", "AC-D", "AE-E"}));
}

TEST_F(AlignmentCombine, WithoutACommonSequenceTheRowsAreAppendedAsTheyStand)
{
    Alignment &first = alignmentOf({{one, "ACD"}});
    const Alignment &second = alignmentOf({{three, "A-E-E"}});
    EXPECT_EQ(combined(first, second), (Texts{"ACD--", "A-E-E"}));
    Alignment &third = alignmentOf({{one, "A-C-D"}});
    const Alignment &fourth = alignmentOf({{two, "ACD"}});
    history.clear();
    EXPECT_EQ(combined(third, fourth), (Texts{"A-C-D", "ACD--"}));
}

TEST_F(AlignmentCombine, CombiningWithItselfChangesNothing)
{
    Alignment &sample = alignmentOf({{one, "A-CD"}, {two, "ACD-"}});
    EXPECT_EQ(combined(sample, sample), (Texts{"A-CD", "ACD-"}));
}

TEST_F(AlignmentCombine, CombiningWithADuplicateChangesNothing)
{
    Alignment &sample = alignmentOf({{one, "A-CD"}, {two, "ACD-"}});
    Alignment *const copy = sample.duplicate(2);
    copy->insertGapCol(1, 3);
    history.clear();
    EXPECT_EQ(combined(sample, *copy), (Texts{"A-CD", "ACD-"}));
}

TEST_F(AlignmentCombine, ResiduesThatOneSideHasLostAreNotMatched)
{
    Alignment &first = alignmentOf({{one, "ACD"}});
    first.remove(1);
    Alignment &second = alignmentOf({{one, "ACD"}, {three, "AEE"}});
    EXPECT_EQ(combined(first, second), (Texts{"A-D", "AEE"}));
    Alignment &third = alignmentOf({{one, "ACD"}, {two, "ACD"}});
    Alignment &fourth = alignmentOf({{one, "ACD"}, {three, "AEE"}});
    fourth.remove(1);
    history.clear();
    EXPECT_EQ(combined(third, fourth), (Texts{"ACD", "ACD", "A-E"}));
}

TEST_F(AlignmentCombine, EmptyAlignmentTakesTheRowsOfTheOther)
{
    Alignment &first = alignment(Texts{});
    const Alignment &second = alignmentOf({{one, "A-CD"}});
    EXPECT_EQ(combined(first, second), Texts{"A-CD"});
    Alignment &third = alignmentOf({{one, "A-CD"}});
    const Alignment &fourth = alignment(Texts{});
    history.clear();
    EXPECT_EQ(combined(third, fourth), Texts{"A-CD"});
}

TEST_F(AlignmentCombine, RangeMovesWithTheColumnsThatOpen)
{
    Alignment &first = alignmentOf({{one, "ACD"}});
    const Alignment &second = alignmentOf({{one, "A--C-D"}, {three, "AE---E"}});
    first.range(Range(1, 3));
    first.combine(second);
    EXPECT_EQ(rowsOf(first), (Texts{"A--C-D", "AE---E"}));
    EXPECT_EQ(first.range(), Range(3, 6));
    history.undo();
    EXPECT_EQ(first.range(), Range(1, 3));
}

TEST_F(AlignmentCombine, ManyColumnsOpenAtWordBoundaries)
{
    std::string letters;
    for (int i = 0; i < 200; ++i)
        letters += "ACDEFGHIKL"[i % 10];
    Peptide &anchor = peptide("anchor", letters);
    std::string spread;
    for (const char c : letters) {
        spread += c;
        spread += "--";
    }
    Alignment &first = alignmentOf({{&anchor, letters}});
    const Alignment &second = alignmentOf({{&anchor, spread}, {one, "ACD"}});
    spread.resize(spread.size());
    EXPECT_EQ(combined(first, second), (Texts{spread, "ACD" + std::string(597, '-')}));
}

TEST_F(AlignmentCombine, SequencesOfOneNameAndLettersAreMatchedWithoutACommonObject)
{
    Peptide &again = peptide("one", "ACD");
    Alignment &first = alignmentOf({{one, "AC-D"}, {two, "A-CD"}}, "first");
    const Alignment &second = alignmentOf({{&again, "ACD"}, {three, "AEE"}}, "second");
    EXPECT_EQ(combined(first, second), (Texts{"AC-D", "A-CD", "AE-E"}));
    EXPECT_EQ(&sequence(first, 0), one);
    EXPECT_EQ(log, Texts{"Combined \"second\" into \"first\" along \"one\", which has the same "
                         "name and letters in both; 1 row added, 1 row was there already."});
}

TEST_F(AlignmentCombine, TheSameObjectIsTheAnchorBeforeAnEqualSequence)
{
    Peptide &again = peptide("one", "ACD");
    Alignment &first = alignmentOf({{one, "AC-D"}, {two, "A-CD"}}, "first");
    const Alignment &second =
        alignmentOf({{&again, "ACD"}, {two, "ACD"}, {three, "AEE"}}, "second");
    EXPECT_EQ(combined(first, second), (Texts{"AC-D", "A-CD", "A-EE"}));
    EXPECT_EQ(log, Texts{"Combined \"second\" into \"first\" along \"two\", which both hold; 1 row "
                         "added, 2 rows were there already."});
}

TEST_F(AlignmentCombine, NeitherNameNorLettersAloneMakeSequencesEqual)
{
    Peptide &otherLetters = peptide("one", "ACE");
    Peptide &otherName = peptide("other", "ACD");
    Alignment &first = alignmentOf({{one, "AC-D"}}, "first");
    const Alignment &second = alignmentOf({{&otherLetters, "ACE"}, {&otherName, "ACD"}}, "second");
    EXPECT_EQ(combined(first, second), (Texts{"AC-D", "ACE-", "ACD-"}));
    EXPECT_EQ(log, Texts{"Combined \"second\" into \"first\", which have no sequence in common; 2 "
                         "rows added."});
}

TEST_F(AlignmentCombine, LettersAreThoseThatTheRowsStillHold)
{
    Peptide &shorter = peptide("one", "AD");
    Alignment &first = alignmentOf({{one, "ACD"}});
    first.remove(1);
    const Alignment &second = alignmentOf({{&shorter, "A--D"}, {three, "AEE-"}});
    history.clear();
    EXPECT_EQ(combined(first, second), (Texts{"A--D", "AEE-"}));
}

TEST_F(AlignmentCombine, EachRowStandsForOneEqualSequence)
{
    Peptide &again = peptide("one", "ACD");
    Peptide &third = peptide("one", "ACD");
    Alignment &first = alignmentOf({{one, "AC-D"}});
    const Alignment &second = alignmentOf({{&again, "ACD"}, {&third, "A-CD"}});
    EXPECT_EQ(combined(first, second), (Texts{"AC-D-", "A--CD"}));
}

TEST_F(AlignmentCombine, NothingIsSaidToBeAddedWhenEveryRowIsThere)
{
    Peptide &again = peptide("one", "ACD");
    Alignment &first = alignmentOf({{one, "AC-D"}}, "first");
    const Alignment &second = alignmentOf({{&again, "A--CD"}}, "second");
    EXPECT_EQ(combined(first, second), Texts{"AC-D"});
    EXPECT_EQ(log, Texts{"Combined \"second\" into \"first\" along \"one\", which has the same "
                         "name and letters in both; 0 rows added, 1 row was there already."});
}

TEST_F(AlignmentCombine, OfTwoEqualRowsTheOneTiedToAStructureIsKept)
{
    auto made = std::make_unique<TAMBO::Structure>("1abc");
    TAMBO::ChainRecord record;
    record.name = "A";
    for (const char letter : std::string("ACD"))
        record.residues.push_back({"UNK", letter, TAMBO::SequenceNumber(1), {}});
    made->insertObject(0, std::make_unique<Peptide>(std::move(record)));
    Peptide &chain = *made->chain(0);
    TAMBO::ObjectSpace::get().add(std::move(made));
    Peptide &plain = peptide("1abc_A", "ACD");

    Alignment &first = alignmentOf({{three, "A-EE"}, {&plain, "AC-D"}}, "first");
    const Alignment &second = alignmentOf({{four, "FGHIK"}, {&chain, "A-C-D"}}, "second");
    EXPECT_EQ(combined(first, second), (Texts{"A--EE", "A-C-D", "FGHIK"}));
    EXPECT_EQ(&sequence(first, 1), &chain);
    EXPECT_EQ(log.back(), "The row \"1abc_A\" is now the one that is tied to its structure.");
    history.undo();
    EXPECT_EQ(&sequence(first, 1), &plain);
    history.redo();
    EXPECT_EQ(&sequence(first, 1), &chain);

    // The other way round nothing has to change, and without rows to add no column opens.
    Alignment &third = alignmentOf({{&chain, "ACD"}}, "third");
    EXPECT_EQ(combined(third, alignmentOf({{&plain, "A-CD"}})), Texts{"ACD"});
    EXPECT_EQ(&sequence(third, 0), &chain);
    Alignment &fourth = alignmentOf({{&plain, "ACD-"}}, "fourth");
    history.clear();
    fourth.combine(third);
    EXPECT_EQ(rowsOf(fourth), Texts{"ACD-"});
    EXPECT_EQ(&sequence(fourth, 0), &chain);
    EXPECT_EQ(history.undoCount(), 1U);
}

// ---- Locks

TEST_F(AlignmentRows, LockedAlignmentRefusesEveryEditWithALineInTheLog)
{
    Alignment &sample = alignment({"A-CD", "AC-D"}, "locked");
    const Alignment &other = alignment({"EF"});
    Peptide &sequence = peptide("more", "AC");
    sample.table().state().isLocked = true;
    sample.insertGap(0, 0);
    sample.moveGap(0, 1, 2, true);
    sample.moveGap(0, 1, 2, false);
    sample.insertGapCol(0, 1);
    sample.remove(0);
    sample.remove(Range(0, 2));
    sample.removeRow(0);
    sample.bubbleRow(0, 1);
    sample.addRows({&sequence});
    sample.combine(other);
    sample.select(Range(0, 4), true);
    sample.range(Range(0, 2));
    sample.rangeAll();
    EXPECT_FALSE(
        TAMBO::replaceColumns(sample.table(), Range(0, 1),
                              {TAMBO::OccupancyRow::filled(1), TAMBO::OccupancyRow::filled(1)}, 2));
    EXPECT_EQ(rowsOf(sample), (Texts{"A-CD", "AC-D"}));
    EXPECT_EQ(sample.range(), Range(0, 0));
    EXPECT_FALSE(sample.isRowSelected(0));
    EXPECT_EQ(history.undoCount(), 0U);
    EXPECT_EQ(log.size(), 14U) << "one line each";
    for (const std::string &line : log)
        EXPECT_NE(line.find("locked"), std::string::npos) << line;
}

TEST_F(AlignmentRows, LockOnSpaceHoldsForItsAlignments)
{
    Alignment &sample = alignment({"A-C"});
    TAMBO::ObjectSpace::get().ownState()->isLocked = true;
    sample.bubbleRow(0, 0);
    sample.insertGap(0, 0);
    EXPECT_EQ(rowsOf(sample), Texts{"A-C"});
    EXPECT_EQ(log.size(), 1U);
}

TEST_F(AlignmentRows, UndoWorksOnALockedAlignment)
{
    Alignment &sample = alignment({"A-C"});
    sample.insertGap(0, 0);
    sample.table().state().isLocked = true;
    history.undo();
    EXPECT_EQ(rowsOf(sample), Texts{"A-C"});
}

TEST_F(AlignmentRows, DuplicateOfALockedAlignmentIsFree)
{
    Alignment &sample = alignment({"A-C"});
    sample.table().state().isLocked = true;
    Alignment *const copy = sample.duplicate(1);
    copy->insertGap(0, 0);
    EXPECT_EQ(rowsOf(*copy), Texts{"-A-C"});
    EXPECT_TRUE(log.empty());
}

} // namespace AlignmentRowsTest
