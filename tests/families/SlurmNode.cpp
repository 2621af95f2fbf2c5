// SPDX-License-Identifier: GPL-3.0-or-later
#include "SlurmNode.h"

#include "Command.h"

#include <array>
#include <cstdlib>
#include <fcntl.h>
#include <iterator>
#include <sstream>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>

namespace fs = std::filesystem;

namespace {

constexpr int kNodeNotStarted = 127;

} // namespace

SlurmNode::SlurmNode(fs::path folder) : m_Folder(std::move(folder))
{
    fs::create_directories(m_Folder);
    std::array<int, 2> input{};
    std::array<int, 2> output{};
    // No other child of this process is to hold the node's input open.
    if (pipe2(input.data(), O_CLOEXEC) != 0 || pipe2(output.data(), O_CLOEXEC) != 0)
        return;
    m_Process = fork();
    if (m_Process == 0) {
        dup2(input[0], STDIN_FILENO);
        dup2(output[1], STDOUT_FILENO);
        execl(SOURCE_DIR "/tests/families/slurm-node", "slurm-node", m_Folder.c_str(), nullptr);
        _exit(kNodeNotStarted);
    }
    close(input[0]);
    close(output[1]);
    m_Input = input[1];
    std::array<char, 6> word{};
    m_IsReady = read(output[0], word.data(), word.size()) == ssize_t(word.size());
    close(output[0]);
}

SlurmNode::~SlurmNode()
{
    stop();
}

void SlurmNode::stop()
{
    if (m_Input >= 0)
        close(std::exchange(m_Input, -1));
    if (m_Process > 0)
        waitpid(std::exchange(m_Process, -1), nullptr, 0);
}

void SlurmNode::use() const
{
    setenv("SLURM_CONF", (m_Folder / "slurm.conf").c_str(), 1);
}

std::string SlurmNode::logs() const
{
    std::string text;
    for (const fs::directory_entry &entry : fs::directory_iterator(m_Folder))
        if (entry.path().extension() == ".log" || entry.path().extension() == ".out")
            text += entry.path().filename().string() + ":\n" + contentsOf(entry.path()) + '\n';
    return text;
}

std::vector<pid_t> SlurmNode::daemons() const
{
    std::istringstream numbers(contentsOf(m_Folder / "daemons"));
    return {std::istream_iterator<pid_t>(numbers), {}};
}
