// SPDX-License-Identifier: GPL-3.0-or-later
#include "unit/model/AlignmentFixture.h"

using TAMBO::Alignment;
using TAMBO::AlignmentCell;
using TAMBO::Compound;
using TAMBO::Peptide;

namespace AlignmentReadingTest {

class AlignmentReading : public AlignmentFixture
{
};

TEST_F(AlignmentReading, EmptyAlignmentHasNeitherColumnsNorRows)
{
    const Alignment &empty = alignment(Texts{});
    EXPECT_EQ(empty.width(), 0U);
    EXPECT_EQ(empty.height(), 0U);
    EXPECT_TRUE(empty.columns().empty());
    EXPECT_EQ(empty.range(), Range(0, 0));
}

TEST_F(AlignmentReading, AlignmentWithoutColumnsHasNoRows)
{
    Alignment &sample = alignment({"AC", "-D"});
    sample.remove(Range(0, 2));
    EXPECT_EQ(sample.width(), 0U);
    EXPECT_EQ(sample.height(), 0U);
    EXPECT_EQ(sample.GetSeq(0), nullptr);
    EXPECT_EQ(sample.GetSeqName(0), "");
    EXPECT_FALSE(sample.isRowSelected(0));
    history.undo();
    EXPECT_EQ(rowsOf(sample), (Texts{"AC", "-D"}));
}

TEST_F(AlignmentReading, ItemIsTheResidueOrNullForAGap)
{
    const Alignment &sample = alignment({"A-C", "-DE"});
    EXPECT_EQ(sample.getItem(0, 0), sequence(sample, 0).residue(0));
    EXPECT_EQ(sample.getItem(0, 1), nullptr);
    EXPECT_EQ(sample.getItem(0, 2), sequence(sample, 0).residue(1));
    EXPECT_EQ(sample.getItem(1, 0), nullptr);
    EXPECT_EQ(sample.getItem(1, 1)->TypeCode(), 'D');
    EXPECT_EQ(sample.getItem(1, 2), sample.getItem(1, 2)) << "the same object at every call";
}

TEST_F(AlignmentReading, OutOfBoundsGivesNullOrEmpty)
{
    const Alignment &sample = alignment({"AC", "-D"});
    constexpr unsigned long far = ~0UL;
    for (const unsigned long index : {2UL, 64UL, 1000000UL, far}) {
        EXPECT_EQ(sample.getItem(index, 0), nullptr);
        EXPECT_EQ(sample.getItem(0, index), nullptr);
        EXPECT_TRUE(sample.getCol(index).empty());
        EXPECT_EQ(sample.GetSeq(index), nullptr);
        EXPECT_EQ(sample.GetSeqName(index), "");
        EXPECT_EQ(sample.GetSequence(index, false), "");
        EXPECT_EQ(sample.letterAt(index, 0), '\0');
        EXPECT_EQ(sample.letterAt(0, index), '\0');
        EXPECT_EQ(sample.majority(index).letter, '-');
        EXPECT_EQ(sample.majority(index).count, 0U);
        EXPECT_FALSE(sample.isRowSelected(index));
        EXPECT_FALSE(sample.isColumnSelected(index));
        std::vector<AlignmentCell> cells;
        sample.readRow(index, 0, 2, cells);
        sample.readRow(0, index, far, cells);
        std::vector<char> letters;
        sample.readColumn(index, letters);
        EXPECT_TRUE(cells.empty());
        EXPECT_TRUE(letters.empty());
    }
}

TEST_F(AlignmentReading, ColumnHoldsOneEntryPerRow)
{
    const Alignment &sample = alignment({"A-", "C-", "-D"});
    EXPECT_EQ(sample.getCol(0),
              (std::vector<Compound *>{sample.getItem(0, 0), sample.getItem(1, 0), nullptr}));
    EXPECT_EQ(sample.getCol(1),
              (std::vector<Compound *>{nullptr, nullptr, sequence(sample, 2).residue(0)}));
    EXPECT_EQ(sample.columns(),
              (std::vector<std::vector<Compound *>>{sample.getCol(0), sample.getCol(1)}));
}

TEST_F(AlignmentReading, SequenceIsTheChainThatTheRowWasMadeOf)
{
    Peptide &first = peptide("first", "ACD");
    Peptide &second = peptide("second", "AC");
    const Alignment &sample = alignmentOf({{&first, "ACD"}, {&second, "A-C"}});
    EXPECT_EQ(sample.GetSeq(0), &first);
    EXPECT_EQ(sample.GetSeq(1), &second);
    EXPECT_EQ(namesOf(sample), (Texts{"first", "second"}));
}

TEST_F(AlignmentReading, LabelOfARowIsShownInsteadOfTheSequencesName)
{
    Peptide &sequence = peptide("chain", "AC");
    const auto label = [](const char *name, const char *description) {
        TAMBO::RowLabel made;
        made.name = name;
        made.description = description;
        return made;
    };
    TAMBO::AlignmentTable::Rows rows;
    rows.push_back(std::make_unique<TAMBO::AlignmentRow>(sequence, TAMBO::OccupancyRow::filled(2),
                                                         label("5mdh_A", "")));
    rows.push_back(std::make_unique<TAMBO::AlignmentRow>(sequence, TAMBO::OccupancyRow::filled(2),
                                                         label("", "a description")));
    const auto sample = TAMBO::AlignmentTable::make("labels", std::move(rows));
    EXPECT_EQ(namesOf(*sample), (Texts{"5mdh_A", "chain"}));
    EXPECT_EQ(sample->table().row(1).label()->description, "a description");
}

TEST_F(AlignmentReading, RowMayHoldAPieceOfItsSequence)
{
    Peptide &chain = peptide("chain", "ACDEFG");
    TAMBO::GappedSequence cells;
    cells.append("D-EF");
    TAMBO::AlignmentTable::Rows rows;
    rows.push_back(std::make_unique<TAMBO::AlignmentRow>(
        chain, TAMBO::OccupancyRow(cells.occupancy), TAMBO::RowLabel(), 2));
    EXPECT_FALSE(rows.front()->isComplete());
    const auto sample = TAMBO::AlignmentTable::make("piece", std::move(rows));
    EXPECT_EQ(rowsOf(*sample), (Texts{"D-EF"}));
    EXPECT_EQ(sample->getItem(0, 2), chain.residue(3));
    chain.setSelected(2, 5, true);
    EXPECT_TRUE(sample->isRowSelected(0));
    chain.setSelected(3, false);
    EXPECT_FALSE(sample->isRowSelected(0));
    sample->remove(Range(0, 4));
    EXPECT_EQ(sample->width(), 0U);
    history.undo();
    EXPECT_EQ(rowsOf(*sample), (Texts{"D-EF"}));
    history.clear();
}

TEST_F(AlignmentReading, SequenceTextHasOneCharacterPerColumn)
{
    const Alignment &sample = alignment({"--AC-D-", "ACDEFGH"});
    EXPECT_EQ(sample.GetSequence(0, false), "--AC-D-");
    EXPECT_EQ(sample.GetSequence(0, true), "ACD");
    EXPECT_EQ(sample.GetSequence(1, false), "ACDEFGH");
}

TEST_F(AlignmentReading, RowPieceIsAppendedAndCutAtTheLastColumn)
{
    const Alignment &sample = alignment({"A-CD"});
    std::vector<AlignmentCell> cells(1);
    sample.readRow(0, 1, 100, cells);
    ASSERT_EQ(cells.size(), 4U);
    EXPECT_TRUE(cells[1].isGap());
    EXPECT_EQ(cells[2].letter, 'C');
    EXPECT_EQ(cells[3].letter, 'D');
    EXPECT_EQ(cells[3].color, sample.getItem(0, 3)->GetColor());
    sample.readRow(0, 3, 1, cells);
    EXPECT_EQ(cells.size(), 4U) << "an empty piece";
}

TEST_F(AlignmentReading, RowPieceShowsSelectionAndColour)
{
    const Alignment &sample = alignment({"AC"});
    sample.getItem(0, 0)->SetColor(Color(0x102030));
    sample.getItem(0, 1)->SetSelected(true);
    std::vector<AlignmentCell> cells;
    sample.readRow(0, 0, 2, cells);
    EXPECT_EQ(cells[0].color, Color(0x102030));
    EXPECT_EQ(cells[1].color, sample.getItem(0, 1)->GetColor());
    EXPECT_FALSE(cells[1].color == sample.getItem(0, 1)->OwnColor());
}

TEST_F(AlignmentReading, ColumnLettersAreAppendedWithZeroForAGap)
{
    const Alignment &sample = alignment({"A-", "C-", "-D"});
    std::vector<char> letters{'x'};
    sample.readColumn(0, letters);
    EXPECT_EQ(letters, (std::vector<char>{'x', 'A', 'C', '\0'}));
}

TEST_F(AlignmentReading, ColumnsOfVeryManyRowsAreRead)
{
    Peptide &shared = peptide("shared", "AC");
    const Alignment &sample = alignmentOf(std::vector<std::pair<Peptide *, std::string>>(
        70000, {&shared, "A-" + std::string(60, '-') + "C"}));
    for (const auto &[column, letter] :
         {std::pair(0, 'A'), std::pair(1, '\0'), std::pair(62, 'C')}) {
        std::vector<char> letters;
        sample.readColumn(static_cast<unsigned long>(column), letters);
        EXPECT_EQ(letters, std::vector<char>(70000, letter));
        EXPECT_EQ(sample.majority(static_cast<unsigned long>(column)).count,
                  letter == '\0' ? 0U : 70000U);
    }
    EXPECT_LT(sample.table().bytes(), 70000U * 250) << "what is kept is bounded";
}

TEST_F(AlignmentReading, AlignmentIsANamedNodeWithoutChildren)
{
    Alignment &sample = alignment({"AC"}, "globins");
    EXPECT_EQ(sample.Name(), "globins");
    EXPECT_EQ(sample.TypeName(), "alignment");
    EXPECT_EQ(sample.TypeCode(), '\0');
    EXPECT_EQ(sample.Parent(), &TAMBO::ObjectSpace::get());
    EXPECT_EQ(sample.ChildCount(), 0U);
    EXPECT_EQ(sample.Child(0), nullptr);
    EXPECT_FALSE(sample.Position().isDefined());
    EXPECT_FALSE(sample.IsLocked());
    sample.SetColor(Color(0x0000ff));
    EXPECT_EQ(sample.GetColor(), Color(0x0000ff));
    history.undo();
    EXPECT_FALSE(sample.GetColor() == Color(0x0000ff));
    sample.SetSelected(true);
    EXPECT_TRUE(sample.IsSelected());
    sample.ToggleSelected();
    EXPECT_FALSE(sample.IsSelected());
}

TEST_F(AlignmentReading, RowThatHoldsMoreResiduesThanItsSequenceIsLeftOut)
{
    Peptide &sequence = peptide("short", "AC");
    TAMBO::AlignmentTable::Rows rows;
    rows.push_back(std::make_unique<TAMBO::AlignmentRow>(sequence, TAMBO::OccupancyRow::filled(3)));
    rows.push_back(std::make_unique<TAMBO::AlignmentRow>(sequence, TAMBO::OccupancyRow::filled(2),
                                                         TAMBO::RowLabel(), 1));
    rows.push_back(std::make_unique<TAMBO::AlignmentRow>(sequence, TAMBO::OccupancyRow::filled(2)));
    const auto sample = TAMBO::AlignmentTable::make("bad", std::move(rows));
    EXPECT_EQ(rowsOf(*sample), (Texts{"AC"}));
    EXPECT_EQ(log, (Texts(2, "A row of short has more residues than it.")));
}

TEST_F(AlignmentReading, AlignmentMayBeWiderThanItsRows)
{
    Peptide &sequence = peptide("short", "AC");
    const auto sample =
        TAMBO::AlignmentTable::make("wide", TAMBO::AlignmentTable::rowsOf({&sequence}), 5);
    EXPECT_EQ(rowsOf(*sample), (Texts{"AC---"}));
}

// ---- Majority

TEST_F(AlignmentReading, MajorityCountsLettersAndSkipsGaps)
{
    const Alignment &sample = alignment({"AA-A", "AA-C", "A--C", "CG-A"});
    const auto majority = [&](unsigned long col) {
        const TAMBO::AlignmentMajority found = sample.majority(col);
        return std::pair(found.letter, found.count);
    };
    EXPECT_EQ(majority(0), std::pair('A', 3UL));
    EXPECT_EQ(majority(1), std::pair('A', 2UL));
    EXPECT_EQ(majority(2), std::pair('-', 0UL)) << "a column without a residue";
    EXPECT_EQ(majority(3), std::pair('A', 2UL)) << "the smallest code among equals";
}

TEST_F(AlignmentReading, MajorityIsRightWhereResiduesWereRemovedInBetween)
{
    Alignment &sample = alignment({"ACDEFGHI", "ACDEFGHI", "A-D-F-H-"});
    sample.remove(2);
    sample.remove(Range(4, 6));
    EXPECT_EQ(rowsOf(sample), (Texts{"ACEFI", "ACEFI", "A--F-"}));
    std::string consensus;
    for (unsigned long col = 0; col < sample.width(); ++col)
        consensus += sample.majority(col).letter;
    EXPECT_EQ(consensus, "ACEFI");
    EXPECT_EQ(sample.majority(3).count, 3U);
}

TEST_F(AlignmentReading, MajorityTellsLowerCaseFromUpperCase)
{
    const Alignment &sample = alignment({"a", "A", "a"});
    EXPECT_EQ(sample.majority(0).letter, 'a');
    EXPECT_EQ(sample.majority(0).count, 2U);
}

TEST_F(AlignmentReading, MajorityHoldsForMoreKindsOfLettersThanProteinsHave)
{
    Texts rows;
    for (int c = 1; c < 256; ++c) {
        if (c != '-' && c != '.' && c != '~')
            rows.emplace_back(1, char(c));
    }
    Alignment &sample = alignment(rows);
    // Codes are signed bytes.
    EXPECT_EQ(sample.majority(0).letter, '\x80');
    EXPECT_EQ(sample.majority(0).count, 1U);
    // One more of the greatest code, with the counts at hand.
    sample.addRows({&peptide("last", "\x7f")});
    EXPECT_EQ(sample.majority(0).letter, '\x7f');
    EXPECT_EQ(sample.majority(0).count, 2U);
    history.undo();
    EXPECT_EQ(sample.majority(0).letter, '\x80');
}

TEST_F(AlignmentReading, MajorityTellsWhetherAnotherLetterIsAsFrequent)
{
    const Alignment &sample = alignment({"ACC-", "ADAA", "CCDA", "CDD-"});
    EXPECT_FALSE(sample.majority(0).isAlone);
    EXPECT_FALSE(sample.majority(1).isAlone);
    EXPECT_TRUE(sample.majority(2).isAlone);
    EXPECT_EQ(sample.majority(2).letter, 'D');
    EXPECT_TRUE(sample.majority(3).isAlone);
}

TEST_F(AlignmentReading, MajorityLearnsLettersThatComeLater)
{
    Texts rows;
    for (char c = 'A'; c <= 'Z'; ++c)
        rows.emplace_back(1, c);
    Alignment &sample = alignment(rows);
    EXPECT_EQ(sample.majority(0).letter, 'A');
    std::vector<Compound *> more;
    for (char c = 'a'; c <= 'j'; ++c)
        more.push_back(&peptide("more", std::string(1, c)));
    more.push_back(&peptide("more", "j"));
    sample.addRows(more);
    EXPECT_EQ(sample.majority(0).letter, 'j');
    EXPECT_EQ(sample.majority(0).count, 2U);
}

TEST_F(AlignmentReading, MajorityStaysRightWhenMoreColumnsAreReadThanAreKept)
{
    std::string wide;
    for (int i = 0; i < 20000; ++i)
        wide += "ACDE"[i % 4];
    Alignment &sample = alignment({wide, wide});
    for (unsigned long col = 0; col < sample.width(); ++col)
        ASSERT_EQ(sample.majority(col).letter, "ACDE"[col % 4]);
    EXPECT_LT(sample.table().bytes(), 5'000'000U) << "what is kept is bounded";
    sample.insertGap(0, 0);
    EXPECT_EQ(sample.majority(0).letter, 'A');
    EXPECT_EQ(sample.majority(0).count, 1U);
    EXPECT_EQ(sample.majority(19999).count, 1U);
    EXPECT_EQ(sample.majority(20000).letter, 'E');
}

// ---- Selection

TEST_F(AlignmentReading, RowIsSelectedWhenAllItsResiduesAreOrItHasNone)
{
    const Alignment &sample = alignment({"A-C", "---"});
    EXPECT_FALSE(sample.isRowSelected(0));
    EXPECT_TRUE(sample.isRowSelected(1)) << "only gaps";
    sample.getItem(0, 0)->SetSelected(true);
    EXPECT_FALSE(sample.isRowSelected(0));
    sample.getItem(0, 2)->SetSelected(true);
    EXPECT_TRUE(sample.isRowSelected(0));
    sample.getItem(0, 2)->ToggleSelected();
    EXPECT_FALSE(sample.isRowSelected(0));
}

TEST_F(AlignmentReading, RowThatLostResiduesIsSelectedByThoseItStillHas)
{
    Alignment &sample = alignment({"ACDEF"});
    Peptide &chain = sequence(sample, 0);
    sample.remove(2);
    for (const std::size_t index : {0U, 1U, 3U})
        chain.setSelected(index, true);
    EXPECT_FALSE(sample.isRowSelected(0));
    chain.setSelected(4, true);
    EXPECT_TRUE(sample.isRowSelected(0));
    history.undo();
    EXPECT_FALSE(sample.isRowSelected(0)) << "the residue that came back is not selected";
}

TEST_F(AlignmentReading, ColumnIsSelectedWhenItHoldsResiduesAndAllAreSelected)
{
    const Alignment &sample = alignment({"A-C", "A-D", "--E"});
    EXPECT_FALSE(sample.isColumnSelected(0));
    EXPECT_FALSE(sample.isColumnSelected(1)) << "only gaps";
    sample.getItem(0, 0)->SetSelected(true);
    EXPECT_FALSE(sample.isColumnSelected(0));
    sample.getItem(1, 0)->SetSelected(true);
    EXPECT_TRUE(sample.isColumnSelected(0));
    EXPECT_FALSE(sample.isColumnSelected(1));
    EXPECT_FALSE(sample.isColumnSelected(2));
    sample.getItem(1, 0)->SetSelected(false);
    EXPECT_FALSE(sample.isColumnSelected(0));
}

TEST_F(AlignmentReading, SelectedColumnsFollowTheCells)
{
    Alignment &sample = alignment({"AC-", "-DE"});
    sample.select(Range(1, 2), true);
    EXPECT_TRUE(sample.isColumnSelected(1));
    sample.moveGap(0, 2, 1, true);
    EXPECT_EQ(rowsOf(sample), (Texts{"A-C", "-DE"}));
    EXPECT_TRUE(sample.isColumnSelected(1)) << "only the D is left there";
    EXPECT_FALSE(sample.isColumnSelected(2));
    sample.removeRow(1);
    EXPECT_FALSE(sample.isColumnSelected(1));
    EXPECT_TRUE(sample.isColumnSelected(2));
    history.undo();
    EXPECT_TRUE(sample.isColumnSelected(1));
    EXPECT_FALSE(sample.isColumnSelected(2));
}

TEST_F(AlignmentReading, SelectionOfASequenceShowsInEveryRowAndAlignmentThatHoldsIt)
{
    Peptide &shared = peptide("shared", "AC");
    const Alignment &first = alignmentOf({{&shared, "AC"}, {&shared, "-AC"}});
    const Alignment &second = alignmentOf({{&shared, "A--C"}});
    EXPECT_FALSE(second.isColumnSelected(0));
    shared.setSelected(0, true);
    EXPECT_TRUE(first.isColumnSelected(0));
    EXPECT_FALSE(first.isColumnSelected(1));
    EXPECT_TRUE(second.isColumnSelected(0));
    shared.setSelected(1, true);
    EXPECT_TRUE(first.isColumnSelected(1));
    EXPECT_TRUE(first.isRowSelected(1));
    EXPECT_TRUE(second.isRowSelected(0));
}

// ---- Revision

TEST_F(AlignmentReading, LayoutRevisionGrowsWithShapeOrderCellsAndNumbering)
{
    Alignment &sample = alignment({"A-C", "-DE"});
    unsigned long last = sample.layoutRevision();
    const auto expectGrown = [&](const char *what) {
        EXPECT_GT(sample.layoutRevision(), last) << what;
        last = sample.layoutRevision();
    };
    sample.insertGapCol(0, 1);
    expectGrown("a column");
    sample.moveGap(0, 2, 1, true);
    sample.moveGap(0, 0, 3, true);
    expectGrown("a cell");
    sample.bubbleRow(0, 1);
    expectGrown("the order of rows");
    history.undo();
    expectGrown("undo");
    history.redo();
    expectGrown("redo");
    sequence(sample, 0).setNumber(0, TAMBO::SequenceNumber("17"));
    expectGrown("a number");
}

TEST_F(AlignmentReading, LayoutRevisionStaysWhenOnlySelectionColourOrRangeChange)
{
    Alignment &sample = alignment({"A-C"});
    const unsigned long before = sample.layoutRevision();
    sample.select(Range(0, 3), true);
    sample.getItem(0, 0)->SetColor(Color(0x102030));
    sample.range(Range(0, 2));
    sample.moveGap(0, 1, 1, true);
    EXPECT_EQ(sample.layoutRevision(), before);
}

} // namespace AlignmentReadingTest
