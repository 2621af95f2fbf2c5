// SPDX-License-Identifier: GPL-3.0-or-later
#include "CellChoice.h"

#include "DataPoint.h"
#include "MadeRows.h"
#include "Measures.h"
#include "Space.h"
#include "WholeSelection.h"

#include <functional>

namespace CellChoiceTest {

using How = TAMBO::Alignment::Selecting;
using companion::choiceOf;
using companion::Limit;

class Choosing : public MadeRows
{
protected:
    using Wanted = std::function<bool(unsigned long row, unsigned long col)>;

    static void expectSelected(const TAMBO::Alignment &alignment, const Wanted &wanted)
    {
        for (unsigned long row = 0; row < alignment.height(); ++row)
            for (unsigned long col = 0; col < alignment.width(); ++col)
                if (const TAMBO::Compound *const residue = alignment.getItem(row, col))
                    ASSERT_EQ(residue->IsSelected(), wanted(row, col)) << row << ", " << col;
    }
};

TEST_F(Choosing, ABlockIsSelectedAddedAndTakenOut)
{
    TAMBO::Alignment &alignment = made(1, 12, 80);
    const auto isIn = [](const TAMBO::CellBlock &block, unsigned long row, unsigned long col) {
        return block.contains({row, col});
    };
    const TAMBO::CellBlock first{2, 7, 10, 70};
    const TAMBO::CellBlock second{5, 40, 60, 500};
    ASSERT_TRUE(companion::select(alignment, choiceOf(alignment, first), How::Replace));
    expectSelected(alignment, [&](auto row, auto col) { return isIn(first, row, col); });
    ASSERT_TRUE(companion::select(alignment, choiceOf(alignment, second), How::Add));
    expectSelected(alignment, [&](auto row, auto col) {
        return isIn(first, row, col) || isIn(second, row, col);
    });
    ASSERT_TRUE(companion::select(alignment, choiceOf(alignment, first), How::Remove));
    expectSelected(alignment, [&](auto row, auto col) {
        return !isIn(first, row, col) && isIn(second, row, col);
    });
    ASSERT_TRUE(companion::select(alignment, choiceOf(alignment, first), How::Replace));
    expectSelected(alignment, [&](auto row, auto col) { return isIn(first, row, col); });
}

TEST_F(Choosing, RowsAndColumnsBeyondALimitAreSelectedWhole)
{
    TAMBO::Alignment &alignment = made(3, 20, 60);
    for (const bool isAtLeast : {true, false}) {
        companion::RowIdentities rows(alignment, 4, companion::IdentityOf::AlignmentLength);
        companion::ColumnValues columns(alignment, companion::ColumnValue::Gaps);
        while (rows.goOn(std::chrono::hours(1)) || columns.goOn(std::chrono::hours(1))) {
        }
        const auto holds = [isAtLeast](double value, double limit) {
            return isAtLeast ? value >= limit : value <= limit;
        };
        const double ofRows = 0.2;
        const double ofColumns = 0.5;
        companion::select(alignment, choiceOf(alignment, rows, {ofRows, isAtLeast}), How::Replace);
        expectSelected(alignment,
                       [&](auto row, auto) { return holds(rows.values()[row], ofRows); });
        companion::select(alignment, choiceOf(alignment, columns, {ofColumns, isAtLeast}),
                          How::Replace);
        expectSelected(alignment,
                       [&](auto, auto col) { return holds(columns.values()[col], ofColumns); });
    }
}

TEST_F(Choosing, LimitsHoldForSharesThatAreExactlyAsLarge)
{
    for (int whole = 1; whole <= 300; ++whole) {
        for (int percent = 0; percent <= 100; ++percent) {
            const int part = whole * percent / 100;
            const bool isExact = part * 100 == whole * percent;
            const Limit least{percent / 100.0, true};
            const Limit most{percent / 100.0, false};
            ASSERT_EQ(least.holds(double(part) / whole), isExact) << part << " of " << whole;
            ASSERT_TRUE(most.holds(double(part) / whole));
        }
    }
}

TEST_F(Choosing, AllNothingAndTheOtherWayRound)
{
    TAMBO::Alignment &alignment = made(2, 10, 50);
    TAMBO::Compound *const other = TAMBO::DataMaker::makeSequence("other", "ACD");
    {
        const DataPoint<TAMBO::Space> change(nullptr, TAMBO::Space::instance());
        other->SetSelected(true);
        alignment.selectInRow(3, {0, 20});
    }
    ASSERT_TRUE(companion::invertSelection(alignment));
    expectSelected(alignment, [](auto row, auto col) { return row != 3 || col >= 20; });
    EXPECT_TRUE(other->IsSelected());
    ASSERT_TRUE(companion::selectEverything(alignment));
    expectSelected(alignment, [](auto, auto) { return true; });
    ASSERT_TRUE(companion::selectNothing());
    expectSelected(alignment, [](auto, auto) { return false; });
    EXPECT_FALSE(other->IsSelected());
}

} // namespace CellChoiceTest
