// SPDX-License-Identifier: GPL-3.0-or-later
// What is a loss of the same kind.
#include "LossKinds.h"

#include <gtest/gtest.h>

namespace LossKindsTest {

using TAMBO::app::areKindsKnown;
using TAMBO::app::lossKind;

struct SameKind
{
    const char *name;
    const char *one;
    const char *other;
};

class OneKind : public testing::TestWithParam<SameKind>
{
};

TEST_P(OneKind, CountsExamplesAndNamesMakeNoOther)
{
    EXPECT_EQ(lossKind(GetParam().one), lossKind(GetParam().other));
}

INSTANTIATE_TEST_SUITE_P(
    LossKinds, OneKind,
    testing::Values(
        SameKind{"OneRowAndMany", "1 row is not tied to the structure any more.",
                 "12 rows are not tied to the structure any more."},
        SameKind{"OneNameAndMany",
                 "1 of 2 names has characters that a Clustal file cannot hold there: \"a b\" "
                 "becomes \"a_b\"",
                 "2,000 of 3,000 names have characters that a Clustal file cannot hold there: "
                 "\"c\" becomes \"d\""},
        SameKind{"TheSameNames", "1 of 3 names would be the same as another one and gets a number",
                 "2 of 3 names would be the same as others and get a number"},
        SameKind{"OneHelixAndMany", "1 helix or strand is left out: the residues are not there.",
                 "2 helices or strands are left out: the residues are not there."},
        SameKind{"SmallLetters", "1 small letter becomes a capital, because it is none.",
                 "3 small letters become capitals, because it is none."},
        SameKind{"OtherTags", "What is said of columns is left out: 1 line (SS_cons).",
                 "What is said of columns is left out: 7 lines (SS_cons, RF)."},
        SameKind{"ANewName", "It is called kin now, and the file would keep its name.",
                 "It is called a family now, and the file would keep its name."}),
    [](const auto &info) { return std::string(info.param.name); });

TEST(LossKinds, WhatIsSaidOfOthersIsAnother)
{
    EXPECT_NE(lossKind("The descriptions of 2 rows are left out."),
              lossKind("The titles of 2 rows are left out."));
    EXPECT_NE(lossKind("What is said of columns is left out: 1 line (SS)."),
              lossKind("What is said of sequences is left out: 1 line (SS)."));
}

TEST(LossKinds, FewerAreKnownAndMoreAreNot)
{
    const QStringList known = {"The descriptions of 2 rows are left out.", "1 turn is left out."};
    EXPECT_TRUE(areKindsKnown({}, {}));
    EXPECT_TRUE(areKindsKnown({"2 turns are left out."}, known));
    EXPECT_FALSE(areKindsKnown({"2 turns are left out.", "1 strand is left out."}, known));
}

} // namespace LossKindsTest
