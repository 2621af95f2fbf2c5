// SPDX-License-Identifier: GPL-3.0-or-later
// What plug-ins rely on that keep something of the columns of an alignment through edits.
#include "LayoutChanges.h"

#include "unit/model/AlignmentFixture.h"

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Optional;

namespace LayoutChangesContractTest {

using TAMBO::LayoutChange;
using TAMBO::LayoutChanges;
using Kind = LayoutChange::Kind;

class LayoutChangesContract : public AlignmentFixture
{
protected:
    LayoutChange gaps(unsigned long row, unsigned long from, unsigned long count, unsigned long to)
    {
        return {.kind = Kind::GapsMoved, .row = row, .from = from, .count = count, .to = to};
    }
    LayoutChange columns(unsigned long from, unsigned long oldCount, unsigned long newCount)
    {
        return {.kind = Kind::ColumnsReplaced,
                .from = from,
                .oldCount = oldCount,
                .newCount = newCount};
    }
    LayoutChange end(unsigned long from, unsigned long oldCount, unsigned long newCount)
    {
        return {.kind = Kind::EndMoved, .from = from, .oldCount = oldCount, .newCount = newCount};
    }
    // Since the last call.
    std::optional<std::vector<LayoutChange>> news()
    {
        const std::uint64_t since = std::exchange(m_Seen, LayoutChanges::revision(shown));
        return LayoutChanges::since(shown, since);
    }

    TAMBO::Alignment &shown = alignment({"AC-D", "ACDE", "-CD-"});
    std::uint64_t m_Seen = LayoutChanges::revision(shown);
};

TEST_F(LayoutChangesContract, AnAlignmentThatNobodyEditsHasNone)
{
    EXPECT_THAT(news(), Optional(IsEmpty()));
    shown.range({1, 2});
    shown.select({0, 2}, true);
    EXPECT_THAT(news(), Optional(IsEmpty()));
}

TEST_F(LayoutChangesContract, AMovedGapIsToldWithItsRowAndPlaces)
{
    shown.moveGap(0, 2, 0, true);
    EXPECT_THAT(news(), Optional(ElementsAre(gaps(0, 2, 1, 0))));
    history.undo();
    EXPECT_THAT(news(), Optional(ElementsAre(gaps(0, 0, 1, 2))));
    history.redo();
    EXPECT_THAT(news(), Optional(ElementsAre(gaps(0, 2, 1, 0))));
}

TEST_F(LayoutChangesContract, AGapThatMakesTheAlignmentWiderComesFromItsNewEnd)
{
    shown.insertGap(1, 1);
    EXPECT_THAT(news(), Optional(ElementsAre(end(4, 0, 1), gaps(1, 4, 1, 1))));
    history.undo();
    EXPECT_THAT(news(), Optional(ElementsAre(gaps(1, 1, 1, 4), end(4, 1, 0))));
}

TEST_F(LayoutChangesContract, ColumnsThatComeAndGoAreToldWithTheirPlaces)
{
    shown.insertGapCol(1, 2);
    EXPECT_THAT(news(), Optional(ElementsAre(columns(1, 0, 2))));
    shown.remove({0, 3});
    EXPECT_THAT(news(), Optional(ElementsAre(columns(0, 3, 0))));
    history.undo();
    EXPECT_THAT(news(), Optional(ElementsAre(columns(0, 0, 3))));
}

TEST_F(LayoutChangesContract, RowsThatComeGoAndMoveAreToldOneByOne)
{
    shown.bubbleRow(0, 2);
    EXPECT_THAT(news(),
                Optional(ElementsAre(LayoutChange{.kind = Kind::RowMoved, .row = 0, .to = 2})));
    shown.removeRow(1);
    EXPECT_THAT(news(), Optional(ElementsAre(LayoutChange{.kind = Kind::RowRemoved, .row = 1})));
    history.undo();
    EXPECT_THAT(news(), Optional(ElementsAre(LayoutChange{.kind = Kind::RowAdded, .row = 1})));
    shown.addRows({&peptide("a", "AC"), &peptide("b", "ACDEF")});
    EXPECT_THAT(news(),
                Optional(ElementsAre(end(4, 0, 1), LayoutChange{.kind = Kind::RowAdded, .row = 3},
                                     LayoutChange{.kind = Kind::RowAdded, .row = 4})));
}

TEST_F(LayoutChangesContract, RowsThatAreSortedAreToldAtOnce)
{
    shown.reorderRows({2, 0, 1});
    EXPECT_THAT(news(), Optional(ElementsAre(LayoutChange{.kind = Kind::RowsSorted})));
}

TEST_F(LayoutChangesContract, SeveralAreToldInTheirOrderAndToEachWhoAsks)
{
    shown.insertGapCol(0, 1);
    const std::uint64_t between = LayoutChanges::revision(shown);
    shown.moveGap(0, 3, 1, true);
    EXPECT_THAT(LayoutChanges::since(shown, m_Seen),
                Optional(ElementsAre(columns(0, 0, 1), gaps(0, 3, 1, 1))));
    EXPECT_THAT(LayoutChanges::since(shown, between), Optional(ElementsAre(gaps(0, 3, 1, 1))));
    EXPECT_GT(between, m_Seen);
}

TEST_F(LayoutChangesContract, WhoLooksAfterTooManyIsToldSo)
{
    const std::uint64_t before = LayoutChanges::revision(shown);
    for (std::size_t i = 0; i < LayoutChanges::kMostKept; ++i)
        shown.insertGapCol(0, i + 1);
    const auto all = LayoutChanges::since(shown, before);
    ASSERT_TRUE(all);
    ASSERT_EQ(all->size(), LayoutChanges::kMostKept);
    EXPECT_EQ(all->front(), columns(0, 0, 1));
    EXPECT_EQ(all->back(), columns(0, 0, LayoutChanges::kMostKept));
    shown.insertGapCol(0, 1000);
    EXPECT_EQ(LayoutChanges::since(shown, before), std::nullopt);
    EXPECT_EQ(LayoutChanges::since(shown, before + 1)->back(), columns(0, 0, 1000));
    // Never was.
    EXPECT_EQ(LayoutChanges::since(shown, LayoutChanges::revision(shown) + 1), std::nullopt);
}

TEST_F(LayoutChangesContract, AGreatManyRowsAtOnceAreNotToldOneByOne)
{
    std::vector<TAMBO::Compound *> many;
    for (int i = 0; i < 100; ++i)
        many.push_back(&peptide("row", "ACD"));
    shown.addRows(many);
    EXPECT_EQ(news(), std::nullopt);
    shown.insertGapCol(0, 1);
    EXPECT_THAT(news(), Optional(ElementsAre(columns(0, 0, 1))));
}

} // namespace LayoutChangesContractTest
