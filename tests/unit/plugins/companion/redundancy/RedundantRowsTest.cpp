// SPDX-License-Identifier: GPL-3.0-or-later
#include "RedundantRows.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <numeric>
#include <random>
#include <string>
#include <vector>

namespace RedundantRowsTest {

using companion::ComparedRows;
using companion::IdentityOf;
using companion::RedundancyRule;
using companion::RedundantRow;

struct Rows
{
    std::vector<std::string> texts;
    std::vector<bool> hasStructure;
};

ComparedRows copyOf(const Rows &rows)
{
    std::size_t columns = 0;
    for (const std::string &text : rows.texts)
        columns = std::max(columns, text.size());
    ComparedRows copy(columns);
    for (std::size_t row = 0; row < rows.texts.size(); ++row)
        copy.add(rows.texts[row], rows.hasStructure[row]);
    return copy;
}

bool isGap(char letter)
{
    return letter == '-';
}

// The same without any haste.
double plainIdentity(const std::string &a, const std::string &b, IdentityOf compared)
{
    double identical = 0;
    double aligned = 0;
    for (std::size_t col = 0; col < a.size(); ++col) {
        if (isGap(a[col]) || isGap(b[col]))
            continue;
        ++aligned;
        identical += std::toupper(a[col]) == std::toupper(b[col]) ? 1 : 0;
    }
    const auto residues = [](const std::string &text) {
        return double(text.size()) - double(std::ranges::count_if(text, isGap));
    };
    const double most = compared == IdentityOf::AlignedPairs ? aligned
                        : compared == IdentityOf::ShorterSequence
                            ? std::min(residues(a), residues(b))
                            : double(a.size());
    return most == 0 ? 0 : identical / most;
}

std::vector<RedundantRow> plainly(const Rows &rows, const RedundancyRule &rule)
{
    std::vector<std::uint32_t> order(rows.texts.size());
    std::iota(order.begin(), order.end(), 0U);
    const auto length = [&rows](std::uint32_t row) {
        return std::ranges::count_if(rows.texts[row], [](char each) { return !isGap(each); });
    };
    std::stable_sort(order.begin(), order.end(), [&](std::uint32_t a, std::uint32_t b) {
        const bool hasA = rule.keepsStructures && rows.hasStructure[a];
        const bool hasB = rule.keepsStructures && rows.hasStructure[b];
        return hasA != hasB ? hasA : length(a) > length(b);
    });
    std::vector<std::uint32_t> kept;
    std::vector<RedundantRow> redundant;
    for (const std::uint32_t row : order) {
        if (length(row) == 0)
            continue;
        const auto like = std::ranges::find_if(kept, [&](std::uint32_t each) {
            return plainIdentity(rows.texts[row], rows.texts[each], rule.compared) >=
                   rule.identity - 1e-9;
        });
        if (like == kept.end())
            kept.push_back(row);
        else
            redundant.push_back(
                {row, *like, plainIdentity(rows.texts[row], rows.texts[*like], rule.compared)});
    }
    std::ranges::sort(redundant, {}, &RedundantRow::row);
    return redundant;
}

// Families of rows that were changed a little, some of them cut off, and some without any residue.
Rows made(std::mt19937 &random, std::size_t rows, std::size_t columns)
{
    const auto below = [&random](unsigned limit) { return unsigned(random() % limit); };
    Rows result;
    std::vector<std::string> families;
    for (int i = 0; i < 4; ++i) {
        std::string text;
        for (std::size_t col = 0; col < columns; ++col)
            text += below(6) == 0 ? '-' : "ACDEFGHIKLMNPQRSTVWYX"[below(21)];
        families.push_back(text);
    }
    for (std::size_t row = 0; row < rows; ++row) {
        std::string text = families[below(4)];
        const unsigned changes = below(40);
        for (char &letter : text) {
            if (below(100) < changes)
                letter = below(4) == 0 ? '-' : "ACDEFGHIKLMNPQRSTVWY"[below(20)];
            else if (below(9) == 0)
                letter = char(std::tolower(letter));
        }
        if (below(5) == 0)
            std::fill(text.begin(), text.begin() + below(unsigned(columns)), '-');
        if (below(30) == 0)
            std::ranges::fill(text, '-');
        result.texts.push_back(text);
        result.hasStructure.push_back(below(6) == 0);
    }
    return result;
}

TEST(RedundantRows, AreThoseOfAPlainSearch)
{
    std::mt19937 random(17);
    std::size_t found = 0;
    for (const std::size_t columns : {1U, 7U, 63U, 64U, 65U, 200U}) {
        for (int turn = 0; turn < 4; ++turn) {
            const Rows rows = made(random, 60, columns);
            const ComparedRows copy = copyOf(rows);
            for (const IdentityOf compared : {IdentityOf::AlignedPairs, IdentityOf::ShorterSequence,
                                              IdentityOf::AlignmentLength}) {
                for (const double identity : {0.01, 0.4, 0.7, 0.9, 1.0}) {
                    for (const bool keepsStructures : {true, false}) {
                        const RedundancyRule rule{identity, compared, keepsStructures};
                        const std::vector<RedundantRow> expected = plainly(rows, rule);
                        const auto result = companion::redundantRows(copy, rule);
                        ASSERT_TRUE(result);
                        ASSERT_EQ(result->size(), expected.size());
                        for (std::size_t i = 0; i < expected.size(); ++i) {
                            ASSERT_EQ((*result)[i].row, expected[i].row);
                            ASSERT_EQ((*result)[i].kept, expected[i].kept);
                            ASSERT_DOUBLE_EQ((*result)[i].identity, expected[i].identity);
                        }
                        found += expected.size();
                    }
                }
            }
        }
    }
    EXPECT_GT(found, 1000U);
}

TEST(RedundantRows, JustEnoughIdentityIsEnough)
{
    const ComparedRows rows = copyOf({{"ACDEFGHIKL", "ACDEFGHIKW"}, {false, false}});
    const auto found = companion::redundantRows(rows, {0.9, IdentityOf::ShorterSequence, true});
    ASSERT_EQ(found->size(), 1U);
    EXPECT_EQ(found->front().row, 1U);
    EXPECT_EQ(found->front().kept, 0U);
    EXPECT_TRUE(companion::redundantRows(rows, {0.91, IdentityOf::ShorterSequence, true})->empty());
}

TEST(RedundantRows, TheLongestIsKeptUnlessAnotherHasAStructure)
{
    const ComparedRows rows = copyOf({{"ACDE--", "ACDEFG", "ACDEF-"}, {false, false, true}});
    const auto structure = companion::redundantRows(rows, {});
    ASSERT_EQ(structure->size(), 2U);
    EXPECT_EQ((*structure)[0].kept, 2U);
    EXPECT_EQ((*structure)[1].row, 1U);
    const auto longest = companion::redundantRows(rows, {0.9, IdentityOf::ShorterSequence, false});
    ASSERT_EQ(longest->size(), 2U);
    EXPECT_EQ((*longest)[0].kept, 1U);
    EXPECT_EQ((*longest)[1].row, 2U);
}

TEST(RedundantRows, AFragmentIsLikeWhatItIsAFragmentOfByTheShorterSequenceAlone)
{
    const ComparedRows rows = copyOf({{"ACDEFGHIKL", "---EF-----"}, {false, false}});
    EXPECT_EQ(companion::redundantRows(rows, {1, IdentityOf::ShorterSequence, true})->size(), 1U);
    EXPECT_EQ(companion::redundantRows(rows, {1, IdentityOf::AlignedPairs, true})->size(), 1U);
    EXPECT_TRUE(companion::redundantRows(rows, {0.3, IdentityOf::AlignmentLength, true})->empty());
}

TEST(RedundantRows, TheSearchCanBeGivenUpAndSaysHowFarItIs)
{
    std::mt19937 random(5);
    const ComparedRows rows = copyOf(made(random, 50, 30));
    double last = -1;
    ASSERT_TRUE(companion::redundantRows(rows, {}, [&](double done) {
        EXPECT_GE(done, last);
        EXPECT_LE(done, 1);
        last = done;
        return true;
    }));
    EXPECT_GT(last, 0.9);
    EXPECT_FALSE(companion::redundantRows(rows, {}, [](double done) { return done < 0.5; }));
}

TEST(RedundantRows, OfNoRowsNoneIs)
{
    EXPECT_TRUE(companion::redundantRows(ComparedRows(0), {})->empty());
    ComparedRows withoutColumns(0);
    withoutColumns.add(std::string(), true);
    EXPECT_TRUE(companion::redundantRows(withoutColumns, {})->empty());
}

} // namespace RedundantRowsTest
