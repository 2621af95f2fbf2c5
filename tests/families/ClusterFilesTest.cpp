// SPDX-License-Identifier: GPL-3.0-or-later
// What users get with a family's folder for Snakemake and Slurm, run by both, with a stand-in for
// the adapter.
#include "PreparedFolder.h"
#include "SlurmNode.h"

#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <fstream>
#include <optional>
#include <string>

namespace ClusterFilesTest {

namespace fs = std::filesystem;

constexpr const char *kHere = "snakemake -j2 --keep-going --rerun-triggers mtime";
constexpr const char *kOnSlurm = "snakemake --profile slurm";

class ClusterFiles : public testing::Test
{
protected:
    ClusterFiles()
    {
        // Snakemake asks a cluster every second then, and not every tenth.
        setenv("CI", "true", 1);
        setenv("SLURM_CONF", "/nowhere/slurm.conf", 1);
        unsetenv("SLURM_JOB_ID");
    }
};

// A cluster beside it.
class ClusterFilesOnSlurm : public ClusterFiles
{
protected:
    void SetUp() override
    {
        std::string name = (fs::temp_directory_path() / "slurm-XXXXXX").string();
        ASSERT_NE(mkdtemp(name.data()), nullptr);
        m_Folder = name;
        m_Node.emplace(m_Folder);
        ASSERT_TRUE(m_Node->isReady()) << m_Node->logs();
        m_Node->use();
    }
    void TearDown() override
    {
        m_Node.reset();
        fs::remove_all(m_Folder);
    }

    [[nodiscard]] std::string logs() const { return m_Node->logs(); }
    void stopSlurm() { m_Node->stop(); }
    [[nodiscard]] static bool isIdle() { return run("squeue -h", "/").output.empty(); }

private:
    fs::path m_Folder;
    std::optional<SlurmNode> m_Node;
};

TEST_F(ClusterFiles, OneBadTargetHoldsUpNeitherTheOthersNorTheTable)
{
    const PreparedFolder family({"P1", "P2", "P 3"});
    family.removeInput("P1");
    const Finished first = family.run(kHere);
    EXPECT_EQ(first.status, 1) << first.output;
    EXPECT_EQ(family.models(), " P 3.pdb P2.pdb") << first.output;
    EXPECT_EQ(family.table(), "P 3 ok\nP1 failed\nP2 ok\n");
    EXPECT_EQ(contentsOf(family.path() / "models/P2.pdb"), "rows of P2\nthe template\n");
    EXPECT_EQ(family.logOf("P2"), "all is well\n");
    EXPECT_NE(family.logOf("P1").find("inputs/P1.ali"), std::string::npos) << family.logOf("P1");

    family.restoreInput("P1");
    const Finished second = family.run(kHere);
    EXPECT_EQ(second.status, 0) << second.output;
    EXPECT_EQ(family.table(), "P 3 ok\nP1 ok\nP2 ok\n");
    EXPECT_EQ(family.startsOf("P1"), 2U);
    EXPECT_EQ(family.startsOf("P2"), 1U);
    EXPECT_EQ(family.startsOf("P 3"), 1U);
}

TEST_F(ClusterFiles, SecondRunInTheSameFolderIsRefused)
{
    const PreparedFolder family({"P1"});
    family.hold("P1");
    RunningCommand first(kHere, family.path(), family.path() / "first.log");
    ASSERT_TRUE(waitUntil([&] { return family.isRunning("P1"); }));
    const Finished second = family.run(kHere);
    EXPECT_EQ(second.status, 1);
    EXPECT_NE(second.output.find("LockException"), std::string::npos) << second.output;
    family.letGo("P1");
    const Finished ended = first.wait();
    EXPECT_EQ(ended.status, 0) << ended.output;
    EXPECT_EQ(family.startsOf("P1"), 1U);
}

TEST_F(ClusterFiles, ModelsThatAreThereAreNotMadeAgainWhateverTheirAge)
{
    const PreparedFolder family({"P1", "P2"});
    ASSERT_EQ(family.run(kHere).status, 0);
    fs::last_write_time(family.path() / "models/P1.pdb",
                        fs::file_time_type::min() + std::chrono::hours(1));
    family.restoreInput("P1");
    fs::remove(family.path() / "models/P2.pdb");
    // As after an update of the program.
    ASSERT_EQ(family.run("sed -i 's/2> /2>/' Snakefile && " + std::string(kHere)).status, 0);
    EXPECT_EQ(family.startsOf("P1"), 1U);
    EXPECT_EQ(family.startsOf("P2"), 2U);
}

TEST_F(ClusterFilesOnSlurm, KilledModelIsMadeAnewAlone)
{
    const PreparedFolder family({"P1", "P2", "P 3"});
    family.hold("P 3");
    RunningCommand run(kOnSlurm, family.path(), family.path() / "first.log");
    ASSERT_TRUE(waitUntil([&] { return family.isRunning("P 3"); })) << logs();
    const Finished cancel = family.run("scancel -n \"P 3 in $PWD\"");
    EXPECT_EQ(cancel.status, 0) << cancel.output;
    const Finished first = run.wait();
    EXPECT_EQ(first.status, 1) << first.output;
    EXPECT_EQ(family.models(), " P1.pdb P2.pdb") << first.output;
    EXPECT_EQ(family.table(), "P 3 killed\nP1 ok\nP2 ok\n");
    EXPECT_EQ(contentsOf(family.path() / "runs/P1.starts"), "memory 2000\n");

    family.letGo("P 3");
    const Finished second = family.run(kOnSlurm);
    EXPECT_EQ(second.status, 0) << second.output;
    EXPECT_EQ(family.models(), " P 3.pdb P1.pdb P2.pdb");
    EXPECT_EQ(family.table(), "P 3 ok\nP1 ok\nP2 ok\n");
    EXPECT_EQ(family.startsOf("P 3"), 2U);
    EXPECT_EQ(family.startsOf("P1"), 1U);
    EXPECT_EQ(family.startsOf("P2"), 1U);
}

TEST_F(ClusterFilesOnSlurm, InterruptedRunCancelsItsJobsAndGoesOn)
{
    const PreparedFolder family({"P1", "P2"});
    family.hold("P1");
    RunningCommand run(kOnSlurm, family.path(), family.path() / "first.log");
    ASSERT_TRUE(waitUntil([&] { return family.isRunning("P1"); })) << logs();
    run.signal(SIGINT);
    EXPECT_EQ(run.wait().status, 1);
    EXPECT_TRUE(waitUntil([] { return isIdle(); }));
    family.letGo("P1");
    const Finished second = family.run(kOnSlurm);
    EXPECT_EQ(second.status, 0) << second.output;
    EXPECT_EQ(family.models(), " P1.pdb P2.pdb");
}

TEST_F(ClusterFilesOnSlurm, JobThatAKilledRunHasLeftBehindIsNotDoneTwiceAtATime)
{
    const PreparedFolder family({"P1"});
    family.hold("P1");
    {
        RunningCommand run(kOnSlurm, family.path(), family.path() / "first.log");
        ASSERT_TRUE(waitUntil([&] { return family.isRunning("P1"); })) << logs();
        run.signal(SIGKILL);
        EXPECT_EQ(run.wait().status, 128 + SIGKILL);
    }
    ASSERT_EQ(family.run("snakemake --unlock").status, 0);
    RunningCommand run(kOnSlurm, family.path(), family.path() / "second.log");
    ASSERT_TRUE(waitUntil([&] {
        return family.run("squeue -h -o %r").output.find("Dependency") != std::string::npos;
    })) << contentsOf(family.path() / "second.log");
    EXPECT_EQ(family.startsOf("P1"), 1U);
    family.letGo("P1");
    const Finished second = run.wait();
    EXPECT_EQ(second.status, 0) << second.output;
    EXPECT_EQ(family.models(), " P1.pdb");
    EXPECT_EQ(family.table(), "P1 ok\n");
}

TEST_F(ClusterFilesOnSlurm, ArrayMakesWhatIsMissingAndTheTable)
{
    const PreparedFolder family({"P1", "P2", "P 3"});
    family.removeInput("P2");
    const auto submit = [&] {
        fs::remove(family.path() / "results.tsv");
        const Finished submitted = family.run("./array.sbatch 2");
        EXPECT_EQ(submitted.status, 0) << submitted.output;
        EXPECT_TRUE(waitUntil([&] { return isIdle() && !family.table().empty(); })) << logs();
    };
    submit();
    EXPECT_EQ(family.models(), " P 3.pdb P1.pdb");
    EXPECT_EQ(family.table(), "P 3 ok\nP1 ok\nP2 failed\n");
    EXPECT_EQ(contentsOf(family.path() / "runs/P1.starts"), "memory 2000\n");
    EXPECT_NE(family.logOf("P2").find("inputs/P2.ali"), std::string::npos) << family.logOf("P2");

    family.restoreInput("P2");
    submit();
    EXPECT_EQ(family.table(), "P 3 ok\nP1 ok\nP2 ok\n");
    EXPECT_EQ(family.startsOf("P1"), 1U);
    EXPECT_EQ(family.startsOf("P2"), 2U);
}

TEST_F(ClusterFilesOnSlurm, EachTaskOfAnArrayTakesItsShareOfTheLines)
{
    const PreparedFolder family({"P1", "P2", "P3", "P4", "P5"});
    const Finished submitted = family.run("sbatch --array=2-3 array.sbatch");
    EXPECT_EQ(submitted.status, 0) << submitted.output;
    EXPECT_TRUE(waitUntil([] { return isIdle(); })) << logs();
    EXPECT_EQ(family.models(), " P1.pdb P2.pdb P3.pdb P4.pdb P5.pdb");
    for (const char *file : {"P1", "P2", "P3", "P4", "P5"})
        EXPECT_EQ(family.startsOf(file), 1U) << file;
}

TEST_F(ClusterFilesOnSlurm, StatusOfAJobThatSlurmHasForgottenIsThatOfItsRecord)
{
    const PreparedFolder family({"P1"});
    std::ofstream(family.path() / "runs/P1.json")
        << "{\n    \"state\": \"ok\",\n    \"job\": \"4711\"\n}\n";
    EXPECT_EQ(family.run("slurm/status 4711").output, "success\n");
    EXPECT_EQ(family.run("slurm/status 471").output, "failed\n");
}

TEST_F(ClusterFilesOnSlurm, StatusIsRunningWhileTheControllerDoesNotAnswer)
{
    const PreparedFolder family({"P1"});
    stopSlurm();
    EXPECT_EQ(family.run("slurm/status 1").output, "running\n");
}

} // namespace ClusterFilesTest
