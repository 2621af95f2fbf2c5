// SPDX-License-Identifier: GPL-3.0-or-later
#include "Comparison.h"

#include "MadeLayouts.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

using testing::ElementsAre;
using testing::IsEmpty;

namespace ComparisonTest {

using companion::ComparedColumns;
using companion::ComparedLayout;
using companion::Comparison;
using companion::Stretch;

// A pair of residues: rows and ordinals.
using Pair = std::pair<std::pair<std::size_t, std::size_t>, std::pair<std::size_t, std::size_t>>;
using Column = std::set<std::pair<std::size_t, std::size_t>>;

struct Plain
{
    std::set<Pair> pairs;
    std::set<Column> columns;
};

// Of each row with each other one.
Plain plainOf(const Texts &rows)
{
    Plain plain;
    std::vector<std::size_t> ordinals(rows.size());
    for (std::size_t column = 0; column < rows.front().size(); ++column) {
        Column found;
        for (std::size_t row = 0; row < rows.size(); ++row)
            if (rows[row][column] != '-') {
                if (!isLost(rows[row][column]))
                    found.emplace(row, ordinals[row]);
                ++ordinals[row];
            }
        for (auto first = found.begin(); first != found.end(); ++first)
            for (auto second = std::next(first); second != found.end(); ++second)
                plain.pairs.emplace(*first, *second);
        if (!found.empty())
            plain.columns.insert(found);
    }
    return plain;
}

template <typename Set> std::size_t inBoth(const Set &a, const Set &b)
{
    return std::size_t(
        std::count_if(a.begin(), a.end(), [&b](const auto &each) { return b.contains(each); }));
}

// Without the columns with one residue.
std::size_t longOnes(const std::set<Column> &columns)
{
    return std::size_t(std::count_if(columns.begin(), columns.end(),
                                     [](const Column &column) { return column.size() > 1; }));
}

void expectAsPlain(const TwoLayouts &made, const Comparison &found)
{
    const Plain here = plainOf(made.here);
    const Plain there = plainOf(made.there);
    EXPECT_EQ(found.here.pairs, here.pairs.size());
    EXPECT_EQ(found.there.pairs, there.pairs.size());
    EXPECT_EQ(found.samePairs, inBoth(here.pairs, there.pairs));
    EXPECT_EQ(found.here.columns, longOnes(here.columns));
    EXPECT_EQ(found.there.columns, longOnes(there.columns));
    std::set<Column> same;
    for (const Column &column : here.columns)
        if (there.columns.contains(column))
            same.insert(column);
    EXPECT_EQ(found.sameColumns, longOnes(same));
    EXPECT_EQ(std::size_t(std::ranges::count(found.here.isSame, 1)), same.size());
    EXPECT_EQ(std::size_t(std::ranges::count(found.there.isSame, 1)), same.size());
}

// What a row has before a column.
std::size_t before(const std::string &row, std::size_t column)
{
    return column - std::size_t(std::count(row.begin(), row.begin() + std::ptrdiff_t(column), '-'));
}

// Stretches are minimal, and all else is the same.
void expectStretches(const TwoLayouts &made, const std::vector<Stretch> &stretches)
{
    std::size_t here = 0;
    std::size_t there = 0;
    const auto expectSame = [&](std::size_t begin, std::size_t otherBegin) {
        ASSERT_EQ(begin - here, otherBegin - there);
        for (std::size_t row = 0; row < made.here.size(); ++row)
            ASSERT_EQ(made.here[row].substr(here, begin - here),
                      made.there[row].substr(there, otherBegin - there));
    };
    for (const Stretch &stretch : stretches) {
        ASSERT_LT(stretch.begin, stretch.end);
        ASSERT_NO_FATAL_FAILURE(expectSame(stretch.begin, stretch.otherBegin));
        bool differs = false;
        for (std::size_t row = 0; row < made.here.size(); ++row) {
            ASSERT_EQ(before(made.here[row], stretch.begin),
                      before(made.there[row], stretch.otherBegin));
            ASSERT_EQ(before(made.here[row], stretch.end),
                      before(made.there[row], stretch.otherEnd));
            differs =
                differs || made.here[row].substr(stretch.begin, stretch.end - stretch.begin) !=
                               made.there[row].substr(stretch.otherBegin,
                                                      stretch.otherEnd - stretch.otherBegin);
        }
        ASSERT_TRUE(differs);
        here = stretch.end;
        there = stretch.otherEnd;
    }
    ASSERT_NO_FATAL_FAILURE(expectSame(made.here.front().size(), made.there.front().size()));
    for (std::size_t i = 1; i < stretches.size(); ++i)
        ASSERT_LT(stretches[i - 1].end, stretches[i].begin) << "a column is between them";
}

TEST(Comparison, AnAlignmentIsTheSameAsItself)
{
    const ComparedLayout rows = layoutsOf({"AC-D", "-CDE"});
    const Comparison found = compared(rows, rows);
    EXPECT_EQ(found.here.pairs, 2U);
    EXPECT_EQ(found.samePairs, 2U);
    EXPECT_EQ(found.sameColumns, 2U);
    EXPECT_THAT(found.stretches, IsEmpty());
    EXPECT_THAT(found.here.isSame, ElementsAre(1, 1, 1, 1));
    EXPECT_THAT(found.here.mostly, ElementsAre(0, 1, 2, 3));
}

TEST(Comparison, AShiftedResidueIsOneStretch)
{
    const Comparison found =
        compared(layoutsOf({"ACD-E", "ACDDE", "ACDDE"}), layoutsOf({"AC-DE", "ACDDE", "ACDDE"}));
    EXPECT_THAT(found.stretches, ElementsAre(Stretch{2, 4, 2, 4}));
    EXPECT_EQ(found.here.pairs, 13U);
    EXPECT_EQ(found.samePairs, 11U);
    EXPECT_EQ(found.here.columns, 5U);
    EXPECT_EQ(found.sameColumns, 3U);
    EXPECT_THAT(found.here.mostly, ElementsAre(0, 1, 2, 3, 4));
    EXPECT_THAT(found.there.isSame, ElementsAre(1, 1, 0, 0, 1));
}

TEST(Comparison, AStretchMayHaveAnotherWidthThere)
{
    const Comparison found = compared(layoutsOf({"ACDE", "ACDE"}), layoutsOf({"A--CDE", "ACD--E"}));
    EXPECT_THAT(found.stretches, ElementsAre(Stretch{1, 3, 1, 5}));
    EXPECT_EQ(found.samePairs, 2U);
    EXPECT_EQ(found.there.pairs, 2U);
    EXPECT_EQ(found.here.pairs, 4U);
}

TEST(Comparison, ColumnsWithoutAResidueAreNoDifference)
{
    const Comparison found =
        compared(layoutsOf({"A--CD", "A--CD"}), layoutsOf({"-AC-D-", "-AC-D-"}));
    EXPECT_THAT(found.stretches, IsEmpty());
    EXPECT_EQ(found.sameColumns, 3U);
    EXPECT_THAT(found.here.mostly,
                ElementsAre(1, ComparedColumns::kNone, ComparedColumns::kNone, 2, 4));
}

TEST(Comparison, ColumnsInAnotherOrderAreTheSameAndYetAStretch)
{
    const Comparison found = compared(layoutsOf({"AC-D", "A-CD"}), layoutsOf({"A-CD", "AC-D"}));
    EXPECT_EQ(found.samePairs, 2U);
    EXPECT_THAT(found.here.isSame, ElementsAre(1, 1, 1, 1));
    EXPECT_THAT(found.stretches, ElementsAre(Stretch{1, 3, 1, 3}));
}

TEST(Comparison, ResiduesThatOneAlignmentLacksCountInTheOtherAndMakeNoStretch)
{
    using Residues = companion::LayoutRows::Residues;
    ComparedLayout here{{}, 3};
    ComparedLayout there{{}, 3};
    // Residues 0, 2 and 3 here; 0, 1 and 3 there.
    const std::vector<Residues> some{{0, 1}, {2, 2}};
    const std::vector<Residues> others{{0, 2}, {3, 1}};
    here.rows.add(std::vector<std::uint64_t>{7}, some);
    there.rows.add(std::vector<std::uint64_t>{7}, others);
    here.rows.add(std::vector<std::uint64_t>{7}, {});
    there.rows.add(std::vector<std::uint64_t>{7}, {});
    const Comparison found = compared(here, there);
    EXPECT_EQ(found.here.alone, 1U);
    EXPECT_EQ(found.there.alone, 1U);
    EXPECT_EQ(found.here.pairs, 3U);
    EXPECT_EQ(found.there.pairs, 3U);
    EXPECT_EQ(found.samePairs, 2U);
    EXPECT_EQ(found.here.columns, 3U);
    EXPECT_EQ(found.sameColumns, 2U);
    EXPECT_THAT(found.here.isSame, ElementsAre(1, 0, 1));
    EXPECT_THAT(found.there.isSame, ElementsAre(1, 0, 1));
    EXPECT_THAT(found.stretches, IsEmpty());
}

TEST(Comparison, RemovedColumnsAreMissingFromTheReference)
{
    const Comparison found =
        compared(layoutsOf({"AcDE", "AcDE", "AcDE"}), layoutsOf({"ACDE", "ACDE", "ACDE"}));
    EXPECT_EQ(found.there.alone, 3U);
    EXPECT_EQ(found.there.pairs, 12U);
    EXPECT_EQ(found.here.pairs, 9U);
    EXPECT_EQ(found.samePairs, 9U);
    EXPECT_EQ(found.there.columns, 4U);
    EXPECT_EQ(found.here.columns, 3U);
    EXPECT_EQ(found.sameColumns, 3U);
    EXPECT_THAT(found.there.isSame, ElementsAre(1, 0, 1, 1));
    EXPECT_THAT(found.stretches, IsEmpty());
}

TEST(Comparison, AColumnThatHasLostAResidueIsNotTheSame)
{
    const Comparison found =
        compared(layoutsOf({"ACD", "AcD", "ACD"}), layoutsOf({"ACD", "ACD", "ACD"}));
    EXPECT_EQ(found.samePairs, 7U);
    EXPECT_EQ(found.here.pairs, 7U);
    EXPECT_EQ(found.there.pairs, 9U);
    EXPECT_EQ(found.sameColumns, 2U);
    EXPECT_THAT(found.here.isSame, ElementsAre(1, 0, 1));
    EXPECT_THAT(found.there.isSame, ElementsAre(1, 0, 1));
}

TEST(Comparison, NoRowsAndNoColumnsAreNoDifference)
{
    EXPECT_THAT(compared({}, {}).stretches, IsEmpty());
    EXPECT_THAT(compared(layoutsOf({"", ""}), layoutsOf({"--", "--"})).stretches, IsEmpty());
}

TEST(Comparison, ItIsWhatAllPairsOfRowsGive)
{
    std::mt19937 random(1999);
    for (int round = 0; round < 300; ++round) {
        const TwoLayouts made =
            randomLayouts(random, 1 + random() % 9, 1 + random() % (round % 10 == 0 ? 300 : 40));
        const Comparison found = compared(layoutsOf(made.here), layoutsOf(made.there));
        ASSERT_NO_FATAL_FAILURE(expectAsPlain(made, found)) << round;
        ASSERT_NO_FATAL_FAILURE(expectStretches(made, found.stretches)) << round;
        const Comparison back = compared(layoutsOf(made.there), layoutsOf(made.here));
        ASSERT_EQ(back.samePairs, found.samePairs);
        ASSERT_EQ(back.stretches.size(), found.stretches.size());
    }
}

TEST(Comparison, ItIsWhatAllPairsOfRowsGiveWhenResiduesAreMissing)
{
    std::mt19937 random(2682);
    std::uint64_t alone = 0;
    for (int round = 0; round < 300; ++round) {
        TwoLayouts made =
            randomLayouts(random, 1 + random() % 9, 1 + random() % (round % 10 == 0 ? 300 : 40));
        for (Texts *const rows : {&made.here, &made.there})
            for (std::string &row : *rows)
                for (char &letter : row)
                    if (letter != '-' && random() % 8 == 0)
                        letter = char(letter - 'A' + 'a');
        const Comparison found = compared(layoutsOf(made.here), layoutsOf(made.there));
        ASSERT_NO_FATAL_FAILURE(expectAsPlain(made, found)) << round;
        ASSERT_FALSE(testing::Test::HasFailure()) << round;
        alone += found.here.alone + found.there.alone;
    }
    EXPECT_GT(alone, 1000U);
}

TEST(Comparison, ItCanBeGivenUpAtAnyMoment)
{
    std::mt19937 random(7);
    const TwoLayouts made = randomLayouts(random, 8, 200);
    int looks = 0;
    const auto count = [&looks](double share) {
        EXPECT_GE(share, 0);
        EXPECT_LE(share, 1);
        ++looks;
        return true;
    };
    const ComparedLayout here = layoutsOf(made.here);
    const ComparedLayout there = layoutsOf(made.there);
    ASSERT_TRUE(companion::compare(here, there, count));
    ASSERT_GT(looks, 2);
    for (int at = 0; at < looks; ++at) {
        int left = at;
        EXPECT_FALSE(companion::compare(here, there, [&left](double) { return left-- > 0; }));
    }
}

// Made by reference.py, which counts as the benchmarks of aligners do.
TEST(Comparison, TheScoresOfRealFamiliesAreThoseOfTheReference)
{
    std::ifstream file(TEST_DATA_DIR "/compare/scores.tsv");
    ASSERT_TRUE(file);
    std::string line;
    std::getline(file, line);
    int count = 0;
    while (std::getline(file, line)) {
        std::istringstream fields(line);
        std::string name;
        std::uint64_t same = 0, here = 0, there = 0, sameColumns = 0, columns = 0, others = 0;
        std::string rows;
        std::string otherRows;
        fields >> name >> same >> here >> there >> sameColumns >> columns >> others >> rows >>
            otherRows;
        const auto split = [](const std::string &joined) {
            Texts all;
            std::istringstream text(joined);
            for (std::string row; std::getline(text, row, ',');)
                all.push_back(row);
            return all;
        };
        const Comparison found = compared(layoutsOf(split(rows)), layoutsOf(split(otherRows)));
        EXPECT_EQ(found.samePairs, same) << name;
        EXPECT_EQ(found.here.pairs, here) << name;
        EXPECT_EQ(found.there.pairs, there) << name;
        EXPECT_EQ(found.sameColumns, sameColumns) << name;
        EXPECT_EQ(found.here.columns, columns) << name;
        EXPECT_EQ(found.there.columns, others) << name;
        ++count;
    }
    EXPECT_GE(count, 5);
}

} // namespace ComparisonTest
