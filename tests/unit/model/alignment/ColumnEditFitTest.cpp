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
using TAMBO::Peptide;
using TAMBO::ResidueRun;

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

TEST_F(ColumnEditFit, LinesOverTheColumnsAreNoWiderThanThese)
{
    AlignmentTable &table = alignment({"AC-D", "A-CD"}).table();
    const auto says = [&](Column width) {
        return TAMBO::AnnotationEdit(table, "say",
                                     std::make_unique<TAMBO::AlignmentAnnotation>(
                                         std::vector<TAMBO::Annotation>{{"ID", "family"}},
                                         std::vector<TAMBO::Annotation>{
                                             {"SS", "HH"}, {"RF", std::string(width, 'x')}}))
            .fits();
    };
    EXPECT_TRUE(says(4));
    EXPECT_TRUE(says(1));
    EXPECT_FALSE(says(5));
    EXPECT_TRUE(TAMBO::AnnotationEdit(table, "say", nullptr).fits());
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

TEST_F(ColumnEditFit, ColumnsInSeveralPlacesGoWhereThereAreSome)
{
    AlignmentTable &table = alignment({"A--C-D---", "AE-C--F--"}).table();
    const auto removes = [&](const std::vector<GapRun> &runs) {
        return TAMBO::RemoveRunsEdit(table, "remove", runs).fits();
    };
    EXPECT_TRUE(removes({{0, 1}, {2, 3}}));
    EXPECT_TRUE(removes({{1, 1}, {2, 6}}));
    EXPECT_FALSE(removes({{1, 1}, {2, 7}}));
    EXPECT_FALSE(removes({{0, 1}, {9, 1}}));
    EXPECT_FALSE(removes({{1, 1}, {AlignmentTable::kMostColumns, AlignmentTable::kMostColumns}}));
}

TEST_F(ColumnEditFit, ColumnsInSeveralPlacesComeBackWithResiduesOfTheirSequences)
{
    Peptide &sequence = peptide("p", "ACDEFG");
    AlignmentTable &table = alignmentOf({{&sequence, "A-C-DEFG"}}).table();
    const auto restores = [&](const std::vector<GapRun> &runs, TAMBO::bits::Word bits,
                              std::size_t count, std::vector<ResidueRun> residues) {
        TAMBO::RestoreColumnsEdit::Cells cells;
        cells.bits = TAMBO::BitBuffer({bits}, count);
        for (const ResidueRun &run : residues)
            cells.residues.push_back({0, run});
        return TAMBO::RestoreRunsEdit(table, "restore", runs, std::move(cells), {}).fits();
    };
    EXPECT_FALSE(restores({{0, 1}, {4, 1}}, 1, 2, {})) << "all residues are there";
    const std::vector<GapRun> runs{{1, 2}, {3, 1}, {4, 1}};
    const std::unique_ptr<TAMBO::Edit> back = TAMBO::RemoveRunsEdit(table, "remove", runs).apply();
    EXPECT_EQ(rowsOf(table.alignment()), Texts({"A-DF"}));
    EXPECT_TRUE(back->fits());
    EXPECT_TRUE(restores(runs, 0b1110, 4, {})) << "those beside the ones that stay";
    EXPECT_TRUE(restores(runs, 0b0110, 4, {}));
    EXPECT_TRUE(restores(runs, 0b0000, 4, {}));
    EXPECT_TRUE(restores(runs, 0b1110, 4, {{1, 1}, {3, 1}, {5, 1}}));
    EXPECT_FALSE(restores(runs, 0b1111, 4, {})) << "there is one between them alone";
    EXPECT_FALSE(restores(runs, 0b1110, 4, {{1, 1}, {3, 1}})) << "a residue is missing";
    EXPECT_FALSE(restores(runs, 0b1110, 4, {{3, 1}, {1, 1}, {5, 1}})) << "out of order";
    EXPECT_FALSE(restores(runs, 0b1110, 4, {{0, 1}, {3, 1}, {5, 1}})) << "one is there twice";
    EXPECT_FALSE(restores(runs, 0b1110, 4, {{1, 1}, {3, 1}, {77, 1}})) << "not of the sequence";
    EXPECT_FALSE(restores(runs, 0b0110, 3, {})) << "cells are missing";
    EXPECT_FALSE(restores({{1, 2}, {3, 1}, {5, 1}}, 0b0110, 4, {})) << "beyond the last column";
}

// A few bytes ask for columns far behind all residues.
TEST_F(ColumnEditFit, ColumnsThatComeBackBehindAllResiduesTakeNoMemory)
{
    AlignmentTable &table = alignment(std::vector<std::string>(50, "ACD")).table();
    OpenColumnsEdit wide(table, "open", {{3, AlignmentTable::kMostColumns - 10}});
    ASSERT_TRUE(wide.fits());
    const std::unique_ptr<TAMBO::Edit> back = wide.apply();
    TAMBO::RestoreColumnsEdit::Cells cells;
    cells.bits = TAMBO::BitBuffer(std::vector<TAMBO::bits::Word>(2), 100);
    TAMBO::RestoreRunsEdit edit(table, "restore", {{3, 1}, {AlignmentTable::kMostColumns - 8, 1}},
                                std::move(cells), {});
    ASSERT_TRUE(edit.fits());
    const std::size_t before = table.bytes();
    const std::unique_ptr<TAMBO::Edit> taken = edit.apply();
    EXPECT_EQ(table.row(7).cells().end(), 3U);
    EXPECT_LT(table.bytes(), before + 10'000);
}

// One residue of each row far behind all others takes all cells before it.
TEST_F(ColumnEditFit, NoMoreCellsComeBackThanThereIsMemoryFor)
{
    constexpr std::size_t kRows = 2'000;
    std::vector<std::pair<Peptide *, std::string>> rows;
    for (std::size_t i = 0; i < kRows; ++i)
        rows.emplace_back(&peptide("p", "ACDE"), "ACD-E");
    AlignmentTable &table = alignmentOf(rows).table();
    const std::unique_ptr<TAMBO::Edit> taken =
        TAMBO::RemoveColumnsEdit(table, "remove", 4, 1).apply();
    EXPECT_TRUE(taken->fits());
    constexpr Column kMost = AlignmentTable::kMostColumns - 10;
    OpenColumnsEdit wide(table, "open", {{4, kMost}});
    ASSERT_TRUE(wide.fits());
    const std::unique_ptr<TAMBO::Edit> back = wide.apply();
    const auto oneOfEachRow = [] {
        TAMBO::RestoreColumnsEdit::Cells cells;
        cells.bits = TAMBO::BitBuffer(
            std::vector<TAMBO::bits::Word>(TAMBO::bits::wordsFor(kRows), ~TAMBO::bits::Word(0)),
            kRows);
        return cells;
    };
    const auto restores = [&](Column begin) {
        const bool fits =
            TAMBO::RestoreColumnsEdit(table, "restore", begin, 1, oneOfEachRow(), {}).fits();
        EXPECT_EQ(TAMBO::RestoreRunsEdit(table, "restore", {{begin, 1}}, oneOfEachRow(), {}).fits(),
                  fits);
        return fits;
    };
    EXPECT_TRUE(restores(4));
    EXPECT_TRUE(restores(500'000));
    EXPECT_FALSE(restores(kMost)) << "25 GB";
}

} // namespace ColumnEditFitTest
