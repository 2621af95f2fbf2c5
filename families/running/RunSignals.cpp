// SPDX-License-Identifier: GPL-3.0-or-later
#include "RunSignals.h"

#include <algorithm>
#include <array>
#include <ctime>

namespace TAMBO::families {

namespace {

constexpr std::array kEndSignals = {SIGINT, SIGTERM, SIGHUP};

bool isIgnored(int signal)
{
    struct sigaction now = {};
    return sigaction(signal, nullptr, &now) == 0 && now.sa_handler == SIG_IGN;
}

} // namespace

RunSignals::RunSignals()
{
    sigemptyset(&m_Waited);
    for (const int signal : kEndSignals) {
        if (!isIgnored(signal))
            sigaddset(&m_Waited, signal);
    }
    sigaddset(&m_Waited, SIGCHLD);
    // Who is ignored by the caller leaves nothing to wait for.
    std::signal(SIGCHLD, SIG_DFL);
    sigprocmask(SIG_BLOCK, &m_Waited, &m_Before);
    struct sigaction ignore = {};
    ignore.sa_handler = SIG_IGN;
    sigaction(SIGPIPE, &ignore, &m_PipeBefore);
}

RunSignals::~RunSignals()
{
    restore();
}

int RunSignals::wait(int milliseconds) const
{
    constexpr long kNano = 1'000'000;
    const timespec most{milliseconds / 1000, milliseconds % 1000 * kNano};
    return std::max(0, sigtimedwait(&m_Waited, nullptr, &most));
}

bool RunSignals::isEnd(int signal) noexcept
{
    return std::ranges::find(kEndSignals, signal) != kEndSignals.end();
}

void RunSignals::restore() const
{
    sigaction(SIGPIPE, &m_PipeBefore, nullptr);
    sigprocmask(SIG_SETMASK, &m_Before, nullptr);
}

} // namespace TAMBO::families
