// SPDX-License-Identifier: GPL-3.0-or-later
// What plug-ins rely on that compare alignments with what they were, or lay out their rows.
#include "RowLayouts.h"

#include "DataMaker.h"
#include "DataPoint.h"
#include "History.h"
#include "StepName.h"
#include "unit/model/AlignmentFixture.h"

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::IsEmpty;

namespace RowLayoutsContractTest {

using TAMBO::FormerStep;
using TAMBO::RowLayout;
using TAMBO::RowLayouts;
using Cells = std::vector<std::uint64_t>;

bool operator==(const FormerStep &a, const FormerStep &b)
{
    return a.name == b.name && a.isFirstUnsaved == b.isFirstUnsaved;
}

class RowLayoutsContract : public AlignmentFixture
{
protected:
    RowLayoutsContract() { TAMBO::setEditRecorder(&steps); }
    ~RowLayoutsContract() override
    {
        TAMBO::setEditRecorder(&history);
        steps.clear();
    }
    std::vector<std::string> names() const
    {
        std::vector<std::string> all;
        for (const FormerStep &step : RowLayouts::steps(shown))
            all.push_back(step.name);
        return all;
    }
    // Bits of the columns, of all rows.
    static std::vector<Cells> cellsOf(const std::optional<TAMBO::FormerLayout> &former)
    {
        std::vector<Cells> all;
        for (const RowLayout &row : former.value().rows)
            all.push_back(row.cells);
        return all;
    }

    TAMBO::Alignment &shown = alignment({"AC-D", "ACDE", "-CD-"});
    TAMBO::History steps;
};

TEST_F(RowLayoutsContract, TheCellsOfARowAreBitsAndItsResiduesAreThoseOfTheSequence)
{
    const RowLayout row = RowLayouts::of(shown, 0);
    EXPECT_EQ(row.sequence, shown.GetSeq(0));
    EXPECT_EQ(row.cells, Cells{0b1011});
    EXPECT_EQ(row.residues, (std::vector<RowLayout::Residues>{{0, 3}}));
    shown.remove({1, 2});
    EXPECT_EQ(RowLayouts::of(shown, 0).cells, Cells{0b101});
    EXPECT_EQ(RowLayouts::of(shown, 0).residues,
              (std::vector<RowLayout::Residues>{{0, 1}, {2, 1}}));
    EXPECT_EQ(RowLayouts::of(shown, 2).residues, (std::vector<RowLayout::Residues>{{1, 1}}));
    EXPECT_EQ(RowLayouts::of(shown, 3).sequence, nullptr);
    TAMBO::Alignment &wide = alignment({std::string(70, '-') + "A"}, "wide");
    EXPECT_EQ(RowLayouts::of(wide, 0).cells, (Cells{0, 64}));
    TAMBO::Alignment &empty = alignment({"---"}, "empty");
    EXPECT_EQ(RowLayouts::of(empty, 0).cells, Cells{});
    EXPECT_THAT(RowLayouts::of(empty, 0).residues, IsEmpty());
}

TEST_F(RowLayoutsContract, StepsThatHaveChangedCellsAreToldTheLatestFirst)
{
    EXPECT_THAT(names(), IsEmpty());
    EXPECT_FALSE(RowLayouts::before(shown, 1));
    EXPECT_FALSE(RowLayouts::before(shown, 0));
    shown.insertGap(1, 0);
    alignment({"AA"}, "other").insertGapCol(0, 1);
    shown.SetColor(Color(1));
    {
        const DataPoint<TAMBO::Alignment> guard(nullptr, &shown);
        const StepName name("Tidy up");
        shown.remove({0, 1});
        shown.bubbleRow(0, 2);
        EXPECT_THAT(names(), IsEmpty()) << "inside a guard";
        EXPECT_FALSE(RowLayouts::before(shown, 1));
    }
    EXPECT_THAT(names(), ElementsAre("Tidy up in test", "insert gap in test"));
    EXPECT_EQ(RowLayouts::steps(shown, 1).size(), 1U);
    EXPECT_THAT(RowLayouts::steps(shown, 0), IsEmpty());
}

TEST_F(RowLayoutsContract, AFormerStateIsToldAndNothingChanges)
{
    shown.insertGap(1, 0);
    shown.remove({0, 1});
    shown.removeRow(0);
    const auto rows = rowsOf(shown);
    const unsigned long revision = shown.layoutRevision();
    EXPECT_EQ(cellsOf(RowLayouts::before(shown, 1)),
              (std::vector<Cells>{{0b101}, {0b1111}, {0b11}}));
    const auto former = RowLayouts::before(shown, 3);
    EXPECT_EQ(cellsOf(former), (std::vector<Cells>{{0b1011}, {0b1111}, {0b110}}));
    EXPECT_EQ(former->width, 4U);
    EXPECT_EQ(rowsOf(shown), rows);
    EXPECT_EQ(shown.layoutRevision(), revision);
    EXPECT_EQ(steps.size(), 3U);
    steps.undo();
    EXPECT_EQ(RowLayouts::steps(shown).size(), 2U) << "what is undone is no former state";
}

TEST_F(RowLayoutsContract, RowsOfSequencesThatHaveGoneAreLeftOut)
{
    shown.insertGap(1, 0);
    TAMBO::DataMaker::Destroy(shown.GetSeq(0));
    EXPECT_EQ(shown.height(), 2U);
    EXPECT_EQ(cellsOf(RowLayouts::before(shown, 2)), (std::vector<Cells>{{0b1111}, {0b110}}));
}

TEST_F(RowLayoutsContract, TheStepBehindTheSavedStateIsMarked)
{
    const auto marked = [this] {
        std::vector<bool> all;
        for (const FormerStep &step : RowLayouts::steps(shown))
            all.push_back(step.isFirstUnsaved);
        return all;
    };
    shown.insertGap(1, 0);
    shown.insertGap(1, 0);
    EXPECT_THAT(marked(), ElementsAre(false, true));
    steps.markSaved(shown);
    EXPECT_THAT(marked(), ElementsAre(false, false));
    shown.insertGap(1, 0);
    shown.insertGap(1, 0);
    EXPECT_THAT(marked(), ElementsAre(false, true, false, false));
    steps.setLimit(1);
    EXPECT_THAT(marked(), ElementsAre(false)) << "the one before is not known any more";
}

TEST_F(RowLayoutsContract, StepsBeforeTheAlignmentCameAreNotTold)
{
    shown.insertGap(1, 0);
    TAMBO::Alignment &copy = *shown.duplicate(3);
    EXPECT_THAT(RowLayouts::steps(copy), IsEmpty());
    copy.insertGap(1, 0);
    ASSERT_EQ(RowLayouts::steps(copy).size(), 1U);
    EXPECT_TRUE(RowLayouts::steps(copy).front().isFirstUnsaved);
    EXPECT_FALSE(RowLayouts::before(copy, 2));
}

TEST_F(RowLayoutsContract, ResiduesArePlacedInOneEditThatIsUndone)
{
    shown.range({0, 4});
    {
        const DataPoint<TAMBO::Alignment> guard(nullptr, &shown);
        EXPECT_TRUE(RowLayouts::place(shown, {1, 3}, 3, {{0b100}, {0b011}, {0b101}}));
    }
    EXPECT_EQ(rowsOf(shown), (Texts{"A--CD", "ACD-E", "-C-D-"}));
    EXPECT_EQ(steps.size(), 1U);
    EXPECT_EQ(steps.undoLabel(), "place residues in test");
    steps.undo();
    EXPECT_EQ(rowsOf(shown), (Texts{"AC-D", "ACDE", "-CD-"}));
    steps.redo();
    EXPECT_EQ(rowsOf(shown), (Texts{"A--CD", "ACD-E", "-C-D-"}));
}

TEST_F(RowLayoutsContract, CellsThatWouldGainOrLoseAResidueAreNotPlaced)
{
    const Texts before = rowsOf(shown);
    EXPECT_FALSE(RowLayouts::place(shown, {1, 3}, 3, {{0b110}, {0b011}, {0b101}}));
    EXPECT_FALSE(RowLayouts::place(shown, {1, 3}, 3, {{0}, {0b011}, {0b101}}));
    EXPECT_FALSE(RowLayouts::place(shown, {1, 3}, 3, {{0b100}, {0b011}}));
    EXPECT_FALSE(RowLayouts::place(shown, {1, 3}, 2, {{0b100}, {0b011}, {0b011}}));
    EXPECT_FALSE(RowLayouts::place(shown, {1, 5}, 3, {{0b100}, {0b011}, {0b101}}));
    EXPECT_FALSE(RowLayouts::place(shown, {3, 3}, 3, {{}, {}, {}}));
    EXPECT_EQ(rowsOf(shown), before);
    EXPECT_EQ(steps.size(), 0U);
}

} // namespace RowLayoutsContractTest
