// SPDX-License-Identifier: GPL-3.0-or-later
// The signals that ask the adapter to end. While an object of this lives, they wait.
#pragma once

#include <array>
#include <csignal>

namespace kestram {

constexpr std::array kEndingSignals = {SIGTERM, SIGINT, SIGHUP};

class HeldSignals
{
public:
    HeldSignals()
    {
        sigset_t held;
        sigemptyset(&held);
        for (const int signal : kEndingSignals)
            sigaddset(&held, signal);
        sigprocmask(SIG_BLOCK, &held, &m_Before);
    }
    ~HeldSignals() { sigprocmask(SIG_SETMASK, &m_Before, nullptr); }
    HeldSignals(const HeldSignals &) = delete;
    HeldSignals &operator=(const HeldSignals &) = delete;

private:
    sigset_t m_Before{};
};

} // namespace kestram
