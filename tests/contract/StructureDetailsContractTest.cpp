// SPDX-License-Identifier: GPL-3.0-or-later
// What plug-ins rely on of the quick way to all that a structure is made of.
#include "StructureDetails.h"

#include "DataMaker.h"
#include "ObjectOperations.h"
#include "unit/model/ModelFixture.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <limits>
#include <string>
#include <vector>

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

namespace StructureDetailsContractTest {

using TAMBO::Compound;
using TAMBO::DataMaker;
using TAMBO::SequenceNumber;
using TAMBO::StructureDetails;
using TAMBO::StructureTable;
using TAMBO::Vertex;

class StructureDetailsContract : public ModelFixture
{
protected:
    static TAMBO::ResidueValues residue(const std::string &name, const std::string &number, float x)
    {
        return {name,
                SequenceNumber(number),
                {{"N", "N", Vertex(x - 1, 0, 0), 12.5F}, {"CA", "C", Vertex(x, 2, 3), 20, 0.25F}}};
    }
    static Compound *made()
    {
        TAMBO::StructureValues values;
        values.chains = {{"A",
                          {residue("ALA", "7", 1), residue("HEM", "900", 4),
                           residue("GLY", "8A", 2), residue("SER", "-9", 3)}},
                         {"B", {residue("MSE", "1", 5)}}};
        values.chains[1].residues[0].letter = 'M';
        return DataMaker::makeStructure("1new", values);
    }

    Compound *structure = made();
    StructureTable table = StructureDetails::read(structure);
};

TEST_F(StructureDetailsContract, AtomsAreThoseOfTheTreeInItsOrder)
{
    std::vector<Compound *> atoms;
    TAMBO::GetAtoms(structure, atoms, true);
    ASSERT_THAT(table.atoms, SizeIs(10));
    ASSERT_THAT(atoms, SizeIs(10));
    for (std::size_t i = 0; i < atoms.size(); ++i) {
        const TAMBO::AtomDetails &atom = table.atoms[i];
        EXPECT_EQ(atom.atom, atoms[i]);
        EXPECT_EQ(atom.name, atoms[i]->Name());
        EXPECT_EQ(atom.element, atoms[i]->TypeName());
        EXPECT_EQ(atom.position.coordinates(), atoms[i]->Position().coordinates());
        EXPECT_EQ(atom.bFactor, i % 2 == 0 ? 12.5F : 20.F);
        EXPECT_EQ(atom.occupancy, i % 2 == 0 ? 1 : 0.25F);
    }
}

TEST_F(StructureDetailsContract, ResiduesOfAChainComeBeforeItsGroups)
{
    std::vector<std::string> told;
    for (const TAMBO::ResidueDetails &residue : table.residues)
        told.push_back(std::string(residue.name) + ' ' + std::to_string(residue.number) +
                       residue.insertionCode + residue.letter + (residue.isGroup ? " group" : ""));
    EXPECT_THAT(told, ElementsAre("ALA 7 A", "GLY 8AG", "SER -9 S", "HEM 900 X group", "MSE 1 M"));
    ASSERT_THAT(table.chains, SizeIs(2));
    EXPECT_EQ(table.chains[0].chain, structure->Child(0));
    EXPECT_EQ(table.chains[0].residueEnd, 4U);
    EXPECT_EQ(table.chains[1].residueBegin, 4U);
    EXPECT_EQ(table.chains[1].residueEnd, 5U);
}

TEST_F(StructureDetailsContract, EachKnowsWhereItBelongs)
{
    std::uint32_t next = 0;
    for (std::uint32_t i = 0; i < table.residues.size(); ++i) {
        const TAMBO::ResidueDetails &residue = table.residues[i];
        EXPECT_EQ(residue.atomBegin, next);
        next = residue.atomEnd;
        Compound *const object = table.chains.at(residue.chain).chain->Child(residue.child);
        ASSERT_NE(object, nullptr);
        EXPECT_EQ(object->TypeName(), residue.name);
        for (std::uint32_t k = residue.atomBegin; k < residue.atomEnd; ++k) {
            EXPECT_EQ(table.atoms[k].residue, i);
            EXPECT_EQ(table.atoms[k].atom->Parent(), object);
        }
    }
    EXPECT_EQ(next, table.atoms.size());
}

TEST_F(StructureDetailsContract, OfAChainAreThoseOfItAlone)
{
    const StructureTable chain = StructureDetails::read(structure->Child(1));
    ASSERT_THAT(chain.chains, SizeIs(1));
    EXPECT_EQ(chain.chains[0].chain, structure->Child(1));
    ASSERT_THAT(chain.residues, SizeIs(1));
    EXPECT_EQ(chain.residues[0].name, "MSE");
    EXPECT_THAT(chain.atoms, SizeIs(2));
}

TEST_F(StructureDetailsContract, SecondaryStructureIsThatOfTheResidues)
{
    const auto residues = [this](std::size_t first) {
        std::vector<Compound *> some;
        for (std::size_t i = first; i < 3; ++i)
            some.push_back(structure->Child(0)->Child(i));
        return some;
    };
    ASSERT_NE(DataMaker::makeSSE(structure->Child(0), "helix", residues(0), 'H'), nullptr);
    const auto types = [this] {
        std::string all;
        for (const TAMBO::ResidueDetails &residue : StructureDetails::read(structure).residues)
            all += residue.element == '\0' ? '.' : residue.element;
        return all;
    };
    EXPECT_EQ(types(), "HHH..");
    ASSERT_NE(DataMaker::makeSSE(structure->Child(0), "strand", residues(0), 'e'), nullptr);
    // The later one.
    EXPECT_EQ(types(), "eee..");
    for (std::size_t i = 0; i < 3; ++i)
        EXPECT_EQ(
            dynamic_cast<TAMBO::Residue *>(structure->Child(0)->Child(i))->GetSSE()->TypeCode(),
            'e');
}

TEST_F(StructureDetailsContract, WhatIsNoStructureHasNone)
{
    Compound *const sequence = DataMaker::makeSequence("sequence", "ACDEF");
    for (const Compound *object : {static_cast<Compound *>(nullptr), sequence, sequence->Child(0),
                                   structure->Child(0)->Child(0), space().object(0)->Parent()}) {
        const StructureTable none = StructureDetails::read(object);
        EXPECT_THAT(none.chains, IsEmpty());
        EXPECT_THAT(none.residues, IsEmpty());
        EXPECT_THAT(none.atoms, IsEmpty());
        EXPECT_EQ(StructureDetails::bFactor(object), 0);
        EXPECT_EQ(StructureDetails::occupancy(object), 1);
    }
}

TEST_F(StructureDetailsContract, AnAtomTellsWhatItsFileSays)
{
    const Compound *const alpha = structure->Child(0)->Child(1)->Child(1);
    EXPECT_EQ(StructureDetails::bFactor(alpha), 20);
    EXPECT_EQ(StructureDetails::occupancy(alpha), 0.25F);
}

TEST_F(StructureDetailsContract, OfAnAtomThatIsMadeAreFinite)
{
    TAMBO::StructureValues values;
    values.chains = {{"A", {residue("ALA", "7", 1)}}};
    values.chains[0].residues[0].atoms[1].bFactor = std::numeric_limits<float>::infinity();
    EXPECT_EQ(DataMaker::makeStructure("bad", values), nullptr);
    ASSERT_THAT(log, SizeIs(1));
    EXPECT_THAT(log[0], HasSubstr("chain \"A\", residue ALA 7, atom CA has a B factor or an "
                                  "occupancy that is not finite"));
}

// ---- What is in no tree

// Two residues and a ligand, as a file of three models has them.
class FileDetailsContract : public ModelFixture
{
protected:
    using Place = TAMBO::Vector<float, 3>;

    static TAMBO::Structure &made()
    {
        TAMBO::StructureRecord record;
        record.name = "1new";
        TAMBO::ChainRecord &chain = record.chains.emplace_back();
        chain.name = "A";
        chain.residues = {residueRecord("CYS", 'C', "1", 1), residueRecord("HEM", 'X', "900", 9),
                          residueRecord("CYS", 'C', "2", 2)};
        chain.residues[1].isAminoAcid = false;
        record.bonds = {{{0, 0, 1}, {0, 2, 1}, TAMBO::BondKind::Disulfide},
                        {{0, 1, 0}, {0, 2, 0}, TAMBO::BondKind::Metal}};
        record.waters.add("A", {Place(1, 2, 3), 12.5F, 301, 0, 'B'});
        record.waters.add("W", {Place(4, 5, 6), 30, -1});
        // By residues as the file has them, so the ligand comes between the others.
        for (float model = 10; model < 30; model += 10) {
            std::vector<Place> &places = record.furtherModels.emplace_back();
            for (int i = 1; i <= 6; ++i)
                places.emplace_back(model + float(i), 0, 0);
        }
        const float none = std::numeric_limits<float>::quiet_NaN();
        record.furtherModels[1][0] = Place(none, none, none);
        return *TAMBO::ObjectFactory::adopt(std::move(record));
    }

    static std::vector<float> xOf(const std::vector<Vertex> &places)
    {
        std::vector<float> all;
        for (const Vertex &place : places)
            all.push_back(place.isDefined() ? place.x() : -1);
        return all;
    }
    std::vector<std::string> bonds() const
    {
        const StructureTable table = StructureDetails::read(&structure);
        const auto textOf = [&](std::uint32_t index) {
            const TAMBO::AtomDetails &atom = table.atoms.at(index);
            return std::string(table.residues.at(atom.residue).name) +
                   std::to_string(table.residues.at(atom.residue).number) + ' ' +
                   std::string(atom.name);
        };
        std::vector<std::string> texts;
        for (const TAMBO::BondDetails &bond : StructureDetails::bonds(&structure))
            texts.push_back(textOf(bond.first) + " - " + textOf(bond.second) + ' ' +
                            std::to_string(int(bond.kind)));
        return texts;
    }

    TAMBO::Structure &structure = made();
};

TEST_F(FileDetailsContract, WatersAreThoseOfTheFile)
{
    const std::vector<TAMBO::WaterDetails> waters = StructureDetails::waters(&structure);
    ASSERT_THAT(waters, SizeIs(2));
    EXPECT_EQ(waters[0].position.coordinates(), Place(1, 2, 3));
    EXPECT_EQ(waters[0].bFactor, 12.5F);
    EXPECT_EQ(waters[0].number, 301);
    EXPECT_EQ(waters[0].insertionCode, 'B');
    EXPECT_EQ(waters[0].chain, "A");
    EXPECT_EQ(waters[1].number, -1);
    EXPECT_EQ(waters[1].insertionCode, ' ');
    EXPECT_EQ(waters[1].chain, "W");
    // Nor is one an object.
    EXPECT_EQ(structure.ChildCount(), 1U);
    std::vector<Compound *> atoms;
    TAMBO::GetAtoms(&structure, atoms, true);
    EXPECT_THAT(atoms, SizeIs(6));
}

TEST_F(FileDetailsContract, BondsAreBetweenAtomsOfTheTable)
{
    EXPECT_THAT(bonds(), ElementsAre("CYS1 CA - CYS2 CA 2", "HEM900 N - CYS2 N 3"));
}

TEST_F(FileDetailsContract, BondsKeepTheirAtomsWhateverTheseAreCalled)
{
    TAMBO::renameObject(*structure.Child(0), "other");
    dynamic_cast<TAMBO::Group *>(structure.Child(0)->Child(0))->SetSeqId(SequenceNumber(77));
    EXPECT_THAT(bonds(), ElementsAre("CYS77 CA - CYS2 CA 2", "HEM900 N - CYS2 N 3"));
}

TEST_F(StructureDetailsContract, ResiduesOfAChainAndOfATiedSequenceLeadToTheChain)
{
    Compound *const chain = structure->Child(0);
    const auto own = StructureDetails::sources(chain);
    ASSERT_THAT(own, SizeIs(3));
    for (std::uint32_t i = 0; i < 3; ++i) {
        EXPECT_EQ(own[i].chain, chain);
        EXPECT_EQ(own[i].child, i);
    }
    Compound *const sequence = DataMaker::makeSequence("row", "WAGS");
    for (const TAMBO::ResidueSource &source : StructureDetails::sources(sequence))
        EXPECT_EQ(source.chain, nullptr);
    TAMBO::Peptide::from(sequence)->tie(1, *TAMBO::Peptide::from(chain), 0, 3);
    const auto tied = StructureDetails::sources(sequence);
    ASSERT_THAT(tied, SizeIs(4));
    EXPECT_EQ(tied[0].chain, nullptr);
    for (std::uint32_t i = 1; i < 4; ++i) {
        EXPECT_EQ(tied[i].chain, chain);
        EXPECT_EQ(tied[i].child, i - 1);
    }
    EXPECT_THAT(StructureDetails::sources(nullptr), IsEmpty());
    EXPECT_THAT(StructureDetails::sources(structure), IsEmpty());
}

TEST_F(FileDetailsContract, BondsOfWhatIsGoneAreGone)
{
    DataMaker::Destroy(structure.Child(0)->Child(2));
    EXPECT_THAT(bonds(), ElementsAre("CYS1 CA - CYS2 CA 2"));
    EXPECT_EQ(xOf(StructureDetails::modelPositions(&structure, 1)),
              (std::vector<float>{11, 12, 15, 16}));
    DataMaker::Destroy(structure.Child(0));
    EXPECT_THAT(bonds(), IsEmpty());
    EXPECT_THAT(StructureDetails::waters(&structure), SizeIs(2));
}

TEST_F(FileDetailsContract, ModelsHaveTheAtomsOfTheTable)
{
    EXPECT_EQ(StructureDetails::modelCount(&structure), 3U);
    EXPECT_THAT(xOf(StructureDetails::modelPositions(&structure, 0)),
                ElementsAre(0, 1, 1, 2, 8, 9));
    EXPECT_THAT(xOf(StructureDetails::modelPositions(&structure, 1)),
                ElementsAre(11, 12, 15, 16, 13, 14));
    EXPECT_THAT(xOf(StructureDetails::modelPositions(&structure, 2)),
                ElementsAre(-1, 22, 25, 26, 23, 24));
    EXPECT_THAT(StructureDetails::modelPositions(&structure, 3), IsEmpty());
}

TEST_F(FileDetailsContract, WhatIsNoStructureHasNone)
{
    for (const Compound *object :
         {static_cast<Compound *>(nullptr), structure.Child(0), structure.Child(0)->Child(0)}) {
        EXPECT_THAT(StructureDetails::waters(object), IsEmpty());
        EXPECT_THAT(StructureDetails::bonds(object), IsEmpty());
        EXPECT_EQ(StructureDetails::modelCount(object), 0U);
        EXPECT_THAT(StructureDetails::modelPositions(object, 0), IsEmpty());
    }
}

TEST_F(StructureDetailsContract, TheRevisionGrowsWithAtomsAndResiduesAndNotWithColorsAndMarks)
{
    const auto growsBy = [](const auto &change) {
        const std::uint64_t before = StructureDetails::revision();
        change();
        return StructureDetails::revision() > before;
    };
    TAMBO::Compound *const residue = structure->Child(0)->Child(1);
    EXPECT_FALSE(growsBy([&] { residue->SetSelected(true); }));
    EXPECT_FALSE(growsBy([&] { structure->SetColor(Color(0x00ff00U)); }));
    EXPECT_FALSE(growsBy([&] { residue->SetColor(Color(0xff0000U)); }));
    EXPECT_TRUE(
        growsBy([&] { dynamic_cast<TAMBO::Group *>(residue)->SetSeqId(SequenceNumber("88")); }));
    EXPECT_TRUE(growsBy([] { made(); }));
    EXPECT_TRUE(growsBy([&] { DataMaker::Destroy(structure); }));
}

} // namespace StructureDetailsContractTest
