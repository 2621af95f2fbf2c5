// SPDX-License-Identifier: GPL-3.0-or-later
// Columns of 100 rows, of which those that are not named have a gap.
#include "ClustalColors.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>

namespace ClustalColorsTest {

using namespace companion;

constexpr std::optional<Color> kNone;
constexpr Color kRed(0xe53319);
constexpr Color kBlue(0x197fe5);
constexpr Color kGreen(0x19cc19);
constexpr Color kCyan(0x19b2b2);
constexpr Color kPink(0xe57f7f);
constexpr Color kMagenta(0xcc4ccc);
constexpr Color kYellow(0xcccc00);
constexpr Color kOrange(0xe5994c);

struct Case
{
    friend std::ostream &operator<<(std::ostream &out, const Case &each)
    {
        return out << each.column;
    }

    const char *name;
    // "L61 T1": 61 times L, once T, 38 gaps.
    const char *column;
    char letter;
    std::optional<Color> color;
};

ColumnCounts countsOf(const std::string &column)
{
    std::string letters;
    std::istringstream parts(column);
    for (std::string part; parts >> part;)
        letters += std::string(std::stoul(part.substr(1)), part[0]);
    letters.resize(100, '\0');
    return ColumnCounts(letters);
}

class ClustalColors : public testing::TestWithParam<Case>
{
};

TEST_P(ClustalColors, AreThoseOfTheTable)
{
    EXPECT_EQ(clustalColors(countsOf(GetParam().column)).of(GetParam().letter), GetParam().color);
}

INSTANTIATE_TEST_SUITE_P(
    Of, ClustalColors,
    testing::Values(
        Case{"GlycineAlways", "G1", 'G', kOrange},
        Case{"GlycineAmongOthers", "L99 G1", 'g', kOrange},
        Case{"ProlineAlways", "P1", 'P', kYellow}, Case{"HalfThreonine", "T50", 'T', kNone},
        Case{"MoreThanHalfThreonine", "T51", 'T', kGreen},
        Case{"ThreonineWithSerine", "T25 S26", 'T', kGreen},
        Case{"SerineWithThreonine", "T25 S26", 'S', kGreen},
        Case{"ThreonineAmongHydrophobicOnes", "L61 T1", 'T', kGreen},
        Case{"SerineAmongHydrophobicOnes", "L61 S1", 'S', kNone},
        Case{"SerineAmongEightyPercentHydrophobic", "L80 S1", 'S', kNone},
        Case{"SerineAmongMoreHydrophobicOnes", "L40 V41 S1", 'S', kGreen},
        Case{"HalfAsparagine", "N50", 'N', kNone},
        Case{"MoreThanHalfAsparagine", "N51", 'N', kGreen},
        Case{"AsparagineAmongAspartate", "D85 N1", 'N', kNone},
        Case{"AsparagineAmongMoreAspartate", "D86 N1", 'N', kGreen},
        Case{"MoreThanHalfGlutamine", "Q51", 'Q', kGreen},
        Case{"GlutamineWithGlutamate", "Q25 E26", 'Q', kGreen},
        Case{"GlutamineAmongPositiveOnes", "K30 R31 Q1", 'Q', kGreen},
        Case{"GlutamineAmongFewerPositiveOnes", "K30 R30 Q1", 'Q', kNone},
        Case{"SixtyPercentHydrophobic", "L30 W30", 'W', kNone},
        Case{"TryptophanAmongHydrophobicOnes", "L30 W31", 'W', kBlue},
        Case{"LeucineAmongHydrophobicOnes", "L30 W31", 'L', kBlue},
        Case{"ValineAmongHydrophobicOnes", "I60 V1", 'V', kBlue},
        Case{"IsoleucineAmongHydrophobicOnes", "I61", 'I', kBlue},
        Case{"MethionineAmongHydrophobicOnes", "H30 Y30 M1", 'M', kBlue},
        Case{"PhenylalanineAmongHydrophobicOnes", "P60 F1", 'F', kBlue},
        Case{"AlanineAmongHydrophobicOnes", "A61", 'A', kBlue},
        Case{"LeucineAmongHalfProline", "P50 L1", 'L', kNone},
        Case{"LeucineAmongMoreProline", "P51 L1", 'L', kBlue},
        Case{"AlanineAmongThreonine", "T86 A1", 'A', kBlue},
        Case{"AlanineAmongSerine", "S86 A1", 'A', kBlue},
        Case{"AlanineAmongLessSerine", "S85 A1", 'A', kNone},
        Case{"AlanineAmongGlycine", "G86 A1", 'A', kBlue},
        Case{"LeucineAmongGlycine", "G86 L1", 'L', kNone},
        Case{"CysteineAmongHydrophobicOnes", "L60 C1", 'C', kBlue},
        Case{"CysteineAmongSerine", "S86 C1", 'C', kBlue}, Case{"SomeCysteine", "C60", 'C', kNone},
        Case{"MoreCysteine", "C85", 'C', kBlue}, Case{"NearlyAllCysteine", "C86", 'C', kPink},
        Case{"LeucineAmongCysteine", "C86 L1", 'L', kBlue},
        Case{"HistidineAmongHydrophobicOnes", "L60 H1", 'H', kCyan},
        Case{"TyrosineAmongHydrophobicOnes", "Y61", 'Y', kCyan},
        Case{"TyrosineAmongFew", "Y60", 'Y', kNone}, Case{"HalfGlutamate", "E50", 'E', kNone},
        Case{"GlutamateWithAspartate", "E25 D26", 'E', kMagenta},
        Case{"GlutamateWithGlutamine", "E25 Q26", 'E', kMagenta},
        Case{"AspartateWithGlutamate", "E25 D26", 'D', kMagenta},
        Case{"AspartateAmongAsparagine", "N51 D1", 'D', kMagenta},
        Case{"AspartateAmongGlutamine", "Q86 D1", 'D', kNone},
        Case{"SixtyPercentPositive", "K30 R30", 'K', kNone},
        Case{"LysineWithArginine", "K30 R31", 'K', kRed},
        Case{"ArginineWithLysine", "K30 R31", 'r', kRed},
        Case{"LysineAmongGlutamine", "Q85 K1", 'K', kNone},
        Case{"LysineAmongMoreGlutamine", "Q86 K1", 'K', kRed},
        Case{"ArginineAmongMoreGlutamine", "Q86 R1", 'R', kRed},
        Case{"UnknownLetters", "L99 X1", 'X', kNone}, Case{"Gaps", "L99", '\0', kNone}),
    [](const auto &info) { return std::string(info.param.name); });

TEST(ClustalLegend, HasAnEntryForEachColor)
{
    const Legend legend = clustalLegend();
    ASSERT_EQ(legend.entries.size(), 8U);
    EXPECT_FALSE(legend.scale);
    EXPECT_EQ(legend.unit, "");
    for (const LegendEntry &entry : legend.entries)
        EXPECT_FALSE(entry.label.empty() || entry.range);
}

TEST(ClustalLegend, AColumnWithoutRowsColorsWhatNeedsNoOthers)
{
    const ColumnColors colors = clustalColors(ColumnCounts());
    EXPECT_EQ(colors.of('G'), kOrange);
    EXPECT_EQ(colors.of('P'), kYellow);
    EXPECT_EQ(colors.of('L'), kNone);
}

} // namespace ClustalColorsTest
