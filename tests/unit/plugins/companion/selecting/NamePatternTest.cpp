// SPDX-License-Identifier: GPL-3.0-or-later
#include "NamePattern.h"

#include <gtest/gtest.h>

namespace NamePatternTest {

using companion::NameLanguage;
using companion::NamePattern;

bool isIn(const char *pattern, NameLanguage language, const char *name)
{
    return NamePattern(pattern, language).isIn(name);
}

TEST(NamePattern, PlainTextIsLookedForAnywhereWhateverItsCase)
{
    EXPECT_TRUE(isIn("hba", NameLanguage::Plain, "sp|P1|HBA_HUMAN"));
    EXPECT_TRUE(isIn("P1|", NameLanguage::Plain, "sp|p1|HBA_HUMAN"));
    EXPECT_FALSE(isIn("H.A", NameLanguage::Plain, "HBA"));
}

TEST(NamePattern, WildcardsStandForTheWholeName)
{
    EXPECT_TRUE(isIn("*_human*", NameLanguage::Wildcard, "HBA_HUMAN/1-141"));
    EXPECT_FALSE(isIn("*_human", NameLanguage::Wildcard, "HBA_HUMAN/1-141"));
    EXPECT_TRUE(isIn("HB?_HUMAN", NameLanguage::Wildcard, "HBB_HUMAN"));
    EXPECT_FALSE(isIn("HB?_HUMAN", NameLanguage::Wildcard, "HB_HUMAN"));
    EXPECT_TRUE(isIn("a[b]*", NameLanguage::Wildcard, "a[b]c"));
    EXPECT_FALSE(isIn("a[b]*", NameLanguage::Wildcard, "abc"));
    EXPECT_TRUE(isIn("*", NameLanguage::Wildcard, ""));
}

TEST(NamePattern, ExpressionsAreLookedForAnywhereUnlessTheySayOtherwise)
{
    EXPECT_TRUE(isIn("hb[ab]_", NameLanguage::Expression, "sp|HBA_HUMAN"));
    EXPECT_FALSE(isIn("^hb[ab]_", NameLanguage::Expression, "sp|HBA_HUMAN"));
    EXPECT_TRUE(isIn("Größe", NameLanguage::Expression, "GRÖßE"));
}

TEST(NamePattern, AMistakeIsToldWithItsPlaceAndIsInNoName)
{
    const NamePattern pattern("ab(c", NameLanguage::Expression);
    EXPECT_TRUE(pattern.mistake().startsWith("Character 5: ")) << pattern.mistake().toStdString();
    EXPECT_FALSE(pattern.isIn("ab(c"));
    EXPECT_EQ(NamePattern("ab(c", NameLanguage::Plain).mistake(), "");
    EXPECT_EQ(NamePattern("ab(c", NameLanguage::Wildcard).mistake(), "");
}

TEST(NamePattern, AnExpressionTellsWhatItsFirstPartStandsFor)
{
    const NamePattern family("^([a-z]+)_(\\d+)", NameLanguage::Expression);
    EXPECT_TRUE(family.hasPart());
    EXPECT_EQ(family.partOf("hsp_12/1-30"), QString("hsp"));
    EXPECT_EQ(family.partOf("12_hsp"), std::nullopt);
    // Of two ways that a name may be, one without it.
    EXPECT_EQ(NamePattern("x|(y)", NameLanguage::Expression).partOf("x"), QString());
}

TEST(NamePattern, WithoutSuchAPartAllNamesHaveTheSame)
{
    for (const NamePattern &pattern :
         {NamePattern("(a)", NameLanguage::Plain), NamePattern("*(a)", NameLanguage::Wildcard),
          NamePattern("a", NameLanguage::Expression)}) {
        EXPECT_FALSE(pattern.hasPart());
        EXPECT_EQ(pattern.partOf("(a)"), QString());
        EXPECT_EQ(pattern.partOf("none"), std::nullopt);
    }
    EXPECT_EQ(NamePattern("(a", NameLanguage::Expression).partOf("(a"), std::nullopt);
}

} // namespace NamePatternTest
