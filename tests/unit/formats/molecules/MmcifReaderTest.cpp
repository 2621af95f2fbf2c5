// SPDX-License-Identifier: GPL-3.0-or-later
#include "TestFiles.h"

#include <gmock/gmock.h>

namespace TAMBO::formats {
namespace MmcifReaderTest {

using ::testing::ElementsAre;

const std::string kAtomColumns = "data_x\nloop_\n"
                                 "_atom_site.group_PDB\n_atom_site.id\n_atom_site.type_symbol\n"
                                 "_atom_site.label_atom_id\n_atom_site.label_alt_id\n"
                                 "_atom_site.label_comp_id\n_atom_site.label_asym_id\n"
                                 "_atom_site.label_seq_id\n_atom_site.pdbx_PDB_ins_code\n"
                                 "_atom_site.Cartn_x\n_atom_site.Cartn_y\n_atom_site.Cartn_z\n"
                                 "_atom_site.occupancy\n_atom_site.B_iso_or_equiv\n"
                                 "_atom_site.auth_seq_id\n_atom_site.auth_asym_id\n"
                                 "_atom_site.pdbx_PDB_model_num\n";

StructureRecord read(const std::string &text)
{
    FileContents contents = contentsOf("x.cif", text);
    EXPECT_EQ(contents.format, "mmcif");
    EXPECT_EQ(contents.structures.size(), 1U);
    return contents.structures.empty() ? StructureRecord() : std::move(contents.structures[0]);
}

TEST(MmcifReader, ChainsAndNumbersAreTheAuthors)
{
    const StructureRecord structure =
        read(kAtomColumns + "ATOM 1 C CA . MSE A 7 B 1.5 2 3 1 10 -4 Q 1\n"
                            "ATOM 2 C CA . GLY A 8 ? 1.5 2 3 1 10 -3 Q 1\n"
                            "HETATM 3 O O . HOH C . ? 1.5 2 3 1 10 301 Q 1\n"
                            "HETATM 4 ZN ZN . ZN B . ? 1.5 2 3 1 10 201 Q 1\n");
    ASSERT_EQ(structure.chains.size(), 1U);
    const ChainRecord &chain = structure.chains[0];
    EXPECT_EQ(chain.name, "Q");
    ASSERT_EQ(chain.residues.size(), 3U);
    EXPECT_EQ(chain.residues[0].number.getValue(), "-4B");
    EXPECT_EQ(chain.residues[0].letter, 'M');
    EXPECT_EQ(chain.residues[1].number.getValue(), "-3");
    EXPECT_EQ(chain.residues[2].typeName, "ZN");
    EXPECT_FALSE(chain.residues[2].isAminoAcid);
    EXPECT_FLOAT_EQ(chain.residues[0].atoms.at(0).position.x(), 1.5F);
}

TEST(MmcifReader, ANumberOfTooManyDigitsHarmsNothingElse)
{
    const StructureRecord structure =
        read(kAtomColumns + "ATOM 1 C CA . ALA A 1 ? 1 2 3 1 10 -5555555555555 A 1\n"
                            "ATOM 2 C CA . GLY A 2 ? 4 5 6 1 10 2 A 1\n");
    ASSERT_EQ(structure.chains.size(), 1U);
    ASSERT_EQ(structure.chains[0].residues.size(), 2U);
    EXPECT_EQ(structure.chains[0].residues[0].typeName, "ALA");
    EXPECT_EQ(structure.chains[0].residues[1].number.getValue(), "2");
}

TEST(MmcifReader, FirstOfSeveralModelsIsReadAndAllAreCounted)
{
    const StructureRecord structure =
        read(kAtomColumns + "ATOM 1 C CA . ALA A 1 ? 1 2 3 1 10 1 A 1\n"
                            "ATOM 2 C CA . ALA A 1 ? 4 5 6 1 10 1 A 2\n");
    EXPECT_EQ(structure.models, 2U);
    EXPECT_FLOAT_EQ(structure.chains.at(0).residues.at(0).atoms.at(0).position.x(), 1.0F);
    EXPECT_THAT(structure.remarks, ElementsAre("x.cif: the first of 2 models was read"));
}

TEST(MmcifReader, NameThatTheFileGivesFirstStandsForAPlaceWithTwo)
{
    const StructureRecord structure =
        contentsOf(dataFile("structures/altloc_edge_case.cif")).structures.at(0);
    ASSERT_EQ(structure.chains.at(0).residues.size(), 1U);
    EXPECT_EQ(structure.chains[0].residues[0].typeName, "SER");
}

TEST(MmcifReader, HelicesAndStrandsAreElementsNamedAsInTheFile)
{
    const StructureRecord structure =
        read(kAtomColumns + "ATOM 1 C CA . ALA A 1 ? 1 2 3 1 10 1 A 1\n"
                            "loop_\n_struct_conf.conf_type_id\n_struct_conf.id\n"
                            "_struct_conf.beg_auth_asym_id\n_struct_conf.beg_auth_seq_id\n"
                            "_struct_conf.pdbx_beg_PDB_ins_code\n_struct_conf.end_auth_asym_id\n"
                            "_struct_conf.end_auth_seq_id\n_struct_conf.pdbx_end_PDB_ins_code\n"
                            "HELX_P HELX_P1 A 1 ? A 4 A\nTURN_P TURN_P1 A 5 ? A 6 ?\n"
                            "STRN STRN1 A 7 ? A 9 ?\nHELX_P HELX_P2 Z 1 ? Z 4 ?\n"
                            "loop_\n_struct_sheet_range.sheet_id\n_struct_sheet_range.id\n"
                            "_struct_sheet_range.beg_auth_asym_id\n"
                            "_struct_sheet_range.beg_auth_seq_id\n"
                            "_struct_sheet_range.end_auth_asym_id\n"
                            "_struct_sheet_range.end_auth_seq_id\nAA1 2 A 11 A 13\n");
    std::vector<std::string> elements;
    for (const ElementRecord &element : structure.elements)
        elements.push_back(element.name + ' ' + element.type + ' ' + element.chain +
                           element.first.getValue() + '-' + element.last.getValue());
    EXPECT_THAT(elements, ElementsAre("HELX_P1 H A1-4A", "STRN1 E A7-9", "AA1-2 E A11-13"));
}

TEST(MmcifReader, AtomWithoutAPositionIsLeftOutWithARemark)
{
    const StructureRecord structure =
        read(kAtomColumns + "ATOM 1 C CA . ALA A 1 ? 1 2 3 1 10 1 A 1\n"
                            "ATOM 2 C CB . ALA A 1 ? ? ? ? 1 10 1 A 1\n");
    EXPECT_EQ(structure.chains.at(0).residues.at(0).atoms.size(), 1U);
    EXPECT_THAT(structure.remarks, ElementsAre("x.cif: chain \"A\": left out atoms without a "
                                               "position, the first is CB of ALA 1"));
}

TEST(MmcifReader, CommentsMayComeFirst)
{
    EXPECT_EQ(read("# a comment\n#\n" + kAtomColumns + "ATOM 1 C CA . ALA A 1 ? 1 2 3 1 10 1 A 1\n")
                  .chains.size(),
              1U);
}

TEST(MmcifReader, BlockWithAtomsNeedNotBeTheFirst)
{
    EXPECT_EQ(
        read("data_other\n_a.b c\n" + kAtomColumns + "ATOM 1 C CA . ALA A 1 ? 1 2 3 1 10 1 A 1\n")
            .chains.size(),
        1U);
}

TEST(MmcifReader, FileWithoutAtomsIsAnError)
{
    EXPECT_EQ(messageOf("x.cif", "data_x\n_cell.length_a 3\n"),
              "x.cif: is a CIF file without atom positions (_atom_site.Cartn_x)");
}

TEST(MmcifReader, IncompleteAtomTableIsAnError)
{
    EXPECT_EQ(messageOf("x.cif", "data_x\nloop_\n_atom_site.id\n_atom_site.Cartn_x\n1 2.0\n"),
              "x.cif: has an incomplete _atom_site table; expected id, type_symbol, label_alt_id, "
              "label_asym_id, Cartn_x, Cartn_y, Cartn_z, occupancy, B_iso_or_equiv and "
              "auth_seq_id");
}

TEST(MmcifReader, SyntaxErrorsNameTheirLine)
{
    EXPECT_EQ(messageOf("x.cif", "data_x\n_a.b\n;\nno end\n"), "x.cif:5: unterminated text field");
    EXPECT_EQ(messageOf("x.cif", "data_x\n_a.b 'no end\n"), "x.cif:2: unterminated 'string'");
    EXPECT_EQ(messageOf("x.cif", "data_x\nloop_\n_a.b\n_a.c\n1 2 3\n"),
              "x.cif:2: Wrong number of values in the loop");
    EXPECT_EQ(messageOf("x.cif", "data_x\n_a.b 1\n_a.b 2\n"),
              "x.cif:3 in data_x: duplicate tag _a.b");
}

TEST(MmcifReader, AlternativesInBlocksOfTheirOwnAreOneResidue)
{
    const StructureRecord structure =
        read(kAtomColumns + "ATOM 1 C CA A SER A 1 ? 1 2 3 0.4 10 1 A 1\n"
                            "ATOM 2 C CA A GLY A 2 ? 1 2 3 0.4 10 2 A 1\n"
                            "ATOM 3 C CA . CYS A 3 ? 1 2 3 1 10 3 A 1\n"
                            "ATOM 4 C CA . ALA B 1 ? 1 2 3 1 10 1 B 1\n"
                            "ATOM 5 C CA B THR A 1 ? 2 2 3 0.6 10 1 A 1\n"
                            "ATOM 6 C CA B GLY A 2 ? 2 2 3 0.6 10 2 A 1\n");
    ASSERT_EQ(structure.chains.size(), 2U);
    EXPECT_EQ(sequenceOf(structure.chains[0]), "SGC");
    EXPECT_EQ(sequenceOf(structure.chains[1]), "A");
    EXPECT_FLOAT_EQ(structure.chains[0].residues[0].atoms.at(0).position.x(), 1.0F);
    EXPECT_FLOAT_EQ(structure.chains[0].residues[1].atoms.at(0).position.x(), 2.0F);
    EXPECT_THAT(structure.remarks, ::testing::IsEmpty());
}

} // namespace MmcifReaderTest
} // namespace TAMBO::formats
