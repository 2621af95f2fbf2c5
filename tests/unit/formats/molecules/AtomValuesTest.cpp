// SPDX-License-Identifier: GPL-3.0-or-later
// What files say of an atom besides its name and its place.
#include "TestFiles.h"

#include <algorithm>

namespace TAMBO::formats {
namespace AtomValuesTest {

StructureRecord structureOf(const std::string &name)
{
    FileContents contents = contentsOf(dataFile("structures/" + name));
    EXPECT_EQ(contents.structures.size(), 1U);
    return contents.structures.empty() ? StructureRecord() : std::move(contents.structures[0]);
}

const AtomRecord &atomOf(const StructureRecord &structure, const std::string &chain,
                         const std::string &number, const std::string &name)
{
    for (const ChainRecord &here : structure.chains) {
        for (const ResidueRecord &residue : here.residues) {
            if (here.name != chain || residue.number.getValue() != number)
                continue;
            const auto found = std::ranges::find(residue.atoms, name, &AtomRecord::name);
            if (found != residue.atoms.end())
                return *found;
        }
    }
    static const AtomRecord none;
    ADD_FAILURE() << "no atom " << name << " of " << number;
    return none;
}

struct Pair
{
    const char *test;
    const char *pdb;
    const char *mmcif;
};

class AtomsOfBothForms : public testing::TestWithParam<Pair>
{
};

TEST_P(AtomsOfBothForms, SayTheSameOfEachAtom)
{
    const StructureRecord pdb = structureOf(GetParam().pdb);
    const StructureRecord mmcif = structureOf(GetParam().mmcif);
    ASSERT_EQ(pdb.chains.size(), mmcif.chains.size());
    std::size_t atoms = 0;
    float most = 0;
    for (std::size_t c = 0; c < pdb.chains.size(); ++c) {
        const auto &residues = pdb.chains[c].residues;
        ASSERT_EQ(residues.size(), mmcif.chains[c].residues.size());
        for (std::size_t i = 0; i < residues.size(); ++i) {
            const ResidueRecord &other = mmcif.chains[c].residues[i];
            ASSERT_EQ(residues[i].atoms.size(), other.atoms.size()) << other.number.getValue();
            for (std::size_t k = 0; k < other.atoms.size(); ++k) {
                EXPECT_EQ(residues[i].atoms[k].bFactor, other.atoms[k].bFactor);
                EXPECT_EQ(residues[i].atoms[k].occupancy, other.atoms[k].occupancy);
                most = std::max(most, other.atoms[k].bFactor);
                ++atoms;
            }
        }
    }
    EXPECT_GT(atoms, 500U);
    EXPECT_GT(most, 20);
}

INSTANTIATE_TEST_SUITE_P(AtomValues, AtomsOfBothForms,
                         testing::Values(Pair{"InsertionCodes", "insertion_codes_1dix.pdb",
                                              "insertion_codes_1dix.cif"},
                                         Pair{"Lysozyme", "lysozyme_1aki.pdb", "lysozyme_1aki.cif"},
                                         Pair{"Selenomethionine", "selenomethionine_1a8o.pdb",
                                              "selenomethionine_1a8o.cif"}),
                         [](const auto &info) { return info.param.test; });

// As the lines of the files have them.
TEST(AtomValues, OfFilesAreThoseOfTheirLines)
{
    const AtomRecord sulfur = atomOf(structureOf("lysozyme_1aki.pdb"), "A", "6", "SG");
    EXPECT_EQ(sulfur.bFactor, 18.61F);
    EXPECT_EQ(sulfur.occupancy, 1);
    EXPECT_EQ(sulfur.element, "S");
    // Of two alternatives the one that is there more often.
    const AtomRecord hydrogen = atomOf(structureOf("altlocs_crambin_1ejg.pdb"), "A", "1", "H1");
    EXPECT_EQ(hydrogen.bFactor, 6.68F);
    EXPECT_EQ(hydrogen.occupancy, 0.82F);
}

// The last columns of a line may be missing.
TEST(AtomValues, AnAtomOfWhichNothingIsSaidIsThereAllTheTime)
{
    const std::string line = "ATOM      1  CA  ALA A   1       1.000   2.000   3.000";
    for (const std::string &rest : {std::string(), std::string(12, ' '), std::string(26, ' ')}) {
        const FileContents contents = contentsOf("x.pdb", line + rest + "\n");
        const AtomRecord &atom = contents.structures.at(0).chains.at(0).residues.at(0).atoms.at(0);
        EXPECT_EQ(atom.occupancy, 1);
        EXPECT_EQ(atom.bFactor, 0);
    }
    const FileContents contents = contentsOf("x.pdb", line + "  0.25 -7.50\n");
    const AtomRecord &atom = contents.structures.at(0).chains.at(0).residues.at(0).atoms.at(0);
    EXPECT_EQ(atom.occupancy, 0.25F);
    EXPECT_EQ(atom.bFactor, -7.5F);
}

TEST(AtomValues, QuestionMarksOfMmcifSayNothing)
{
    const std::string columns = "data_x\nloop_\n"
                                "_atom_site.group_PDB\n_atom_site.id\n_atom_site.type_symbol\n"
                                "_atom_site.label_atom_id\n_atom_site.label_alt_id\n"
                                "_atom_site.label_comp_id\n_atom_site.label_asym_id\n"
                                "_atom_site.label_seq_id\n_atom_site.Cartn_x\n_atom_site.Cartn_y\n"
                                "_atom_site.Cartn_z\n_atom_site.occupancy\n"
                                "_atom_site.B_iso_or_equiv\n_atom_site.auth_seq_id\n"
                                "_atom_site.auth_asym_id\n";
    const FileContents contents =
        contentsOf("x.cif", columns + "ATOM 1 N N . ALA A 1 1 2 3 ? ? 1 A\n"
                                      "ATOM 2 C CA . ALA A 1 1 2 3 . . 1 A\n"
                                      "ATOM 3 C C . ALA A 1 1 2 3 0.125 50 1 A\n"
                                      "ATOM 4 O O . ALA A 1 1 2 3 nan 1e99 1 A\n");
    const std::vector<AtomRecord> &atoms =
        contents.structures.at(0).chains.at(0).residues.at(0).atoms;
    ASSERT_EQ(atoms.size(), 4U);
    for (const std::size_t i : {0, 1, 3}) {
        EXPECT_EQ(atoms[i].occupancy, 1) << i;
        EXPECT_EQ(atoms[i].bFactor, 0) << i;
    }
    EXPECT_EQ(atoms[2].occupancy, 0.125F);
    EXPECT_EQ(atoms[2].bFactor, 50);
}

} // namespace AtomValuesTest
} // namespace TAMBO::formats
