// SPDX-License-Identifier: GPL-3.0-or-later
#include "StructureSet.h"

#include "FileReader.h"
#include "FileWriter.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <set>
#include <unistd.h>

namespace StructureSetTest {

using namespace TAMBO;

StructureRecord made(const std::string &name, const std::vector<std::string> &chains, float x)
{
    StructureRecord structure;
    structure.name = name;
    for (const std::string &chain : chains) {
        ChainRecord &record = structure.chains.emplace_back();
        record.name = chain;
        for (int i = 1; i <= 4; ++i) {
            ResidueRecord &residue = record.residues.emplace_back();
            residue.typeName = "ALA";
            residue.letter = 'A';
            residue.number = SequenceNumber(i);
            residue.atoms.push_back({"CA", "C", Vertex(x, float(i) * 3.8F, 0)});
        }
        structure.elements.push_back(
            {"1", 'H', chain, SequenceNumber(1), SequenceNumber(3), false});
    }
    return structure;
}

std::vector<std::string> namesOf(const StructureRecord &structure)
{
    std::vector<std::string> names;
    for (const ChainRecord &chain : structure.chains)
        names.push_back(chain.name);
    return names;
}

class OneFile : public testing::TestWithParam<FileFormat>
{
protected:
    OneFile() { std::filesystem::create_directory(m_Folder); }
    ~OneFile() override { std::filesystem::remove_all(m_Folder); }

    [[nodiscard]] std::filesystem::path file() const
    {
        return m_Folder / (GetParam() == FileFormat::Pdb ? "all.pdb" : "all.cif");
    }
    [[nodiscard]] StructureRecord readBack() const
    {
        const Result<FileContents> contents = readFile(file());
        EXPECT_TRUE(contents.has_value());
        return contents.value().structures.at(0);
    }

    std::filesystem::path m_Folder =
        std::filesystem::temp_directory_path() / ("structure-set-" + std::to_string(getpid()));
};

TEST_P(OneFile, HasTheChainsOfAllWithNamesOfTheirOwn)
{
    const std::vector<StructureRecord> all = {made("one", {"A", "B"}, 0), made("two", {"A"}, 5),
                                              made("three", {"B", "C"}, 9)};
    const MergedStructures merged = mergedChains(all, "all");
    EXPECT_EQ(namesOf(merged.whole), (std::vector<std::string>{"A", "B", "D", "E", "C"}));
    ASSERT_EQ(merged.renamed.size(), 2U);
    EXPECT_NE(merged.renamed.at(0).find(" of two becomes "), std::string::npos);
    EXPECT_NE(merged.renamed.at(1).find(" of three becomes "), std::string::npos);
    WriteOptions options;
    options.format = GetParam();
    ASSERT_TRUE(writeFile(file(), merged.whole, options).has_value());
    const StructureRecord back = readBack();
    EXPECT_EQ(namesOf(back), namesOf(merged.whole));
    EXPECT_EQ(back.elements.size(), 5U);
    EXPECT_EQ(back.chains.at(2).residues.at(0).atoms.at(0).position.coordinates()[0], 5.F);
}

TEST_P(OneFile, HasAModelOfEachWithItsOwnChains)
{
    const std::vector<StructureRecord> all = {made("one", {"A", "B"}, 0),
                                              made("two", {"A", "B"}, 5)};
    WriteOptions options;
    options.format = GetParam();
    ASSERT_TRUE(writeModels(file(), all, options).has_value());
    const StructureRecord back = readBack();
    EXPECT_EQ(back.models, 2U);
    EXPECT_EQ(namesOf(back), (std::vector<std::string>{"A", "B"}));
    ASSERT_EQ(back.furtherModels.size(), 1U);
    EXPECT_EQ(back.furtherModels.at(0).at(0)[0], 5.F);
}

TEST_P(OneFile, IsNotWrittenWhenOneOfThemCannotBe)
{
    std::vector<StructureRecord> all = {made("one", {"A"}, 0), made("two", {"A"}, 5)};
    all[1].chains[0].residues.clear();
    WriteOptions options;
    options.format = GetParam();
    const Result<void> written = writeModels(file(), all, options);
    ASSERT_FALSE(written.has_value());
    EXPECT_NE(written.error().message().find("two: "), std::string::npos);
    EXPECT_FALSE(std::filesystem::exists(file()));
}

INSTANTIATE_TEST_SUITE_P(OfSeveral, OneFile, testing::Values(FileFormat::Pdb, FileFormat::Mmcif),
                         [](const auto &info) {
                             return info.param == FileFormat::Pdb ? "Pdb" : "Mmcif";
                         });

TEST(MergedChains, HaveTwoCharactersWhenThoseOfOneAreUsedUp)
{
    std::vector<StructureRecord> all;
    for (int i = 0; i < 70; ++i)
        all.push_back(made("s" + std::to_string(i), {"A"}, float(i)));
    const std::vector<std::string> names = namesOf(mergedChains(all, "all").whole);
    EXPECT_EQ(names.at(61).size(), 1U);
    EXPECT_EQ(names.at(62).size(), 2U);
    EXPECT_EQ(std::set<std::string>(names.begin(), names.end()).size(), 70U);
}

TEST(MergedChains, OfOneNameInAStructureKeepOneName)
{
    const std::vector<StructureRecord> all = {made("one", {"A"}, 0), made("two", {"A", "A"}, 5)};
    EXPECT_EQ(namesOf(mergedChains(all, "all").whole), (std::vector<std::string>{"A", "B", "B"}));
}

} // namespace StructureSetTest
