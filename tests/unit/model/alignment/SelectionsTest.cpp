// SPDX-License-Identifier: GPL-3.0-or-later
// Taking everything out of the selection, and selecting it again.
#include "unit/model/ModelFixture.h"

#include "Alignment.h"
#include "DataMaker.h"
#include "Selections.h"
#include "StoredObject.h"

#include <vector>

using TAMBO::SelectedCount;
using TAMBO::Selections;

namespace SelectionsTest {

class SelectionsTest : public ModelFixture
{
protected:
    static std::vector<bool> flagsOf(const TAMBO::Peptide &peptide)
    {
        std::vector<bool> flags;
        for (std::size_t i = 0; i < peptide.residueCount(); ++i)
            flags.push_back(peptide.isSelected(i));
        return flags;
    }
    static SelectedCount deselectAll()
    {
        const Guard guard(Publisher::Update, space());
        return Selections::deselectAll();
    }
    static SelectedCount selectAgain()
    {
        const Guard guard(Publisher::Update, space());
        return Selections::selectAgain();
    }
};

TEST_F(SelectionsTest, WhatWasSelectedIsSelectedAgain)
{
    TAMBO::Peptide &one = peptide("one", "ACDEF");
    TAMBO::Peptide &two = peptide("two", "GHI");
    one.setSelected(1, 3, true);
    two.setSelected(0, true);
    const std::vector<bool> ofOne = flagsOf(one);
    const std::vector<bool> ofTwo = flagsOf(two);
    EXPECT_EQ(deselectAll().residues, 3U);
    EXPECT_EQ(one.selectedCount() + two.selectedCount(), 0U);
    EXPECT_EQ(selectAgain().residues, 3U);
    EXPECT_EQ(flagsOf(one), ofOne);
    EXPECT_EQ(flagsOf(two), ofTwo);
    EXPECT_TRUE(selectAgain().isNone()) << "once";
}

TEST_F(SelectionsTest, ResiduesThatAreTiedToAChainAreKeptOnce)
{
    TAMBO::Structure &loaded = structure("1abc", {{"A", "ACDEG"}});
    auto made = std::make_unique<TAMBO::Peptide>("row", "MACXEF");
    made->tie(1, *loaded.chain(0), 0, 4);
    auto &row = static_cast<TAMBO::Peptide &>(space().add(std::move(made)));
    row.SetSelected(true);
    const std::vector<bool> ofChain = flagsOf(*loaded.chain(0));
    EXPECT_EQ(deselectAll().residues, 6U);
    EXPECT_EQ(row.selectedCount(), 0U);
    EXPECT_EQ(loaded.chain(0)->selectedCount(), 0U);
    EXPECT_EQ(selectAgain().residues, 6U);
    EXPECT_TRUE(row.IsSelected());
    EXPECT_EQ(flagsOf(*loaded.chain(0)), ofChain);
}

TEST_F(SelectionsTest, AnAlignmentThatIsSelectedItselfIsSelectedAgain)
{
    TAMBO::Peptide &one = peptide("one", "ACD");
    TAMBO::Alignment &alignment = *TAMBO::DataMaker::makeAlignment("SeqAli", {&one});
    alignment.SetSelected(true);
    const SelectedCount count = deselectAll();
    EXPECT_EQ(count.residues, 0U);
    EXPECT_EQ(count.objects, 1U);
    EXPECT_FALSE(alignment.IsSelected());
    EXPECT_EQ(selectAgain().objects, 1U);
    EXPECT_TRUE(alignment.IsSelected());
    EXPECT_EQ(one.selectedCount(), 0U);
}

TEST_F(SelectionsTest, TheLastOneIsKeptAndDeselectingNothingChangesThatNot)
{
    TAMBO::Peptide &one = peptide("one", "ACDEF");
    TAMBO::Peptide &two = peptide("two", "GHI");
    one.setSelected(1, true);
    deselectAll();
    two.setSelected(2, true);
    deselectAll();
    EXPECT_TRUE(deselectAll().isNone());
    EXPECT_EQ(selectAgain().residues, 1U);
    EXPECT_EQ(one.selectedCount(), 0U);
    EXPECT_TRUE(two.isSelected(2));
}

TEST_F(SelectionsTest, OfObjectsThatAreGoneNothingIsLeft)
{
    TAMBO::Peptide &one = peptide("one", "ACDEF");
    TAMBO::Peptide &two = peptide("two", "GHI");
    one.setSelected(1, true);
    two.setSelected(1, 3, true);
    EXPECT_EQ(deselectAll().residues, 3U);
    TAMBO::DataMaker::Destroy(&two);
    EXPECT_EQ(selectAgain().residues, 1U);
    EXPECT_TRUE(one.isSelected(1));
}

// Numbers of objects begin anew with each session.
TEST_F(SelectionsTest, AnotherObjectWithTheNumberOfOneThatIsGoneIsNotSelected)
{
    TAMBO::Peptide &one = peptide("one", "ACD");
    TAMBO::Alignment *gone = TAMBO::DataMaker::makeAlignment("SeqAli", {&one});
    gone->SetSelected(true);
    deselectAll();
    const std::uint32_t number = TAMBO::identityOf(*gone);
    TAMBO::DataMaker::Destroy(gone);
    TAMBO::Alignment &other = *TAMBO::DataMaker::makeAlignment("SeqAli", {&one});
    ASSERT_TRUE(TAMBO::StoredObject::from(&other)->restoreIdentity(number));
    EXPECT_TRUE(selectAgain().isNone());
    EXPECT_FALSE(other.IsSelected());
}

TEST_F(SelectionsTest, WhatIsSelectedMeanwhileStaysSelected)
{
    TAMBO::Peptide &one = peptide("one", "ACDEF");
    one.setSelected(1, true);
    deselectAll();
    one.setSelected(4, true);
    EXPECT_EQ(selectAgain().residues, 1U);
    EXPECT_EQ(flagsOf(one), (std::vector<bool>{false, true, false, false, true}));
}

TEST_F(SelectionsTest, KeepingTakesNoFurtherMemory)
{
    TAMBO::Peptide &one = peptide("one", std::string(100000, 'A'));
    one.setSelected(0, one.residueCount(), true);
    const std::size_t before = one.bytes();
    deselectAll();
    EXPECT_EQ(one.bytes(), before);
    selectAgain();
    EXPECT_EQ(one.bytes(), before);
}

} // namespace SelectionsTest
