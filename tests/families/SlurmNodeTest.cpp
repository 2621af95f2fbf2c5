// SPDX-License-Identifier: GPL-3.0-or-later
// The cluster that other cases run on: it must not disturb another one, nor outlive its test.
#include "SlurmNode.h"

#include "Command.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <csignal>
#include <cstdlib>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace SlurmNodeTest {

namespace fs = std::filesystem;

class OwnSlurmNode : public testing::Test
{
protected:
    OwnSlurmNode()
    {
        std::string name = (fs::temp_directory_path() / "slurm-XXXXXX").string();
        EXPECT_NE(mkdtemp(name.data()), nullptr);
        m_Folder = name;
    }
    ~OwnSlurmNode() override { fs::remove_all(m_Folder); }

    [[nodiscard]] const fs::path &folder() const { return m_Folder; }

    // One that has ended and is not waited for counts as gone.
    static bool lives(pid_t process)
    {
        const std::string state = contentsOf("/proc/" + std::to_string(process) + "/stat");
        const auto name = state.rfind(')');
        return name != std::string::npos && state.compare(name, 3, ") Z") != 0;
    }

    static bool allGone(const std::vector<pid_t> &processes)
    {
        return waitUntil([&] { return std::ranges::none_of(processes, lives); });
    }

private:
    fs::path m_Folder;
};

TEST_F(OwnSlurmNode, SeveralRunJobsBesideEachOtherAndLeaveNothingRunning)
{
    SlurmNode first(folder() / "first");
    SlurmNode second(folder() / "second");
    ASSERT_TRUE(first.isReady()) << first.logs();
    ASSERT_TRUE(second.isReady()) << second.logs();
    for (const SlurmNode *node : {&first, &second}) {
        node->use();
        const Finished job = run("srun --mem=100 printenv SLURM_CONF", folder());
        EXPECT_EQ(job.status, 0) << job.output << node->logs();
        EXPECT_EQ(job.output,
                  (folder() / (node == &first ? "first" : "second") / "slurm.conf").string() +
                      '\n');
    }
    std::vector<pid_t> started = first.daemons();
    for (const pid_t process : second.daemons())
        started.push_back(process);
    EXPECT_TRUE(std::ranges::all_of(started, lives));
    first.stop();
    second.stop();
    EXPECT_TRUE(std::ranges::none_of(started, lives));
}

TEST_F(OwnSlurmNode, JobsEndWithIt)
{
    SlurmNode node(folder() / "node");
    ASSERT_TRUE(node.isReady()) << node.logs();
    node.use();
    ASSERT_EQ(run("sbatch --output=/dev/null --wrap 'trap \"\" TERM; echo $$ >job; while :; do "
                  "sleep 1; done'",
                  folder())
                  .status,
              0);
    ASSERT_TRUE(waitUntil([&] { return !contentsOf(folder() / "job").empty(); })) << node.logs();
    const pid_t job = pid_t(std::stol(contentsOf(folder() / "job")));
    EXPECT_TRUE(lives(job));
    node.stop();
    EXPECT_FALSE(lives(job));
}

TEST_F(OwnSlurmNode, NothingIsLeftOfItWhenItsTestIsKilled)
{
    std::array<int, 2> told{};
    ASSERT_EQ(pipe(told.data()), 0);
    const pid_t test = fork();
    if (test == 0) {
        const SlurmNode node(folder() / "node");
        const std::vector<pid_t> daemons = node.daemons();
        if (write(told[1], daemons.data(), daemons.size() * sizeof(pid_t)) > 0)
            kill(getpid(), SIGKILL);
        _exit(1);
    }
    close(told[1]);
    std::vector<pid_t> started(3);
    EXPECT_EQ(read(told[0], started.data(), started.size() * sizeof(pid_t)),
              ssize_t(started.size() * sizeof(pid_t)));
    close(told[0]);
    int status = 0;
    waitpid(test, &status, 0);
    EXPECT_TRUE(WIFSIGNALED(status));
    EXPECT_TRUE(std::ranges::all_of(started, [](pid_t process) { return process > 0; }));
    EXPECT_TRUE(allGone(started));
}

TEST_F(OwnSlurmNode, ItsDaemonsEndWhenItIsKilledItself)
{
    SlurmNode node(folder() / "node");
    ASSERT_TRUE(node.isReady()) << node.logs();
    const std::vector<pid_t> started = node.daemons();
    ASSERT_TRUE(std::ranges::all_of(started, lives));
    kill(node.process(), SIGKILL);
    EXPECT_TRUE(allGone(started));
}

} // namespace SlurmNodeTest
