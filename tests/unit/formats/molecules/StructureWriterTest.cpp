// SPDX-License-Identifier: GPL-3.0-or-later
// Structures as PDB and mmCIF files.
#include "FileWriter.h"

#include "StructureWriter.h"
#include "TestFiles.h"
#include "support/Outcome.h"

#include <gmock/gmock.h>

namespace TAMBO::formats {
namespace StructureWriterTest {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

namespace fs = std::filesystem;

AtomRecord atom(const std::string &name, const std::string &element, float x)
{
    return {name, element, Vertex(x, 2.25F, -0.125F)};
}

// One chain of a residue and a ligand.
StructureRecord small()
{
    StructureRecord structure;
    structure.name = "small";
    ChainRecord &chain = structure.chains.emplace_back();
    chain.name = "A";
    ResidueRecord residue;
    residue.typeName = "GLY";
    residue.letter = 'G';
    residue.number = SequenceNumber("12B");
    residue.atoms = {atom("N", "N", 1), atom("CA", "C", 2.5F)};
    ResidueRecord ligand;
    ligand.typeName = "CA";
    ligand.number = SequenceNumber("401");
    ligand.atoms = {atom("CA", "CA", 12.3456F)};
    ligand.isAminoAcid = false;
    chain.residues = {residue, ligand};
    return structure;
}

WriteOptions pdb()
{
    return {FileFormat::Pdb};
}

WriteOptions mmcif()
{
    return {FileFormat::Mmcif};
}

// Empty when it is written.
std::string failureOf(const fs::path &path, const StructureRecord &structure,
                      const WriteOptions &options)
{
    const Result<void> written = writeFile(path, structure, options);
    return complaintOf(written);
}

std::string writtenAs(const StructureRecord &structure, const WriteOptions &options)
{
    const TemporaryFile file(options.format == FileFormat::Pdb ? "x.pdb" : "x.cif", "old");
    const Result<void> written = writeFile(file.path(), structure, options);
    if (!written) {
        EXPECT_EQ(bytesOf(file.path()), "old");
        return written.error().message();
    }
    return bytesOf(file.path());
}

TEST(StructureWriter, PdbRecordsHaveTheirColumns)
{
    const std::string text = writtenAs(small(), pdb());
    EXPECT_THAT(
        text,
        HasSubstr(
            "ATOM      1  N   GLY A  12B      1.000   2.250  -0.125  1.00  0.00           N"));
    EXPECT_THAT(
        text,
        HasSubstr(
            "ATOM      2  CA  GLY A  12B      2.500   2.250  -0.125  1.00  0.00           C"));
    EXPECT_THAT(text, HasSubstr("\nTER       3      GLY A  12B"));
    EXPECT_THAT(
        text,
        HasSubstr(
            "HETATM    4 CA    CA A 401      12.346   2.250  -0.125  1.00  0.00          CA"));
    EXPECT_THAT(text, HasSubstr("\nEND"));
}

TEST(StructureWriter, MmcifKeepsEveryDigit)
{
    const std::string text = writtenAs(small(), mmcif());
    EXPECT_THAT(text, HasSubstr("data_small"));
    EXPECT_THAT(text, HasSubstr("12.3456 2.25 -0.125"));
}

// Every structure of the collection, through both formats and from one to the other.
TEST(StructureWriter, RealStructuresReadBackTheSame)
{
    unsigned tested = 0;
    for (const char *folder : {"structures", "families/globins", "families/cytochrome_c"}) {
        for (const auto &entry : fs::directory_iterator(dataFile(folder))) {
            const Result<FileContents> contents = readFile(entry.path());
            if (!contents || contents.value().structures.empty())
                continue;
            SCOPED_TRACE(entry.path());
            const StructureRecord &structure = contents.value().structures.front();
            for (const WriteOptions &options : {pdb(), mmcif()}) {
                if (!checkWritable(structure, options))
                    continue;
                const TemporaryFile file("x", "");
                EXPECT_EQ(failureOf(file.path(), structure, options), "");
                ++tested;
            }
        }
    }
    EXPECT_GT(tested, 70U);
}

TEST(StructureWriter, HelicesAndStrandsAreKept)
{
    const StructureRecord structure =
        contentsOf(dataFile("structures/ubiquitin_1ubi.pdb")).structures.at(0);
    ASSERT_GT(structure.elements.size(), 4U);
    for (const WriteOptions &options : {pdb(), mmcif()}) {
        const TemporaryFile file("x", "");
        ASSERT_EQ(failureOf(file.path(), structure, options), "");
        const StructureRecord readBack = contentsOf(file.path()).structures.at(0);
        EXPECT_EQ(readBack.elements.size(), structure.elements.size());
    }
}

TEST(StructureWriter, ChainsOfOneNameStayApart)
{
    StructureRecord structure = small();
    structure.chains.push_back(structure.chains.front());
    const TemporaryFile pdbFile("x.pdb", "");
    ASSERT_EQ(failureOf(pdbFile.path(), structure, pdb()), "");
    const StructureRecord fromPdb = contentsOf(pdbFile.path()).structures.at(0);
    ASSERT_EQ(fromPdb.chains.size(), 2U);
    EXPECT_EQ(fromPdb.chains[1].name, "A");

    const TemporaryFile cifFile("x.cif", "");
    ASSERT_EQ(failureOf(cifFile.path(), structure, mmcif()), "");
    const StructureRecord fromCif = contentsOf(cifFile.path()).structures.at(0);
    ASSERT_EQ(fromCif.chains.size(), 2U);
    EXPECT_EQ(fromCif.chains[1].name, "A-2");
    EXPECT_THAT(lossesOf(structure, mmcif()),
                Contains("Another chain has the name \"A\" already, so this one becomes \"A-2\"."));
}

TEST(StructureWriter, AChainWithoutANameHasNone)
{
    StructureRecord structure = small();
    structure.chains[0].name.clear();
    for (const WriteOptions &options : {pdb(), mmcif()}) {
        const TemporaryFile file("x", "");
        ASSERT_EQ(failureOf(file.path(), structure, options), "");
        EXPECT_EQ(contentsOf(file.path()).structures.at(0).chains.at(0).name, "");
    }
}

TEST(StructureWriter, WhatDoesNotFitAPdbFileIsRefused)
{
    StructureRecord longChain = small();
    longChain.chains[0].name = "ABC";
    EXPECT_EQ(writtenAs(longChain, pdb()), "x.pdb: The name of chain \"ABC\" is too long for a PDB "
                                           "file; an mmCIF file can hold it.");
    EXPECT_THAT(writtenAs(longChain, mmcif()), HasSubstr("ABC"));

    StructureRecord longResidue = small();
    longResidue.chains[0].residues[1].typeName = "A1BCD";
    EXPECT_EQ(writtenAs(longResidue, pdb()), "x.pdb: The name of residue \"A1BCD\" is too long for "
                                             "a PDB file; an mmCIF file can hold it.");
    EXPECT_THAT(writtenAs(longResidue, mmcif()), HasSubstr("A1BCD"));

    StructureRecord far = small();
    far.chains[0].residues[0].atoms[0].position = Vertex(-1000, 0, 0);
    EXPECT_EQ(writtenAs(far, pdb()),
              "x.pdb: The position of atom N of residue GLY 12B does not fit "
              "into a PDB file; an mmCIF file can hold it.");
    EXPECT_THAT(writtenAs(far, mmcif()), HasSubstr(" -1000 0 0 "));

    StructureRecord low = small();
    low.chains[0].residues[0].number = SequenceNumber(-1000);
    EXPECT_EQ(writtenAs(low, pdb()), "x.pdb: The number of residue GLY -1000 is too long for a PDB "
                                     "file; an mmCIF file can hold it.");
    EXPECT_THAT(writtenAs(low, mmcif()), HasSubstr("-1000"));
}

TEST(StructureWriter, NumbersBeyondTheirColumnsAreWrittenWithLettersAndReadBack)
{
    StructureRecord structure = small();
    structure.chains[0].residues[1].number = SequenceNumber(12345);
    const std::string text = writtenAs(structure, pdb());
    EXPECT_THAT(text, HasSubstr(" CA AA1T5 "));
    EXPECT_THAT(lossesOf(structure, pdb()),
                Contains("Numbers that are too large for their columns are written with letters, "
                         "which not all programs understand."));
}

TEST(StructureWriter, WhatNoFileGetsIsSaid)
{
    StructureRecord structure = small();
    const std::string always = "There are no waters, other positions of atoms, occupancies, "
                               "temperature factors or crystal data in the file.";
    EXPECT_THAT(lossesOf(structure, pdb()),
                ElementsAre(always, "The places of atoms are rounded to 0.001 Angstrom."));
    EXPECT_THAT(lossesOf(structure, mmcif()), ElementsAre(always));
    ElementRecord helix;
    helix.name = "1";
    helix.chain = "A";
    helix.first = helix.last = structure.chains[0].residues[0].number;
    structure.elements = {helix};
    EXPECT_THAT(lossesOf(structure, mmcif()),
                ElementsAre(always, "The names of helices and strands are changed: the file counts "
                                    "them."));
    structure.elements[0].name = "H1";
    EXPECT_THAT(lossesOf(structure, mmcif()), ElementsAre(always));
    structure.elements.clear();
    structure.models = 38;
    ElementRecord turn;
    turn.type = 'T';
    turn.chain = "A";
    turn.first = turn.last = structure.chains[0].residues[0].number;
    structure.elements.push_back(turn);
    EXPECT_THAT(lossesOf(structure, mmcif()),
                ElementsAre(always, "Only the first of 38 models is written.",
                            "1 turn is left out: the file has helices and strands only."));
    EXPECT_THAT(writtenAs(structure, pdb()), HasSubstr("ATOM"));
}

TEST(StructureWriter, AStructureWithoutAtomsIsNotWritten)
{
    EXPECT_EQ(writtenAs(StructureRecord(), pdb()),
              "x.pdb: There is nothing to write: the structure has no atoms.");
}

TEST(StructureWriter, AStructureIsNoAlignment)
{
    EXPECT_EQ(complaintOf(checkWritable(small(), {FileFormat::Clustal})),
              "A structure cannot be written as a Clustal file.");
}

TEST(StructureWriter, AnElementWithoutItsEndsIsLeftOut)
{
    StructureRecord structure = small();
    ElementRecord helix;
    helix.chain = "A";
    helix.first = SequenceNumber("12B");
    helix.last = SequenceNumber("13");
    structure.elements.push_back(helix);
    EXPECT_THAT(writtenAs(structure, pdb()), Not(HasSubstr("HELIX")));
    EXPECT_THAT(writtenAs(structure, mmcif()), Not(HasSubstr("HELX")));
    EXPECT_THAT(lossesOf(structure, pdb()),
                Contains("1 helix or strand is left out: the residues at the ends are not there."));
}

TEST(StructureWriter, EveryKindOfDifferenceIsFound)
{
    const StructureRecord structure = small();
    const auto differenceTo = [&](const StructureRecord &changed) {
        return complaintOf(checkSame(structure, changed, FileFormat::Pdb));
    };
    EXPECT_EQ(differenceTo(structure), "");
    EXPECT_EQ(differenceTo(StructureRecord()), "it has 0 chains instead of 1");
    StructureRecord changed = structure;
    changed.chains[0].name = "B";
    EXPECT_EQ(differenceTo(changed), "chain \"A\" was read as \"B\"");
    changed = structure;
    changed.chains[0].residues.pop_back();
    EXPECT_EQ(differenceTo(changed), "chain \"A\" has 1 residues instead of 2");
    changed = structure;
    changed.chains[0].residues[0].number = SequenceNumber("12");
    EXPECT_EQ(differenceTo(changed), "GLY 12B of chain \"A\" was read as GLY 12");
    changed = structure;
    changed.chains[0].residues[0].atoms.pop_back();
    EXPECT_EQ(differenceTo(changed), "GLY 12B of chain \"A\" has 1 atoms instead of 2");
    changed = structure;
    changed.chains[0].residues[0].atoms[1].element = "CA";
    EXPECT_EQ(differenceTo(changed), "GLY 12B of chain \"A\" has its atom CA of another element");
    changed = structure;
    changed.chains[0].residues[0].atoms[1].position = Vertex(2.501F, 2.25F, -0.125F);
    EXPECT_EQ(differenceTo(changed), "GLY 12B of chain \"A\" has its atom CA at another place");
    changed.chains[0].residues[0].atoms[1].position = Vertex(2.5004F, 2.25F, -0.125F);
    EXPECT_EQ(differenceTo(changed), "");
    changed = structure;
    changed.elements.emplace_back();
    EXPECT_EQ(differenceTo(changed), "its helices and strands differ");
}

} // namespace StructureWriterTest
} // namespace TAMBO::formats
