// SPDX-License-Identifier: GPL-3.0-or-later
// Edits of columns go through all rows, and do nothing there that takes memory or a second look.
#include "AlignmentRow.h"
#include "ColumnProfiles.h"
#include "unit/model/AlignmentFixture.h"

#include "bench/HeapCount.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <vector>

using TAMBO::Alignment;

namespace ColumnWorkTest {

constexpr std::size_t kRows = 20000;

class ColumnWork : public AlignmentFixture
{
protected:
    // Residues all over, and a gap here and there.
    Alignment &sample(std::size_t columns)
    {
        Texts texts;
        for (std::size_t row = 0; row < kRows; ++row) {
            std::string text;
            for (std::size_t column = 0; column < columns; ++column)
                text += (row * 7 + column * 13) % 10 < 3 ? '-' : "ACDEFGHIKL"[(row + column) % 10];
            texts.push_back(text);
        }
        return alignment(texts);
    }
    static std::size_t allocationsOf(const std::function<void()> &action)
    {
        const std::size_t before = heapAllocations();
        action();
        return heapAllocations() - before;
    }
    void expectFew(Alignment &alignment, const std::function<void(Alignment &)> &change)
    {
        constexpr std::size_t few = 200;
        EXPECT_LT(allocationsOf([&] { change(alignment); }), few);
        EXPECT_LT(allocationsOf([&] { history.undo(); }), few);
        EXPECT_LT(allocationsOf([&] { history.redo(); }), few);
        EXPECT_LT(allocationsOf([&] { history.undo(); }), few);
    }
};

TEST_F(ColumnWork, InsertingColumnsTakesNoAllocationARow)
{
    for (const std::size_t columns : {100U, 300U}) {
        Alignment &rows = sample(columns);
        for (const unsigned long column : {0UL, columns / 2, columns - 1})
            expectFew(rows, [column](Alignment &alignment) { alignment.insertGapCol(column, 1); });
    }
}

TEST_F(ColumnWork, RemovingColumnsTakesNoAllocationARow)
{
    for (const std::size_t columns : {100U, 300U}) {
        Alignment &rows = sample(columns);
        for (const unsigned long column : {0UL, columns / 2, columns - 3})
            expectFew(rows, [column](Alignment &alignment) {
                alignment.remove({column, column + 2});
            });
    }
}

TEST_F(ColumnWork, LettersOfColumnsThatComeBackAreNotCountedAnew)
{
    Alignment &rows = sample(100);
    std::vector<TAMBO::AlignmentMajority> before;
    for (unsigned long column = 0; column < rows.width(); ++column)
        before.push_back(rows.majority(column));
    rows.remove({40, 45});
    history.undo();
    const std::size_t allocations = heapAllocations();
    for (unsigned long column = 0; column < rows.width(); ++column) {
        const TAMBO::AlignmentMajority now = rows.majority(column);
        EXPECT_EQ(now.letter, before[column].letter);
        EXPECT_EQ(now.count, before[column].count);
        EXPECT_EQ(now.isAlone, before[column].isAlone);
    }
    EXPECT_EQ(heapAllocations(), allocations) << "what is counted in is made for it";
}

// Every other column of a wide alignment closes and opens: what is known of each column is not
// moved once for each of them.
TEST_F(ColumnWork, OfVeryManyRunsWhatIsKnownOfColumnsIsFoundAnew)
{
    constexpr std::size_t kRuns = 30'000;
    TAMBO::Peptide sequence("a", std::string(kRuns, 'A'));
    TAMBO::ColumnProfiles::Rows rows;
    rows.push_back(
        std::make_unique<TAMBO::AlignmentRow>(sequence, TAMBO::OccupancyRow::filled(kRuns)));
    TAMBO::ColumnProfiles profiles;
    std::vector<TAMBO::GapRun> runs;
    for (std::size_t i = 0; i < kRuns; ++i)
        runs.push_back({i, 1});
    const auto look = [&](std::size_t width) { (void)profiles.majority(rows, width, width - 1); };

    look(kRuns);
    profiles.openColumns({runs.begin(), runs.begin() + 10});
    EXPECT_FALSE(profiles.isEmpty());
    profiles.openColumns(runs);
    EXPECT_TRUE(profiles.isEmpty());
    look(kRuns);
    profiles.closeColumns({runs.begin(), runs.begin() + 10});
    EXPECT_FALSE(profiles.isEmpty());
    look(kRuns);
    profiles.closeColumns(runs);
    EXPECT_TRUE(profiles.isEmpty());
}

TEST_F(ColumnWork, OfVeryManyRowsThatMoveWhileNobodyLooksWhatIsKnownIsFoundAnew)
{
    constexpr std::size_t kFollowed = 4096;
    TAMBO::Peptide sequence("a", "A");
    TAMBO::ColumnProfiles::Rows rows;
    rows.push_back(std::make_unique<TAMBO::AlignmentRow>(sequence, TAMBO::OccupancyRow::filled(1)));
    TAMBO::ColumnProfiles profiles;
    const auto follow = [&] {
        profiles.subtract(*rows[0], 0, 1);
        profiles.add(*rows[0], 0, 1);
    };
    for (int round = 0; round < 2; ++round) {
        EXPECT_EQ(profiles.majority(rows, 1, 0).count, 1U);
        for (std::size_t i = 0; i < kFollowed; ++i)
            follow();
        EXPECT_FALSE(profiles.isEmpty());
    }
    follow();
    EXPECT_TRUE(profiles.isEmpty());
    EXPECT_EQ(profiles.majority(rows, 1, 0).count, 1U);
}

} // namespace ColumnWorkTest
