// SPDX-License-Identifier: GPL-3.0-or-later
#include "IdentityDistances.h"

#include "KeptTree.h"
#include "MadeTrees.h"

namespace IdentityDistancesTest {

using namespace companion;
using namespace std::string_literals;

double distanceOf(const std::string &a, const std::string &b, IdentityOf compared)
{
    const std::vector<std::string> rows = {a, b};
    return identityDistances(rows, compared)->at(0, 1);
}

TEST(IdentityDistances, AreThoseOfTheReference)
{
    const KeptTree::Kept kept = KeptTree::read();
    const std::map<std::string, IdentityOf> kinds = {
        {"AlignmentLength", IdentityOf::AlignmentLength},
        {"ShorterSequence", IdentityOf::ShorterSequence},
        {"AlignedPairs", IdentityOf::AlignedPairs}};
    for (const auto &[name, kind] : kinds) {
        const std::optional<DistanceMatrix> distances = identityDistances(kept.rows, kind);
        ASSERT_TRUE(distances);
        EXPECT_LT(MadeTrees::mostDifferent(*distances, kept.distances.at(name)), 1e-9) << name;
    }
}

// Ten columns, residues in 7 and 5 of them, 4 pairs, 3 of them identical.
TEST(IdentityDistances, EachKindHasItsDenominator)
{
    const std::string a = "ACDEFGH---"s;
    const std::string b = "ACDK-----W"s;
    EXPECT_DOUBLE_EQ(distanceOf(a, b, IdentityOf::AlignmentLength), 1 - 3.0 / 10);
    EXPECT_DOUBLE_EQ(distanceOf(a, b, IdentityOf::ShorterSequence), 1 - 3.0 / 5);
    EXPECT_DOUBLE_EQ(distanceOf(a, b, IdentityOf::AlignedPairs), 1 - 3.0 / 4);
}

TEST(IdentityDistances, OfARowFromItselfIsNothing)
{
    const DistanceMatrix distances =
        *identityDistances(std::vector<std::string>{"ACX", "acx"}, IdentityOf::AlignedPairs);
    EXPECT_EQ(distances.at(0, 0), 0);
    EXPECT_EQ(distances.at(0, 1), 0);
    EXPECT_EQ(distances.at(1, 0), 0);
}

TEST(IdentityDistances, ColumnsInWhichBothHaveAGapArePairsOfNoKind)
{
    EXPECT_EQ(distanceOf("A\0.C"s, "A-~D"s, IdentityOf::AlignedPairs), 0.5);
}

TEST(IdentityDistances, AShorterRowHasGapsAtItsEnd)
{
    EXPECT_EQ(distanceOf("ACDE", "AC", IdentityOf::AlignedPairs), 0);
    EXPECT_EQ(distanceOf("ACDE", "AC", IdentityOf::AlignmentLength), 0.5);
}

TEST(IdentityDistances, WhereNothingCanBeComparedRowsAreAsFarAsCanBe)
{
    EXPECT_EQ(distanceOf("AC--", "--DE", IdentityOf::AlignedPairs), 1);
    EXPECT_EQ(distanceOf("----", "ACDE", IdentityOf::ShorterSequence), 1);
    EXPECT_EQ(distanceOf("", "", IdentityOf::AlignmentLength), 1);
}

// Columns are counted by blocks.
TEST(IdentityDistances, RowsOfAnyLengthAreCountedToTheirEnd)
{
    for (const std::size_t length : {1U, 127U, 128U, 129U, 255U, 256U, 257U, 1000U}) {
        const std::string a(length, 'A');
        std::string b = a;
        b.back() = 'C';
        EXPECT_DOUBLE_EQ(distanceOf(a, b, IdentityOf::AlignedPairs), 1.0 / double(length))
            << length;
    }
}

TEST(IdentityDistances, CanBeGivenUp)
{
    const std::vector<std::string> rows(10, "ACDE");
    int asked = 0;
    double before = -1;
    const auto result = identityDistances(rows, IdentityOf::AlignedPairs, [&](double done) {
        EXPECT_GT(done, before);
        EXPECT_LE(done, 1);
        before = done;
        return ++asked < 4;
    });
    EXPECT_FALSE(result);
    EXPECT_EQ(asked, 4);
}

TEST(IdentityDistances, OfNoRowsThereAreNone)
{
    EXPECT_EQ(identityDistances({}, IdentityOf::AlignedPairs)->rows(), 0U);
}

// Rows of any length, one after the other, so that nothing is left of the one before.
TEST(IdentityDistances, OfOneRowToOthersAreThoseOfPairs)
{
    std::mt19937 random(11); // NOLINT(cert-msc51-cpp): the same in each run
    const auto row = [&random] {
        std::string text(random() % 300, ' ');
        for (char &letter : text)
            letter = "ACDacd-.~X"[random() % 10];
        return text;
    };
    for (const IdentityOf compared :
         {IdentityOf::AlignmentLength, IdentityOf::ShorterSequence, IdentityOf::AlignedPairs}) {
        const std::string first = row();
        IdentityTo identity(first, 300, compared);
        for (int i = 0; i < 50; ++i) {
            const std::vector<std::string> rows = {first, row(), std::string(300, '-')};
            EXPECT_NEAR(identity.of(rows[1]), 1 - identityDistances(rows, compared)->at(0, 1),
                        1e-12);
        }
        EXPECT_EQ(identity.of(std::string(300, '-')), 0);
    }
}

} // namespace IdentityDistancesTest
