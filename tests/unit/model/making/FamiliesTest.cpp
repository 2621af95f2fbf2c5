// SPDX-License-Identifier: GPL-3.0-or-later
// Real families: alignment files whose rows name the structure files beside them.
#include "unit/model/ModelFixture.h"

#include "Alignment.h"
#include "FileReader.h"
#include "RecordMaker.h"

#include <gmock/gmock.h>

#include <array>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>

using testing::ElementsAre;
using testing::IsEmpty;

namespace FamiliesTest {

namespace fs = std::filesystem;

const fs::path kFamilies = fs::path(TEST_DATA_DIR) / "families";

class FamiliesTest : public ModelFixture
{
protected:
    static TAMBO::Structure *load(const fs::path &file)
    {
        auto contents = TAMBO::readFile(kFamilies / file);
        EXPECT_TRUE(contents) << (contents ? "" : contents.error().message());
        if (!contents || contents->structures.empty())
            return nullptr;
        return TAMBO::ObjectFactory::adopt(std::move(contents->structures.front()));
    }
    static TAMBO::Alignment *open(const fs::path &file)
    {
        auto contents = TAMBO::readFile(file);
        EXPECT_TRUE(contents) << (contents ? "" : contents.error().message());
        if (!contents || contents->alignments.empty())
            return nullptr;
        return TAMBO::ObjectFactory::adopt(std::move(contents->alignments.front()));
    }

    // The spread of the CA atoms of a column: their number, the root mean square distance from
    // their centroid.
    static std::pair<int, double> spread(const TAMBO::Alignment &alignment, unsigned long column)
    {
        std::vector<TAMBO::Vertex> places;
        for (const TAMBO::Compound *residue : alignment.getCol(column)) {
            if (residue != nullptr && residue->Position().isDefined())
                places.push_back(residue->Position());
        }
        std::array<double, 3> centre{};
        for (const TAMBO::Vertex &place : places) {
            for (std::size_t i = 0; i < 3; ++i)
                centre[i] += double(place.coordinates()[i]) / double(places.size());
        }
        double sum = 0;
        for (const TAMBO::Vertex &place : places) {
            for (std::size_t i = 0; i < 3; ++i)
                sum += std::pow(double(place.coordinates()[i]) - centre[i], 2);
        }
        return {int(places.size()), places.empty() ? 0 : std::sqrt(sum / double(places.size()))};
    }

    static void expectSpread(const TAMBO::Alignment &alignment, const fs::path &table)
    {
        std::ifstream in(kFamilies / table);
        std::string line;
        std::getline(in, line);
        unsigned long column = 0;
        while (std::getline(in, line)) {
            std::istringstream fields(line);
            unsigned long number = 0;
            int count = 0;
            double rms = 0;
            fields >> number >> count;
            const bool hasSpread = bool(fields >> rms);
            const auto [found, foundRms] = spread(alignment, column);
            ASSERT_EQ(number, column + 1);
            ASSERT_EQ(found, count) << "column " << number;
            if (hasSpread) {
                ASSERT_NEAR(foundRms, rms, 0.001) << "column " << number;
            }
            ++column;
        }
        EXPECT_EQ(alignment.width(), column);
    }
};

// "name letters" lines in blocks.
std::vector<TAMBO::RowRecord> readBlocks(const fs::path &file)
{
    std::vector<TAMBO::RowRecord> rows;
    std::map<std::string, std::size_t> places;
    std::ifstream in(file);
    std::string line;
    std::getline(in, line);
    while (std::getline(in, line)) {
        if (line.empty() || line.front() == ' ')
            continue;
        std::istringstream fields(line);
        std::string name;
        std::string text;
        fields >> name >> text;
        const auto [place, isNew] = places.emplace(name, rows.size());
        if (isNew) {
            rows.emplace_back();
            rows.back().name = name;
        }
        rows[place->second].sequence.append(text);
    }
    return rows;
}

TEST_F(FamiliesTest, DehydrogenasesShowTheirChainsWithCountedRanges)
{
    std::vector<TAMBO::Structure *> structures;
    for (const char *file : {"6e07_fit.pdb", "6e08_fit.pdb", "7snf_fit.pdb", "7sni_fit.pdb"})
        structures.push_back(load(fs::path("g6pd") / file));
    const TAMBO::Alignment *const alignment = open(kFamilies / "g6pd/g6pd_templates.ali");
    ASSERT_NE(alignment, nullptr);
    ASSERT_EQ(alignment->height(), 4U);
    for (unsigned long row = 0; row < 4; ++row)
        EXPECT_EQ(alignment->GetSeq(row)->Parent(), structures[row]) << row;
    EXPECT_EQ(alignment->GetSeqName(0), "6e07B");
    EXPECT_EQ(alignment->GetSeqName(3), "7sniA");
    expectSpread(*alignment, "g6pd/ca_spread_per_column.tsv");
    EXPECT_THAT(log, IsEmpty());
}

TEST_F(FamiliesTest, TargetOfTheDehydrogenasesIsASequenceOfItsOwn)
{
    TAMBO::Structure *const loaded = load("g6pd/7snf_fit.pdb");
    const TAMBO::Alignment *const alignment =
        open(kFamilies / "g6pd/g6pd_templates_and_target.ali");
    ASSERT_NE(alignment, nullptr);
    ASSERT_EQ(alignment->height(), 5U);
    EXPECT_EQ(alignment->GetSeq(2)->Parent(), loaded);
    for (const unsigned long row : {0UL, 1UL, 3UL, 4UL})
        EXPECT_EQ(alignment->GetSeq(row)->Parent(), &space()) << row;
    EXPECT_EQ(alignment->GetSeqName(4), "P11413");
    // Chain A of that structure has number 27 first; the numbers of an absent one come from the
    // file.
    EXPECT_EQ(TAMBO::Peptide::from(alignment->GetSeq(2))->number(0).getValue(), "27");
    EXPECT_EQ(TAMBO::Peptide::from(alignment->GetSeq(0))->number(0).getValue(), "29");
    EXPECT_EQ(TAMBO::Peptide::from(alignment->GetSeq(4))->number(0).getValue(), "1");
}

TEST_F(FamiliesTest, ProteasesShowTheirChainsThroughInsertionCodesAndJumps)
{
    for (const char *name : {"1A0J_A", "1ABI_H", "1AU8_A", "1BRU_P", "1PPF_E", "1XXD_A"})
        ASSERT_NE(load(fs::path("serine_proteases") / (std::string(name) + "_superposed.pdb")),
                  nullptr);
    const TAMBO::Alignment *const alignment =
        open(kFamilies / "serine_proteases/serine_proteases.ali");
    ASSERT_NE(alignment, nullptr);
    ASSERT_EQ(alignment->height(), 6U);
    for (unsigned long row = 0; row < 6; ++row)
        EXPECT_NE(alignment->GetSeq(row)->Parent(), &space()) << alignment->GetSeqName(row);
    expectSpread(*alignment, "serine_proteases/ca_spread_per_column.tsv");
    EXPECT_THAT(log, IsEmpty());
}

TEST_F(FamiliesTest, CytochromesAreTiedByTheFileNamesOfTheirRows)
{
    TAMBO::AlignmentRecord record;
    record.name = "cytochrome_c";
    record.rows = readBlocks(kFamilies / "cytochrome_c/cytochrome_c.aln");
    ASSERT_EQ(record.rows.size(), 10U);
    for (const TAMBO::RowRecord &row : record.rows)
        ASSERT_NE(load(fs::path("cytochrome_c") / (row.name + ".gz")), nullptr);
    const TAMBO::Alignment *const alignment = TAMBO::ObjectFactory::adopt(std::move(record));
    for (unsigned long row = 0; row < 10; ++row) {
        const TAMBO::Peptide &sequence = *TAMBO::Peptide::from(alignment->GetSeq(row));
        // One row has X where the coordinates have a trimethylated lysine.
        const bool isModified = alignment->GetSeqName(row) == "d1kyow_.pdb";
        EXPECT_EQ(sequence.hasTies(), isModified) << alignment->GetSeqName(row);
        for (std::size_t i = 0; i < sequence.residueCount(); ++i)
            ASSERT_TRUE(sequence.position(i).isDefined()) << sequence.GetFQName() << ' ' << i;
        if (isModified) {
            EXPECT_EQ(sequence.letter(76), 'X');
            EXPECT_EQ(sequence.typeName(76), "M3L");
        }
    }
    EXPECT_THAT(log, ElementsAre("\"d1kyow_.pdb\": different in the coordinates of "
                                 "d1kyow_: X77 is M3L 77."));
}

TEST_F(FamiliesTest, AntibodyRowRunsOverBothChainsOfItsStructure)
{
    const fs::path file = fs::path(TEST_DATA_DIR) / "alignments/pir/antibody_two_chains.ali";
    auto contents = TAMBO::readFile(file);
    ASSERT_TRUE(contents);
    const TAMBO::RowRecord row = contents->alignments.front().rows.front();
    ASSERT_EQ(row.chainBreaks.size(), 1U);
    const std::string heavy = row.sequence.letters.substr(0, row.chainBreaks[0].letters);
    const std::string light = row.sequence.letters.substr(row.chainBreaks[0].letters);
    TAMBO::Structure &loaded = structure("newpdb", {{"H", heavy}, {"L", light}});

    const TAMBO::Alignment *const alignment = open(file);

    const TAMBO::Peptide &sequence = *TAMBO::Peptide::from(alignment->GetSeq(0));
    EXPECT_EQ(sequence.resolve(0), (TAMBO::ResiduePlace{loaded.chain(0), 0}));
    EXPECT_EQ(sequence.resolve(heavy.size()), (TAMBO::ResiduePlace{loaded.chain(1), 0}));
    for (std::size_t i = 0; i < sequence.residueCount(); ++i)
        ASSERT_TRUE(sequence.position(i).isDefined()) << i;
    EXPECT_FALSE(TAMBO::Peptide::from(alignment->GetSeq(1))->hasTies());
    EXPECT_THAT(log, IsEmpty());
    EXPECT_EQ(TAMBO::makeRecord(*alignment).rows[0].chainBreaks, row.chainBreaks);
}

TEST_F(FamiliesTest, EveryStructureFileBecomesATreeThatAgreesWithItself)
{
    std::size_t count = 0;
    for (const auto &entry : fs::directory_iterator(fs::path(TEST_DATA_DIR) / "structures")) {
        auto contents = TAMBO::readFile(entry.path());
        if (!contents || contents->structures.empty())
            continue;
        std::size_t expectedAtoms = 0;
        std::size_t expectedResidues = 0;
        for (const TAMBO::ChainRecord &chain : contents->structures.front().chains) {
            for (const TAMBO::ResidueRecord &residue : chain.residues) {
                expectedAtoms += residue.atoms.size();
                expectedResidues += residue.isAminoAcid ? 1 : 0;
            }
        }
        TAMBO::Structure *const loaded =
            TAMBO::ObjectFactory::adopt(std::move(contents->structures.front()));
        std::vector<TAMBO::Compound *> atoms;
        TAMBO::GetAtoms(loaded, atoms, true);
        EXPECT_EQ(atoms.size(), expectedAtoms) << entry.path();
        std::vector<TAMBO::Compound *> peptides;
        TAMBO::GetPeptides(loaded, peptides, true);
        std::size_t residues = 0;
        for (TAMBO::Compound *peptide : peptides)
            residues += TAMBO::Peptide::from(peptide)->residueCount();
        EXPECT_EQ(residues, expectedResidues) << entry.path();
        for (const TAMBO::Compound *atom : atoms)
            ASSERT_EQ(atom->Parent()->Parent()->Parent(), loaded) << entry.path();
        ++count;
    }
    EXPECT_GT(count, 20U);
}

} // namespace FamiliesTest
