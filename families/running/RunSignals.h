// SPDX-License-Identifier: GPL-3.0-or-later
// The signals that a run waits for: that it is to end, or that one of its processes has ended.
#pragma once

#include <csignal>

namespace TAMBO::families {

// While it lives, these signals come by wait() alone, and a reader that has gone ends nothing. To
// be made in a program that has no other threads.
class RunSignals
{
public:
    RunSignals();
    ~RunSignals();
    RunSignals(const RunSignals &) = delete;
    RunSignals &operator=(const RunSignals &) = delete;

    // The signal that came within so long, 0 for none.
    [[nodiscard]] int wait(int milliseconds) const;
    // Whether it asks the program to end. What the caller was told to ignore (nohup, a job of the
    // shell's in the background) does not.
    [[nodiscard]] static bool isEnd(int signal) noexcept;
    // In a process that was just started: all is as it was.
    void restore() const;

private:
    sigset_t m_Waited{};
    sigset_t m_Before{};
    struct sigaction m_PipeBefore = {};
};

} // namespace TAMBO::families
