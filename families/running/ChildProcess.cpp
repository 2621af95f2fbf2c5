// SPDX-License-Identifier: GPL-3.0-or-later
#include "ChildProcess.h"

#include "RunSignals.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <iterator>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace TAMBO::families {

namespace {

constexpr int kCannotStart = 127;
constexpr int kSignalled = 128;

// Nothing that is not safe between fork and exec.
[[noreturn]] void become(char *const *words, const char *folder, const char *output, int flags,
                         int deathSignal, pid_t parent)
{
    setpgid(0, 0);
    prctl(PR_SET_PDEATHSIG, deathSignal);
    if (getppid() != parent)
        _exit(kCannotStart);
    // A shell that starts this program in the background has it ignore interruptions. Whoever is
    // started here is alone in its group, and is interrupted by this program only.
    std::signal(SIGINT, SIG_DFL);
    std::signal(SIGTERM, SIG_DFL);
    constexpr mode_t kRights = 0666;
    const int nothing = open("/dev/null", O_RDONLY | O_CLOEXEC);
    const bool isPlaced = chdir(folder) == 0;
    const int log = open(output, flags, kRights);
    if (!isPlaced || nothing < 0 || log < 0)
        _exit(kCannotStart);
    dup2(nothing, STDIN_FILENO);
    dup2(log, STDOUT_FILENO);
    dup2(log, STDERR_FILENO);
    execvp(words[0], words);
    const char *const cause = std::strerror(errno);
    const char *const program = words[0];
    for (const char *part : {program, " cannot be started: ", cause, "\n"})
        static_cast<void>(!write(STDERR_FILENO, part, std::strlen(part)));
    _exit(kCannotStart);
}

} // namespace

Result<ChildProcess> ChildProcess::start(const Command &command, const RunSignals &signals)
{
    std::vector<std::string> texts = command.words;
    std::vector<char *> words;
    std::ranges::transform(texts, std::back_inserter(words),
                           [](std::string &word) { return word.data(); });
    words.push_back(nullptr);
    const int flags =
        O_WRONLY | O_CREAT | O_CLOEXEC | O_APPEND | (command.goesOnInOutput ? 0 : O_TRUNC);
    const pid_t parent = getpid();
    const pid_t child = fork();
    if (child < 0)
        return Failure{FailureKind::System,
                       texts.front() + " cannot be started: " + std::strerror(errno)};
    if (child == 0) {
        signals.restore();
        become(words.data(), command.folder.c_str(), command.output.c_str(), flags,
               command.deathSignal, parent);
    }
    // Here too: it may be sent a signal before it has come to that itself.
    setpgid(child, child);
    return ChildProcess(child);
}

std::optional<int> ChildProcess::ended()
{
    int status = 0;
    if (!m_Status && waitpid(m_Process, &status, WNOHANG) == m_Process)
        m_Status = status;
    return m_Status;
}

void ChildProcess::send(int signal) const
{
    kill(-m_Process, signal);
}

int exitStatusOf(int status)
{
    return WIFSIGNALED(status) ? kSignalled + WTERMSIG(status) : WEXITSTATUS(status);
}

} // namespace TAMBO::families
