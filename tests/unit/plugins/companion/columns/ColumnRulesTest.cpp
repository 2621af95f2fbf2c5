// SPDX-License-Identifier: GPL-3.0-or-later
#include "ColumnRules.h"

#include "ColumnScores.h"

#include "Blosum62.h"
#include "Consensus.h"

#include <gtest/gtest.h>

#include <string>

namespace ColumnRulesTest {

using namespace companion;
using namespace std::string_literals;

const std::optional<Color> kNoColor;

std::string times(int count, char letter)
{
    return std::string(std::size_t(count), letter);
}

ColumnColors identity(const std::string &letters)
{
    return columnColors(ColumnRule::Identity, ColumnCounts(letters));
}

ColumnColors blosum(const std::string &letters)
{
    return columnColors(ColumnRule::Blosum62, ColumnCounts(letters));
}

TEST(Consensus, IsTheMostFrequentAminoAcid)
{
    EXPECT_EQ(consensus(ColumnCounts("AVVvL"s)), "V");
    EXPECT_EQ(consensusShare(ColumnCounts("AVVvL"s)), 0.6);
}

TEST(Consensus, EquallyFrequentOnesAreAllOfIt)
{
    EXPECT_EQ(consensus(ColumnCounts("YYWWAAL"s)), "AWY");
}

TEST(Consensus, MoreGapsAndOtherLettersOnlyLowerItsShare)
{
    EXPECT_EQ(consensus(ColumnCounts("A------XXX"s)), "A");
    EXPECT_EQ(consensusShare(ColumnCounts("A------XXX"s)), 0.1);
}

TEST(Consensus, AColumnWithoutAminoAcidsHasNone)
{
    for (const std::string &letters : {""s, "---"s, "XX-"s}) {
        EXPECT_EQ(consensus(ColumnCounts(letters)), "") << letters;
        EXPECT_EQ(consensusShare(ColumnCounts(letters)), 0) << letters;
    }
}

TEST(IdentityColors, EachShadeBeginsAboveItsShare)
{
    const auto colorAt = [](int percent) {
        return identity(times(percent, 'L') + times(100 - percent, '-')).of('L');
    };
    EXPECT_EQ(colorAt(100), Color(0x6464ff));
    EXPECT_EQ(colorAt(81), Color(0x6464ff));
    EXPECT_EQ(colorAt(80), Color(0x9999ff));
    EXPECT_EQ(colorAt(61), Color(0x9999ff));
    EXPECT_EQ(colorAt(60), Color(0xccccff));
    EXPECT_EQ(colorAt(41), Color(0xccccff));
    EXPECT_EQ(colorAt(40), kNoColor);
}

TEST(IdentityColors, OnlyTheMostFrequentLetterHasOne)
{
    const ColumnColors colors = identity("LLLLV"s);
    EXPECT_EQ(colors.of('l'), Color(0x9999ff));
    EXPECT_EQ(colors.of('V'), kNoColor);
    EXPECT_EQ(colors.of('\0'), kNoColor);
    EXPECT_EQ(colors.of('-'), kNoColor);
}

TEST(IdentityColors, TwoThatAreEquallyFrequentBothHaveIt)
{
    const ColumnColors colors = identity("LLVV"s);
    EXPECT_EQ(colors.of('L'), Color(0xccccff));
    EXPECT_EQ(colors.of('V'), Color(0xccccff));
}

TEST(IdentityColors, ColumnsWithoutAminoAcidsHaveNone)
{
    for (const std::string &letters : {""s, "---"s, "XXX"s})
        EXPECT_TRUE(identity(letters).isEmpty()) << letters;
}

TEST(BlosumColors, TheMostFrequentIsDarkAndWhatScoresPositiveIsLight)
{
    const ColumnColors colors = blosum("IIIVLKX-"s);
    EXPECT_EQ(colors.of('I'), Color(0x9a9aff));
    EXPECT_EQ(colors.of('V'), Color(0xccccff));
    EXPECT_EQ(colors.of('l'), Color(0xccccff));
    EXPECT_EQ(colors.of('K'), kNoColor);
    EXPECT_EQ(colors.of('X'), kNoColor);
    EXPECT_EQ(colors.of('\0'), kNoColor);
}

TEST(BlosumColors, EveryLetterIsColoredByItsScore)
{
    for (const char most : kAminoAcids) {
        const ColumnColors colors = blosum(times(3, most));
        for (char letter = 'A'; letter <= 'Z'; ++letter) {
            if (letter == most)
                EXPECT_EQ(colors.of(letter), Color(0x9a9aff)) << most;
            else
                EXPECT_EQ(colors.of(letter).has_value(), blosum62(letter, most) > 0)
                    << most << letter;
        }
    }
}

TEST(BlosumColors, LettersThatMayBeTheMostFrequentScoreAgainstIt)
{
    EXPECT_EQ(blosum("DDD"s).of('B'), Color(0xccccff));
    EXPECT_EQ(blosum("EEE"s).of('Z'), Color(0xccccff));
}

TEST(BlosumColors, EachOfTheEquallyFrequentCountsAsMostFrequent)
{
    const ColumnColors colors = blosum("WWKKRY"s);
    EXPECT_EQ(colors.of('W'), Color(0x9a9aff));
    EXPECT_EQ(colors.of('K'), Color(0x9a9aff));
    EXPECT_EQ(colors.of('R'), Color(0xccccff));
    EXPECT_EQ(colors.of('Y'), Color(0xccccff));
    EXPECT_EQ(colors.of('G'), kNoColor);
}

TEST(BlosumColors, ColumnsWithoutAminoAcidsHaveNone)
{
    for (const std::string &letters : {""s, "---"s, "XXX"s})
        EXPECT_TRUE(blosum(letters).isEmpty()) << letters;
}

TEST(Legends, IdentityHasItsShadesOnAScaleOfPercent)
{
    const Legend legend = legendOf(ColumnRule::Identity);
    EXPECT_EQ(legend.unit, "%");
    EXPECT_EQ(legend.scale, (LegendRange{0, 100}));
    ASSERT_EQ(legend.entries.size(), 3U);
    for (const LegendEntry &entry : legend.entries) {
        ASSERT_TRUE(entry.range);
        const int percent = int(entry.range->upTo);
        EXPECT_EQ(identity(times(percent, 'L') + times(100 - percent, '-')).of('L'), entry.color)
            << entry.label;
    }
    EXPECT_EQ(legend.entries[0].label, "above 80 %");
    EXPECT_EQ(legend.entries[2].range, (LegendRange{40, 60}));
}

TEST(Legends, EveryRuleNamesEveryColorThatItGives)
{
    for (const ColumnRule rule :
         {ColumnRule::Identity, ColumnRule::Blosum62, ColumnRule::ClustalX}) {
        const Legend legend = legendOf(rule);
        EXPECT_FALSE(legend.title.empty());
        std::vector<bool> used(legend.entries.size());
        for (const char most : kAminoAcids)
            for (const int percent : {45, 65, 90}) {
                const ColumnColors colors = columnColors(
                    rule, ColumnCounts(times(percent, most) + times(100 - percent, '-')));
                for (char letter = 'A'; letter <= 'Z'; ++letter) {
                    const std::optional<Color> color = colors.of(letter);
                    bool named = !color;
                    for (std::size_t i = 0; i < used.size(); ++i)
                        if (color == legend.entries[i].color)
                            named = used[i] = true;
                    EXPECT_TRUE(named) << legend.title << ' ' << letter << " among " << most;
                }
            }
        for (std::size_t i = 0; i < used.size(); ++i)
            EXPECT_TRUE(used[i]) << legend.title << ": " << legend.entries[i].label;
    }
}

TEST(ColumnColors, OnlyLettersHaveColors)
{
    ColumnColors colors;
    for (const char sign : {'@', '[', '`', '{', '*', '-', '\0', '\xff'}) {
        colors.set(sign, Color(0x123456));
        EXPECT_EQ(colors.of(sign), kNoColor) << int(sign);
    }
    EXPECT_TRUE(colors.isEmpty());
    colors.set('z', Color(0x123456));
    EXPECT_EQ(colors.of('Z'), Color(0x123456));
}

TEST(ColumnRules, ConservationShadesAllLettersOfAColumnByItsRangeInTheLegend)
{
    const Legend legend = legendOf(ColumnRule::Conservation);
    std::size_t colored = 0;
    for (const std::string_view column : {"WWWWW", "WWWWF", "LLLIV", "AAG--", "ACDEF", "-----"}) {
        const ColumnCounts counts(std::span<const char>(column.data(), column.size()));
        const ColumnColors colors = columnColors(ColumnRule::Conservation, counts);
        const double score = conservation(counts);
        const auto entry = std::ranges::find_if(legend.entries, [&](const LegendEntry &each) {
            return score > each.range->above && score <= each.range->upTo;
        });
        const auto expected =
            entry == legend.entries.end() ? std::nullopt : std::optional(entry->color);
        colored += expected ? 1 : 0;
        for (const char letter : {'A', 'W', 'X', 'w'})
            EXPECT_EQ(colors.of(letter), expected) << column << ' ' << score;
    }
    EXPECT_GE(colored, 2U);
    EXPECT_TRUE(columnColors(ColumnRule::Conservation, ColumnCounts()).isEmpty());
}

} // namespace ColumnRulesTest
