// SPDX-License-Identifier: GPL-3.0-or-later
// Changes of columns that somebody else has written are looked at before they are made.
#include "unit/model/AlignmentFixture.h"

#include "AlignmentEdits.h"
#include "ObjectFactory.h"

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace ColumnEditFitTest {

using TAMBO::AlignmentTable;
using TAMBO::CloseColumnsEdit;
using Column = AlignmentTable::Column;
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

// A line of the annotation has a character for each column, and a file can have any number of them.
TEST_F(ColumnEditFit, NoMoreIsSaidOfColumnsThanThereIsMemoryFor)
{
    constexpr std::size_t kLines = 1'000;
    constexpr Column kMost = AlignmentTable::kMostColumns - 4;
    TAMBO::AlignmentRecord record;
    record.name = "annotated";
    TAMBO::RowRecord &row = record.rows.emplace_back();
    row.name = "row";
    row.sequence.append("ACDE");
    record.columnAnnotations.assign(kLines, {"GC", "xxxx"});
    AlignmentTable &table = TAMBO::ObjectFactory::adopt(std::move(record))->table();
    const auto zeros = [](Column count) {
        return TAMBO::BitBuffer(std::vector<TAMBO::bits::Word>(TAMBO::bits::wordsFor(count)),
                                count);
    };
    const auto restores = [&](Column begin, Column count) {
        TAMBO::RestoreColumnsEdit::Cells cells;
        cells.bits = zeros(count);
        return TAMBO::RestoreColumnsEdit(table, "restore", begin, count, std::move(cells), {})
            .fits();
    };
    const auto replaces = [&](Column begin, Column count) {
        return TAMBO::ReplaceColumnsEdit(table, "replace", {begin, 0, count}, zeros(count)).fits();
    };
    const auto says = [&](Column begin, Column count) {
        return TAMBO::ColumnTextEdit(table, "say", begin, count,
                                     std::vector<std::string>(kLines, std::string(count, 'x')))
            .fits();
    };
    EXPECT_TRUE(opens(table, {{2, 1'000'000}}));
    EXPECT_FALSE(opens(table, {{2, kMost}})) << "100 GB";
    EXPECT_FALSE(opens(table, {{1, 1}, {2, kMost - 1}}));
    EXPECT_TRUE(restores(2, 1'000'000));
    EXPECT_FALSE(restores(2, kMost));
    EXPECT_TRUE(replaces(2, 1'000'000));
    EXPECT_FALSE(replaces(2, kMost));
    EXPECT_TRUE(says(2, 1));
    OpenColumnsEdit wide(table, "open", {{4, kMost}});
    ASSERT_TRUE(wide.fits()) << "behind the lines they take nothing";
    const std::unique_ptr<TAMBO::Edit> back = wide.apply();
    EXPECT_FALSE(says(kMost, 1));
    EXPECT_FALSE(says(kMost, 0));
    EXPECT_TRUE(says(2, 1));
}

} // namespace ColumnEditFitTest
