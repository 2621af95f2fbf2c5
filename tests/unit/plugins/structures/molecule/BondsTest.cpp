// SPDX-License-Identifier: GPL-3.0-or-later
#include "Bonds.h"

#include <gtest/gtest.h>

#include <numeric>

namespace BondsTest {

using namespace structures;

Molecule atomsAt(const std::vector<std::pair<const char *, Vec3>> &atoms)
{
    Molecule molecule;
    for (const auto &[element, place] : atoms) {
        MoleculeAtom atom;
        atom.position = place;
        atom.element = {element[0], element[1]};
        molecule.atoms.push_back(atom);
    }
    return molecule;
}

std::vector<Bond> bondsOf(const Molecule &molecule)
{
    std::vector<std::uint32_t> all(molecule.atoms.size());
    std::iota(all.begin(), all.end(), 0U);
    return bondsBetween(molecule, all);
}

TEST(Bonds, AtomsAtTheDistanceOfABondHaveOne)
{
    const Molecule molecule = atomsAt(
        {{"C", {0, 0, 0}}, {"C", {1.54F, 0, 0}}, {"O", {2.2F, 1.05F, 0}}, {"N", {9, 0, 0}}});
    const std::vector<Bond> bonds = bondsOf(molecule);
    ASSERT_EQ(bonds.size(), 2U);
    EXPECT_EQ(bonds[0].first, 0U);
    EXPECT_EQ(bonds[0].second, 1U);
    EXPECT_EQ(bonds[1].first, 1U);
    EXPECT_EQ(bonds[1].second, 2U);
}

TEST(Bonds, SulfursOfADisulfideHaveOne)
{
    EXPECT_EQ(bondsOf(atomsAt({{"S", {0, 0, 0}}, {"S", {2.05F, 0, 0}}})).size(), 1U);
    EXPECT_TRUE(bondsOf(atomsAt({{"S", {0, 0, 0}}, {"S", {3.5F, 0, 0}}})).empty());
}

TEST(Bonds, MetalsHaveNone)
{
    EXPECT_TRUE(bondsOf(atomsAt({{"FE", {0, 0, 0}}, {"N", {2.0F, 0, 0}}})).empty());
}

TEST(Bonds, AHydrogenHasOneAndNoneWithAnother)
{
    const std::vector<Bond> bonds = bondsOf(atomsAt(
        {{"H", {0, 0, 0}}, {"C", {1.0F, 0, 0}}, {"C", {-1.05F, 0, 0}}, {"H", {0, 0.6F, 0}}}));
    int ofFirst = 0;
    for (const Bond &bond : bonds) {
        ofFirst += int(bond.first == 0);
        EXPECT_FALSE(bond.first == 0 && bond.second == 3);
    }
    EXPECT_EQ(ofFirst, 1);
}

TEST(Bonds, AlternativePlacesOfAnAtomHaveNone)
{
    EXPECT_TRUE(bondsOf(atomsAt({{"C", {0, 0, 0}}, {"C", {0.3F, 0, 0}}})).empty());
}

TEST(Bonds, ThousandsOfAtomsInOnePlaceEndSoon)
{
    std::vector<std::pair<const char *, Vec3>> atoms;
    for (int i = 0; i < 20000; ++i)
        atoms.push_back({"C", {float(i % 10) * 0.05F, float(i / 10 % 10) * 0.05F, 0.01F}});
    EXPECT_LE(bondsOf(atomsAt(atoms)).size(), 8U * 20000U);
}

TEST(Bonds, FarFromTheOriginTheyAreTheSame)
{
    EXPECT_EQ(bondsOf(atomsAt({{"C", {-1e6F, 0, 0}}, {"C", {-1e6F + 1.5F, 0, 0}}})).size(), 1U);
}

} // namespace BondsTest
