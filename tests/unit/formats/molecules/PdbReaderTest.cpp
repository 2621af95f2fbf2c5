// SPDX-License-Identifier: GPL-3.0-or-later
#include "TestFiles.h"

#include <gmock/gmock.h>

#include <algorithm>

namespace TAMBO::formats {
namespace PdbReaderTest {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

// An atom record with its fields in their columns.
struct AtomLine
{
    std::string name = " CA ";
    char alternative = ' ';
    std::string residue = "ALA";
    char chain = 'A';
    std::string number = "   1 ";
    std::string x = "   1.000";
    std::string occupancy = "  1.00";
    std::string tail = "           C  ";
    std::string record = "ATOM  ";

    [[nodiscard]] std::string text() const
    {
        return record + "    1 " + name + alternative + residue + ' ' + chain + number + "   " + x +
               "   2.000   3.000" + occupancy + " 10.00" + tail + '\n';
    }
};

std::string lines(const std::vector<AtomLine> &atoms)
{
    std::string text;
    for (const AtomLine &atom : atoms)
        text += atom.text();
    return text;
}

StructureRecord read(const std::string &text)
{
    FileContents contents = contentsOf("x.pdb", text);
    EXPECT_EQ(contents.format, "pdb");
    EXPECT_EQ(contents.structures.size(), 1U);
    return contents.structures.empty() ? StructureRecord() : std::move(contents.structures[0]);
}

std::vector<std::string> outline(const StructureRecord &structure)
{
    std::vector<std::string> chains;
    for (const ChainRecord &chain : structure.chains) {
        std::string text = chain.name + ':';
        for (const ResidueRecord &residue : chain.residues)
            text += ' ' + residue.typeName + residue.number.getValue();
        chains.push_back(text);
    }
    return chains;
}

TEST(PdbReader, AtomsHaveTheirNamesElementsAndPositions)
{
    const StructureRecord structure = read(lines({{}, {.name = " CB ", .x = " -12.345"}}));
    ASSERT_EQ(structure.chains.size(), 1U);
    const ResidueRecord &residue = structure.chains[0].residues.at(0);
    EXPECT_EQ(residue.typeName, "ALA");
    EXPECT_EQ(residue.letter, 'A');
    EXPECT_TRUE(residue.isAminoAcid);
    ASSERT_EQ(residue.atoms.size(), 2U);
    EXPECT_EQ(residue.atoms[1].name, "CB");
    EXPECT_EQ(residue.atoms[1].element, "C");
    EXPECT_TRUE(residue.atoms[1].position.isDefined());
    EXPECT_FLOAT_EQ(residue.atoms[1].position.x(), -12.345F);
    EXPECT_FLOAT_EQ(residue.atoms[1].position.z(), 3.0F);
}

TEST(PdbReader, OfAlternativesTheMostFrequentIsKept)
{
    const StructureRecord structure =
        read(lines({{.alternative = 'A', .x = "   1.000", .occupancy = "  0.30"},
                    {.alternative = 'B', .x = "   2.000", .occupancy = "  0.70"}}));
    const ResidueRecord &residue = structure.chains.at(0).residues.at(0);
    ASSERT_EQ(residue.atoms.size(), 1U);
    EXPECT_FLOAT_EQ(residue.atoms[0].position.x(), 2.0F);
}

TEST(PdbReader, OfEquallyFrequentAlternativesTheFirstLetterIsKept)
{
    const StructureRecord structure =
        read(lines({{.alternative = 'B', .x = "   1.000", .occupancy = "  0.50"},
                    {.alternative = 'A', .x = "   2.000", .occupancy = "  0.50"}}));
    const ResidueRecord &residue = structure.chains.at(0).residues.at(0);
    ASSERT_EQ(residue.atoms.size(), 1U);
    EXPECT_FLOAT_EQ(residue.atoms[0].position.x(), 2.0F);
}

TEST(PdbReader, EveryAtomNameOccursOnceInAResidue)
{
    for (const char *file :
         {"structures/altlocs_crambin_1ejg.pdb", "structures/negative_residue_numbers_1o1z.pdb",
          "structures/trypsin_altlocs_insertions_1dpo.pdb",
          "malformed/structures/duplicate_atom.pdb"}) {
        const StructureRecord structure = contentsOf(dataFile(file)).structures.at(0);
        for (const ChainRecord &chain : structure.chains) {
            for (const ResidueRecord &residue : chain.residues) {
                std::vector<std::string> names;
                for (const AtomRecord &atom : residue.atoms)
                    names.push_back(atom.name);
                std::sort(names.begin(), names.end());
                EXPECT_EQ(std::adjacent_find(names.begin(), names.end()), names.end());
            }
        }
    }
}

TEST(PdbReader, AlternativeResiduesAtOnePlaceAreOneResidue)
{
    const StructureRecord structure =
        contentsOf(dataFile("structures/altlocs_crambin_1ejg.pdb")).structures.at(0);
    const std::vector<ResidueRecord> &residues = structure.chains.at(0).residues;
    ASSERT_EQ(residues.size(), 46U);
    EXPECT_EQ(residues[21].typeName, "PRO");
    EXPECT_EQ(residues[21].number.getValue(), "22");
    EXPECT_EQ(residues[24].typeName, "LEU");
    EXPECT_EQ(residues[24].number.getValue(), "25");
    EXPECT_THAT(structure.remarks, IsEmpty());
}

TEST(PdbReader, TwoResiduesThatShareANumberByMistakeAreRemarkedOn)
{
    const StructureRecord structure =
        contentsOf(dataFile("malformed/structures/two_residue_names_at_one_number.pdb"))
            .structures.at(0);
    EXPECT_THAT(outline(structure), ElementsAre("A: TRP14"));
    EXPECT_THAT(structure.remarks,
                ElementsAre("two_residue_names_at_one_number.pdb: chain \"A\": left out LYS, which "
                            "has number 14 as TRP has"));
}

TEST(PdbReader, NumbersMayBeNegativeAndHaveInsertionCodes)
{
    const StructureRecord structure = read(lines(
        {{.number = "  -3 "}, {.number = "  -3A"}, {.number = "   0 "}, {.number = "   1X"}}));
    EXPECT_THAT(outline(structure), ElementsAre("A: ALA-3 ALA-3A ALA0 ALA1X"));
}

TEST(PdbReader, NumbersBeyondFourDigitsAreRead)
{
    EXPECT_THAT(outline(read(lines({{.number = "9999 "}, {.number = "A000 "}}))),
                ElementsAre("A: ALA9999 ALA10000"));
}

TEST(PdbReader, ModifiedResiduesHaveTheirParentsLetter)
{
    const StructureRecord structure = read(lines({{.residue = "MSE", .number = "   1 "},
                                                  {.residue = "M3L", .number = "   2 "},
                                                  {.residue = "HYP", .number = "   3 "},
                                                  {.residue = "SEP", .number = "   4 "},
                                                  {.residue = "ZZZ", .number = "   5 "},
                                                  {.residue = "UNK", .number = "   6 "}}));
    EXPECT_EQ(sequenceOf(structure.chains.at(0)), "MKPSXX");
}

TEST(PdbReader, AminoAcidsOthersAndWaterAreToldApart)
{
    const StructureRecord structure =
        read(lines({{},
                    {.name = " N  ", .number = "   2 ", .tail = "           N  "},
                    {.name = " P  ", .residue = " DA", .number = "   3 ", .tail = "           P  "},
                    {.name = " C1 ", .residue = "HEM", .number = "   4 ", .record = "HETATM"},
                    {.name = "CA  ", .residue = " CA", .number = "   5 ", .tail = "          CA  "},
                    {.name = " CA ", .residue = " CA", .number = "   6 ", .tail = "              "},
                    {.name = " O  ", .residue = "HOH", .number = "   7 ", .record = "HETATM"},
                    {.name = " O  ", .residue = "SOL", .number = "   8 "}}));
    ASSERT_EQ(structure.chains.size(), 1U);
    std::vector<bool> aminoAcids;
    for (const ResidueRecord &residue : structure.chains[0].residues)
        aminoAcids.push_back(residue.isAminoAcid);
    EXPECT_THAT(aminoAcids, ElementsAre(true, true, false, false, false, false));
}

TEST(PdbReader, BlankChainIdentifierGivesAnEmptyName)
{
    EXPECT_THAT(outline(read(lines({{.chain = ' '}}))), ElementsAre(": ALA1"));
}

TEST(PdbReader, ChainsKeepTheirOrderAndTheirLateParts)
{
    const StructureRecord structure = read(lines({{.chain = 'b'},
                                                  {.chain = 'A'},
                                                  {.chain = '1'},
                                                  {.name = "ZN  ",
                                                   .residue = " ZN",
                                                   .chain = 'b',
                                                   .number = " 301 ",
                                                   .tail = "          ZN  ",
                                                   .record = "HETATM"}}));
    EXPECT_THAT(outline(structure), ElementsAre("b: ALA1 ZN301", "A: ALA1", "1: ALA1"));
}

TEST(PdbReader, SecondCopyUnderTheSameIdentifierIsAChainOfItsOwn)
{
    const std::string copy =
        lines({{.chain = ' '}, {.residue = "GLY", .chain = ' ', .number = "   2 "}});
    EXPECT_THAT(outline(read(copy + "TER\n" + copy + "TER\n")),
                ElementsAre(": ALA1 GLY2", ": ALA1 GLY2"));
}

TEST(PdbReader, SegmentsWithTheSameNumbersAreChainsOfTheirOwn)
{
    const StructureRecord structure =
        read(lines({{.chain = ' ', .tail = "      PRO1 C  "},
                    {.chain = ' ', .number = "   2 ", .tail = "      PRO1 C  "},
                    {.chain = ' ', .tail = "      PRO2 C  "}}));
    EXPECT_THAT(outline(structure), ElementsAre(": ALA1 ALA2", ": ALA1"));
}

TEST(PdbReader, FirstOfSeveralModelsIsReadAndAllAreCounted)
{
    const std::string atom = AtomLine{}.text();
    const StructureRecord structure =
        read("MODEL        1\n" + atom + "ENDMDL\nMODEL        2\n" + atom + atom +
             "ENDMDL\nMODEL        3\n" + atom + "ENDMDL\nEND\n");
    EXPECT_EQ(structure.models, 3U);
    EXPECT_THAT(outline(structure), ElementsAre("A: ALA1"));
    EXPECT_THAT(structure.remarks, ElementsAre("x.pdb: the first of 3 models was read"));
}

TEST(PdbReader, ModelsNeedNoEndAndNoNumber)
{
    EXPECT_EQ(contentsOf(dataFile("malformed/structures/atom_before_model_free_text.pdb"))
                  .structures.at(0)
                  .models,
              3U);
    EXPECT_EQ(read("MODEL\n" + AtomLine{}.text() + "MODEL\n" + AtomLine{}.text()).models, 2U);
}

// Old entries have their code and the line's number in columns 73 to 80.
TEST(PdbReader, BookkeepingInTheLastColumnsIsNoElementAndNoCharge)
{
    const StructureRecord structure = read(lines({{.tail = "      1GDR  73"},
                                                  {.number = "   2 ", .tail = "      1GDR 174"},
                                                  {.number = "   3 ", .tail = "      1GDR   5"}}));
    EXPECT_EQ(sequenceOf(structure.chains.at(0)), "AAA");
    EXPECT_THAT(outline(structure), ElementsAre("A: ALA1 ALA2 ALA3"));
}

TEST(PdbReader, ChargesOfBothKindsAreRead)
{
    EXPECT_EQ(sequenceOf(read(lines({{.tail = "           C1+"},
                                     {.number = "   2 ", .tail = "           C+1"}}))
                             .chains.at(0)),
              "AA");
}

TEST(PdbReader, HelicesAndStrandsAreElementsNamedAsInTheFile)
{
    const StructureRecord structure =
        read("HELIX    1  H1 ALA A    1  ALA A    2A 1                                   2\n"
             "SHEET    2  BX 2 ALA A   3  ALA A   4  0\n"
             "TURN     1 T1A ALA A   1  ALA A   4\n"
             "HELIX    2  H2 ALA B    1  ALA B    2  1                                   2\n" +
             lines({{}, {.number = "   2A"}, {.number = "   3 "}, {.number = "   4 "}}));
    ASSERT_EQ(structure.elements.size(), 2U);
    EXPECT_EQ(structure.elements[0].name, "H1");
    EXPECT_EQ(structure.elements[0].type, 'H');
    EXPECT_EQ(structure.elements[0].chain, "A");
    EXPECT_EQ(structure.elements[0].first.getValue(), "1");
    EXPECT_EQ(structure.elements[0].last.getValue(), "2A");
    EXPECT_EQ(structure.elements[1].name, "BX-2");
    EXPECT_EQ(structure.elements[1].type, 'E');
    EXPECT_EQ(structure.elements[1].last.getValue(), "4");
}

TEST(PdbReader, StrandThatClosesABarrelIsListedOnce)
{
    const StructureRecord structure = read("SHEET    1   A 2 ALA A   1  ALA A   2  0\n"
                                           "SHEET    2   A 2 ALA A   1  ALA A   2  0\n" +
                                           AtomLine{}.text());
    EXPECT_EQ(structure.elements.size(), 1U);
}

TEST(PdbReader, LinesCutShortAreLeftOutWithOneRemark)
{
    const StructureRecord structure =
        contentsOf(dataFile("malformed/structures/growing_prefix_lines.pdb")).structures.at(0);
    EXPECT_THAT(structure.remarks,
                ElementsAre("growing_prefix_lines.pdb:186: an atom record without complete "
                            "coordinates was left out; so were 49 more further down"));
    const std::string cut = AtomLine{.number = "   2 "}.text().substr(0, 50);
    EXPECT_THAT(read(AtomLine{}.text() + cut).remarks,
                ElementsAre("x.pdb:2: an atom record without complete coordinates was left out"));
}

TEST(PdbReader, LineMayEndAfterTheCoordinates)
{
    EXPECT_THAT(outline(read(AtomLine{}.text().substr(0, 54))), ElementsAre("A: ALA1"));
}

TEST(PdbReader, BadCoordinateIsAnErrorWithItsLine)
{
    EXPECT_EQ(messageOf("x.pdb", AtomLine{}.text() + AtomLine{.x = "********"}.text()),
              "x.pdb:2: found \"********\" in columns 31 to 54, expected a coordinate");
    EXPECT_EQ(messageOf("x.pdb", AtomLine{}.text() + AtomLine{.x = "        "}.text()),
              "x.pdb:2: found \"\" in columns 31 to 54, expected a coordinate");
    EXPECT_EQ(messageOf("x.pdb", AtomLine{}.text() + AtomLine{.x = "     nan"}.text()),
              "x.pdb:2: found \"nan\" in columns 31 to 54, expected a coordinate");
}

TEST(PdbReader, BadResidueNumberIsAnErrorWithItsLine)
{
    EXPECT_EQ(messageOf("x.pdb", AtomLine{}.text() + AtomLine{.number = " 1.2 "}.text()),
              "x.pdb:2: found \"1.2\" in columns 23 to 26, expected a residue number");
    EXPECT_EQ(messageOf("x.pdb", AtomLine{}.text() + AtomLine{.number = "     "}.text()),
              "x.pdb:2: found \"\" in columns 23 to 26, expected a residue number");
}

TEST(PdbReader, FileWithoutAtomsIsAnError)
{
    EXPECT_EQ(messageOf("x.pdb", "HEADER    NOTHING\nEND\n"), "x.pdb: is a PDB file without atoms");
    EXPECT_EQ(messageOf("x.pdb", "HEADER    NOTHING\nATOM      1  CA\n"),
              "x.pdb: is a PDB file without atoms");
}

TEST(PdbReader, LineEndsOfEverySystemAreRead)
{
    std::string text = lines({{}, {.residue = "GLY", .number = "   2 "}});
    for (const char *end : {"\r\n", "\r"}) {
        std::string other;
        for (const char c : text)
            other += c == '\n' ? std::string(end) : std::string(1, c);
        EXPECT_THAT(outline(read(other)), ElementsAre("A: ALA1 GLY2"));
    }
}

TEST(PdbReader, OnlyTheOldColumnsOfALongLineCount)
{
    EXPECT_THAT(outline(read(AtomLine{.tail = "           C  " + std::string(300, 'x')}.text())),
                ElementsAre("A: ALA1"));
}

// What is given of residue number 22 and so on, alternative by alternative.
std::vector<AtomLine> block(char alternative, const std::string &occupancy,
                            const std::vector<std::pair<std::string, std::string>> &residues)
{
    std::vector<AtomLine> atoms;
    for (const auto &[name, number] : residues)
        atoms.push_back({.alternative = alternative,
                         .residue = name,
                         .number = number,
                         .x = alternative == 'A' ? "   1.000" : "   2.000",
                         .occupancy = occupancy});
    return atoms;
}

std::string linesOf(const std::vector<std::vector<AtomLine>> &blocks)
{
    std::string text;
    for (const std::vector<AtomLine> &atoms : blocks)
        text += lines(atoms);
    return text;
}

TEST(PdbReader, AlternativesInBlocksOfTheirOwnAreOneResidue)
{
    const StructureRecord structure =
        read(linesOf({block(' ', "  1.00", {{"ALA", "   1 "}}),
                      block('A', "  0.40", {{"SER", "   2 "}, {"GLY", "   3 "}, {"GLY", "   3A"}}),
                      block('B', "  0.60", {{"THR", "   2 "}, {"GLY", "   3 "}, {"ALA", "   3A"}}),
                      block(' ', "  1.00", {{"CYS", "   4 "}})}));
    EXPECT_THAT(outline(structure), ElementsAre("A: ALA1 SER2 GLY3 GLY3A CYS4"));
    EXPECT_THAT(structure.remarks, IsEmpty());
    const std::vector<ResidueRecord> &residues = structure.chains[0].residues;
    for (const ResidueRecord &residue : residues)
        EXPECT_EQ(residue.atoms.size(), 1U) << residue.number.getValue();
    // The other name's atoms are not those of the name that is kept.
    EXPECT_FLOAT_EQ(residues[1].atoms[0].position.x(), 1.0F);
    EXPECT_FLOAT_EQ(residues[2].atoms[0].position.x(), 2.0F);
}

TEST(PdbReader, AlternativesBehindTheEndOfTheChainAreNoSecondCopyOfIt)
{
    const std::vector<AtomLine> first = block('A', "  0.50", {{"SER", "   2 "}, {"GLY", "   3 "}});
    const std::vector<AtomLine> second = block('B', "  0.50", {{"THR", "   2 "}, {"GLY", "   3 "}});
    EXPECT_THAT(outline(read(lines(first) + "TER\n" + lines(second))), ElementsAre("A: SER2 GLY3"));
    EXPECT_THAT(outline(read(lines(first) + lines({{.chain = 'B'}}) + lines(second))),
                ElementsAre("A: SER2 GLY3", "B: ALA1"));
    // The same alternatives once more are a copy.
    EXPECT_THAT(outline(read(lines(first) + "TER\n" + lines(first))),
                ElementsAre("A: SER2 GLY3", "A: SER2 GLY3"));
}

TEST(PdbReader, AlternativeMayHoldPartOfAResidueOnly)
{
    const StructureRecord structure =
        read(lines({{},
                    {.name = " CB ", .alternative = 'A', .occupancy = "  0.40"},
                    {.number = "   2 "}}) +
             "TER\n" +
             lines({{.name = " CB ", .alternative = 'B', .x = "   2.000", .occupancy = "  0.60"},
                    {.name = " CG ", .alternative = 'B', .occupancy = "  0.60"}}));
    EXPECT_THAT(outline(structure), ElementsAre("A: ALA1 ALA2"));
    const std::vector<AtomRecord> &atoms = structure.chains[0].residues[0].atoms;
    ASSERT_EQ(atoms.size(), 3U);
    EXPECT_FLOAT_EQ(atoms[1].position.x(), 2.0F);
    EXPECT_EQ(atoms[2].name, "CG");
}

TEST(PdbReader, ResidueThatOneAlternativeLacksStandsAtItsPlace)
{
    EXPECT_THAT(
        outline(read(linesOf({block('A', "  0.50", {{"SER", "   2 "}}),
                              block(' ', "  1.00", {{"CYS", "   4 "}}),
                              block('B', "  0.50", {{"THR", "   2 "}, {"GLY", "   3 "}})}))),
        ElementsAre("A: SER2 GLY3 CYS4"));
}

} // namespace PdbReaderTest
} // namespace TAMBO::formats
