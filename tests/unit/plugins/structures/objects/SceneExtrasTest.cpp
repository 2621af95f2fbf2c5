// SPDX-License-Identifier: GPL-3.0-or-later
// What a file says beside its residues: waters, bonds and models.
#include "StructureScene.h"

#include "MadeExtras.h"
#include "unit/model/ModelFixture.h"

#include <algorithm>

namespace SceneExtrasTest {

using namespace structures;

class SceneExtras : public ModelFixture
{
protected:
    ViewedStructure &shown() { return *m_Scene.structures().front(); }
    const Molecule &molecule() { return shown().molecule(); }
    std::uint32_t sulfurOf(std::uint32_t residue)
    {
        return molecule().residues[residue].firstAtom + 1;
    }
    std::size_t sticksBetween(std::uint32_t first, std::uint32_t second)
    {
        const std::vector<Stick> &sticks = shown().shapes()->sticks;
        return std::size_t(std::count_if(sticks.begin(), sticks.end(), [&](const Stick &stick) {
            return stick.fromPick == pickOfAtom(first) && stick.toPick == pickOfAtom(second);
        }));
    }
    // Those that belong to residues as such.
    std::vector<Vec3> traceOf(std::uint32_t residue)
    {
        std::vector<Vec3> found;
        for (const Sphere &sphere : shown().shapes()->spheres)
            if (sphere.pick == pickOfResidue(molecule(), residue))
                found.push_back(sphere.centre);
        return found;
    }
    std::size_t watersSeen()
    {
        const std::vector<Sphere> &spheres = shown().shapes()->spheres;
        return std::size_t(std::count_if(spheres.begin(), spheres.end(), [&](const Sphere &s) {
            return s.pick >= pickOfWater(molecule(), 0);
        }));
    }

    TAMBO::Compound *m_Structure = MadeExtras::make("1new");
    StructureScene m_Scene{[] {}};
};

TEST_F(SceneExtras, WatersAreNotShownAtFirst)
{
    EXPECT_EQ(molecule().waters.size(), 3U);
    EXPECT_EQ(watersSeen(), 0U);
    m_Scene.setWatersShown(true);
    EXPECT_EQ(watersSeen(), 3U);
    m_Scene.setWatersShown(false);
    EXPECT_EQ(watersSeen(), 0U);
}

TEST_F(SceneExtras, AWaterHasANameAndIsNoResidue)
{
    const Pick pick = pickOfWater(molecule(), 1);
    EXPECT_FALSE(m_Scene.placeOf(pick));
    const auto water = m_Scene.waterOf(pick);
    ASSERT_TRUE(water);
    EXPECT_EQ(water->structure->describeWater(water->water), "1new, chain A, water 302B");
    EXPECT_EQ(shown().describeWater(2), "1new, water 5");
    EXPECT_FALSE(m_Scene.waterOf(pickOfAtom(0)));
    EXPECT_FALSE(m_Scene.waterOf(0));
}

TEST_F(SceneExtras, WatersOfSeveralStructuresAreToldApart)
{
    MadeExtras::make("2new");
    m_Scene.refresh();
    const ViewedStructure &second = *m_Scene.structures()[1];
    const auto water = m_Scene.waterOf(m_Scene.firstPickOf(second) + pickOfWater(molecule(), 0));
    ASSERT_TRUE(water);
    EXPECT_EQ(water->structure->describeWater(water->water), "2new, chain A, water 301");
}

TEST_F(SceneExtras, WatersGoWithTheirChain)
{
    m_Scene.setWatersShown(true);
    shown().setHidden(std::vector<bool>(13, true));
    EXPECT_EQ(watersSeen(), 1U);
}

TEST_F(SceneExtras, WatersAreWithinTheBounds)
{
    const float without = m_Scene.picture()->bounds.radius;
    m_Scene.setWatersShown(true);
    EXPECT_GT(m_Scene.picture()->bounds.radius, without);
}

TEST_F(SceneExtras, ANamedBondIsDrawnWhereBothOfItsAtomsAre)
{
    const std::uint32_t first = sulfurOf(MadeExtras::kFirstCysteine);
    const std::uint32_t second = sulfurOf(MadeExtras::kSecondCysteine);
    EXPECT_EQ(sticksBetween(first, second), 0U);
    std::vector<ResidueStyle> styles = shown().styles();
    styles[MadeExtras::kFirstCysteine].hasSideChain = true;
    shown().setStyles(styles);
    EXPECT_EQ(sticksBetween(first, second), 0U);
    styles[MadeExtras::kSecondCysteine].hasSideChain = true;
    shown().setStyles(styles);
    EXPECT_EQ(sticksBetween(first, second), 1U);
}

TEST_F(SceneExtras, WhatHoldsAMetalIsDrawnAsDashes)
{
    const std::uint32_t sulfur = sulfurOf(MadeExtras::kHolder);
    const std::uint32_t ion = molecule().residues[MadeExtras::kIon].firstAtom;
    shown().setStyle(Style::BallsAndSticks);
    EXPECT_EQ(sticksBetween(sulfur, ion), 0U);
    EXPECT_GT(sticksBetween(sulfur, sulfur), 0U);
    EXPECT_GT(sticksBetween(ion, ion), 0U);
}

TEST_F(SceneExtras, ABondThatIsTooLongIsNone)
{
    shown().setStyle(Style::Sticks);
    EXPECT_EQ(sticksBetween(sulfurOf(0), sulfurOf(11)), 0U);
    EXPECT_EQ(molecule().links.size(), 2U);
}

TEST_F(SceneExtras, AnotherModelIsElsewhereAndItsPicksAreTheSame)
{
    const Molecule first = molecule();
    EXPECT_EQ(m_Scene.modelCount(), 3U);
    m_Scene.setModels({false, 1});
    ASSERT_EQ(molecule().atoms.size(), first.atoms.size());
    for (std::size_t i = 0; i < first.atoms.size(); ++i)
        EXPECT_NEAR(molecule().atoms[i].position.x, first.atoms[i].position.x + 10, 1e-3) << i;
    const auto place = m_Scene.placeOf(pickOfResidue(molecule(), 7));
    ASSERT_TRUE(place);
    EXPECT_EQ(place->structure->residue(place->place.residue), m_Structure->Child(0)->Child(7));
    EXPECT_EQ(shown().describe(place->place).rfind("1new, model 2, chain A", 0), 0U);
    m_Scene.setModels({false, 0});
    EXPECT_EQ(molecule().atoms[3].position, first.atoms[3].position);
}

TEST_F(SceneExtras, AnAtomThatTheModelLacksIsNotDrawn)
{
    m_Scene.setModels({false, 2});
    shown().setStyle(Style::Spheres);
    for (const Sphere &sphere : shown().shapes()->spheres) {
        EXPECT_NE(sphere.pick, pickOfAtom(molecule().residues[MadeExtras::kLacking].firstAtom));
        EXPECT_NE(sphere.pick, pickOfAtom(sulfurOf(MadeExtras::kLacking)));
    }
    EXPECT_EQ(shown().shapes()->spheres.size(), 23U);
}

TEST_F(SceneExtras, AModelThatIsNotThereIsTheFirst)
{
    const Vec3 before = molecule().atoms[0].position;
    m_Scene.setModels({false, 17});
    EXPECT_EQ(molecule().atoms[0].position, before);
}

TEST_F(SceneExtras, AllModelsAreThinLinesInOnePicture)
{
    const float alone = m_Scene.picture()->bounds.radius;
    m_Scene.setModels({true, 0});
    const std::vector<Vec3> points = traceOf(3);
    ASSERT_EQ(points.size(), 3U);
    EXPECT_NEAR(points[2].x - points[0].x, 20, 1e-3);
    EXPECT_EQ(traceOf(MadeExtras::kLacking).size(), 2U);
    EXPECT_TRUE(shown().shapes()->mesh.triangles.empty());
    EXPECT_GT(m_Scene.picture()->bounds.radius, alone + 4);
    // The ion stays as it is.
    EXPECT_TRUE(std::any_of(shown().shapes()->spheres.begin(), shown().shapes()->spheres.end(),
                            [](const Sphere &sphere) { return sphere.radius > 0.5F; }));
}

TEST_F(SceneExtras, AStructureThatComesLaterIsShownAsTheOthers)
{
    m_Scene.setModels({true, 0});
    m_Scene.setWatersShown(true);
    MadeExtras::make("2new");
    m_Scene.refresh();
    EXPECT_TRUE(m_Scene.structures()[1]->models().all);
    EXPECT_TRUE(m_Scene.structures()[1]->areWatersShown());
}

} // namespace SceneExtrasTest
