// SPDX-License-Identifier: GPL-3.0-or-later
// Changes of columns that somebody else has written are looked at before they are made.
#include "unit/model/AlignmentFixture.h"

#include "AlignmentEdits.h"

#include <string>
#include <vector>

namespace ColumnEditFitTest {

using TAMBO::AlignmentTable;
using TAMBO::CloseColumnsEdit;
using TAMBO::GapRun;
using TAMBO::OpenColumnsEdit;

class ColumnEditFit : public AlignmentFixture
{
protected:
    static bool opens(AlignmentTable &table, const std::vector<GapRun> &runs)
    {
        return OpenColumnsEdit(table, "open", runs).fits();
    }
    static bool closes(AlignmentTable &table, const std::vector<GapRun> &runs)
    {
        return CloseColumnsEdit(table, "close", runs, {}).fits();
    }
};

TEST_F(ColumnEditFit, OnlyColumnsOfGapsClose)
{
    AlignmentTable &table = alignment({"A--C-D---", "AE-C--F--", "AE-C--FG-"}).table();
    EXPECT_TRUE(closes(table, {{2, 1}, {3, 1}}));
    EXPECT_TRUE(closes(table, {{8, 1}}));
    EXPECT_TRUE(closes(table, {{2, 1}, {7, 1}}));
    EXPECT_FALSE(closes(table, {{1, 2}})) << "residues of the second row";
    EXPECT_FALSE(closes(table, {{2, 1}, {6, 1}})) << "a residue of the last row";
    EXPECT_FALSE(closes(table, {{2, 1}, {4, 1}})) << "a residue of the first row";
    EXPECT_FALSE(closes(table, {{8, 2}})) << "beyond the last column";
}

// All runs are looked for in each row at once.
TEST_F(ColumnEditFit, ManyRunsCloseInManyRows)
{
    constexpr std::size_t kRuns = 20'000;
    constexpr std::size_t kRows = 200;
    const std::string cells = std::string(kRuns * 2, '-') + "A";
    AlignmentTable &table = alignment(std::vector<std::string>(kRows, cells)).table();
    std::vector<GapRun> runs;
    for (std::size_t i = 0; i < kRuns; ++i)
        runs.push_back({i, 1});
    EXPECT_TRUE(closes(table, runs));
    runs.back().column = kRuns;
    runs.back().count = 2;
    EXPECT_FALSE(closes(table, runs));
}

TEST_F(ColumnEditFit, NoMoreColumnsOpenThanThereIsMemoryFor)
{
    AlignmentTable &table = alignment(std::vector<std::string>(2'000, "ACD")).table();
    constexpr std::size_t kMost = AlignmentTable::kMostColumns - 3;
    EXPECT_FALSE(opens(table, {{0, kMost}})) << "25 GB";
    EXPECT_FALSE(opens(table, {{0, 1}, {2, kMost - 1}})) << "before the last residues";
    EXPECT_TRUE(opens(table, {{3, kMost}})) << "behind all residues they take none";
    EXPECT_TRUE(opens(table, {{0, 1'000'000}}));
    EXPECT_FALSE(opens(table, {{3, kMost + 1}})) << "wider than an alignment may be";
}

} // namespace ColumnEditFitTest
