// SPDX-License-Identifier: GPL-3.0-or-later
#include "Command.h"

#include <array>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <fstream>
#include <iterator>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <utility>

namespace fs = std::filesystem;

namespace {

constexpr int kNotStarted = 127;

int statusOf(int waited)
{
    return WIFSIGNALED(waited) ? 128 + WTERMSIG(waited) : WEXITSTATUS(waited);
}

} // namespace

bool waitUntil(const std::function<bool()> &happened)
{
    const auto end = std::chrono::steady_clock::now() + kPatience;
    while (!happened()) {
        if (std::chrono::steady_clock::now() > end)
            return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
    return true;
}

std::string contentsOf(const fs::path &file)
{
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

Finished run(const std::string &command, const fs::path &folder)
{
    const std::string line = "cd '" + folder.string() + "' && { " + command + "\n} 2>&1 </dev/null";
    Finished finished;
    FILE *pipe = popen(line.c_str(), "r");
    if (pipe == nullptr)
        return finished;
    std::array<char, 4096> part{};
    while (const std::size_t size = std::fread(part.data(), 1, part.size(), pipe))
        finished.output.append(part.data(), size);
    finished.status = statusOf(pclose(pipe));
    return finished;
}

RunningCommand::RunningCommand(const std::string &command, const fs::path &folder, fs::path output)
    : m_Output(std::move(output)), m_Process(fork())
{
    if (m_Process != 0)
        return;
    setsid();
    prctl(PR_SET_PDEATHSIG, SIGTERM);
    const int file = open(m_Output.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
    dup2(open("/dev/null", O_RDONLY), STDIN_FILENO);
    dup2(file, STDOUT_FILENO);
    dup2(file, STDERR_FILENO);
    if (chdir(folder.c_str()) == 0)
        execl("/bin/sh", "sh", "-c", ("exec " + command).c_str(), nullptr);
    _exit(kNotStarted);
}

RunningCommand::~RunningCommand()
{
    if (m_Process > 0) {
        signal(SIGKILL);
        waitpid(m_Process, nullptr, 0);
    }
}

void RunningCommand::signal(int number) const
{
    // The child may not have begun its session.
    if (kill(-m_Process, number) != 0)
        kill(m_Process, number);
}

Finished RunningCommand::wait()
{
    Finished finished;
    const bool hasEnded = waitUntil([&] {
        int waited = 0;
        if (waitpid(m_Process, &waited, WNOHANG) != m_Process)
            return false;
        finished.status = statusOf(waited);
        return true;
    });
    if (hasEnded)
        m_Process = -1;
    finished.output = contentsOf(m_Output);
    return finished;
}
