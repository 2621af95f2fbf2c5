// SPDX-License-Identifier: GPL-3.0-or-later
// What is said while gaps are dragged, against a plain look at every pair before and after.
#include "DragSpread.h"

#include "SpreadSum.h"
#include "guide/FamilyInSpace.h"

#include <algorithm>
#include <set>

namespace DragSpreadTest {

using companion::DragSpread;
using companion::GapMove;
using companion::GapMoves;
using companion::movesOf;
using companion::PlaceSpread;
using companion::SpreadSum;
using companion::SpreadTable;

constexpr auto kForever = std::chrono::hours(1);
constexpr auto kNoTime = std::chrono::microseconds(0);

class SpreadOfADrag : public FamilyInSpace
{
protected:
    static companion::MovesAt by(const TAMBO::Alignment &alignment, const TAMBO::GapDrag &press)
    {
        return
            [&alignment, press](unsigned long column) { return movesOf(alignment, press, column); };
    }
    // By the arithmetic of the tables and pages, of all columns from anew.
    static double exactTotal(const TAMBO::Alignment &alignment)
    {
        double sum = 0;
        double columns = 0;
        for (unsigned long col = 0; col < alignment.width(); ++col) {
            SpreadSum spread;
            for (const TAMBO::Vertex &place : positionsIn(alignment, col))
                spread.add(place);
            while (spread.goOn(std::chrono::steady_clock::time_point::max())) {
            }
            sum += spread.value().distance.value_or(0);
            columns += spread.value().distance ? 1 : 0;
        }
        return sum / columns;
    }
};

TEST_F(SpreadOfADrag, WhatIsAnnouncedIsFoundWhenItHasBeenLetGo)
{
    TAMBO::Alignment &alignment = family(8, 24, 36);
    SpreadTable table;
    DragSpread spread;
    int changed = 0;
    for (int round = 0; round < 400; ++round) {
        SCOPED_TRACE(round);
        const TAMBO::GapDrag press = anyPress(alignment);
        spread.begin(by(alignment, press));
        unsigned long column = 0;
        // Over some columns on the way.
        for (unsigned step = 1 + below(4); step > 0; --step) {
            column = below(alignment.width());
            spread.aim(alignment, column);
            while (spread.goOn(alignment, table, kNoTime) && below(3) > 0) {
            }
        }
        while (spread.goOn(alignment, table, kForever)) {
        }
        ASSERT_TRUE(spread.live());
        ASSERT_TRUE(table.total());
        const PlaceSpread place = *spread.live();
        const auto total = table.total()->value();
        const auto totalAfter = place.total(*table.total()).value();
        const unsigned long begin = spread.changedBegin();
        const unsigned long end = spread.changedEnd();
        const auto before = plainMean(alignment, begin, std::min(end, alignment.width()));
        expectSame(total, plainMean(alignment, 0, alignment.width()));
        expectSame(place.before.value(), before);
        std::vector<std::optional<companion::PairSum>> columns;
        for (unsigned long col = begin; col < end; ++col)
            columns.push_back(spread.liveAt(col));
        const bool changes = begin < end;

        letGo(alignment, press, column);
        expectSame(place.after.value(),
                   plainMean(alignment, begin, std::min(end, alignment.width())));
        expectSame(totalAfter, plainMean(alignment, 0, alignment.width()));
        ASSERT_TRUE(totalAfter);
        ASSERT_NEAR(*totalAfter, exactTotal(alignment), 1e-9 * *totalAfter);
        for (unsigned long col = begin; col < std::min(end, alignment.width()); ++col) {
            ASSERT_TRUE(columns[col - begin]);
            const companion::PairSum found = *columns[col - begin];
            ASSERT_EQ(found.positions, positionsIn(alignment, col).size()) << col;
            expectSame(found.hasMean() ? std::optional(found.mean()) : std::nullopt,
                       plainMean(alignment, col));
        }
        changed += changes ? 1 : 0;
        if (alignment.width() > 60)
            while (history.canUndo())
                history.undo();
    }
    EXPECT_GT(changed, 150);
}

TEST_F(SpreadOfADrag, SeveralRowsAtOnceAreFoundTogether)
{
    TAMBO::Alignment &alignment = family(10, 24, 40);
    SpreadTable table;
    DragSpread spread;
    int changed = 0;
    for (int round = 0; round < 150; ++round) {
        SCOPED_TRACE(round);
        const std::size_t steps = history.size();
        GapMoves moves;
        for (unsigned long row = below(3); row < alignment.height(); row += 1 + below(3)) {
            const unsigned long from = below(alignment.width());
            for (const GapMove &move :
                 movesOf(alignment, {{row, from}, Qt::LeftButton, from}, below(alignment.width())))
                if (alignment.letterAt(row, from) == '\0')
                    moves.push_back(move);
        }
        spread.begin([&moves](unsigned long) { return moves; });
        spread.aim(alignment, 5);
        while (spread.goOn(alignment, table, kForever)) {
        }
        const PlaceSpread place = *spread.live();
        const auto totalAfter = place.total(*table.total()).value();
        {
            const DataPoint<TAMBO::Alignment> change(nullptr, &alignment);
            for (const GapMove &move : moves)
                alignment.moveGaps(move.row, move.from, move.count, move.to);
        }
        ASSERT_NEAR(*totalAfter, exactTotal(alignment), 1e-9 * *totalAfter);
        expectSame(place.after.value(),
                   plainMean(alignment, spread.changedBegin(), spread.changedEnd()));
        changed += history.size() > steps ? 1 : 0;
    }
    EXPECT_GT(changed, 100);
}

TEST_F(SpreadOfADrag, ThePlaceOfLeastSpreadIsThatOfAllWithinReach)
{
    TAMBO::Alignment &alignment = family(6, 24, 40);
    SpreadTable table;
    DragSpread spread;
    int elsewhere = 0;
    for (int round = 0; round < 60; ++round) {
        SCOPED_TRACE(round);
        const TAMBO::GapDrag press = anyPress(alignment);
        const unsigned long column = below(alignment.width());
        spread.begin(by(alignment, press));
        spread.aim(alignment, column);
        while (spread.goOn(alignment, table, kForever)) {
        }
        const auto found = spread.least(*table.total());
        ASSERT_TRUE(found);
        // Carried out one after the other, the nearest first.
        std::optional<double> least;
        unsigned long expected = 0;
        const std::size_t position = history.position();
        const auto look = [&](unsigned long to) {
            letGo(alignment, press, to);
            const double mean = exactTotal(alignment);
            while (history.position() > position)
                history.undo();
            if (!least || mean < *least - 1e-9) {
                least = mean;
                expected = to;
            }
        };
        for (unsigned long far = 0; far <= DragSpread::kReach; ++far) {
            if (far <= column)
                look(column - far);
            if (far > 0 && column + far < alignment.width())
                look(column + far);
        }
        ASSERT_EQ(*found, expected);
        elsewhere += expected != column ? 1 : 0;
    }
    EXPECT_GT(elsewhere, 20);
}

TEST_F(SpreadOfADrag, AStepOfTheDragCostsTheColumnsThatChange)
{
    TAMBO::Alignment &alignment = family(40, 60, 120);
    SpreadTable table;
    DragSpread spread;
    unsigned long row = 0;
    unsigned long gap = 0;
    while (!alignment.hasPositions(row) || alignment.letterAt(row, gap) != '\0')
        gap = gap + 1 < alignment.width() ? gap + 1 : (++row, 0);
    spread.begin(by(alignment, {{row, gap}, Qt::LeftButton, gap}));
    for (unsigned long column = 0; column < alignment.width(); ++column) {
        spread.aim(alignment, column);
        const std::size_t before = spread.sums();
        while (!spread.live())
            spread.goOn(alignment, table, kNoTime);
        EXPECT_LE(spread.sums() - before, spread.changedEnd() - spread.changedBegin());
        while (spread.goOn(alignment, table, kForever)) {
        }
    }
    EXPECT_EQ(table.found(), alignment.width()) << "no column was summed up twice";
}

TEST_F(SpreadOfADrag, SmallPartsGiveTheSameAndEachDoesSomething)
{
    TAMBO::Alignment &alignment = family(8, 24, 36);
    const TAMBO::GapDrag press{{1, alignment.columnOfResidue(1, 3)}, Qt::MiddleButton, {}};
    SpreadTable table;
    DragSpread whole;
    whole.begin(by(alignment, press));
    whole.aim(alignment, press.from.col + 3);
    while (whole.goOn(alignment, table, kForever)) {
    }
    SpreadTable again;
    DragSpread parts;
    parts.begin(by(alignment, press));
    parts.aim(alignment, press.from.col + 3);
    int count = 0;
    for (; parts.goOn(alignment, again, kNoTime); ++count)
        ASSERT_LT(count, 100'000);
    EXPECT_GT(count, 50);
    EXPECT_EQ(parts.live()->after.sum, whole.live()->after.sum);
    EXPECT_EQ(parts.least(*again.total()), whole.least(*table.total()));
}

TEST_F(SpreadOfADrag, StructuresThatMoveMeanwhileAreFollowed)
{
    TAMBO::Alignment &alignment = family(5, 24, 36);
    SpreadTable table;
    DragSpread spread;
    const TAMBO::GapDrag press{{0, alignment.columnOfResidue(0, 5)}, Qt::MiddleButton, {}};
    spread.begin(by(alignment, press));
    const unsigned long to = press.from.col + 2;
    spread.aim(alignment, to);
    while (spread.goOn(alignment, table, kForever)) {
    }
    const double before = *spread.live()->after.value();
    superpose(alignment, {1, 0});
    while (spread.goOn(alignment, table, kForever)) {
    }
    const double after = *spread.live()->after.value();
    EXPECT_NE(after, before);
    letGo(alignment, press, to);
    EXPECT_NEAR(after,
                *plainMean(alignment, spread.changedBegin(),
                           std::min(spread.changedEnd(), alignment.width())),
                1e-4);
}

} // namespace DragSpreadTest
