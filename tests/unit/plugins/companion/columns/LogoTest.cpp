// SPDX-License-Identifier: GPL-3.0-or-later
#include "Logo.h"

#include "KeptColumns.h"

#include <cmath>
#include <numeric>

namespace LogoTest {

using namespace companion;
using namespace std::string_literals;

std::string lettersOf(const std::vector<LogoLetter> &stack)
{
    std::string letters;
    for (const LogoLetter &each : stack)
        letters += each.letter;
    return letters;
}

TEST(Logo, LettersAndHeightsAreThoseOfTheReference)
{
    std::size_t compared = 0;
    for (const KeptColumns::Column &column : KeptColumns::all()) {
        const ColumnCounts counts(column.letters);
        EXPECT_NEAR(informationContent(counts), column.information, 1e-6) << column.name;
        const std::vector<LogoLetter> stack = logo(counts);
        std::istringstream kept(column.logo);
        std::string part;
        std::size_t place = 0;
        for (; kept >> part; ++place) {
            ASSERT_LT(place, stack.size()) << column.name;
            EXPECT_EQ(stack[place].letter, part[0]) << column.name;
            EXPECT_NEAR(stack[place].bits, std::stod(part.substr(2)), 1e-6) << column.name;
        }
        EXPECT_EQ(stack.size(), place) << column.name;
        compared += place;
    }
    EXPECT_GT(compared, 1000U);
}

TEST(Logo, AStackIsAsHighAsItsInformation)
{
    for (const KeptColumns::Column &column : KeptColumns::all()) {
        const ColumnCounts counts(column.letters);
        double height = 0;
        double before = 0;
        for (const LogoLetter &each : logo(counts)) {
            EXPECT_GE(each.bits, before) << column.name;
            before = each.bits;
            height += each.bits;
        }
        EXPECT_NEAR(height, informationContent(counts), 1e-9) << column.name;
        EXPECT_LT(height, kMostBits) << column.name;
    }
}

TEST(Logo, MoreRowsOfOneLetterComeNearerToAllBits)
{
    // 19 / (2 ln 2 * 1000) = 0.0137.
    EXPECT_NEAR(informationContent(ColumnCounts(std::string(1000, 'W'))), 4.3082, 5e-5);
    EXPECT_LT(informationContent(ColumnCounts(std::string(10, 'W'))), 3);
    EXPECT_NEAR(kMostBits, std::log2(20.0), 1e-15);
}

// e alone is more than all bits.
TEST(Logo, ThreeRowsTellNothing)
{
    EXPECT_EQ(informationContent(ColumnCounts("WWW"s)), 0);
    EXPECT_TRUE(logo(ColumnCounts("WWW"s)).empty());
    EXPECT_GT(informationContent(ColumnCounts("WWWW"s)), 0);
}

TEST(Logo, GapsAndOtherLettersHaveNoHeight)
{
    const std::string residues = std::string(30, 'L') + std::string(10, 'v');
    const std::vector<LogoLetter> stack = logo(ColumnCounts(residues));
    EXPECT_EQ(lettersOf(stack), "VL");
    EXPECT_EQ(logo(ColumnCounts(residues + "XX*---")), stack);
}

TEST(Logo, LettersOfOneHeightAreReadFromAbove)
{
    const std::string residues = std::string(20, 'A') + std::string(20, 'W') + std::string(20, 'C');
    EXPECT_EQ(lettersOf(logo(ColumnCounts(residues))), "WCA");
}

TEST(Logo, AColumnWithoutAminoAcidsIsEmpty)
{
    for (const std::string &letters : {""s, "----"s, "XXXX"s})
        EXPECT_TRUE(logo(ColumnCounts(letters)).empty()) << letters;
}

} // namespace LogoTest
