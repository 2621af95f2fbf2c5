// SPDX-License-Identifier: GPL-3.0-or-later
#include "RibbonPath.h"

#include "MadeMolecules.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace RibbonPathTest {

using namespace structures;

float farthestFromRibbon(const Molecule &molecule, const std::vector<RibbonRing> &rings)
{
    float farthest = 0;
    for (const MoleculeAtom &atom : molecule.atoms) {
        float nearest = 1e9F;
        for (const RibbonRing &ring : rings)
            nearest = std::min(nearest, distance(ring.centre, atom.position));
        farthest = std::max(farthest, nearest);
    }
    return farthest;
}

std::vector<RibbonRing> pathOf(const Molecule &molecule, Style style = Style::Cartoon)
{
    const std::vector<ResidueStyle> styles(molecule.residues.size(), {style, false});
    const std::vector<TraceRun> runs = traceRuns(molecule, molecule.chains.front());
    EXPECT_EQ(runs.size(), 1U);
    return ribbonPath(molecule, runs.front(), styles, 8);
}

void setFold(Molecule &molecule, Fold fold)
{
    for (MoleculeResidue &residue : molecule.residues)
        residue.fold = fold;
}

TEST(RibbonPath, PassesThroughEveryCaOfAHelix)
{
    Molecule molecule = MadeMolecules::chainThrough(MadeMolecules::helix(20));
    setFold(molecule, Fold::Helix);
    EXPECT_LT(farthestFromRibbon(molecule, pathOf(molecule)), 0.01F);
}

TEST(RibbonPath, PassesThroughEveryCaOfACoil)
{
    const Molecule molecule = MadeMolecules::chainThrough(MadeMolecules::strand(12));
    EXPECT_LT(farthestFromRibbon(molecule, pathOf(molecule)), 0.01F);
}

TEST(RibbonPath, IsStraighterThanTheCaOfAStrandAndEndsInAnArrow)
{
    Molecule molecule = MadeMolecules::chainThrough(MadeMolecules::strand(10));
    setFold(molecule, Fold::Strand);
    const std::vector<RibbonRing> rings = pathOf(molecule);
    float most = 0;
    for (const RibbonRing &ring : rings)
        if (ring.residue > 1 && ring.residue < 8)
            most = std::max(most, std::abs(ring.centre.y));
    EXPECT_LT(most, 0.3F);
    const auto widest =
        std::max_element(rings.begin(), rings.end(), [](const RibbonRing &a, const RibbonRing &b) {
            return a.width < b.width;
        });
    EXPECT_EQ(widest->residue, 9U);
    EXPECT_LT(rings.back().width, 0.3F);
}

TEST(RibbonPath, CrossSectionsStandAtRightAnglesAndDoNotFlip)
{
    Molecule molecule = MadeMolecules::chainThrough(MadeMolecules::helix(20));
    setFold(molecule, Fold::Helix);
    const std::vector<RibbonRing> rings = pathOf(molecule);
    for (std::size_t i = 0; i < rings.size(); ++i) {
        EXPECT_NEAR(length(rings[i].side), 1, 1e-3);
        EXPECT_NEAR(length(rings[i].up), 1, 1e-3);
        EXPECT_NEAR(dot(rings[i].side, rings[i].up), 0, 1e-3);
        if (i > 0) {
            EXPECT_GT(dot(rings[i].side, rings[i - 1].side), 0.5F) << i;
        }
    }
}

TEST(RibbonPath, AHiddenResidueHasNoRibbonAndTheOthersKeepTheirs)
{
    const Molecule molecule = MadeMolecules::chainThrough(MadeMolecules::helix(9));
    std::vector<ResidueStyle> styles(9, {Style::Cartoon, false});
    const std::vector<TraceRun> runs = traceRuns(molecule, molecule.chains.front());
    const std::vector<RibbonRing> all = ribbonPath(molecule, runs.front(), styles, 4);
    styles[4].style = Style::Hidden;
    const std::vector<RibbonRing> some = ribbonPath(molecule, runs.front(), styles, 4);
    ASSERT_EQ(all.size(), some.size());
    for (std::size_t i = 0; i < all.size(); ++i) {
        EXPECT_EQ(all[i].centre, some[i].centre);
        EXPECT_EQ(some[i].residue, all[i].residue == 4 ? kNone : all[i].residue);
    }
}

TEST(RibbonPath, ALoneResidueHasNone)
{
    const Molecule molecule = MadeMolecules::chainThrough({{1, 2, 3}});
    EXPECT_TRUE(pathOf(molecule).empty());
}

TEST(RibbonPath, AtomsOnALineAndInOnePlaceGiveFiniteRings)
{
    std::vector<Vec3> points;
    for (int i = 0; i < 6; ++i)
        points.push_back({3.8F * float(i), 0, 0});
    for (int i = 0; i < 4; ++i)
        points.push_back({19, 0, 0});
    for (const RibbonRing &ring : pathOf(MadeMolecules::chainThrough(points))) {
        EXPECT_TRUE(isFinite(ring.centre));
        EXPECT_NEAR(length(ring.side), 1, 1e-3);
        EXPECT_NEAR(length(ring.up), 1, 1e-3);
    }
}

TEST(TraceRuns, AGapBetweenCaAtomsBreaksTheRun)
{
    std::vector<Vec3> points = MadeMolecules::strand(6);
    points[4].x += 9;
    points[5].x += 9;
    const Molecule molecule = MadeMolecules::chainThrough(points);
    const std::vector<TraceRun> runs = traceRuns(molecule, molecule.chains.front());
    ASSERT_EQ(runs.size(), 2U);
    EXPECT_EQ(runs[0].residues.size(), 4U);
    EXPECT_EQ(runs[1].residues.size(), 2U);
}

} // namespace RibbonPathTest
