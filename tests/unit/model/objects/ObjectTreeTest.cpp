// SPDX-License-Identifier: GPL-3.0-or-later
#include "unit/model/ModelFixture.h"

#include "Alignment.h"
#include "AminoAcids.h"
#include "Atom.h"
#include "DataMaker.h"
#include "Element.h"
#include "ObjectOperations.h"
#include "ResidueGroup.h"
#include "SelectionColor.h"
#include "StoredObject.h"

#include <gmock/gmock.h>

#include <algorithm>

using testing::ElementsAre;
using testing::IsEmpty;

namespace ObjectTreeTest {

// A structure with two chains, a ligand in the first and a chain of nucleotides only.
class ObjectTreeTest : public ModelFixture
{
protected:
    ObjectTreeTest()
    {
        TAMBO::StructureRecord record;
        record.name = "1abc";
        record.models = 3;
        record.chains.push_back(chainRecord("A", "AGA"));
        TAMBO::ResidueRecord ligand = residueRecord("ATP", 'X', "401");
        ligand.isAminoAcid = false;
        record.chains.back().residues.push_back(std::move(ligand));
        record.chains.push_back(chainRecord("B", "GG"));
        TAMBO::ChainRecord nucleotides = chainRecord("C", "A");
        nucleotides.residues.front().typeName = "DA";
        nucleotides.residues.front().isAminoAcid = false;
        record.chains.push_back(std::move(nucleotides));
        record.elements.push_back(
            {"H1", 'H', "A", TAMBO::SequenceNumber(1), TAMBO::SequenceNumber(2)});
        loaded = TAMBO::ObjectFactory::adopt(std::move(record));
    }

    TAMBO::Structure *loaded = nullptr;
};

std::vector<std::string> pathsOf(const std::vector<TAMBO::Compound *> &objects)
{
    std::vector<std::string> paths;
    for (const TAMBO::Compound *object : objects)
        paths.push_back(object->GetFQName());
    return paths;
}

TEST_F(ObjectTreeTest, SpaceIsOneInstance)
{
    EXPECT_EQ(TAMBO::Space::instance(), TAMBO::Space::instance());
    EXPECT_EQ(TAMBO::Space::instance()->Parent(), nullptr);
}

TEST_F(ObjectTreeTest, SpaceIteratesOverTheTopLevelObjectsInTheirOrder)
{
    TAMBO::Peptide &free = peptide("free", "AAA");
    TAMBO::Alignment *const alignment = TAMBO::DataMaker::makeAlignment("SeqAli", {&free});
    const std::vector<TAMBO::Compound *> objects(space().begin(), space().end());
    EXPECT_THAT(objects, ElementsAre(loaded, &free, alignment));
    EXPECT_EQ(space().Child(1), &free);
    EXPECT_EQ(space().Child(3), nullptr);
}

TEST_F(ObjectTreeTest, ParentsAndChildrenAgreeAllTheWayDown)
{
    std::vector<TAMBO::Compound *> open{&space()};
    std::size_t count = 0;
    while (!open.empty()) {
        TAMBO::Compound *const object = open.back();
        open.pop_back();
        ++count;
        EXPECT_EQ(object->Child(object->ChildCount()), nullptr);
        for (std::size_t i = 0; i < object->ChildCount(); ++i) {
            ASSERT_NE(object->Child(i), nullptr);
            EXPECT_EQ(object->Child(i)->Parent(), object) << object->Child(i)->GetFQName();
            open.push_back(object->Child(i));
        }
    }
    // Space, structure, 3 chains, 5 residues, 2 groups, 1 element, 14 atoms.
    EXPECT_EQ(count, 27U);
}

TEST_F(ObjectTreeTest, FullyQualifiedNameIsThePathFromTheTop)
{
    EXPECT_EQ(loaded->GetFQName(), "1abc");
    EXPECT_EQ(loaded->chain(0)->GetFQName(), "1abc/A");
    EXPECT_EQ(loaded->chain(0)->residue(1)->GetFQName(), "1abc/A/GLY 2");
    EXPECT_EQ(loaded->chain(0)->atom(1, 1)->GetFQName(), "1abc/A/GLY 2/CA");
    EXPECT_EQ(loaded->chain(0)->object(0)->GetFQName(), "1abc/A/ATP 401");
    EXPECT_EQ(peptide("free", "A").GetFQName(), "free");
}

TEST_F(ObjectTreeTest, BlankChainNameLeavesNoEmptyPartInThePath)
{
    TAMBO::Structure &blank = structure("d1crj__", {{"", "AG"}});
    EXPECT_EQ(blank.chain(0)->GetFQName(), "d1crj__");
    EXPECT_EQ(blank.chain(0)->residue(0)->GetFQName(), "d1crj__/ALA 1");
    EXPECT_EQ(blank.chain(0)->sequenceName(), "d1crj__");
}

TEST_F(ObjectTreeTest, SequenceNameNamesStructureAndChain)
{
    EXPECT_EQ(loaded->chain(1)->sequenceName(), "1abc_B");
    EXPECT_EQ(peptide("free", "A").sequenceName(), "free");
}

TEST_F(ObjectTreeTest, KindsHaveTheirTypeNamesAndCodes)
{
    const TAMBO::Peptide &chain = *loaded->chain(0);
    EXPECT_EQ(loaded->TypeName(), "structure");
    EXPECT_EQ(loaded->TypeCode(), '\0');
    EXPECT_EQ(chain.TypeName(), "chain");
    EXPECT_EQ(peptide("free", "A").TypeName(), "sequence");
    EXPECT_EQ(loaded->chain(0)->residue(0)->TypeName(), "ALA");
    EXPECT_EQ(loaded->chain(0)->residue(0)->TypeCode(), 'A');
    EXPECT_EQ(chain.object(0)->TypeName(), "ATP");
    EXPECT_EQ(chain.object(1)->TypeName(), "helix");
    EXPECT_EQ(chain.object(1)->TypeCode(), 'H');
    EXPECT_EQ(chain.atom(0, 1)->TypeName(), "C");
    EXPECT_EQ(chain.atom(0, 1)->Name(), "CA");
    EXPECT_EQ(loaded->modelCount(), 3U);
}

TEST_F(ObjectTreeTest, GetPeptidesAppendsProteinChainsInTreeOrderAndKeepsWhatWasThere)
{
    TAMBO::Peptide &free = peptide("free", "AAA");
    TAMBO::DataMaker::makeAlignment("SeqAli", {&free});
    peptide("without residues", "");
    std::vector<TAMBO::Compound *> out{loaded};
    TAMBO::GetPeptides(&space(), out, true);
    EXPECT_THAT(out, ElementsAre(loaded, loaded->chain(0), loaded->chain(1), &free));
}

TEST_F(ObjectTreeTest, GetPeptidesOfAChainIsTheChainItself)
{
    std::vector<TAMBO::Compound *> out;
    TAMBO::GetPeptides(loaded->chain(1), out, true);
    EXPECT_THAT(out, ElementsAre(loaded->chain(1)));
}

TEST_F(ObjectTreeTest, GetPeptidesWithoutRecursionLooksAtDirectChildrenOnly)
{
    TAMBO::Peptide &free = peptide("free", "AAA");
    std::vector<TAMBO::Compound *> out;
    TAMBO::GetPeptides(&space(), out, false);
    EXPECT_THAT(out, ElementsAre(&free));
    out.clear();
    TAMBO::GetPeptides(loaded, out, false);
    EXPECT_THAT(out, ElementsAre(loaded->chain(0), loaded->chain(1)));
}

TEST_F(ObjectTreeTest, StoredPartIsFoundInWhateverOrderTheKindsCome)
{
    TAMBO::Peptide &free = peptide("free", "AAA");
    TAMBO::Alignment *const alignment = TAMBO::DataMaker::makeAlignment("SeqAli", {&free});
    TAMBO::Peptide &chain = *loaded->chain(0);
    const std::vector<TAMBO::Compound *> stored{&space(),        loaded, &chain,
                                                chain.object(0), &free,  alignment};
    const std::vector<TAMBO::Compound *> handles{nullptr, free.Child(0), chain.Child(0),
                                                 chain.Child(0)->Child(0)};
    const auto expectFound = [](TAMBO::Compound *object) {
        TAMBO::StoredObject *const found = TAMBO::StoredObject::from(object);
        ASSERT_NE(found, nullptr) << object->GetFQName();
        EXPECT_EQ(&found->asCompound(), object);
    };
    for (TAMBO::Compound *const object : stored) {
        for (TAMBO::Compound *const other : stored) {
            expectFound(object);
            expectFound(other);
        }
        for (TAMBO::Compound *const handle : handles) {
            EXPECT_EQ(TAMBO::StoredObject::from(handle), nullptr);
            expectFound(object);
        }
    }
}

TEST_F(ObjectTreeTest, NullRootGivesNothing)
{
    std::vector<TAMBO::Compound *> out;
    TAMBO::GetPeptides(nullptr, out, true);
    TAMBO::GetAtoms(nullptr, out, true);
    EXPECT_THAT(out, IsEmpty());
}

TEST_F(ObjectTreeTest, GetAtomsAppendsTheAtomsBelowInTreeOrder)
{
    std::vector<TAMBO::Compound *> out{loaded};
    TAMBO::GetAtoms(loaded->chain(0), out, true);
    ASSERT_EQ(out.size(), 9U);
    EXPECT_THAT(
        pathsOf({out[1], out[2], out[7], out[8]}),
        ElementsAre("1abc/A/ALA 1/N", "1abc/A/ALA 1/CA", "1abc/A/ATP 401/N", "1abc/A/ATP 401/CA"));
    out.clear();
    TAMBO::GetAtoms(&space(), out, true);
    EXPECT_EQ(out.size(), 14U);
}

TEST_F(ObjectTreeTest, GetAtomsOfAResidueGivesItsAtomsAndOfAnAtomItself)
{
    TAMBO::Compound *const residue = loaded->chain(1)->residue(1);
    std::vector<TAMBO::Compound *> out;
    TAMBO::GetAtoms(residue, out, true);
    EXPECT_THAT(pathsOf(out), ElementsAre("1abc/B/GLY 2/N", "1abc/B/GLY 2/CA"));
    TAMBO::Compound *const atom = out.front();
    out.clear();
    TAMBO::GetAtoms(atom, out, true);
    EXPECT_THAT(out, ElementsAre(atom));
    out.clear();
    TAMBO::GetAtoms(residue, out, false);
    EXPECT_EQ(out.size(), 2U);
    out.clear();
    TAMBO::GetAtoms(loaded, out, false);
    EXPECT_THAT(out, IsEmpty());
}

TEST_F(ObjectTreeTest, SequenceWithoutCoordinatesHasNoAtoms)
{
    std::vector<TAMBO::Compound *> out;
    TAMBO::GetAtoms(&peptide("free", "ACDE"), out, true);
    EXPECT_THAT(out, IsEmpty());
}

TEST_F(ObjectTreeTest, PositionIsTheCaAtomOfAResidueAndThePlaceOfAnAtom)
{
    const TAMBO::Vertex place = loaded->chain(0)->residue(1)->Position();
    EXPECT_TRUE(place.isDefined());
    EXPECT_EQ(place.x(), 2.0F);
    EXPECT_EQ(loaded->chain(0)->atom(1, 0)->Position().x(), 1.0F);
    EXPECT_FALSE(loaded->Position().isDefined());
    EXPECT_FALSE(peptide("free", "A").residue(0)->Position().isDefined());
}

TEST_F(ObjectTreeTest, ResidueWithoutACaAtomHasNoPosition)
{
    TAMBO::StructureRecord record;
    record.name = "partial";
    record.chains.push_back(chainRecord("A", "A"));
    record.chains.back().residues.front().atoms.pop_back();
    const TAMBO::Structure *const partial = TAMBO::ObjectFactory::adopt(std::move(record));
    EXPECT_FALSE(partial->chain(0)->residue(0)->Position().isDefined());
}

TEST_F(ObjectTreeTest, SetColorIsReadBackUnchangedFromAnythingNotSelected)
{
    const Color color(0x102030U);
    const std::vector<TAMBO::Compound *> objects{loaded,
                                                 loaded->chain(0),
                                                 loaded->chain(0)->residue(0),
                                                 loaded->chain(0)->object(0),
                                                 loaded->chain(0)->object(1),
                                                 loaded->chain(0)->atom(0, 0),
                                                 &space()};
    for (TAMBO::Compound *object : objects) {
        object->SetColor(color);
        EXPECT_EQ(object->GetColor(), color) << object->GetFQName();
    }
}

TEST_F(ObjectTreeTest, ColourOfAStructureReachesTheResiduesOfItsChains)
{
    loaded->SetColor(Color(0x102030U));
    EXPECT_THAT(colorsOf(*loaded->chain(1)), ElementsAre(0x102030U, 0x102030U));
}

TEST_F(ObjectTreeTest, SelectedObjectShowsItsColourMixedWithTheSelectionColour)
{
    TAMBO::Compound *const residue = loaded->chain(0)->residue(0);
    residue->SetColor(Color(0x2060c0U));
    TAMBO::setSelectionColor(Color(0x80ff00U));
    residue->SetSelected(true);
    // 3/32 of the selection colour has 31 of 32 parts.
    EXPECT_EQ(residue->GetColor().rgb(), 0x0d1a06U);
    EXPECT_EQ(residue->OwnColor().rgb(), 0x2060c0U);
    residue->SetSelected(false);
    EXPECT_EQ(residue->GetColor().rgb(), 0x2060c0U);
    TAMBO::setSelectionColor(Color(0xffff00U));
}

TEST_F(ObjectTreeTest, SelectionFlagIsSetReadAndFlipped)
{
    const std::vector<TAMBO::Compound *> objects{loaded,
                                                 loaded->chain(0),
                                                 loaded->chain(0)->residue(0),
                                                 loaded->chain(0)->object(0),
                                                 loaded->chain(0)->object(1),
                                                 loaded->chain(0)->atom(0, 0)};
    for (TAMBO::Compound *object : objects) {
        object->SetSelected(true);
        EXPECT_TRUE(object->IsSelected()) << object->GetFQName();
        object->SetSelected(false);
        EXPECT_FALSE(object->IsSelected()) << object->GetFQName();
        object->ToggleSelected();
        EXPECT_TRUE(object->IsSelected()) << object->GetFQName();
        object->ToggleSelected();
        EXPECT_FALSE(object->IsSelected()) << object->GetFQName();
    }
}

TEST_F(ObjectTreeTest, SelectingAStructureSelectsAllResidues)
{
    loaded->SetSelected(true);
    EXPECT_EQ(loaded->chain(0)->selectedCount(), 3U);
    EXPECT_EQ(loaded->chain(1)->selectedCount(), 2U);
    loaded->chain(1)->residue(0)->SetSelected(false);
    EXPECT_FALSE(loaded->chain(1)->IsSelected());
    EXPECT_FALSE(loaded->IsSelected());
    EXPECT_TRUE(loaded->chain(0)->IsSelected());
}

TEST_F(ObjectTreeTest, ShowMenuHandsTheObjectToTheHook)
{
    TAMBO::Compound *shown = nullptr;
    TAMBO::modelHooks().showMenu = [&](TAMBO::Compound &object) { shown = &object; };
    loaded->chain(0)->residue(2)->ShowMenu();
    EXPECT_EQ(shown, loaded->chain(0)->residue(2));
}

TEST_F(ObjectTreeTest, ShowMenuWithoutAHookDoesNothing)
{
    TAMBO::modelHooks().showMenu = nullptr;
    loaded->ShowMenu();
}

TEST_F(ObjectTreeTest, ShowMenuSurvivesThatTheObjectGoesMeanwhile)
{
    TAMBO::Peptide &free = peptide("free", "AAA");
    TAMBO::modelHooks().showMenu = [](TAMBO::Compound &object) {
        TAMBO::DataMaker::Destroy(&object);
    };
    free.ShowMenu();
    EXPECT_THAT(topLevelNames(), ElementsAre("1abc"));
}

TEST_F(ObjectTreeTest, GroupNumberIsSetAndInvalidOnesAreRefused)
{
    auto &group = dynamic_cast<TAMBO::ResidueGroup &>(*loaded->chain(0)->object(0));
    group.SetSeqId(TAMBO::SequenceNumber("500B"));
    EXPECT_EQ(group.GetSeqId().getValue(), "500B");
    group.SetSeqId(TAMBO::SequenceNumber("none"));
    EXPECT_EQ(group.GetSeqId().getValue(), "500B");
    EXPECT_THAT(log, ElementsAre("\"none\" is no residue number; 1abc/A/ATP 500B keeps its own."));
}

TEST_F(ObjectTreeTest, RenamingChangesTheNameOfStoredObjectsOnly)
{
    EXPECT_TRUE(TAMBO::renameObject(*loaded, "2xyz"));
    EXPECT_EQ(loaded->Name(), "2xyz");
    EXPECT_FALSE(TAMBO::renameObject(*loaded->chain(0)->residue(0), "ALA 99"));
    EXPECT_FALSE(TAMBO::renameObject(*loaded->chain(0)->atom(0, 0), "CB"));
}

TEST_F(ObjectTreeTest, LockedObjectIsNotRenamedAndTheLogSaysSo)
{
    TAMBO::setObjectLocked(*loaded, true);
    EXPECT_FALSE(TAMBO::renameObject(*loaded->chain(0), "Z"));
    EXPECT_EQ(loaded->chain(0)->Name(), "A");
    EXPECT_THAT(log, ElementsAre("\"1abc\" is locked and was not changed."));
}

TEST_F(ObjectTreeTest, ColouringALockedChainChangesNothingAndIsLoggedOnce)
{
    TAMBO::Peptide &chain = *loaded->chain(0);
    TAMBO::setObjectLocked(chain, true);
    const auto before = colorsOf(chain);
    {
        const Guard guard(Publisher::Update, space());
        for (std::size_t i = 0; i < chain.residueCount(); ++i) {
            chain.residue(i)->SetColor(Color(0x010203U));
            chain.residue(i)->SetSeqId(TAMBO::SequenceNumber(77));
        }
    }
    EXPECT_EQ(colorsOf(chain), before);
    EXPECT_THAT(numbersOf(chain), ElementsAre("1", "2", "3"));
    EXPECT_THAT(log, ElementsAre("\"1abc/A\" is locked and was not changed."));
}

TEST_F(ObjectTreeTest, LockedObjectsMayBeSelected)
{
    TAMBO::setObjectLocked(*loaded, true);
    loaded->chain(0)->residue(0)->SetSelected(true);
    EXPECT_TRUE(loaded->chain(0)->residue(0)->IsSelected());
}

} // namespace ObjectTreeTest
