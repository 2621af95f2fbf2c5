// SPDX-License-Identifier: GPL-3.0-or-later
#include "RowPool.h"
#include "AlignmentRow.h"
#include "Peptide.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <random>
#include <vector>

using TAMBO::AlignmentRow;
using TAMBO::OccupancyRow;
using TAMBO::RowPool;

namespace RowPoolTest {

using Rows = std::vector<std::unique_ptr<AlignmentRow>>;

Rows rowsOf(TAMBO::Peptide &sequence, std::size_t count)
{
    Rows rows;
    for (std::size_t i = 0; i < count; ++i)
        rows.push_back(std::make_unique<AlignmentRow>(sequence, OccupancyRow::filled(3)));
    return rows;
}

TEST(RowPool, RowsThatAreMadeAfterEachOtherStandSideBySide)
{
    TAMBO::Peptide sequence("a", "ACD");
    // Where rows have gone before there may be single places.
    const Rows fillers = rowsOf(sequence, 10000);
    const Rows rows = rowsOf(sequence, 10000);
    std::size_t apart = 0;
    for (std::size_t i = 1; i < rows.size(); ++i)
        apart += std::abs(rows[i].get() - rows[i - 1].get()) == 1 ? 0 : 1;
    // From one block to the next.
    EXPECT_LE(apart, 20U);
}

TEST(RowPool, GivesItsBlocksBackWithTheirLastRow)
{
    TAMBO::Peptide sequence("a", "ACD");
    const std::size_t before = RowPool::blocks();
    {
        const Rows rows = rowsOf(sequence, 10000);
        EXPECT_GE(RowPool::blocks(), before + 7);
    }
    EXPECT_LE(RowPool::blocks(), before + 1);
}

TEST(RowPool, KeepsEachRowsContentHoweverRowsComeAndGo)
{
    TAMBO::Peptide sequence("a", std::string(200, 'A'));
    std::mt19937 random(5);
    struct Kept
    {
        std::unique_ptr<AlignmentRow> row;
        std::uint32_t residues;
    };
    std::vector<Kept> kept;
    for (int step = 0; step < 20000; ++step) {
        if (random() % 5 < 3) {
            const std::uint32_t count = 1 + random() % 200;
            kept.push_back(
                {std::make_unique<AlignmentRow>(sequence, OccupancyRow::filled(count)), count});
        } else if (!kept.empty()) {
            std::swap(kept[random() % kept.size()], kept.back());
            kept.pop_back();
        }
    }
    for (const Kept &one : kept) {
        ASSERT_EQ(one.row->cells().residues(), one.residues);
        ASSERT_EQ(&one.row->sequence(), &sequence);
    }
}

TEST(AlignmentRow, TakesNothingBeyondItselfWhileItIsShortAndLeavesOneStretchOut)
{
    TAMBO::Peptide sequence("a", std::string(256, 'A'));
    AlignmentRow row(sequence, OccupancyRow::filled(256));
    EXPECT_LE(sizeof(AlignmentRow), 56U);
    EXPECT_EQ(row.bytes(), sizeof(AlignmentRow));
    std::vector<TAMBO::ResidueRun> removed;
    row.removeColumns(100, 1, 255, removed);
    row.removeColumns(100, 20, 235, removed);
    EXPECT_TRUE(removed.empty());
    EXPECT_EQ(row.residueIndex(99), 99U);
    EXPECT_EQ(row.residueIndex(100), 121U);
    row.removeColumns(90, 10, 225, removed);
    EXPECT_EQ(row.residueIndex(90), 121U);
    EXPECT_EQ(removed, (std::vector<TAMBO::ResidueRun>{{90, 10}}));
    EXPECT_EQ(row.bytes(), sizeof(AlignmentRow));
    removed.clear();
    row.removeColumns(10, 1, 224, removed);
    EXPECT_GT(row.bytes(), sizeof(AlignmentRow)) << "a second stretch";
    const OccupancyRow::Word one = 1;
    row.restoreColumns(10, std::span(&one, 1), 1, 225, removed);
    EXPECT_EQ(row.bytes(), sizeof(AlignmentRow));
    EXPECT_EQ(row.residueIndex(89), 89U);
    EXPECT_EQ(row.residueIndex(90), 121U);
}

} // namespace RowPoolTest
