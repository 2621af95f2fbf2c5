// SPDX-License-Identifier: GPL-3.0-or-later
#include "ClustalColors.h"

#include <algorithm>
#include <string_view>

namespace companion {

namespace {

constexpr Color kClustalRed(0xe53319);
constexpr Color kClustalBlue(0x197fe5);
constexpr Color kClustalGreen(0x19cc19);
constexpr Color kClustalCyan(0x19b2b2);
constexpr Color kClustalPink(0xe57f7f);
constexpr Color kClustalMagenta(0xcc4ccc);
constexpr Color kClustalYellow(0xcccc00);
constexpr Color kClustalOrange(0xe5994c);

struct ClustalCondition
{
    unsigned char name;
    std::uint32_t abovePercent;
    std::string_view residues;
};

constexpr std::array<ClustalCondition, 29> kClustalConditions = {{
    {'%', 60, "WLVIMAFCYHP"}, {'#', 80, "WLVIMAFCYHP"}, {'-', 50, "ED"}, {'+', 60, "KR"},
    {'g', 50, "G"},           {'n', 50, "N"},           {'q', 50, "QE"}, {'p', 50, "P"},
    {'t', 50, "TS"},          {'A', 85, "A"},           {'C', 85, "C"},  {'D', 85, "D"},
    {'E', 85, "E"},           {'F', 85, "F"},           {'G', 85, "G"},  {'H', 85, "H"},
    {'I', 85, "I"},           {'K', 85, "K"},           {'L', 85, "L"},  {'M', 85, "M"},
    {'N', 85, "N"},           {'P', 85, "P"},           {'Q', 85, "Q"},  {'R', 85, "R"},
    {'S', 85, "S"},           {'T', 85, "T"},           {'V', 85, "V"},  {'W', 85, "W"},
    {'Y', 85, "Y"},
}};

struct ClustalRule
{
    char residue;
    Color color;
    // Names of conditions; none where the residue always has its color. The table asks A for a
    // condition "s", too, and has none of that name.
    std::string_view conditions;
};

constexpr std::string_view kHydrophobic = "%#ACFHILMVWYPp";

constexpr std::array<ClustalRule, 21> kClustalRules = {{
    {'G', kClustalOrange, ""},         {'P', kClustalYellow, ""},
    {'T', kClustalGreen, "tST%#"},     {'S', kClustalGreen, "tST#"},
    {'N', kClustalGreen, "nND"},       {'Q', kClustalGreen, "qQE+KR"},
    {'W', kClustalBlue, kHydrophobic}, {'L', kClustalBlue, kHydrophobic},
    {'V', kClustalBlue, kHydrophobic}, {'I', kClustalBlue, kHydrophobic},
    {'M', kClustalBlue, kHydrophobic}, {'A', kClustalBlue, "%#ACFHILMVWYPpTSG"},
    {'F', kClustalBlue, kHydrophobic}, {'C', kClustalBlue, "%#AFHILMVWYSPp"},
    {'C', kClustalPink, "C"},          {'H', kClustalCyan, kHydrophobic},
    {'Y', kClustalCyan, kHydrophobic}, {'E', kClustalMagenta, "-DEqQ"},
    {'D', kClustalMagenta, "-DEnN"},   {'K', kClustalRed, "+KRQ"},
    {'R', kClustalRed, "+KRQ"},
}};

bool isMet(const ClustalCondition &condition, const ColumnCounts &counts,
           std::uint64_t rows) noexcept
{
    std::uint64_t found = 0;
    for (const char residue : condition.residues)
        found += counts.ofLetter(residue);
    return found * 100 > condition.abovePercent * rows;
}

} // namespace

ColumnColors clustalColors(const ColumnCounts &counts) noexcept
{
    std::array<bool, 128> met = {};
    const std::uint64_t rows = counts.rows();
    for (const ClustalCondition &condition : kClustalConditions)
        met[condition.name] = isMet(condition, counts, rows);
    ColumnColors colors;
    for (const ClustalRule &rule : kClustalRules)
        if (rule.conditions.empty() || std::ranges::any_of(rule.conditions, [&](char name) {
                return met[static_cast<unsigned char>(name)];
            }))
            colors.set(rule.residue, rule.color);
    return colors;
}

Legend clustalLegend()
{
    return {"Clustal X",
            {},
            {},
            {{"Hydrophobic: A C F I L M V W", kClustalBlue, {}},
             {"Aromatic: H Y", kClustalCyan, {}},
             {"Positive: K R", kClustalRed, {}},
             {"Negative: D E", kClustalMagenta, {}},
             {"Polar: N Q S T", kClustalGreen, {}},
             {"Cysteine", kClustalPink, {}},
             {"Glycine", kClustalOrange, {}},
             {"Proline", kClustalYellow, {}}}};
}

} // namespace companion
