// SPDX-License-Identifier: GPL-3.0-or-later
#include "OccupancyRow.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

using TAMBO::OccupancyRow;

namespace OccupancyRowTest {

OccupancyRow row(const std::string &text)
{
    std::vector<OccupancyRow::Word> words((text.size() + 63) / 64);
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '-')
            words[i / 64] |= OccupancyRow::Word(1) << i % 64;
    }
    return OccupancyRow(std::move(words));
}

std::string text(const OccupancyRow &row, std::size_t width)
{
    std::string result;
    for (std::size_t i = 0; i < width; ++i)
        result += row.isResidue(i) ? 'x' : '-';
    return result;
}

std::string randomText(std::mt19937 &random, std::size_t width)
{
    // From almost empty to almost full, so that long runs of both kinds occur.
    const unsigned density = random() % 11;
    std::string result(width, '-');
    for (char &c : result)
        c = random() % 10 < density ? 'x' : '-';
    return result;
}

void expectSame(const OccupancyRow &row, const std::string &expected)
{
    const std::size_t width = expected.size() + 70;
    ASSERT_EQ(text(row, width), expected + std::string(70, '-'));
    std::uint32_t count = 0;
    for (std::size_t i = 0; i < expected.size(); ++i) {
        ASSERT_EQ(row.rank(i), count) << "column " << i << " of " << expected;
        if (i % OccupancyRow::kBlockColumns == 0) {
            ASSERT_EQ(row.blockRank(i / OccupancyRow::kBlockColumns), count);
        }
        if (expected[i] != '-') {
            ASSERT_EQ(row.columnOf(count++), i);
        }
    }
    ASSERT_EQ(row.rank(width), count);
    ASSERT_EQ(row.residues(), count);
    const std::size_t last = expected.find_last_not_of('-');
    ASSERT_EQ(row.end(), last == std::string::npos ? 0 : last + 1);
}

TEST(OccupancyRow, EmptyRowHoldsNoResidue)
{
    const OccupancyRow empty;
    EXPECT_EQ(empty.residues(), 0U);
    EXPECT_EQ(empty.end(), 0U);
    EXPECT_EQ(empty.rank(1000), 0U);
    EXPECT_FALSE(empty.isResidue(0));
    EXPECT_EQ(empty.gapRunBegin(5), 0U);
    EXPECT_EQ(empty.gapRunEnd(5, 9), 9U);
    EXPECT_EQ(empty.bytes(), 0U);
}

TEST(OccupancyRow, FilledRowHasItsResiduesFirstAtEveryWordBoundary)
{
    for (const std::size_t width : {1U, 63U, 64U, 65U, 127U, 128U, 129U, 255U, 256U, 257U, 1000U})
        expectSame(OccupancyRow::filled(width), std::string(width, 'x'));
    expectSame(OccupancyRow::filled(0), "");
}

TEST(OccupancyRow, WordsOfGapsAtTheEndTakeNoMemory)
{
    const OccupancyRow one = row("x" + std::string(10000, '-'));
    EXPECT_LE(one.bytes(), 64U);
    EXPECT_EQ(one.end(), 1U);
}

TEST(OccupancyRow, TakesNoAllocationWhileItIsShortAndOneAfterwards)
{
    EXPECT_EQ(OccupancyRow().bytes(), 0U);
    EXPECT_EQ(row(std::string(256, 'x')).bytes(), 0U);
    EXPECT_LE(sizeof(OccupancyRow), 8U + 4 * 8U);
    EXPECT_EQ(row(std::string(300, 'x')).bytes(), 5 * 8U + 2 * 4U);
}

TEST(OccupancyRow, MovesBetweenItsTwoPlacesWithItsCells)
{
    OccupancyRow cells = row(std::string(256, 'x'));
    cells.insertGaps(100, 1);
    EXPECT_GT(cells.bytes(), 0U);
    expectSame(cells, std::string(100, 'x') + '-' + std::string(156, 'x'));
    const OccupancyRow copy = cells;
    OccupancyRow moved = std::move(cells);
    EXPECT_EQ(moved, copy);
    moved.closeGaps({{10, 5}, {40, 90}});
    EXPECT_EQ(moved.bytes(), 0U);
    expectSame(moved, std::string(162, 'x'));
    cells = std::move(moved);
    expectSame(cells, std::string(162, 'x'));
}

TEST(OccupancyRow, InsertedColumnsHoldWhatIsPutIntoThem)
{
    std::mt19937 random(20260301);
    for (const std::size_t width : {1U, 63U, 64U, 128U, 200U, 255U, 256U, 300U, 700U}) {
        for (int round = 0; round < 100; ++round) {
            std::string expected = randomText(random, width);
            OccupancyRow actual = row(expected);
            const std::size_t at = random() % (width + 3);
            const std::string piece = randomText(random, 1 + random() % 90);
            actual.insertColumns(at, piece.size(), row(piece + 'x').columns(0, piece.size()));
            expected.resize(std::max(expected.size(), at), '-');
            expected.insert(at, piece);
            ASSERT_NO_FATAL_FAILURE(expectSame(actual, expected));
            EXPECT_EQ(actual, row(expected));
        }
    }
}

TEST(OccupancyRow, GivesBackWhatItsColumnsTookWhenTheyGo)
{
    OccupancyRow cells = row(std::string(100000, 'x'));
    cells.removeColumns(100, 99900 - 1);
    EXPECT_LE(cells.bytes(), 8U + 66 * 8U + 17 * 4U);
    EXPECT_EQ(cells.residues(), 101U);
    cells.removeColumns(0, 101);
    EXPECT_EQ(cells.bytes(), 0U);
    EXPECT_EQ(cells.residues(), 0U);
}

TEST(OccupancyRow, GrowsPastWhatItHadRoomForWithItsCountsRight)
{
    OccupancyRow cells = row("x-x");
    std::string expected = "x-x";
    for (const std::size_t count : {1U, 63U, 64U, 200U, 5000U, 60000U}) {
        cells.insertGaps(1, count);
        expected.insert(1, count, '-');
        expectSame(cells, expected);
    }
    const OccupancyRow copy = cells;
    cells.closeGaps({{1, 60000}, {1, 5000}});
    expected.erase(1, 65000);
    expectSame(cells, expected);
    EXPECT_FALSE(copy == cells);
    EXPECT_EQ(copy.end(), cells.end() + 65000);
}

TEST(OccupancyRow, GapRunIsBoundedByResiduesAndByTheLimit)
{
    const std::string gaps(200, '-');
    const OccupancyRow sample = row("--x" + gaps + "x--");
    EXPECT_EQ(sample.gapRunBegin(1), 0U);
    EXPECT_EQ(sample.gapRunEnd(0, 206), 2U);
    for (const std::size_t column : {3U, 64U, 127U, 202U}) {
        EXPECT_EQ(sample.gapRunBegin(column), 3U) << column;
        EXPECT_EQ(sample.gapRunEnd(column, 206), 203U) << column;
    }
    EXPECT_EQ(sample.gapRunBegin(205), 204U);
    EXPECT_EQ(sample.gapRunEnd(204, 206), 206U);
}

TEST(OccupancyRow, FewColumnsOfAShortRowAreTakenInOnePass)
{
    const std::string text = std::string(60, 'x') + "-x-xx-xxx" + std::string(100, '-') + "xx-x";
    for (const std::size_t begin : {0U, 58U, 60U, 63U, 64U, 128U, 168U, 170U, 172U, 173U, 300U}) {
        for (const unsigned count : {1U, 3U, 63U}) {
            OccupancyRow taken = row(text);
            ASSERT_TRUE(taken.isShort());
            const OccupancyRow::Taken gone = taken.takeFromShort(begin, count);
            EXPECT_EQ(gone.cells, row(text).columns(begin, count).front());
            EXPECT_EQ(gone.before, row(text).rank(begin));
            std::string left = text;
            if (begin < left.size())
                left.erase(begin, count);
            EXPECT_EQ(taken, row(left)) << count << " columns from " << begin << " on";
            EXPECT_EQ(taken.residues(), row(left).residues());
        }
    }
    EXPECT_FALSE(row(std::string(257, 'x')).isShort());
}

TEST(OccupancyRow, ColumnsGivesWordsThatStartAtTheFirstOne)
{
    const OccupancyRow sample = row(std::string(60, '-') + "x-xx-xxx" + std::string(80, 'x'));
    EXPECT_EQ(sample.columns(60, 8), std::vector<OccupancyRow::Word>{0b11101101});
    EXPECT_EQ(sample.columns(60, 3), std::vector<OccupancyRow::Word>{0b101});
    EXPECT_EQ(sample.columns(0, 64).size(), 1U);
    EXPECT_EQ(sample.columns(0, 65).size(), 2U);
    EXPECT_EQ(sample.columns(500, 3), std::vector<OccupancyRow::Word>{0});
    using Words = std::vector<OccupancyRow::Word>;
    constexpr OccupancyRow::Word all = ~OccupancyRow::Word(0);
    EXPECT_EQ(sample.columns(64, 64), Words{all - 1});
    EXPECT_EQ(sample.columns(64, 3), Words{0b110});
    EXPECT_EQ(sample.columns(64, 200), (Words{all - 1, 0xfffff, 0, 0}));
    EXPECT_EQ(sample.columns(128, 4), Words{0b1111});
    EXPECT_EQ(sample.columns(128, 64), Words{0xfffff});
    EXPECT_EQ(sample.columns(192, 65), (Words{0, 0}));
}

TEST(OccupancyRow, EditsAgreeWithPlainTextAtEveryWidth)
{
    std::mt19937 random(20240229);
    for (const std::size_t width :
         {1U, 2U, 63U, 64U, 65U, 127U, 128U, 129U, 255U, 256U, 257U, 300U, 513U, 1030U}) {
        for (int round = 0; round < 400; ++round) {
            std::string expected = randomText(random, width);
            OccupancyRow actual = row(expected);
            ASSERT_NO_FATAL_FAILURE(expectSame(actual, expected));
            for (int step = 0; step < 4; ++step) {
                const std::size_t begin = random() % (expected.size() + 1);
                const std::size_t most = random() % 3 == 0 ? 400 : 5;
                switch (random() % 5) {
                case 0: {
                    const std::size_t count = random() % most;
                    actual.insertGaps(begin, count);
                    expected.insert(begin, count, '-');
                    break;
                }
                case 1: {
                    const std::size_t count =
                        std::min<std::size_t>(random() % most, expected.size() - begin);
                    actual.removeColumns(begin, count);
                    expected.erase(begin, count);
                    break;
                }
                case 2: {
                    // A stretch of gaps, anywhere.
                    std::size_t from = expected.find('-', begin);
                    if (from == std::string::npos)
                        break;
                    std::size_t end = from;
                    while (end < expected.size() && expected[end] == '-')
                        ++end;
                    const std::size_t count = 1 + random() % (end - from);
                    const std::size_t to = random() % (expected.size() - count + 1);
                    actual.moveGaps(from, count, to);
                    expected.erase(from, count);
                    expected.insert(to, count, '-');
                    break;
                }
                case 3: {
                    std::vector<TAMBO::GapRun> runs;
                    std::string opened = expected;
                    std::size_t added = 0;
                    for (std::size_t at = random() % 9; at <= expected.size();
                         at += 1 + random() % 99) {
                        runs.push_back({at, 1 + random() % 7});
                        opened.insert(at + added, runs.back().count, '-');
                        added += runs.back().count;
                    }
                    const OccupancyRow before = actual;
                    actual.openGaps(runs);
                    ASSERT_NO_FATAL_FAILURE(expectSame(actual, opened));
                    actual.closeGaps(runs);
                    ASSERT_EQ(actual, before);
                    break;
                }
                default: {
                    const std::size_t count =
                        std::min<std::size_t>(random() % most, expected.size() - begin);
                    const std::string piece = randomText(random, count);
                    actual.setColumns(begin, count, row(piece).columns(0, count));
                    expected.replace(begin, count, piece);
                }
                }
                ASSERT_NO_FATAL_FAILURE(expectSame(actual, expected));
                EXPECT_EQ(actual, row(expected));
            }
        }
    }
}

} // namespace OccupancyRowTest
