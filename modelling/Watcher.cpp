// SPDX-License-Identifier: GPL-3.0-or-later
#include "Watcher.h"

#include "Descendants.h"
#include "HeldSignals.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>

namespace kestram {

namespace {

volatile std::sig_atomic_t s_Words = -1;
volatile std::sig_atomic_t s_Signal = 0;

void passOn(int signal)
{
    const int error = errno;
    s_Signal = signal;
    const char word = static_cast<char>(signal);
    // Nothing can be done about a watcher that is gone, which is noticed elsewhere.
    [[maybe_unused]] const ssize_t written = write(static_cast<int>(s_Words), &word, 1);
    errno = error;
}

void closePipe(int &end)
{
    if (end >= 0)
        close(end);
    end = -1;
}

} // namespace

Watcher::Watcher(EngineWork work) : m_Work(std::move(work))
{
    std::array<int, 2> words = {-1, -1};
    std::array<int, 2> status = {-1, -1};
    // When the watcher itself is killed, what it has looked after comes to the adapter.
    adoptDescendants();
    if (pipe2(words.data(), O_CLOEXEC) == 0 && pipe2(status.data(), O_CLOEXEC) == 0)
        m_Process = fork();
    if (m_Process < 0)
        m_Trouble = std::strerror(errno);
    if (m_Process == 0) {
        closePipe(words[1]);
        closePipe(status[0]);
        EngineWatch(m_Work, words[0], status[1]).run();
    }
    closePipe(words[0]);
    closePipe(status[1]);
    m_Words = words[1];
    m_Status = status[0];
    if (m_Process < 0)
        return;
    s_Words = m_Words;
    for (const int signal : kEndingSignals) {
        if (std::signal(signal, passOn) == SIG_IGN)
            std::signal(signal, SIG_IGN);
    }
}

Watcher::~Watcher()
{
    {
        const HeldSignals held;
        s_Words = -1;
    }
    closePipe(m_Words);
    closePipe(m_Status);
    if (m_Process < 0)
        return;
    while (waitpid(m_Process, nullptr, 0) < 0 && errno == EINTR) {
    }
}

bool Watcher::tell(char word) const
{
    while (true) {
        const ssize_t written = write(m_Words, &word, 1);
        if (written == 1)
            return true;
        if (written < 0 && errno != EINTR)
            return false;
    }
}

TAMBO::Result<int> Watcher::runEngine()
{
    using TAMBO::Failure;
    using TAMBO::FailureKind;
    if (m_Process < 0)
        return Failure{FailureKind::System, "no process can be started: " + m_Trouble};
    int status = 0;
    ssize_t size = -1;
    if (tell(EngineWatch::kStart)) {
        do
            size = read(m_Status, &status, sizeof status);
        while (size < 0 && errno == EINTR);
    }
    if (size == sizeof status)
        return status;
    // Killed: its engine has got a signal by that, and whatever is left is ours now.
    constexpr std::chrono::seconds kGrace{2};
    endDescendants(kGrace);
    m_Process = -1;
    return Failure{FailureKind::System, "the process that watched over the engine was ended"};
}

void Watcher::finish()
{
    [[maybe_unused]] const bool isTold = m_Process < 0 || tell(EngineWatch::kDone);
}

int Watcher::endingSignal()
{
    return static_cast<int>(s_Signal);
}

} // namespace kestram
