// SPDX-License-Identifier: GPL-3.0-or-later
// Every structure file of tests/data against what is known about it.
#include "TestFiles.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <sstream>

namespace TAMBO::formats {
namespace StructureFactsTest {

struct Observed
{
    std::vector<const ResidueRecord *> residues;
    unsigned insertionCodes = 0;
    unsigned jumps = 0;
    std::set<std::string> unusualNames;
};

Observed observe(const ChainRecord &chain)
{
    static const std::set<std::string> usual = {"ALA", "ARG", "ASN", "ASP", "CYS", "GLN", "GLU",
                                                "GLY", "HIS", "ILE", "LEU", "LYS", "MET", "PHE",
                                                "PRO", "SER", "THR", "TRP", "TYR", "VAL"};
    Observed observed;
    for (const ResidueRecord &residue : chain.residues) {
        if (!hasAlphaCarbon(residue))
            continue;
        EXPECT_TRUE(residue.isAminoAcid) << residue.number.getValue();
        if (!observed.residues.empty() &&
            residue.number.number() - observed.residues.back()->number.number() > 1)
            ++observed.jumps;
        observed.insertionCodes += residue.number.insertionCode() == ' ' ? 0 : 1;
        if (usual.count(residue.typeName) == 0)
            observed.unusualNames.insert(residue.typeName);
        observed.residues.push_back(&residue);
    }
    return observed;
}

std::string joined(const std::set<std::string> &names)
{
    std::string text;
    for (const std::string &name : names)
        text += (text.empty() ? "" : ",") + name;
    return text;
}

void expectFacts(const Fact &fact, const StructureRecord &structure)
{
    EXPECT_EQ(std::to_string(structure.models), fact.at("models"));
    const std::string name = fact.at("chain") == "(blank)" ? "" : fact.at("chain");
    const auto chain =
        std::find_if(structure.chains.begin(), structure.chains.end(),
                     [&](const ChainRecord &candidate) { return candidate.name == name; });
    ASSERT_NE(chain, structure.chains.end());
    const Observed observed = observe(*chain);
    ASSERT_FALSE(observed.residues.empty());
    EXPECT_EQ(std::to_string(observed.residues.size()), fact.at("residues_with_ca"));
    EXPECT_EQ(observed.residues.front()->number.getValue(), fact.at("first_number"));
    EXPECT_EQ(observed.residues.back()->number.getValue(), fact.at("last_number"));
    EXPECT_EQ(std::to_string(observed.insertionCodes), fact.at("residues_with_insertion_code"));
    EXPECT_EQ(std::to_string(observed.jumps), fact.at("numbering_jumps"));
    EXPECT_EQ(joined(observed.unusualNames), fact.at("nonstandard_names"));
    EXPECT_EQ(sequenceOf(*chain), fact.at("one_letter_sequence"));
}

TEST(StructureFacts, EveryStructureFileIsReadAsItIs)
{
    std::map<std::string, std::vector<Fact>> byFile;
    for (const Fact &fact : facts("facts_structures.tsv"))
        byFile[fact.at("file")].push_back(fact);
    EXPECT_EQ(byFile.size(), 63U);
    for (const auto &[file, chains] : byFile) {
        SCOPED_TRACE(file);
        const FileContents contents = contentsOf(dataFile(file));
        EXPECT_EQ(contents.format, file.find(".cif") == std::string::npos ? "pdb" : "mmcif");
        EXPECT_TRUE(contents.alignments.empty());
        ASSERT_EQ(contents.structures.size(), 1U);
        const StructureRecord &structure = contents.structures.front();
        const auto withCarbons =
            std::count_if(structure.chains.begin(), structure.chains.end(),
                          [](const ChainRecord &chain) { return !sequenceOf(chain).empty(); });
        EXPECT_EQ(static_cast<std::size_t>(withCarbons), chains.size());
        for (const Fact &fact : chains) {
            SCOPED_TRACE("chain " + fact.at("chain"));
            expectFacts(fact, structure);
        }
    }
}

struct Outline
{
    std::string file;
    unsigned long models;
    // Chain by chain: its name and how many groups it has.
    std::string chains;
};

TEST(StructureFacts, FilesWithoutAlphaCarbonsAreReadToo)
{
    const std::vector<Outline> outlines = {
        {"malformed/structures/ions_only.pdb", 1, "A 2"},
        {"malformed/structures/short_lines_no_chain.pdb", 1, " 1"},
        // Nothing but water.
        {"malformed/structures/five_digit_residue_numbers.pdb", 1, ""},
        {"malformed/structures/incomplete_lines.pdb", 2, "A 3"},
        {"malformed/structures/models_of_unequal_size_1.pdb", 2, "A 1"},
        {"structures/quoting_difficult.cif", 1, "B 1"},
    };
    for (const Outline &outline : outlines) {
        SCOPED_TRACE(outline.file);
        const FileContents contents = contentsOf(dataFile(outline.file));
        ASSERT_EQ(contents.structures.size(), 1U);
        const StructureRecord &structure = contents.structures.front();
        EXPECT_EQ(structure.models, outline.models);
        std::string chains;
        for (const ChainRecord &chain : structure.chains) {
            EXPECT_EQ(sequenceOf(chain), "");
            chains += chain.name + ' ' + std::to_string(chain.residues.size());
        }
        EXPECT_EQ(chains, outline.chains);
    }
}

TEST(StructureFacts, DefectiveFilesGiveOneClearMessage)
{
    const std::string folder = "malformed/structures/";
    const std::map<std::string, std::string> messages = {
        {"empty_file.pdb", "empty_file.pdb: is empty"},
        {"unterminated_dataitem.cif",
         "unterminated_dataitem.cif:1: expected a data name, \"loop_\" or \"data_\", found "
         "\"data-item\""},
        {"multiline_invalid_ident.cif",
         "multiline_invalid_ident.cif:1: expected a data name, \"loop_\" or \"data_\", found "
         "\"multi value data-item\""},
        {"missing_data.cif",
         "missing_data.cif: begins with \"this file has no 'data_' tag.\"; " + kKnownFormats},
        {"broken_data.cif", "broken_data.cif: begins with \"d lines starting with a 'd' kicked the "
                            "p...\"; " +
                                kKnownFormats},
    };
    for (const auto &[file, message] : messages)
        EXPECT_EQ(messageOf(dataFile(folder + file)), message);
}

TEST(StructureFacts, StructuresAreNamedAfterTheirFiles)
{
    const std::map<std::string, std::string> names = {
        {"structures/missing_residues_2vqc.cif.gz", "missing_residues_2vqc"},
        {"structures/old_style_ca_only_1gdr.ent", "old_style_ca_only_1gdr"},
        {"families/cytochrome_c/d1yeb__.pdb.gz", "d1yeb__"},
        {"families/g6pd/6e07_fit.pdb", "6e07_fit"},
    };
    for (const auto &[file, name] : names)
        EXPECT_EQ(contentsOf(dataFile(file)).structures.at(0).name, name);
}

// The archive's two formats of one entry hold the same molecule.
TEST(StructureFacts, PdbAndMmcifOfOneEntryAgree)
{
    const std::vector<std::pair<std::string, std::string>> pairs = {
        {"selenomethionine_1a8o.pdb", "selenomethionine_1a8o.cif"},
        {"insertion_codes_1dix.pdb", "insertion_codes_1dix.cif"},
        {"lysozyme_1aki.pdb", "lysozyme_1aki.cif"},
        {"missing_residues_2vqc.pdb", "missing_residues_2vqc.cif.gz"},
        {"model_written_by_rosetta.pdb", "model_written_by_rosetta.cif"},
    };
    for (const auto &[pdb, mmcif] : pairs) {
        SCOPED_TRACE(pdb);
        const StructureRecord one = contentsOf(dataFile("structures/" + pdb)).structures.at(0);
        const StructureRecord other = contentsOf(dataFile("structures/" + mmcif)).structures.at(0);
        ASSERT_EQ(one.chains.size(), other.chains.size());
        for (std::size_t c = 0; c < one.chains.size(); ++c) {
            const std::vector<ResidueRecord> &residues = one.chains[c].residues;
            ASSERT_EQ(residues.size(), other.chains[c].residues.size());
            for (std::size_t r = 0; r < residues.size(); ++r) {
                const ResidueRecord &same = other.chains[c].residues[r];
                EXPECT_EQ(residues[r].number, same.number);
                EXPECT_EQ(residues[r].typeName, same.typeName);
                ASSERT_EQ(residues[r].atoms.size(), same.atoms.size());
                for (std::size_t a = 0; a < same.atoms.size(); ++a) {
                    EXPECT_EQ(residues[r].atoms[a].name, same.atoms[a].name);
                    EXPECT_EQ(residues[r].atoms[a].element, same.atoms[a].element);
                    EXPECT_NEAR(residues[r].atoms[a].position.x(), same.atoms[a].position.x(),
                                0.001);
                }
            }
        }
        ASSERT_EQ(one.elements.size(), other.elements.size());
        for (const ElementRecord &element : one.elements)
            EXPECT_TRUE(std::any_of(other.elements.begin(), other.elements.end(),
                                    [&](const ElementRecord &same) {
                                        return element.type == same.type &&
                                               element.chain == same.chain &&
                                               element.first == same.first &&
                                               element.last == same.last;
                                    }))
                << element.name;
    }
}

} // namespace StructureFactsTest
} // namespace TAMBO::formats
