// SPDX-License-Identifier: GPL-3.0-or-later
#include "ColumnRules.h"

#include "Blosum62.h"
#include "ClustalColors.h"
#include "ColumnScores.h"
#include "Consensus.h"

#include <algorithm>
#include <cmath>

namespace companion {

namespace {

struct IdentityShade
{
    int abovePercent;
    Color color;
};

// From the strongest.
constexpr std::array<IdentityShade, 3> kIdentityShades = {
    {{80, Color(0x6464ff)}, {60, Color(0x9999ff)}, {40, Color(0xccccff)}}};

struct ConservationShade
{
    double above;
    Color color;
};

// From the strongest. On each of them the cells' letters have 4.5:1 and more.
constexpr std::array<ConservationShade, 4> kConservationShades = {{{0.8, Color(0x1f5fa8)},
                                                                   {0.6, Color(0x7fb2dd)},
                                                                   {0.4, Color(0xb3d3ee)},
                                                                   {0.2, Color(0xdcebf8)}}};

constexpr Color kMostFrequentColor(0x9a9aff);
constexpr Color kPositiveScoreColor(0xccccff);

ColumnColors identityColors(const ColumnCounts &counts)
{
    ColumnColors colors;
    const std::string letters = consensus(counts);
    if (letters.empty())
        return colors;
    // In whole numbers: 4 of 5 rows are not above 80 %.
    const std::uint64_t hundredfold = std::uint64_t(counts.ofLetter(letters.front())) * 100;
    const auto shade = std::ranges::find_if(kIdentityShades, [&](const IdentityShade &each) {
        return hundredfold > std::uint64_t(each.abovePercent) * counts.rows();
    });
    if (shade != kIdentityShades.end())
        for (const char letter : letters)
            colors.set(letter, shade->color);
    return colors;
}

ColumnColors blosumColors(const ColumnCounts &counts)
{
    ColumnColors colors;
    const std::string letters = consensus(counts);
    for (char letter = 'A'; letter <= 'Z'; ++letter)
        if (std::ranges::any_of(letters, [&](char most) { return blosum62(letter, most) > 0; }))
            colors.set(letter, kPositiveScoreColor);
    for (const char letter : letters)
        colors.set(letter, kMostFrequentColor);
    return colors;
}

ColumnColors conservationColors(const ColumnCounts &counts)
{
    ColumnColors colors;
    const double score = conservation(counts);
    const auto shade = std::ranges::find_if(
        kConservationShades, [&](const ConservationShade &each) { return score > each.above; });
    if (shade != kConservationShades.end())
        for (char letter = 'A'; letter <= 'Z'; ++letter)
            colors.set(letter, shade->color);
    return colors;
}

Legend conservationLegend()
{
    Legend legend = {"Conservation", {}, LegendRange{0, 1}, {}};
    double upTo = 1;
    for (const ConservationShade &shade : kConservationShades) {
        const std::string tenths = std::to_string(std::lround(shade.above * 10));
        legend.entries.push_back(
            {"above 0." + tenths, shade.color, LegendRange{shade.above, upTo}});
        upTo = shade.above;
    }
    return legend;
}

Legend identityLegend()
{
    Legend legend = {"Percentage identity", "%", LegendRange{0, 100}, {}};
    double upTo = 100;
    for (const IdentityShade &shade : kIdentityShades) {
        legend.entries.push_back({"above " + std::to_string(shade.abovePercent) + " %", shade.color,
                                  LegendRange{double(shade.abovePercent), upTo}});
        upTo = shade.abovePercent;
    }
    return legend;
}

Legend blosumLegend()
{
    return {"BLOSUM62 score",
            {},
            {},
            {{"Most frequent in the column", kMostFrequentColor, {}},
             {"Positive score against it", kPositiveScoreColor, {}}}};
}

} // namespace

ColumnColors columnColors(ColumnRule rule, const ColumnCounts &counts)
{
    switch (rule) {
    case ColumnRule::Identity:
        return identityColors(counts);
    case ColumnRule::Blosum62:
        return blosumColors(counts);
    case ColumnRule::Conservation:
        return conservationColors(counts);
    case ColumnRule::ClustalX:
        break;
    }
    return clustalColors(counts);
}

Legend legendOf(ColumnRule rule)
{
    switch (rule) {
    case ColumnRule::Identity:
        return identityLegend();
    case ColumnRule::Blosum62:
        return blosumLegend();
    case ColumnRule::Conservation:
        return conservationLegend();
    case ColumnRule::ClustalX:
        break;
    }
    return clustalLegend();
}

} // namespace companion
