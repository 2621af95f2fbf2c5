// SPDX-License-Identifier: GPL-3.0-or-later
// Real families superposed. The distances expected were computed from the text of the same files
// by another program, with a singular value decomposition (Kabsch).
#include "unit/model/SuperposeFixture.h"

#include "FileReader.h"

#include <filesystem>

using namespace TAMBO;

namespace SuperposeFamiliesTest {

namespace fs = std::filesystem;

const fs::path kFamilies = fs::path(TEST_DATA_DIR) / "families";
constexpr double kPrecision = 0.0002;

struct Distances
{
    double after, before;
};

class SuperposeFamiliesTest : public SuperposeFixture
{
protected:
    static FileContents read(const fs::path &file)
    {
        auto contents = readFile(kFamilies / file);
        EXPECT_TRUE(contents) << (contents ? "" : contents.error().message());
        return contents ? std::move(contents).value() : FileContents();
    }
    static Structure &load(const fs::path &file)
    {
        return *ObjectFactory::adopt(std::move(read(file).structures.at(0)));
    }
    // The rows of an alignment file over the chains of the files that their names lead to.
    template <typename File> static Alignment &overChains(const fs::path &file, File fileOf)
    {
        const FileContents contents = read(file);
        std::vector<std::pair<Peptide *, std::string>> rows;
        for (const RowRecord &row : contents.alignments.at(0).rows) {
            Structure &structure = load(file.parent_path() / fileOf(row.name));
            std::string text = row.sequence.text();
            rows.emplace_back(structure.chain(0), std::move(text));
        }
        return alignmentOf(rows);
    }
    static void expectDistances(const Alignment &alignment, std::size_t columns,
                                const std::vector<Distances> &expected)
    {
        Rows rows;
        for (unsigned long row = 0; row < alignment.height(); ++row)
            rows.push_back(row);
        const SuperposePlan plan = superpose(alignment, rows);
        EXPECT_EQ(plan.columns, columns);
        ASSERT_EQ(plan.moves.size(), expected.size());
        for (std::size_t i = 0; i < expected.size(); ++i) {
            EXPECT_NEAR(plan.moves[i].rmsdBefore, expected[i].before, kPrecision) << i;
            EXPECT_NEAR(plan.moves[i].rmsdAfter, expected[i].after, kPrecision) << i;
            EXPECT_LE(plan.moves[i].rmsdAfter, plan.moves[i].rmsdBefore + 1e-6) << i;
        }
        // What was planned is where the atoms are now.
        for (const PlannedMove &move : superpose(alignment, rows).moves)
            EXPECT_NEAR(move.rmsdBefore, move.rmsdAfter, 1e-4);
    }
};

TEST_F(SuperposeFamiliesTest, SerineProteasesThatLieOnEachOtherComeStillNearer)
{
    for (const char *name : {"1A0J_A", "1ABI_H", "1BRU_P", "1AU8_A", "1PPF_E", "1XXD_A"})
        load(fs::path("serine_proteases") / (std::string(name) + "_superposed.pdb"));
    Alignment &alignment = *ObjectFactory::adopt(
        std::move(read("serine_proteases/serine_proteases.ali").alignments.at(0)));
    expectDistances(
        alignment, 169,
        {{0.8028, 0.8225}, {1.0372, 1.1488}, {0.8949, 0.9219}, {1.0701, 1.1262}, {1.1386, 1.1552}});
}

TEST_F(SuperposeFamiliesTest, DehydrogenasesThatLieOnEachOtherStayThere)
{
    for (const char *name : {"6e07_fit", "6e08_fit", "7snf_fit", "7sni_fit"})
        load(fs::path("g6pd") / (std::string(name) + ".pdb"));
    Alignment &alignment =
        *ObjectFactory::adopt(std::move(read("g6pd/g6pd_templates.ali").alignments.at(0)));
    expectDistances(alignment, 467, {{0.5909, 0.5915}, {1.8732, 1.8732}, {0.6068, 0.6072}});
}

TEST_F(SuperposeFamiliesTest, CytochromesAreBroughtTogetherFromTheirCrystals)
{
    const Alignment &alignment = overChains("cytochrome_c/cytochrome_c.aln",
                                            [](const std::string &name) { return name + ".gz"; });
    expectDistances(alignment, 103,
                    {{0.3802, 0.5462},
                     {0.3728, 0.4795},
                     {0.3947, 0.4380},
                     {0.3742, 0.4596},
                     {0.7454, 97.1139},
                     {0.4875, 47.5659},
                     {1.2614, 25.9950},
                     {0.7725, 70.5999},
                     {0.7144, 30.5927}});
}

// By the same other program, which leaves out pairs by the same rule.
TEST_F(SuperposeFamiliesTest, GlobinsLieOnEachOtherByWhatIsLeftOfThem)
{
    struct Core
    {
        std::size_t pairs;
        double rmsd, whole;
    };
    const Alignment &alignment =
        overChains("globins/globins_structural_alignment_a.fasta",
                   [](const std::string &name) { return "globin_" + name + ".pdb"; });
    const std::vector<Core> ofTwo = {
        {100, 1.1307, 2.1862}, {95, 1.0063, 2.8151}, {101, 1.1281, 2.2062}, {104, 1.1922, 1.9564},
        {78, 1.0775, 2.4796},  {84, 1.1307, 2.4582}, {80, 1.0953, 2.4356},  {81, 1.0528, 3.2414}};
    const std::vector<Core> ofOne = {
        {52, 0.6177, 2.4219}, {55, 0.5787, 2.9944}, {51, 0.5341, 2.5330}, {50, 0.6793, 2.0931},
        {47, 0.5759, 2.5376}, {45, 0.6787, 2.5815}, {47, 0.6008, 2.4900}, {46, 0.6109, 3.3379}};
    for (const auto &[cutoff, expected] : {std::pair(2.0, ofTwo), std::pair(1.0, ofOne)}) {
        const auto found = planSuperposition(alignment, {0, 1, 2, 3, 4, 5, 6, 7, 8},
                                             {0, FitChoice::kAllColumns, cutoff});
        ASSERT_TRUE(found);
        const SuperposePlan &plan = found.value();
        EXPECT_EQ(plan.columns, 129U);
        ASSERT_EQ(plan.moves.size(), expected.size());
        for (std::size_t i = 0; i < expected.size(); ++i) {
            SCOPED_TRACE(plan.moves[i].name);
            EXPECT_EQ(plan.moves[i].corePairs, expected[i].pairs);
            EXPECT_NEAR(plan.moves[i].rmsdCore, expected[i].rmsd, kPrecision);
            EXPECT_NEAR(plan.moves[i].rmsdAfter, expected[i].whole, kPrecision);
        }
    }
}

TEST_F(SuperposeFamiliesTest, GlobinsAreBroughtTogetherFromTheirCrystals)
{
    const Alignment &alignment =
        overChains("globins/globins_structural_alignment_a.fasta",
                   [](const std::string &name) { return "globin_" + name + ".pdb"; });
    expectDistances(alignment, 129,
                    {{2.0452, 62.1952},
                     {2.5626, 72.2610},
                     {2.0637, 98.2344},
                     {1.9165, 48.3161},
                     {2.3658, 51.1217},
                     {2.2503, 53.3837},
                     {2.3361, 48.1716},
                     {3.0558, 68.1444}});
}

} // namespace SuperposeFamiliesTest
