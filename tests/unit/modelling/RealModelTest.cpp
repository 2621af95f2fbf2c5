// SPDX-License-Identifier: GPL-3.0-or-later
// Models that the real engine builds on real templates; with the environment variable
// TAMBO_ALL_MODELS on every template of the families.
#include "ModellingInput.h"

#include "FileReader.h"
#include "JobRecord.h"
#include "ModelScores.h"
#include "ModellingFolder.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <fstream>
#include <optional>

namespace RealModelTest {

using TAMBO::ChainRecord;
using TAMBO::ResidueRecord;
using TAMBO::RowRecord;

// The rows of a family's alignment that make a job.
struct Job
{
    const char *folder;
    const char *alignment;
    const char *templateName;
    const char *structure;
    const char *targetName;
    bool isQuick;
};

constexpr Job kJobs[] = {
    {"g6pd", "g6pd_templates_and_target.ali", "6e07B", "6e07_fit.pdb", "P11413", true},
    {"g6pd", "g6pd_templates_and_target.ali", "6e08L", "6e08_fit.pdb", "P11413", false},
    {"g6pd", "g6pd_templates_and_target.ali", "7snfA", "7snf_fit.pdb", "P11413", false},
    {"g6pd", "g6pd_templates_and_target.ali", "7sniA", "7sni_fit.pdb", "P11413", false},
    {"serine_proteases", "serine_proteases.ali", "1A0J_A", "1A0J_A_superposed.pdb", "1PPF_E", true},
    {"serine_proteases", "serine_proteases.ali", "1XXD_A", "1XXD_A_superposed.pdb", "1ABI_H",
     false}};

// Two unless all are asked for: each takes several seconds.
std::vector<Job> jobs()
{
    std::vector<Job> chosen(std::begin(kJobs), std::end(kJobs));
    if (std::getenv("TAMBO_ALL_MODELS") == nullptr)
        std::erase_if(chosen, [](const Job &job) { return !job.isQuick; });
    return chosen;
}

void PrintTo(const Job &job, std::ostream *stream)
{
    *stream << job.targetName << " on " << job.templateName;
}

class RealModel : public ModellingFolder, public testing::WithParamInterface<Job>
{
};

std::optional<TAMBO::Vertex> place(const ResidueRecord &residue)
{
    const auto atom = std::ranges::find(residue.atoms, "CA", &TAMBO::AtomRecord::name);
    return atom == residue.atoms.end() ? std::nullopt : std::optional(atom->position);
}

std::string lettersOf(const std::vector<ResidueRecord> &residues)
{
    std::string letters;
    for (const ResidueRecord &residue : residues)
        letters += residue.letter;
    return letters;
}

double distance(const TAMBO::Vertex &a, const TAMBO::Vertex &b)
{
    return std::hypot(double(a.x() - b.x()), double(a.y() - b.y()), double(a.z() - b.z()));
}

const RowRecord &rowCalled(const TAMBO::AlignmentRecord &alignment, const std::string &name)
{
    return *std::ranges::find(alignment.rows, name, &RowRecord::name);
}

TEST_P(RealModel, HoldsTheTargetBetweenTheTemplatesEndsInItsPlace)
{
    const Job &job = GetParam();
    const std::filesystem::path folder =
        std::filesystem::path(TEST_DATA_DIR) / "families" / job.folder;
    const TAMBO::FileContents family = TAMBO::readFile(folder / job.alignment).value();
    const TAMBO::AlignmentRecord &alignment = family.alignments.at(0);
    write("seq.ali", pir(rowCalled(alignment, job.templateName).sequence.text(),
                         rowCalled(alignment, job.targetName).sequence.text()));
    std::filesystem::copy_file(folder / job.structure, path() / "str.pdb");
    const auto input = kestram::readInput(path() / "seq.ali", path() / "str.pdb");
    ASSERT_TRUE(input.has_value()) << input.error().message();

    const Finished run = kestram();
    ASSERT_EQ(run.status, 0) << run.errors;
    const TAMBO::FileContents built = TAMBO::readFile(write("model.pdb", run.output)).value();
    ASSERT_EQ(built.structures.size(), 1U);
    ASSERT_EQ(built.structures[0].chains.size(), 1U);
    const std::vector<ResidueRecord> &model = built.structures[0].chains[0].residues;

    const std::string &templateRow = input.value().templateRow;
    const std::string &targetRow = input.value().targetRow;
    const std::size_t begin = templateRow.find_first_not_of('-');
    const std::size_t end = templateRow.find_last_not_of('-') + 1;
    std::string expected = targetRow.substr(begin, end - begin);
    std::erase(expected, '-');
    EXPECT_EQ(lettersOf(model), expected);
    for (std::size_t i = 1; i < model.size(); ++i)
        EXPECT_EQ(model[i].number.number(), model[i - 1].number.number() + 1);

    double sum = 0;
    int count = 0;
    std::size_t ofTemplate = 0;
    std::size_t ofModel = 0;
    for (std::size_t col = begin; col < end && ofModel < model.size(); ++col) {
        const bool isTemplate = templateRow[col] != '-';
        const bool isTarget = targetRow[col] != '-';
        if (isTemplate && isTarget) {
            const auto there = place(input.value().residues[ofTemplate]);
            const auto here = place(model[ofModel]);
            ASSERT_TRUE(there && here);
            sum += distance(*there, *here);
            ++count;
        }
        ofTemplate += isTemplate ? 1 : 0;
        ofModel += isTarget ? 1 : 0;
    }
    ASSERT_GT(count, 100);
    EXPECT_LT(sum / count, 1.0);
    std::printf("%s on %s: %zu residues, mean CA distance %.3f over %d columns\n", job.targetName,
                job.templateName, model.size(), sum / count, count);
}

INSTANTIATE_TEST_SUITE_P(Families, RealModel, testing::ValuesIn(jobs()), [](const auto &made) {
    return std::string(made.param.targetName) + "_on_" + made.param.templateName;
});

using RealJob = ModellingFolder;

// The first residues of a chain, as its file has them.
std::string firstResidues(const std::filesystem::path &file, std::size_t count)
{
    std::ifstream stream(file);
    std::string text;
    std::string last;
    for (std::string line; std::getline(stream, line);) {
        if (!line.starts_with("ATOM"))
            continue;
        // Its name, chain and number.
        if (line.substr(17, 10) != last && count-- == 0)
            break;
        last = line.substr(17, 10);
        text += line + '\n';
    }
    return text;
}

// The first quarter of two proteases takes the engine no longer than it takes to start.
TEST_F(RealJob, HasTheModelAndTheScoresThatArePrinted)
{
    const std::string known = "IVGGYECRKNSASYQASLQSG---------YHFCGGSLISSTWVVSAAHCY";
    const std::string wanted = "IVGGRRARPHAWPFMVSLQL------RGGH--FCGATLIAPNFVMSAAHCV";
    write("seq.ali", pir(known, wanted));
    write("str.pdb", firstResidues(std::filesystem::path(TEST_DATA_DIR) /
                                       "families/serine_proteases/1A0J_A_superposed.pdb",
                                   42));
    const Finished printed = kestram();
    ASSERT_EQ(printed.status, 0) << printed.errors;
    const Finished job = kestram("--job r.json model.pdb seq.ali str.pdb");
    ASSERT_EQ(job.status, 0) << job.errors;
    const kestram::JobRecord record = kestram::readJobRecord(path() / "r.json").value();
    EXPECT_EQ(TAMBO::scoreRemarks(record.residueScores) + read("model.pdb"), printed.output);
    EXPECT_EQ(record.state, kestram::JobState::Ok);
    EXPECT_EQ(record.message, "");
    EXPECT_THAT(record.engine, testing::MatchesRegex("ProMod3 [0-9.]+, OpenStructure [0-9.]+"));
    EXPECT_EQ(record.residues, 43U);
    EXPECT_EQ(record.modelled, 43U);
    EXPECT_EQ(record.gaps, 1U);
    EXPECT_EQ(record.caCount, 39U);
    EXPECT_LT(record.caRms.value(), 1.0);
    EXPECT_TRUE(record.backboneScore.has_value());
    ASSERT_EQ(record.residueScores.size(), 43U);
    EXPECT_EQ(record.residueScores.front().first, 1U);
    EXPECT_EQ(record.residueScores.back().first, 43U);
}

} // namespace RealModelTest
