// SPDX-License-Identifier: GPL-3.0-or-later
#include "EngineWatch.h"

#include "Descendants.h"
#include "Engine.h"

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <fcntl.h>
#include <iterator>
#include <poll.h>
#include <string>
#include <sys/prctl.h>
#include <sys/signalfd.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace kestram {

namespace {

// For what is asked to end, before it is ended: of a process that lives on without its adapter
// somebody may be waiting for the end, and one that was asked by the user may have to tidy up.
constexpr std::chrono::seconds kGraceAlone{2};
constexpr std::chrono::seconds kGraceAsked{5};

// As wait() would tell it.
constexpr int statusOfExit(int status)
{
    return status << 8;
}

} // namespace

EngineWatch::EngineWatch(const EngineWork &work, int words, int status)
    : m_Work(work), m_Words(words), m_Status(status)
{ }

void EngineWatch::run()
{
    separate();
    std::array<pollfd, 2> ends = {{{m_Words, POLLIN, 0}, {m_Ended, POLLIN, 0}}};
    bool isLeft = false;
    while (!isLeft) {
        if (poll(ends.data(), ends.size(), timeLeft()) < 0) {
            if (errno != EINTR)
                break;
            continue;
        }
        if (m_Deadline && Clock::now() >= *m_Deadline) {
            signalDescendants(SIGKILL);
            m_Deadline = Clock::now() + std::chrono::seconds(1);
        }
        if (m_Work.atTimes && Clock::now() >= m_NextTime) {
            m_Work.atTimes();
            m_NextTime = Clock::now() + m_Work.pause;
        }
        if (ends[1].revents != 0)
            reap();
        if (ends[0].revents != 0)
            isLeft = !takeWords();
    }
    endDescendants(kGraceAlone);
    m_Work.atEnd(m_IsDone);
    _exit(EXIT_SUCCESS);
}

void EngineWatch::separate()
{
    setsid();
    adoptDescendants();
    // Whoever reads the model must not have to wait for this process.
    dup2(STDERR_FILENO, STDOUT_FILENO);
    // They come by the adapter.
    std::ranges::transform(kEndingSignals, m_HandlersBefore.begin(),
                           [](int signal) { return std::signal(signal, SIG_IGN); });
    sigset_t ended;
    sigemptyset(&ended);
    sigaddset(&ended, SIGCHLD);
    sigprocmask(SIG_BLOCK, &ended, &m_MaskBefore);
    for (const int signal : kEndingSignals)
        sigdelset(&m_MaskBefore, signal);
    m_Ended = signalfd(-1, &ended, SFD_CLOEXEC | SFD_NONBLOCK);
}

int EngineWatch::timeLeft() const
{
    std::optional<Clock::time_point> next = m_Deadline;
    if (m_Work.atTimes)
        next = std::min(m_NextTime, next.value_or(m_NextTime));
    if (!next)
        return -1;
    const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(*next - Clock::now());
    return static_cast<int>(std::max<std::int64_t>(left.count() + 1, 0));
}

bool EngineWatch::takeWords()
{
    std::array<char, 16> words{};
    const ssize_t count = read(m_Words, words.data(), words.size());
    if (count < 0)
        return errno == EINTR;
    std::for_each_n(words.begin(), count, [this](char word) { take(word); });
    return count > 0;
}

void EngineWatch::take(char word)
{
    if (word == kStart)
        start();
    else if (word == kDone)
        m_IsDone = true;
    else
        passOn(word);
}

void EngineWatch::passOn(int signal)
{
    if (m_Engine > 0)
        kill(-m_Engine, signal);
    else
        m_EarlySignal = signal;
    if (m_Engine > 0 && !m_Deadline)
        m_Deadline = Clock::now() + kGraceAsked;
}

void EngineWatch::start()
{
    // The number of a signal is how wait() tells that it was the end.
    if (m_EarlySignal != 0)
        return tellStatus(m_EarlySignal);
    const pid_t self = getpid();
    m_Engine = fork();
    if (m_Engine == 0)
        becomeEngine(self);
    if (m_Engine < 0)
        return tellStatus(statusOfExit(kCannotStart));
    // Here as well, since nobody knows which of the two comes first.
    setpgid(m_Engine, m_Engine);
}

void EngineWatch::becomeEngine(pid_t watcher)
{
    // A group of its own, so that the engine's own children get its signals.
    setpgid(0, 0);
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (getppid() != watcher)
        _exit(kCannotStart);
    for (std::size_t i = 0; i < kEndingSignals.size(); ++i)
        std::signal(kEndingSignals[i], m_HandlersBefore[i]);
    std::signal(SIGPIPE, SIG_DFL);
    std::signal(SIGXFSZ, SIG_DFL);
    sigprocmask(SIG_SETMASK, &m_MaskBefore, nullptr);
    // The engine asks the search path for its interpreter, which is the one installed with it.
    const char *const before = std::getenv("PATH");
    const std::string path = m_Work.programs.string() + ':' + (before == nullptr ? "" : before);
    setenv("PATH", path.c_str(), 1);
    std::vector<std::string> command = m_Work.command;
    std::vector<char *> arguments;
    std::ranges::transform(command, std::back_inserter(arguments),
                           [](std::string &word) { return word.data(); });
    arguments.push_back(nullptr);
    if (chdir(m_Work.folder.c_str()) == 0)
        execvp(arguments.front(), arguments.data());
    _exit(kCannotStart);
}

void EngineWatch::reap()
{
    signalfd_siginfo ignored{};
    while (read(m_Ended, &ignored, sizeof ignored) > 0) {
    }
    int status = 0;
    for (pid_t ended = 0; (ended = waitpid(-1, &status, WNOHANG)) > 0;) {
        if (ended != m_Engine)
            continue;
        m_Engine = -1;
        m_Deadline.reset();
        // What it has left behind might still write.
        endDescendants(kGraceAlone);
        tellStatus(status);
    }
}

void EngineWatch::tellStatus(int status) const
{
    // An adapter that has gone need not know.
    [[maybe_unused]] const ssize_t written = write(m_Status, &status, sizeof status);
}

} // namespace kestram
