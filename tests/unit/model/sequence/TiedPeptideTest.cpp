// SPDX-License-Identifier: GPL-3.0-or-later
#include "unit/model/ModelFixture.h"

#include "AminoAcids.h"
#include "Atom.h"
#include "DataMaker.h"
#include "Element.h"
#include "ObjectOperations.h"
#include "ResidueTies.h"

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::IsEmpty;

namespace TiedPeptideTest {

// The row "MACXEF": its letters A, C, X and E are residues 1, 2, 3 and 4 of the chain "ACDEG".
class TiedPeptideTest : public ModelFixture
{
protected:
    TiedPeptideTest()
    {
        auto made = std::make_unique<TAMBO::Peptide>("row", "MACXEF");
        made->tie(1, chain, 0, 4);
        row = &static_cast<TAMBO::Peptide &>(space().add(std::move(made)));
    }

    TAMBO::Structure &loaded = structure("1abc", {{"A", "ACDEG"}});
    TAMBO::Peptide &chain = *loaded.chain(0);
    TAMBO::Peptide *row = nullptr;
};

// Keeps the inverses of one step.
class HistoryOfOne : public TAMBO::EditRecorder
{
public:
    HistoryOfOne() { TAMBO::setEditRecorder(this); }
    ~HistoryOfOne() override { TAMBO::setEditRecorder(nullptr); }

    void begin() override { m_Inverses.clear(); }
    void record(std::unique_ptr<TAMBO::Edit> inverse) override
    {
        m_Inverses.push_back(std::move(inverse));
    }
    void end() override { }
    void undo()
    {
        for (auto inverse = m_Inverses.rbegin(); inverse != m_Inverses.rend(); ++inverse)
            *inverse = (*inverse)->apply();
    }

private:
    std::vector<std::unique_ptr<TAMBO::Edit>> m_Inverses;
};

TEST_F(TiedPeptideTest, ResidueKeepsItsOwnLetter)
{
    EXPECT_EQ(row->letters(), "MACXEF");
    EXPECT_EQ(row->residue(3)->TypeCode(), 'X');
    EXPECT_EQ(chain.residue(2)->TypeCode(), 'D');
    EXPECT_NE(row->residue(3), chain.residue(2));
    EXPECT_EQ(row->residue(3)->Parent(), row);
}

TEST_F(TiedPeptideTest, SelectionIsShared)
{
    row->residue(3)->SetSelected(true);
    EXPECT_TRUE(chain.isSelected(2));
    chain.setSelected(0, true);
    EXPECT_TRUE(row->residue(1)->IsSelected());
    EXPECT_FALSE(row->residue(0)->IsSelected());
    EXPECT_EQ(row->selectedCount(), 2U);
    row->SetSelected(true);
    EXPECT_EQ(row->selectedCount(), 6U);
    EXPECT_TRUE(row->IsSelected());
    EXPECT_EQ(chain.selectedCount(), 4U);
    row->setSelected(2, 4, false);
    EXPECT_EQ(row->selectedCount(), 4U);
    EXPECT_FALSE(chain.isSelected(1));
    EXPECT_FALSE(chain.isSelected(2));
    EXPECT_TRUE(chain.isSelected(3));
}

TEST_F(TiedPeptideTest, SelectionOfResiduesThatTheRowLacksIsNotCounted)
{
    chain.setSelected(4, true);
    EXPECT_EQ(row->selectedCount(), 0U);
}

TEST_F(TiedPeptideTest, ColourIsShared)
{
    row->residue(1)->SetColor(Color(0x123456U));
    EXPECT_EQ(chain.ownColor(0).rgb(), 0x123456U);
    chain.setColor(1, Color(0x654321U));
    EXPECT_EQ(row->residue(2)->GetColor().rgb(), 0x654321U);
    EXPECT_EQ(row->ownColor(3), TAMBO::aminoAcidColor('D')) << "that of the chain's residue";
}

TEST_F(TiedPeptideTest, NumberIsShared)
{
    row->residue(4)->SetSeqId(TAMBO::SequenceNumber("60A"));
    EXPECT_EQ(chain.number(3).getValue(), "60A");
    chain.setNumber(0, TAMBO::SequenceNumber(-3));
    EXPECT_EQ(row->residue(1)->GetSeqId().getValue(), "-3");
}

TEST_F(TiedPeptideTest, PositionAtomsAndNameAreTheChains)
{
    EXPECT_EQ(row->residue(2)->Position().x(), 2.0F);
    EXPECT_EQ(row->residue(2)->ChildCount(), 2U);
    EXPECT_EQ(row->residue(2)->Child(1), chain.atom(1, 1));
    EXPECT_EQ(row->residue(3)->TypeName(), chain.residue(2)->TypeName());
}

TEST_F(TiedPeptideTest, ResidueThatIsNotTiedHasNoPositionAndStatesOfItsOwn)
{
    TAMBO::Residue &lone = *row->residue(5);
    EXPECT_FALSE(lone.Position().isDefined());
    EXPECT_EQ(lone.ChildCount(), 0U);
    EXPECT_EQ(lone.TypeName(), "PHE");
    lone.SetColor(Color(0x1U));
    lone.SetSelected(true);
    EXPECT_TRUE(lone.IsSelected());
    EXPECT_EQ(chain.selectedCount(), 0U);
}

TEST_F(TiedPeptideTest, ElementOverTiedResiduesStandsInTheChain)
{
    const std::vector<TAMBO::Compound *> residues{row->residue(1), row->residue(2),
                                                  row->residue(3)};
    TAMBO::Compound *const element = TAMBO::DataMaker::makeSSE(row, "unkH", residues, 'H');
    ASSERT_NE(element, nullptr);
    EXPECT_EQ(element->Parent(), &chain);
    EXPECT_EQ(chain.residue(2)->GetSSE(), element);
    EXPECT_EQ(row->residue(3)->GetSSE(), element);
    EXPECT_EQ(row->residue(4)->GetSSE(), nullptr);
}

TEST_F(TiedPeptideTest, ElementOverTiedAndOtherResiduesReachesAllOfThem)
{
    const std::vector<TAMBO::Compound *> residues{row->residue(3), row->residue(4),
                                                  row->residue(5)};
    ASSERT_NE(TAMBO::DataMaker::makeSSE(row, "unkE", residues, 'E'), nullptr);
    for (const TAMBO::Compound *residue : residues) {
        const auto *const element = dynamic_cast<const TAMBO::Residue *>(residue)->GetSSE();
        ASSERT_NE(element, nullptr);
        EXPECT_EQ(element->TypeCode(), 'E');
    }
}

TEST_F(TiedPeptideTest, AtomsOfTheRowAreThoseOfItsTiedResidues)
{
    std::vector<TAMBO::Compound *> atoms;
    TAMBO::GetAtoms(row, atoms, true);
    EXPECT_EQ(atoms.size(), 8U);
    EXPECT_EQ(atoms.front(), chain.atom(0, 0));
    atoms.clear();
    TAMBO::GetAtoms(row->residue(1), atoms, true);
    EXPECT_EQ(atoms.size(), 2U);
}

TEST_F(TiedPeptideTest, AtomsOfSpaceAreListedOnce)
{
    std::vector<TAMBO::Compound *> atoms;
    TAMBO::GetAtoms(&space(), atoms, true);
    EXPECT_EQ(atoms.size(), 10U);
}

TEST_F(TiedPeptideTest, ResidueOfALockedChainIsLockedThroughTheRow)
{
    TAMBO::setObjectLocked(loaded, true);
    EXPECT_FALSE(Guard(Publisher::Update, *row->residue(1)).m_good);
    EXPECT_TRUE(Guard(Publisher::Update, *row->residue(0)).m_good);
    EXPECT_TRUE(Guard(Publisher::Update, *row).m_good);
    const auto before = chain.ownColor(0);
    row->residue(1)->SetColor(Color(0x1U));
    EXPECT_EQ(chain.ownColor(0), before);
}

TEST_F(TiedPeptideTest, DestroyingTheStructureCutsTheTies)
{
    row->residue(1)->SetSelected(true);
    TAMBO::DataMaker::Destroy(&loaded);
    EXPECT_FALSE(row->hasTies());
    EXPECT_EQ(row->letters(), "MACXEF");
    EXPECT_FALSE(row->residue(1)->Position().isDefined());
    EXPECT_EQ(row->residue(1)->ChildCount(), 0U);
    EXPECT_EQ(row->ownColor(1), TAMBO::aminoAcidColor('A'));
}

TEST_F(TiedPeptideTest, TiesToSeveralChainsAreFollowedEach)
{
    TAMBO::Structure &other = structure("2def", {{"L", "GGG"}});
    auto made = std::make_unique<TAMBO::Peptide>("both", "ACGG");
    made->tie(0, chain, 0, 2);
    made->tie(2, *other.chain(0), 1, 2);
    TAMBO::Peptide &both = static_cast<TAMBO::Peptide &>(space().add(std::move(made)));
    both.SetSelected(true);
    EXPECT_EQ(chain.selectedCount(), 2U);
    EXPECT_EQ(other.chain(0)->selectedCount(), 2U);
    EXPECT_FALSE(other.chain(0)->isSelected(0));

    TAMBO::DataMaker::Destroy(&other);
    EXPECT_TRUE(both.hasTies());
    EXPECT_EQ(both.resolve(1), (TAMBO::ResiduePlace{&chain, 1}));
    EXPECT_EQ(both.resolve(2), (TAMBO::ResiduePlace{&both, 2}));
    EXPECT_EQ(both.selectedCount(), 2U);
}

TEST_F(TiedPeptideTest, NewTiesTakeThePlaceOfTheOldOnesAndAreTakenBack)
{
    HistoryOfOne history;
    TAMBO::Structure &other = structure("2def", {{"L", "GGMA"}});
    {
        const Guard guard(Publisher::Update);
        TAMBO::ResidueTies ties;
        ties.append({0, 2, 2, other.chain(0)});
        row->retie(std::move(ties));
    }
    EXPECT_EQ(row->resolve(1), (TAMBO::ResiduePlace{other.chain(0), 3}));
    EXPECT_EQ(row->resolve(2), (TAMBO::ResiduePlace{row, 2}));
    history.undo();
    EXPECT_EQ(row->resolve(1), (TAMBO::ResiduePlace{&chain, 0}));
    EXPECT_EQ(row->resolve(4), (TAMBO::ResiduePlace{&chain, 3}));
}

TEST_F(TiedPeptideTest, ASequenceTiedLateIsFreedWithItsStructureToo)
{
    TAMBO::Peptide &late = static_cast<TAMBO::Peptide &>(
        space().add(std::make_unique<TAMBO::Peptide>("late", "ACDEG")));
    TAMBO::ResidueTies ties;
    ties.append({0, 5, 0, &chain});
    late.retie(std::move(ties));
    EXPECT_TRUE(late.residue(0)->Position().isDefined());
    std::vector<const TAMBO::Peptide *> chains;
    late.forEachTiedChain([&](const TAMBO::Peptide &tied) { chains.push_back(&tied); });
    EXPECT_THAT(chains, ElementsAre(&chain));
    TAMBO::DataMaker::Destroy(&loaded);
    EXPECT_FALSE(late.hasTies());
    EXPECT_FALSE(late.residue(0)->Position().isDefined());
}

} // namespace TiedPeptideTest
