// SPDX-License-Identifier: GPL-3.0-or-later
#include "StructureScene.h"

#include "MadeStructure.h"
#include "Selecting.h"
#include "unit/model/ModelFixture.h"

#include "DataDelete.h"
#include "DataPoint.h"
#include "Space.h"

#include <algorithm>

namespace StructureSceneTest {

using namespace structures;

class StructureSceneOfModel : public ModelFixture
{
protected:
    TAMBO::Compound *m_Structure = MadeStructure::make("1abc");
    int m_Changes = 0;
    StructureScene m_Scene{[this] { ++m_Changes; }};

    ViewedStructure &shown() { return *m_Scene.structures().front(); }
    static std::size_t trianglesOf(ViewedStructure &structure)
    {
        return structure.shapes()->mesh.triangles.size();
    }
};

TEST_F(StructureSceneOfModel, ColorsAreThatTheGridHas)
{
    TAMBO::Compound *const chain = m_Structure->Child(0);
    {
        DataPoint<TAMBO::Space> change(nullptr, TAMBO::Space::instance());
        chain->Child(3)->SetColor(Color(0x123456U));
        chain->Child(5)->SetSelected(true);
    }
    const Palette palette = m_Scene.palette(Coloring::Workbench);
    const Molecule &molecule = shown().molecule();
    ASSERT_EQ(molecule.residues.size(), 25U);
    for (std::uint32_t i = 0; i < molecule.residues.size(); ++i) {
        const std::uint32_t color = palette.colors[pickOfResidue(molecule, i)];
        EXPECT_EQ(color, shown().residue(i)->GetColor().rgb()) << i;
    }
    EXPECT_EQ(palette.colors[pickOfResidue(molecule, 3)], 0x123456U);
}

TEST_F(StructureSceneOfModel, WhatIsSelectedHasAMarkAndNothingElse)
{
    ASSERT_TRUE(select({m_Structure->Child(0)->Child(5)}, Selecting::Only));
    EXPECT_GT(m_Changes, 0);
    const Palette palette = m_Scene.palette(Coloring::Chain);
    const Molecule &molecule = shown().molecule();
    for (std::uint32_t i = 0; i < molecule.residues.size(); ++i)
        EXPECT_EQ(palette.marks[pickOfResidue(molecule, i)], i == 5 ? Palette::kSelected : 0);
}

TEST_F(StructureSceneOfModel, SelectingOnlyOneTakesAllOthersAway)
{
    TAMBO::Compound *const chain = m_Structure->Child(0);
    ASSERT_TRUE(select({chain->Child(1), chain->Child(2)}, Selecting::Only));
    ASSERT_TRUE(select({chain->Child(3)}, Selecting::Add));
    EXPECT_TRUE(chain->Child(1)->IsSelected());
    ASSERT_TRUE(select({chain->Child(2), chain->Child(7)}, Selecting::Toggle));
    EXPECT_FALSE(chain->Child(2)->IsSelected());
    EXPECT_TRUE(chain->Child(7)->IsSelected());
    ASSERT_TRUE(select({chain->Child(9)}, Selecting::Only));
    for (std::size_t i = 0; i < 24; ++i)
        EXPECT_EQ(chain->Child(i)->IsSelected(), i == 9);
}

TEST_F(StructureSceneOfModel, ChangedColorsKeepTheShapes)
{
    const std::shared_ptr<const Shapes> before = shown().shapes();
    {
        DataPoint<TAMBO::Space> change(nullptr, TAMBO::Space::instance());
        m_Structure->SetColor(Color(0xff0000U));
    }
    const StructureScene::Changes changes = m_Scene.refresh();
    EXPECT_FALSE(changes.places);
    EXPECT_FALSE(changes.structures);
    EXPECT_EQ(shown().shapes(), before);
}

TEST_F(StructureSceneOfModel, NothingIsReadAgainForColorsAndMarks)
{
    const std::size_t before = StructureScene::readings();
    ASSERT_TRUE(select({m_Structure->Child(0)->Child(5)}, Selecting::Only));
    m_Scene.refresh();
    {
        DataPoint<TAMBO::Space> change(nullptr, TAMBO::Space::instance());
        m_Structure->SetColor(Color(0xff0000U));
    }
    m_Scene.refresh();
    EXPECT_EQ(StructureScene::readings(), before);
    {
        DataPoint<TAMBO::Space> change(nullptr, TAMBO::Space::instance());
        dynamic_cast<TAMBO::Group *>(m_Structure->Child(0)->Child(5))
            ->SetSeqId(TAMBO::SequenceNumber("77"));
    }
    m_Scene.refresh();
    EXPECT_EQ(StructureScene::readings(), before + 1);
}

TEST_F(StructureSceneOfModel, AnotherStructureIsSeenAndADeletedOneIsLetGoAtOnce)
{
    TAMBO::Compound *const other = MadeStructure::make("2xyz", 40);
    EXPECT_TRUE(m_Scene.refresh().structures);
    ASSERT_EQ(m_Scene.structures().size(), 2U);
    EXPECT_EQ(m_Scene.firstPickOf(*m_Scene.structures()[1]), shown().pickCount());
    {
        DataDelete<TAMBO::Space> change(nullptr, TAMBO::Space::instance());
        ASSERT_TRUE(change.m_good);
        TAMBO::DataMaker::Destroy(m_Structure);
    }
    ASSERT_EQ(m_Scene.structures().size(), 1U);
    EXPECT_EQ(shown().object(), other);
    // Whoever draws is told once.
    EXPECT_TRUE(m_Scene.refresh().structures);
    EXPECT_FALSE(m_Scene.refresh().structures);
}

TEST_F(StructureSceneOfModel, AStructureWithoutElementsGetsThoseOfItsTrace)
{
    const std::vector<MoleculeResidue> &residues = shown().molecule().residues;
    EXPECT_EQ(std::count_if(residues.begin(), residues.end(),
                            [](const MoleculeResidue &r) { return r.fold == Fold::Helix; }),
              22);
    EXPECT_EQ(residues.back().role, Role::Ligand);
}

TEST_F(StructureSceneOfModel, HiddenResiduesAreNotDrawnAndComeBack)
{
    const std::size_t all = trianglesOf(shown());
    std::vector<bool> hidden(25);
    std::fill_n(hidden.begin(), 12, true);
    shown().setHidden(hidden);
    const std::size_t half = trianglesOf(shown());
    EXPECT_LT(half, all);
    EXPECT_GT(half, 0U);
    shown().setHidden({});
    EXPECT_EQ(trianglesOf(shown()), all);
}

TEST_F(StructureSceneOfModel, StylesAreThoseOfWhatIsChosen)
{
    shown().setStyle(Style::Spheres);
    EXPECT_EQ(trianglesOf(shown()), 0U);
    EXPECT_EQ(shown().shapes()->spheres.size(), 49U);
    // No curve can be drawn through an ion.
    shown().setStyle(Style::Cartoon);
    EXPECT_EQ(shown().shapes()->spheres.size(), 1U);
    std::vector<bool> chosen(25);
    chosen[4] = true;
    shown().setStyle(Style::Sticks, chosen);
    EXPECT_EQ(shown().shapes()->sticks.size(), 1U);
}

TEST_F(StructureSceneOfModel, APickLeadsBackToItsResidueAndAtom)
{
    const Molecule &molecule = shown().molecule();
    const auto residue = m_Scene.placeOf(pickOfResidue(molecule, 7));
    ASSERT_TRUE(residue);
    EXPECT_EQ(residue->structure->residue(residue->place.residue), m_Structure->Child(0)->Child(7));
    EXPECT_EQ(shown().describe(residue->place),
              "1abc, chain A, " + m_Structure->Child(0)->Child(7)->Name());
    const auto atom = m_Scene.placeOf(pickOfAtom(15));
    ASSERT_TRUE(atom);
    EXPECT_EQ(atom->place.residue, 7U);
    EXPECT_EQ(shown().atom(atom->place.atom)->Name(), "CB");
    EXPECT_FALSE(m_Scene.placeOf(0));
    EXPECT_FALSE(m_Scene.placeOf(Pick(shown().pickCount()) + 1));
}

TEST_F(StructureSceneOfModel, AChildOfAChainLeadsToItsResidue)
{
    TAMBO::Compound *const other = MadeStructure::make("2xyz");
    m_Scene.refresh();
    for (std::size_t i = 0; i < 2; ++i) {
        ViewedStructure &structure = *m_Scene.structures()[i];
        for (std::uint32_t r = 0; r < structure.molecule().residues.size(); ++r) {
            const std::uint32_t chain = structure.molecule().residues[r].chain;
            const auto place = m_Scene.placeOf(structure.chain(chain), structure.childOf(r));
            ASSERT_TRUE(place);
            EXPECT_EQ(place->structure, &structure);
            EXPECT_EQ(place->place.residue, r);
            EXPECT_EQ(place->place.atom, kNone);
        }
        EXPECT_FALSE(m_Scene.placeOf(structure.chain(0), 24));
    }
    EXPECT_FALSE(m_Scene.placeOf(nullptr, 0));
    const TAMBO::Compound *const chain = other->Child(0);
    {
        DataDelete<TAMBO::Space> change(nullptr, TAMBO::Space::instance());
        TAMBO::DataMaker::Destroy(other);
    }
    EXPECT_FALSE(m_Scene.placeOf(chain, 0));
}

TEST_F(StructureSceneOfModel, BFactorsGoFromBlueToRed)
{
    const Palette palette = m_Scene.palette(Coloring::BFactor);
    const Molecule &molecule = shown().molecule();
    EXPECT_EQ(palette.colors[pickOfResidue(molecule, 0)], 0x2f5fd0U);
    EXPECT_EQ(palette.colors[pickOfResidue(molecule, 24)], 0xd03030U);
}

} // namespace StructureSceneTest
