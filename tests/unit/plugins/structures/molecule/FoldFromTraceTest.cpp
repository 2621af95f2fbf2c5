// SPDX-License-Identifier: GPL-3.0-or-later
#include "FoldFromTrace.h"

#include "MadeMolecules.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace FoldFromTraceTest {

using namespace structures;

std::ptrdiff_t countOf(const Molecule &molecule, Fold fold)
{
    return std::count_if(molecule.residues.begin(), molecule.residues.end(),
                         [fold](const MoleculeResidue &residue) { return residue.fold == fold; });
}

TEST(FoldFromTrace, AHelixIsOneButForItsEnds)
{
    Molecule molecule = MadeMolecules::chainThrough(MadeMolecules::helix(14));
    assignFold(molecule);
    EXPECT_EQ(countOf(molecule, Fold::Helix), 12);
    EXPECT_EQ(countOf(molecule, Fold::Strand), 0);
    EXPECT_EQ(molecule.residues.front().fold, Fold::Coil);
    EXPECT_EQ(molecule.residues[1].fold, Fold::Helix);
}

// The angles of a turn tell hands apart, the distances do not: only the last residue needs them.
TEST(FoldFromTrace, ALeftHandedHelixIsToldByItsDistances)
{
    std::vector<Vec3> points = MadeMolecules::helix(14);
    for (Vec3 &point : points)
        point.x = -point.x;
    Molecule molecule = MadeMolecules::chainThrough(points);
    assignFold(molecule);
    EXPECT_EQ(countOf(molecule, Fold::Helix), 11);
    EXPECT_EQ(countOf(molecule, Fold::Strand), 0);
}

TEST(FoldFromTrace, FourResiduesOfAHelixAreTooFew)
{
    Molecule molecule = MadeMolecules::chainThrough(MadeMolecules::helix(5));
    assignFold(molecule);
    EXPECT_EQ(countOf(molecule, Fold::Helix), 0);
}

TEST(FoldFromTrace, ALongExtendedStretchIsAStrand)
{
    Molecule molecule = MadeMolecules::chainThrough(MadeMolecules::strand(9));
    assignFold(molecule);
    EXPECT_EQ(countOf(molecule, Fold::Strand), 7);
    EXPECT_EQ(countOf(molecule, Fold::Helix), 0);
}

TEST(FoldFromTrace, AShortOneIsAStrandOnlyBesideAnother)
{
    const std::vector<Vec3> shortOne = MadeMolecules::strand(5);
    Molecule alone = MadeMolecules::chainThrough(shortOne);
    assignFold(alone);
    EXPECT_EQ(countOf(alone, Fold::Strand), 0);

    std::vector<Vec3> both = shortOne;
    for (const Vec3 &point : shortOne)
        both.push_back(point + Vec3{0, 0, 4.9F});
    Molecule sheet = MadeMolecules::chainThrough(both);
    assignFold(sheet);
    EXPECT_EQ(countOf(sheet, Fold::Strand), 6);
}

TEST(FoldFromTrace, AtomsThatLieOnEachOtherAreNothing)
{
    Molecule molecule = MadeMolecules::chainThrough(std::vector<Vec3>(20000, Vec3{1, 2, 3}));
    assignFold(molecule);
    EXPECT_EQ(countOf(molecule, Fold::Coil), 20000);
}

TEST(FoldFromTrace, NoChainAndNoResidueIsNothing)
{
    Molecule empty;
    assignFold(empty);
    EXPECT_TRUE(empty.isEmpty());
}

} // namespace FoldFromTraceTest
