// SPDX-License-Identifier: GPL-3.0-or-later
// Alignments and the coordinates of their rows belong together.
#include "TestFiles.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>

namespace TAMBO::formats {
namespace FamilyTest {

const ChainRecord *chainOf(const StructureRecord &structure, const std::string &name)
{
    for (const ChainRecord &chain : structure.chains)
        if (chain.name == name)
            return &chain;
    return nullptr;
}

const std::vector<std::string> kLinkedAlignments = {
    "families/g6pd/g6pd_templates.ali", "families/g6pd/g6pd_templates_and_target.ali",
    "families/g6pd/g6pd_templates_and_mutant_target.ali",
    "families/serine_proteases/serine_proteases.ali"};

TEST(Family, EveryRowThatNamesAStructureHasThatChainsSequence)
{
    unsigned tested = 0;
    for (const std::string &file : kLinkedAlignments) {
        const AlignmentRecord alignment = contentsOf(dataFile(file)).alignments.at(0);
        for (const RowRecord &row : alignment.rows) {
            if (row.link->structure.empty())
                continue;
            SCOPED_TRACE(file + ", row " + row.name);
            const StructureRecord structure =
                contentsOf(dataFile(file).parent_path() / row.link->structure).structures.at(0);
            const ChainRecord *chain = chainOf(structure, row.link->chain);
            ASSERT_NE(chain, nullptr);
            EXPECT_EQ(row.sequence.letters, sequenceOf(*chain));
            EXPECT_EQ(row.link->lastChain, row.link->chain);
            EXPECT_EQ(row.link->first, chain->residues.front().number.getValue());
            if (row.link->last.front() == '+')
                EXPECT_EQ(row.link->last, '+' + std::to_string(row.sequence.letters.size()));
            else
                EXPECT_EQ(row.link->last, chain->residues.back().number.getValue());
            ++tested;
        }
    }
    EXPECT_EQ(tested, 18U);
}

TEST(Family, RowLengthsOfTheDehydrogenasesAreKnown)
{
    const AlignmentRecord alignment =
        contentsOf(dataFile("families/g6pd/g6pd_templates.ali")).alignments.at(0);
    const std::vector<std::pair<std::string, std::size_t>> lengths = {
        {"6e07B", 485}, {"6e08L", 486}, {"7snfA", 469}, {"7sniA", 488}};
    ASSERT_EQ(alignment.rows.size(), lengths.size());
    for (std::size_t i = 0; i < lengths.size(); ++i) {
        EXPECT_EQ(alignment.rows[i].name, lengths[i].first);
        EXPECT_EQ(alignment.rows[i].sequence.letters.size(), lengths[i].second);
    }
}

TEST(Family, GlobinRowsEqualTheSequencesOfTheirStructures)
{
    for (const char *aligner : {"a", "b"}) {
        const AlignmentRecord alignment =
            contentsOf(dataFile(std::string("families/globins/globins_structural_alignment_") +
                                aligner + ".fasta"))
                .alignments.at(0);
        for (const RowRecord &row : alignment.rows) {
            SCOPED_TRACE(row.name);
            const StructureRecord structure =
                contentsOf(dataFile("families/globins/globin_" + row.name + ".pdb"))
                    .structures.at(0);
            ASSERT_EQ(structure.chains.size(), 1U);
            EXPECT_EQ(row.sequence.letters, sequenceOf(structure.chains[0]));
        }
    }
}

TEST(Family, PirAndFastaOfOneAlignmentAgree)
{
    const AlignmentRecord pir =
        contentsOf(dataFile("families/serine_proteases/serine_proteases.ali")).alignments.at(0);
    const AlignmentRecord fasta =
        contentsOf(dataFile("families/serine_proteases/serine_proteases.fasta")).alignments.at(0);
    EXPECT_EQ(rowNames(pir), rowNames(fasta));
    EXPECT_EQ(rowTexts(pir), rowTexts(fasta));
}

// The root mean square distance of the column's CA atoms from their centroid.
double spread(const std::vector<Vertex> &atoms)
{
    std::array<double, 3> centre{};
    for (const Vertex &atom : atoms)
        for (std::size_t i = 0; i < 3; ++i)
            centre[i] += atom.coordinates()[i] / static_cast<double>(atoms.size());
    double sum = 0;
    for (const Vertex &atom : atoms)
        for (std::size_t i = 0; i < 3; ++i)
            sum += std::pow(atom.coordinates()[i] - centre[i], 2);
    return std::sqrt(sum / static_cast<double>(atoms.size()));
}

TEST(Family, PositionsOfAlignedResiduesHaveTheKnownSpread)
{
    for (const std::string &family :
         {std::string("g6pd/g6pd_templates"), std::string("serine_proteases/serine_proteases")}) {
        const std::filesystem::path file = dataFile("families/" + family + ".ali");
        const AlignmentRecord alignment = contentsOf(file).alignments.at(0);
        std::vector<std::vector<Vertex>> columns(alignment.rows.front().sequence.width);
        for (const RowRecord &row : alignment.rows) {
            const StructureRecord structure =
                contentsOf(file.parent_path() / row.link->structure).structures.at(0);
            std::vector<Vertex> positions;
            for (const ResidueRecord &residue : chainOf(structure, row.link->chain)->residues)
                for (const AtomRecord &atom : residue.atoms)
                    if (atom.name == "CA" && atom.element == "C")
                        positions.push_back(atom.position);
            const std::string text = row.sequence.text();
            std::size_t next = 0;
            for (std::size_t column = 0; column < text.size(); ++column)
                if (text[column] != '-')
                    columns[column].push_back(positions.at(next++));
        }
        unsigned tested = 0;
        for (const Fact &fact : facts("families/" + family.substr(0, family.find('/')) +
                                      "/ca_spread_per_column.tsv")) {
            const std::string &expected = fact.at("rms_from_centroid");
            if (expected.empty())
                continue;
            const std::size_t column = std::stoul(fact.at("column")) - 1;
            ASSERT_LT(column, columns.size());
            EXPECT_NEAR(spread(columns[column]), std::stod(expected), 0.001) << fact.at("column");
            ++tested;
        }
        EXPECT_GT(tested, 200U);
    }
}

} // namespace FamilyTest
} // namespace TAMBO::formats
