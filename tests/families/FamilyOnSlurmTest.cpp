// SPDX-License-Identifier: GPL-3.0-or-later
// The models of a small family, by the program, the adapter and the engine: by processes of this
// computer, and by Snakemake on a Slurm node of the test's own.
#include "Command.h"
#include "SlurmNode.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <map>
#include <sstream>
#include <string>
#include <vector>

namespace FamilyOnSlurmTest {

namespace fs = std::filesystem;

// A plant protein of 46 residues, and four that are like it.
constexpr const char *kFamily = R"(>P1;crambin
structureX:crambin.pdb:1:A:46:A::::
TTCCPSIVARSNFNVCRLPGTPEALCATYTGCIIIPGATCPGDYAN*
>P1;viscotoxin
sequence:::::::::
KSCCPNTTGRNIYNACRLTGAPRPTCAKLSGCKIISGSTCPSDYPK*
>P1;purothionin
sequence:::::::::
KSCCRSTLGRNCYNLCRARGAQ-KLCAGVCRCKISSGLSCPKGFPK*
>P1;hordothionin
sequence:::::::::
KSCCRSTLGRNCYNLCRVRGAQ-KLCANACRCKLTSGLKCPSSFPK*
>P1;other purothionin
sequence:::::::::
KSCCKSTLGRNCYNLCRARGAQ-KLCANVCRCKLTSGLSCPKDFPK*
)";

// In the engine's folder, before its command.
constexpr const char *kLauncher = R"sh(#!/bin/sh
while [ -e "${0%launcher}hold" ] && grep -q TGAPRPTCAK alignment.fasta; do sleep 0.05; done
exec "$@"
)sh";

class FamilyOnSlurm : public testing::Test
{
protected:
    void SetUp() override
    {
        std::string name = (fs::temp_directory_path() / "family-XXXXXX").string();
        ASSERT_NE(mkdtemp(name.data()), nullptr);
        m_Folder = name;
        std::ofstream(m_Folder / "family.ali") << kFamily;
        fs::copy_file(TEST_DATA_DIR "/structures/altlocs_crambin_1ejg.pdb",
                      m_Folder / "crambin.pdb");
        std::ofstream(m_Folder / "launcher") << kLauncher;
        fs::permissions(m_Folder / "launcher", fs::perms::owner_all);
        setenv("KESTRAM_RUN", (m_Folder / "launcher").c_str(), 1);
        setenv("TAMBO_USER_DIR", (m_Folder / "user").c_str(), 1);
        // Snakemake asks a cluster every second then, and not every tenth.
        setenv("CI", "true", 1);
    }
    void TearDown() override
    {
        unsetenv("KESTRAM_RUN");
        fs::remove_all(m_Folder);
    }

    [[nodiscard]] const fs::path &folder() const { return m_Folder; }
    static std::string models(const std::string &words)
    {
        return "'" BUILD_DIR "/bin/tambo' models " + words;
    }

    // Of each target what stands in a column of the table.
    [[nodiscard]] std::map<std::string, std::string> column(const std::string &models,
                                                            const std::string &title) const
    {
        std::map<std::string, std::string> values;
        std::istringstream lines(contentsOf(m_Folder / models / "results.tsv"));
        std::size_t place = 0;
        for (std::string line; std::getline(lines, line);) {
            std::vector<std::string> fields;
            std::istringstream stream(line);
            for (std::string field; std::getline(stream, field, '\t');)
                fields.push_back(field);
            if (fields.at(0) == "target")
                place = std::size_t(std::ranges::find(fields, title) - fields.begin());
            else
                values[fields.at(0)] = fields.at(place);
        }
        return values;
    }
    [[nodiscard]] std::map<std::string, std::string> modelsIn(const std::string &models) const
    {
        std::map<std::string, std::string> contents;
        for (const fs::directory_entry &entry :
             fs::directory_iterator(m_Folder / models / "models"))
            if (entry.path().extension() == ".pdb")
                contents[entry.path().filename().string()] = contentsOf(entry.path());
        return contents;
    }

private:
    fs::path m_Folder;
};

TEST_F(FamilyOnSlurm, KilledModelIsMadeAnewAloneAndAllAreThoseOfAPoolToTheByte)
{
    using States = std::map<std::string, std::string>;
    const Finished pool = run(models("family.ali --out pool --pool --jobs 2"), folder());
    ASSERT_EQ(pool.status, 0) << pool.output;
    const States allWell = {{"viscotoxin", "ok"},
                            {"purothionin", "ok"},
                            {"hordothionin", "ok"},
                            {"other purothionin", "ok"}};
    EXPECT_EQ(column("pool", "state"), allWell);

    SlurmNode node(folder() / "node");
    ASSERT_TRUE(node.isReady()) << node.logs();
    node.use();
    std::ofstream(folder() / "hold").close();
    RunningCommand first(models("family.ali --out 'on Slurm' --profile slurm"), folder(),
                         folder() / "first.log");
    // Its engine waits, and the others' jobs have ended.
    const std::string held = "viscotoxin in " + (folder() / "on Slurm").string() + '\n';
    ASSERT_TRUE(waitUntil([&] {
        return fs::exists(folder() / "on Slurm/models") && modelsIn("on Slurm").size() == 3 &&
               run("squeue -h -o %j", folder()).output == held;
    })) << contentsOf(folder() / "first.log")
        << node.logs();
    const Finished cancel = run("scancel -u $(id -un)", folder());
    EXPECT_EQ(cancel.status, 0) << cancel.output;
    const Finished killed = first.wait();
    EXPECT_EQ(killed.status, 1) << killed.output;
    States oneKilled = allWell;
    oneKilled["viscotoxin"] = "killed";
    EXPECT_EQ(column("on Slurm", "state"), oneKilled) << killed.output;
    EXPECT_NE(killed.output.find("viscotoxin on crambin: killed"), std::string::npos)
        << killed.output;
    const States jobs = column("on Slurm", "job");

    fs::remove(folder() / "hold");
    const Finished second = run(models("--continue 'on Slurm' --profile slurm"), folder());
    EXPECT_EQ(second.status, 0) << second.output;
    EXPECT_EQ(column("on Slurm", "state"), allWell) << second.output;
    for (const auto &[target, job] : column("on Slurm", "job"))
        EXPECT_EQ(job != jobs.at(target), target == "viscotoxin") << target << ": " << job;
    EXPECT_EQ(modelsIn("on Slurm").size(), 4U);
    EXPECT_EQ(modelsIn("on Slurm"), modelsIn("pool"));
}

} // namespace FamilyOnSlurmTest
