// SPDX-License-Identifier: GPL-3.0-or-later
// The bonds that structure files name.
#include "TestFiles.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cstdio>
#include <map>

namespace TAMBO::formats {
namespace BondsTest {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::IsSupersetOf;
using testing::SizeIs;

using Texts = std::vector<std::string>;

std::string textOf(const StructureRecord &structure, const BondRecord::End &end)
{
    const ChainRecord &chain = structure.chains.at(end.chain);
    const ResidueRecord &residue = chain.residues.at(end.residue);
    return chain.name + ' ' + residue.typeName + ' ' + residue.number.getValue() + ' ' +
           residue.atoms.at(end.atom).name;
}

// In alphabetical order.
Texts bondsOf(const StructureRecord &structure)
{
    static const std::map<BondKind, std::string> names = {{BondKind::Covalent, "covalent"},
                                                          {BondKind::Disulfide, "disulfide"},
                                                          {BondKind::Metal, "metal"},
                                                          {BondKind::Hydrogen, "hydrogen"}};
    Texts texts;
    for (const BondRecord &bond : structure.bonds)
        texts.push_back(names.at(bond.kind) + ": " + textOf(structure, bond.first) + " - " +
                        textOf(structure, bond.second));
    std::ranges::sort(texts);
    return texts;
}

Texts bondsOf(const std::string &name)
{
    FileContents contents = contentsOf(dataFile("structures/" + name));
    EXPECT_EQ(contents.structures.size(), 1U);
    return contents.structures.empty() ? Texts() : bondsOf(contents.structures[0]);
}

Texts without(Texts texts, const std::string &kind)
{
    std::erase_if(texts, [&](const std::string &text) { return !text.starts_with(kind); });
    return texts;
}

TEST(Bonds, OfBothFormsAreTheSame)
{
    const std::pair<std::string, std::string> pairs[] = {
        {"insertion_codes_1dix.pdb", "insertion_codes_1dix.cif"},
        {"lysozyme_1aki.pdb", "lysozyme_1aki.cif"},
        {"missing_residues_2vqc.pdb", "missing_residues_2vqc.cif.gz"},
        {"selenomethionine_1a8o.pdb", "selenomethionine_1a8o.cif"}};
    for (const auto &[pdb, mmcif] : pairs) {
        const Texts bonds = bondsOf(mmcif);
        EXPECT_FALSE(bonds.empty()) << mmcif;
        // In a PDB file there are those within groups as well.
        EXPECT_THAT(bondsOf(pdb), IsSupersetOf(bonds)) << pdb;
        EXPECT_EQ(without(bondsOf(pdb), "disulfide"), without(bonds, "disulfide")) << pdb;
    }
}

TEST(Bonds, OfAFileAreThoseOfItsLines)
{
    const Texts lysozyme = {
        "disulfide: A CYS 30 SG - A CYS 115 SG", "disulfide: A CYS 6 SG - A CYS 127 SG",
        "disulfide: A CYS 64 SG - A CYS 80 SG", "disulfide: A CYS 76 SG - A CYS 94 SG"};
    EXPECT_EQ(bondsOf("lysozyme_1aki.pdb"), lysozyme);
    EXPECT_EQ(bondsOf("lysozyme_1aki.cif"), lysozyme);
    EXPECT_THAT(
        without(bondsOf("four_chains_haemoglobin_2hhb.pdb.gz"), "metal"),
        IsSupersetOf({"metal: A HEM 142 FE - A HIS 87 NE2", "metal: D HIS 92 NE2 - D HEM 148 FE"}));
    EXPECT_THAT(bondsOf("ubiquitin_1ubi.pdb"), IsEmpty());
}

std::string atom(int serial, const std::string &name, const std::string &residue, int number,
                 const std::string &element)
{
    char text[100];
    std::snprintf(text, sizeof(text),
                  "HETATM%5d %-4s %3s A%4d    %8.3f   2.000   3.000  1.00 10.00          %2s\n",
                  serial, name.c_str(), residue.c_str(), number, double(serial), element.c_str());
    return text;
}

Texts bondsOfText(const std::string &text)
{
    return bondsOf(contentsOf("x.pdb", text).structures.at(0));
}

const std::string kAtoms = atom(1, " SG ", "CYS", 1, "S") + atom(2, " SG ", "CYS", 2, "S") +
                           atom(3, " C1 ", "LIG", 3, "C") + atom(4, " C2 ", "LIG", 3, "C") +
                           atom(5, "ZN  ", " ZN", 4, "ZN") + atom(6, " O  ", "HOH", 5, "O");

TEST(Bonds, OfConnectionsAreEachThereOnce)
{
    EXPECT_THAT(bondsOfText(kAtoms + "CONECT    3    4    4    3\n"
                                     "CONECT    4    3\n"
                                     "CONECT    5    1    6    9\n"
                                     "CONECT    1    2    5\n"
                                     "CONECT\nCONECT    3\nCONECT    x    y\n"),
                ElementsAre("covalent: A LIG 3 C1 - A LIG 3 C2",
                            "disulfide: A CYS 1 SG - A CYS 2 SG", "metal: A ZN 4 ZN - A CYS 1 SG"));
}

TEST(Bonds, ToNeighboursInTheCrystalAreNone)
{
    const std::string bond = "SSBOND   1 CYS A    1    CYS A    2                          ";
    EXPECT_THAT(bondsOfText(kAtoms + bond + "1555   2655  2.04\n"), IsEmpty());
    EXPECT_THAT(bondsOfText(kAtoms + bond + "1555   1555  2.04\n"), SizeIs(1));
    EXPECT_THAT(bondsOfText(kAtoms + bond + "\n"), SizeIs(1));
    EXPECT_THAT(bondsOfText(kAtoms + "SSBOND   1 CYS A    1\n"), IsEmpty());
}

TEST(Bonds, OfLinksToWhatIsNotThereAreLeftOut)
{
    const auto link = [](const std::string &to) {
        return "LINK         SG  CYS A   1                " + to + "     1555   1555  2.30\n";
    };
    EXPECT_THAT(bondsOfText(kAtoms + link("ZN    ZN A   4 ")),
                ElementsAre("metal: A CYS 1 SG - A ZN 4 ZN"));
    EXPECT_THAT(bondsOfText(kAtoms + link(" O   HOH A   5 ")), IsEmpty());
    EXPECT_THAT(bondsOfText(kAtoms + link("ZN    ZN B   4 ")), IsEmpty());
    EXPECT_THAT(bondsOfText(kAtoms + link("MG    ZN A   4 ")), IsEmpty());
}

TEST(Bonds, BetweenSerialNumbersWithLettersAreFound)
{
    std::string text = atom(1, " C1 ", "LIG", 1, "C") + atom(2, " C2 ", "LIG", 1, "C");
    text.replace(6, 5, "A0000");
    text.replace(text.find('\n') + 7, 5, "A0001");
    EXPECT_THAT(bondsOfText(text + "CONECTA0000A0001\n"),
                ElementsAre("covalent: A LIG 1 C1 - A LIG 1 C2"));
}

} // namespace BondsTest
} // namespace TAMBO::formats
