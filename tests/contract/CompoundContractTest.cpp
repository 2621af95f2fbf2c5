// SPDX-License-Identifier: GPL-3.0-or-later
// What plug-ins rely on of Compound, Group, Residue, Space, Vertex and the free functions.
#include "Compound.h"
#include "Space.h"
#include "Vertex.h"

#include "Alignment.h"
#include "DataMaker.h"
#include "contract/VirtualSlot.h"
#include "support/FakeCompound.h"
#include "unit/model/ModelFixture.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <type_traits>

using testing::ElementsAre;

namespace CompoundContractTest {

class CompoundContract : public ModelFixture
{
protected:
    TAMBO::Structure &loaded = structure("1abc", {{"A", "AGA"}, {"B", "GG"}});
    TAMBO::Peptide &sequence = peptide("sequence", "ACDEF");
    TAMBO::Alignment *alignment =
        TAMBO::DataMaker::makeAlignment("SeqAli", {loaded.chain(0), &sequence});
};

static_assert(std::is_polymorphic_v<TAMBO::Compound>);
static_assert(std::is_base_of_v<TAMBO::Compound, TAMBO::Alignment>);
static_assert(std::is_base_of_v<TAMBO::Compound, TAMBO::Space>);
static_assert(std::is_base_of_v<TAMBO::Compound, TAMBO::Group>);
static_assert(std::is_base_of_v<TAMBO::Group, TAMBO::Residue>);
static_assert(std::is_same_v<decltype(TAMBO::Vertex().x()), float>);

TEST_F(CompoundContract, VirtualOperationsStandInTheirOrder)
{
    using TAMBO::Compound;
    EXPECT_EQ(virtualSlot(&Compound::Name), 0U);
    EXPECT_EQ(virtualSlot(&Compound::TypeCode), 1U);
    EXPECT_EQ(virtualSlot(&Compound::TypeName), 2U);
    EXPECT_GT(virtualSlot(&Compound::Position), virtualSlot(&Compound::TypeName));
    EXPECT_GT(virtualSlot(&Compound::SetSelected), virtualSlot(&Compound::Position));
    EXPECT_EQ(virtualSlot(&Compound::IsSelected), virtualSlot(&Compound::SetSelected) + 1);
}

TEST_F(CompoundContract, NamesCodesAndTypeNames)
{
    EXPECT_EQ(alignment->Name(), "SeqAli");
    EXPECT_EQ(loaded.chain(0)->GetFQName(), "1abc/A");
    TAMBO::Compound *const residue = alignment->getItem(0, 0);
    EXPECT_EQ(residue->TypeCode(), 'A');
    EXPECT_EQ(residue->TypeName(), "ALA");
}

TEST_F(CompoundContract, EveryObjectSaysOfWhatKindItIs)
{
    using TAMBO::CompoundKind;
    TAMBO::StructureRecord record;
    record.name = "2xyz";
    record.chains.push_back(chainRecord("A", "AGA"));
    TAMBO::ResidueRecord ligand = residueRecord("HEM", 'X', "200");
    ligand.isAminoAcid = false;
    record.chains.front().residues.push_back(std::move(ligand));
    TAMBO::Structure &mixed = *TAMBO::ObjectFactory::adopt(std::move(record));
    TAMBO::Compound *const chain = mixed.Child(0);
    TAMBO::Compound *const residue = chain->Child(0);
    TAMBO::Compound *const element = TAMBO::DataMaker::makeSSE(
        chain, "AH", {chain->Child(0), chain->Child(1), chain->Child(2)}, 'H');
    ASSERT_NE(element, nullptr);
    EXPECT_EQ(TAMBO::Space::instance()->Kind(), CompoundKind::Space);
    EXPECT_EQ(mixed.Kind(), CompoundKind::Structure);
    EXPECT_EQ(chain->Kind(), CompoundKind::Chain);
    EXPECT_EQ(residue->Kind(), CompoundKind::Residue);
    EXPECT_EQ(residue->Child(0)->Kind(), CompoundKind::Atom);
    EXPECT_EQ(sequence.Kind(), CompoundKind::Sequence);
    EXPECT_EQ(alignment->Kind(), CompoundKind::Alignment);
    EXPECT_EQ(element->Kind(), CompoundKind::Element);
    std::vector<CompoundKind> kinds;
    for (std::size_t i = 0; i < chain->ChildCount(); ++i)
        kinds.push_back(chain->Child(i)->Kind());
    EXPECT_EQ(std::ranges::count(kinds, CompoundKind::Residue), 3);
    EXPECT_EQ(std::ranges::count(kinds, CompoundKind::Group), 1);
    EXPECT_EQ(std::ranges::count(kinds, CompoundKind::Element), 1);
    EXPECT_EQ(kinds.size(), 5U);
}

TEST_F(CompoundContract, AnObjectOfAnUnknownKindIsOther)
{
    const FakeCompound fake("a", "alignment");
    EXPECT_EQ(fake.Kind(), TAMBO::CompoundKind::Other);
}

TEST_F(CompoundContract, PositionIsDefinedOnlyWithCoordinates)
{
    const TAMBO::Vertex place = alignment->getItem(0, 2)->Position();
    ASSERT_TRUE(place.isDefined());
    EXPECT_EQ(place.x(), 3.0F);
    EXPECT_EQ(place.y(), 0.0F);
    EXPECT_EQ(place.z(), 0.0F);
    EXPECT_FALSE(alignment->getItem(1, 0)->Position().isDefined());
}

TEST_F(CompoundContract, CoordinatesAreCopiedAndReadOneByOne)
{
    const TAMBO::Vertex vertex(1.5F, -2.5F, 3.5F);
    const TAMBO::Vertex copy = vertex;
    EXPECT_EQ(copy.z(), 3.5F);
    TAMBO::Vector<float, 3> vector = vertex.coordinates();
    vector[0] += 1;
    EXPECT_EQ(vector, (TAMBO::Vector<float, 3>(2.5F, -2.5F, 3.5F)));
    EXPECT_EQ(vector.size(), 3U);
    EXPECT_FALSE(TAMBO::Vertex().isDefined());
}

TEST_F(CompoundContract, SelectionIsSetReadAndFlipped)
{
    TAMBO::Compound *const residue = alignment->getItem(1, 1);
    residue->SetSelected(true);
    EXPECT_TRUE(residue->IsSelected());
    residue->SetSelected(false);
    EXPECT_FALSE(residue->IsSelected());
    residue->ToggleSelected();
    EXPECT_TRUE(residue->IsSelected());
    residue->ToggleSelected();
    EXPECT_FALSE(residue->IsSelected());
}

TEST_F(CompoundContract, ColourIsSetAndReadBack)
{
    TAMBO::Compound *const residue = alignment->getItem(1, 1);
    residue->SetColor(Color(0x336699U));
    EXPECT_EQ(residue->GetColor(), Color(0x336699U));
    residue->SetSelected(true);
    EXPECT_NE(residue->GetColor(), Color(0x336699U)) << "every view shows the selection";
}

TEST_F(CompoundContract, ResidueNumberIsSetAndReadBack)
{
    auto *const group = dynamic_cast<TAMBO::Group *>(alignment->getItem(0, 1));
    ASSERT_NE(group, nullptr);
    group->SetSeqId(TAMBO::SequenceNumber("12A"));
    EXPECT_EQ(group->GetSeqId().getValue(), "12A");
    group->SetSeqId(TAMBO::SequenceNumber("twelve"));
    EXPECT_EQ(group->GetSeqId().getValue(), "12A");
    EXPECT_EQ(log.size(), 1U);
}

TEST_F(CompoundContract, ElementIsFoundFromItsResidues)
{
    const auto residue = [&](unsigned long column) {
        return dynamic_cast<TAMBO::Residue *>(alignment->getItem(1, column));
    };
    EXPECT_EQ(residue(0)->GetSSE(), nullptr);
    TAMBO::Compound *const element = TAMBO::DataMaker::makeSSE(
        alignment->GetSeq(1), "unkH", {residue(0), residue(1), residue(2)}, 'H');
    ASSERT_NE(element, nullptr);
    EXPECT_EQ(element->TypeCode(), 'H');
    for (unsigned long column = 0; column < 3; ++column)
        EXPECT_EQ(residue(column)->GetSSE(), element);
    EXPECT_EQ(residue(3)->GetSSE(), nullptr);
}

TEST_F(CompoundContract, SpaceIsOneAndHoldsTheTopLevelObjects)
{
    TAMBO::Space *const one = TAMBO::Space::instance();
    EXPECT_EQ(one, TAMBO::Space::instance());
    EXPECT_NE(std::find(one->begin(), one->end(), alignment), one->end());
    EXPECT_NE(std::find(one->begin(), one->end(), &loaded), one->end());
    EXPECT_EQ(std::find(one->begin(), one->end(), loaded.chain(0)), one->end());
}

TEST_F(CompoundContract, DestroyedObjectIsNotFoundInSpaceAnyMore)
{
    TAMBO::DataMaker::Destroy(alignment);
    TAMBO::Space *const one = TAMBO::Space::instance();
    EXPECT_EQ(std::find(one->begin(), one->end(), alignment), one->end());
}

TEST_F(CompoundContract, PeptidesAndAtomsAreAppendedToWhatIsThere)
{
    std::vector<TAMBO::Compound *> peptides{nullptr};
    TAMBO::GetPeptides(TAMBO::Space::instance(), peptides, true);
    EXPECT_THAT(peptides, ElementsAre(nullptr, loaded.chain(0), loaded.chain(1), &sequence));
    std::vector<TAMBO::Compound *> atoms{nullptr};
    TAMBO::GetAtoms(loaded.chain(1), atoms, true);
    EXPECT_EQ(atoms.size(), 5U);
    EXPECT_EQ(atoms[2]->Name(), "CA");
}

} // namespace CompoundContractTest
