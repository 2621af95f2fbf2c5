// SPDX-License-Identifier: GPL-3.0-or-later
#include "ColumnRules.h"

#include "Blosum62.h"
#include "ClustalColors.h"
#include "Consensus.h"

#include <algorithm>

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
    case ColumnRule::ClustalX:
        break;
    }
    return clustalLegend();
}

} // namespace companion
