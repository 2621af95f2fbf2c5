// SPDX-License-Identifier: GPL-3.0-or-later
// The waters of structure files.
#include "TestFiles.h"

#include <gmock/gmock.h>

#include <cstdio>

namespace TAMBO::formats {
namespace WatersTest {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

StructureRecord structureOf(const std::string &name)
{
    FileContents contents = contentsOf(dataFile("structures/" + name));
    EXPECT_EQ(contents.structures.size(), 1U);
    return contents.structures.empty() ? StructureRecord() : std::move(contents.structures[0]);
}

struct Pair
{
    const char *test;
    const char *pdb;
    const char *mmcif;
    std::size_t waters;
};

class WatersOfBothForms : public testing::TestWithParam<Pair>
{
};

TEST_P(WatersOfBothForms, HaveTheSameWaters)
{
    const Waters pdb = structureOf(GetParam().pdb).waters;
    const Waters mmcif = structureOf(GetParam().mmcif).waters;
    EXPECT_THAT(pdb.places, SizeIs(GetParam().waters));
    EXPECT_EQ(pdb.places, mmcif.places);
    EXPECT_EQ(pdb.chains, mmcif.chains);
}

INSTANTIATE_TEST_SUITE_P(
    Waters, WatersOfBothForms,
    testing::Values(
        Pair{"InsertionCodes", "insertion_codes_1dix.pdb", "insertion_codes_1dix.cif", 136},
        Pair{"Lysozyme", "lysozyme_1aki.pdb", "lysozyme_1aki.cif", 78},
        Pair{"MissingResidues", "missing_residues_2vqc.pdb", "missing_residues_2vqc.cif.gz", 25},
        Pair{"Selenomethionine", "selenomethionine_1a8o.pdb", "selenomethionine_1a8o.cif", 88}),
    [](const auto &info) { return info.param.test; });

TEST(Waters, AreWhereTheLinesSay)
{
    const Waters waters = structureOf("lysozyme_1aki.pdb").waters;
    ASSERT_FALSE(waters.places.empty());
    const Water &first = waters.places.front();
    EXPECT_EQ(first.position, (Vector<float, 3>(23.434F, 40.063F, -6.661F)));
    EXPECT_EQ(first.bFactor, 19.48F);
    EXPECT_EQ(first.number, 130);
    EXPECT_EQ(first.insertionCode, ' ');
    EXPECT_THAT(waters.chains, ElementsAre("A"));
}

std::string line(const std::string &name, char alternative, int number, float x,
                 const std::string &occupancy, const std::string &element)
{
    char text[100];
    std::snprintf(text, sizeof(text),
                  "HETATM    1  %-3s%cHOH A%4d    %8.3f%8.3f%8.3f%6s%6.2f          %2s\n",
                  name.c_str(), alternative, number, double(x), 2.0, 3.0, occupancy.c_str(), 12.5,
                  element.c_str());
    return text;
}

const std::string kAlanine =
    "ATOM      1  CA  ALA A   1       1.000   2.000   3.000  1.00 10.00           C\n";

TEST(Waters, OneIsWhereItsOxygenIs)
{
    const StructureRecord structure =
        contentsOf("x.pdb", kAlanine + line("H1", ' ', 5, 7, "1.00", "H") +
                                line("O", 'A', 5, 8, "0.40", "O") +
                                line("O", 'B', 5, 9, "0.60", "O") +
                                line("H2", ' ', 5, 10, "1.00", "H"))
            .structures.at(0);
    ASSERT_THAT(structure.waters.places, SizeIs(1));
    EXPECT_EQ(structure.waters.places[0].position, (Vector<float, 3>(9, 2, 3)));
    EXPECT_EQ(structure.waters.places[0].bFactor, 12.5F);
    EXPECT_EQ(structure.waters.places[0].number, 5);
}

TEST(Waters, AreNoChain)
{
    const StructureRecord structure =
        contentsOf("x.pdb", kAlanine + "HETATM    1  O   HOH W   2       4.000   5.000   6.000\n")
            .structures.at(0);
    EXPECT_THAT(structure.chains, SizeIs(1));
    ASSERT_THAT(structure.waters.places, SizeIs(1));
    EXPECT_THAT(structure.waters.chains, ElementsAre("W"));
    EXPECT_EQ(structure.waters.places[0].position, (Vector<float, 3>(4, 5, 6)));
}

TEST(Waters, OfASimulationAreAllThere)
{
    std::string text = kAlanine;
    // Numbers begin anew.
    for (int i = 0; i < 12000; ++i)
        text += line("OW", ' ', i % 10000, float(i) / 10, "1.00", "O");
    EXPECT_THAT(contentsOf("x.pdb", text).structures.at(0).waters.places, SizeIs(12000));
}

TEST(Waters, OfAnNmrStructureAreNone)
{
    EXPECT_THAT(structureOf("nmr_38_models_1l2y.pdb.gz").waters.places, IsEmpty());
}

} // namespace WatersTest
} // namespace TAMBO::formats
