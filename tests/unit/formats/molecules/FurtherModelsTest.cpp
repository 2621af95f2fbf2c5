// SPDX-License-Identifier: GPL-3.0-or-later
// The models of a structure's file behind the first.
#include "TestFiles.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace TAMBO::formats {
namespace FurtherModelsTest {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;

using Place = Vector<float, 3>;

StructureRecord structureOf(const std::string &name)
{
    FileContents contents = contentsOf(dataFile("structures/" + name));
    EXPECT_EQ(contents.structures.size(), 1U);
    return contents.structures.empty() ? StructureRecord() : std::move(contents.structures[0]);
}

std::size_t atomsOf(const StructureRecord &structure)
{
    std::size_t count = 0;
    for (const ChainRecord &chain : structure.chains) {
        for (const ResidueRecord &residue : chain.residues)
            count += residue.atoms.size();
    }
    return count;
}

TEST(FurtherModels, OfAnNmrStructureHaveAllItsAtoms)
{
    const StructureRecord structure = structureOf("nmr_38_models_1l2y.pdb.gz");
    EXPECT_EQ(atomsOf(structure), 304U);
    ASSERT_THAT(structure.furtherModels, SizeIs(37));
    for (const std::vector<Place> &model : structure.furtherModels) {
        EXPECT_THAT(model, SizeIs(304));
        for (const Place &place : model)
            EXPECT_TRUE(std::isfinite(place[0]));
    }
    // As its line says.
    EXPECT_EQ(structure.furtherModels[0][1], Place(-7.682F, 6.025F, -0.010F));
    EXPECT_THAT(structure.remarks, Not(Contains(HasSubstr("missing"))));
}

TEST(FurtherModels, MayHaveGroupsAndSeveralChains)
{
    const StructureRecord structure = structureOf("dna_and_protein_1lcd.pdb");
    EXPECT_EQ(structure.models, 3U);
    ASSERT_THAT(structure.furtherModels, SizeIs(2));
    for (const std::vector<Place> &model : structure.furtherModels)
        EXPECT_THAT(model, SizeIs(atomsOf(structure)));
    // The sodium of chain C has another number there.
    EXPECT_THAT(
        structure.remarks,
        Contains("dna_and_protein_1lcd.pdb: atoms of the first model are missing in model 3"));
    const auto missing = std::ranges::count_if(
        structure.furtherModels[1], [](const Place &place) { return std::isnan(place[0]); });
    EXPECT_EQ(missing, 1);
}

// Name, number and x of each atom.
struct Line
{
    const char *name;
    int number;
    double x;
};
using Model = std::vector<Line>;

std::string pdbOf(const std::vector<Model> &models)
{
    std::string text;
    for (std::size_t i = 0; i < models.size(); ++i) {
        text += "MODEL " + std::to_string(i + 1) + '\n';
        for (const Line &line : models[i]) {
            char atom[100];
            std::snprintf(
                atom, sizeof(atom),
                "ATOM      1  %-3s ALA A%4d    %8.3f%8.3f%8.3f  1.00 10.00            C\n",
                line.name, line.number, line.x, 2.0, 3.0);
            text += atom;
        }
        text += "ENDMDL\n";
    }
    return text;
}

std::string mmcifOf(const std::vector<Model> &models)
{
    std::string text = "data_x\nloop_\n"
                       "_atom_site.group_PDB\n_atom_site.id\n_atom_site.type_symbol\n"
                       "_atom_site.label_atom_id\n_atom_site.label_alt_id\n"
                       "_atom_site.label_comp_id\n_atom_site.label_asym_id\n"
                       "_atom_site.label_seq_id\n_atom_site.Cartn_x\n_atom_site.Cartn_y\n"
                       "_atom_site.Cartn_z\n_atom_site.occupancy\n_atom_site.B_iso_or_equiv\n"
                       "_atom_site.auth_seq_id\n_atom_site.auth_asym_id\n"
                       "_atom_site.pdbx_PDB_model_num\n";
    for (std::size_t i = 0; i < models.size(); ++i) {
        for (const Line &line : models[i]) {
            char atom[100];
            std::snprintf(atom, sizeof(atom), "ATOM 1 C %s . ALA A %d %.3f 2 3 1 10 %d A %d\n",
                          line.name, line.number, line.x, line.number, int(i + 1));
            text += atom;
        }
    }
    return text;
}

class ModelsOfBothForms : public testing::TestWithParam<std::string>
{
protected:
    static StructureRecord read(const std::vector<Model> &models)
    {
        const bool isPdb = GetParam() == "pdb";
        return std::move(contentsOf("x." + GetParam(), isPdb ? pdbOf(models) : mmcifOf(models))
                             .structures.at(0));
    }
    // The x of each atom, -1 for one that is missing.
    static std::vector<std::vector<float>> xOf(const StructureRecord &structure)
    {
        std::vector<std::vector<float>> all;
        for (const std::vector<Place> &model : structure.furtherModels) {
            all.emplace_back();
            for (const Place &place : model)
                all.back().push_back(std::isnan(place[0]) ? -1 : place[0]);
        }
        return all;
    }
};

const Model kFirst = {{"N", 1, 1}, {"CA", 1, 2}, {"N", 2, 3}, {"CA", 2, 4}};

TEST_P(ModelsOfBothForms, AtomsAreFoundByNameInAnyOrder)
{
    const StructureRecord structure =
        read({kFirst, {{"CA", 2, 14}, {"N", 2, 13}, {"CA", 1, 12}, {"N", 1, 11}}, kFirst});
    EXPECT_THAT(xOf(structure), ElementsAre(ElementsAre(11, 12, 13, 14), ElementsAre(1, 2, 3, 4)));
    EXPECT_EQ(structure.models, 3U);
    EXPECT_THAT(structure.remarks, SizeIs(1));
}

TEST_P(ModelsOfBothForms, WhatOneLacksIsNowhereAndSaidOnce)
{
    const StructureRecord structure =
        read({kFirst,
              kFirst,
              {{"N", 1, 21}, {"CB", 1, 22}, {"N", 2, 23}, {"CA", 2, 24}, {"O", 3, 25}},
              {{"N", 2, 33}},
              kFirst});
    EXPECT_THAT(xOf(structure), ElementsAre(ElementsAre(1, 2, 3, 4), ElementsAre(21, -1, 23, 24),
                                            ElementsAre(-1, -1, 33, -1), ElementsAre(1, 2, 3, 4)));
    EXPECT_THAT(structure.remarks,
                ElementsAre(HasSubstr("the first of 5 models was read"),
                            "x." + GetParam() +
                                ": atoms of the first model are missing in model 3 and in 1 more"));
}

TEST_P(ModelsOfBothForms, OneOfOtherAtomsIsNotKept)
{
    const StructureRecord structure = read({kFirst, {{"N", 7, 1}, {"CA", 7, 1}}, kFirst});
    EXPECT_THAT(xOf(structure), ElementsAre(ElementsAre(1, 2, 3, 4)));
    EXPECT_THAT(structure.remarks,
                Contains("x." + GetParam() + ": atoms of the first model are missing in model 2"));
}

// Places for all atoms would take a multiple of the file, and a look at each of them forever.
TEST_P(ModelsOfBothForms, ManyThatHaveHardlyAnAtomTakeNoRoom)
{
    std::vector<Model> models(3000, Model{{"CA", 1, 1}});
    models.front().clear();
    for (int i = 1; i <= 3000; ++i)
        models.front().push_back({"CA", i, double(i)});
    const StructureRecord structure = read(models);
    EXPECT_EQ(structure.models, 3000U);
    EXPECT_THAT(structure.furtherModels, IsEmpty());
}

TEST_P(ModelsOfBothForms, OfOneModelThereAreNone)
{
    const StructureRecord structure = read({kFirst});
    EXPECT_THAT(structure.furtherModels, IsEmpty());
    EXPECT_THAT(structure.remarks, IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(FurtherModels, ModelsOfBothForms, testing::Values("pdb", "cif"),
                         [](const auto &info) { return info.param; });

// It always was read.
TEST(FurtherModels, DamageInOneIsNoDamageOfTheFile)
{
    std::string text = pdbOf({kFirst, kFirst});
    text.replace(text.rfind("   4.000"), 8, "  none  ");
    const FileContents contents = contentsOf("x.pdb", text);
    const StructureRecord &structure = contents.structures.at(0);
    ASSERT_THAT(structure.furtherModels, SizeIs(1));
    EXPECT_EQ(structure.furtherModels[0][2][0], 3);
    EXPECT_TRUE(std::isnan(structure.furtherModels[0][3][0]));
    EXPECT_THAT(structure.remarks, Contains(HasSubstr("missing in model 2")));
}

} // namespace FurtherModelsTest
} // namespace TAMBO::formats
