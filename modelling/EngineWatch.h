// SPDX-License-Identifier: GPL-3.0-or-later
// What the watcher does, in its own process.
#pragma once

#include "HeldSignals.h"

#include <array>
#include <chrono>
#include <csignal>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <sys/types.h>
#include <vector>

namespace kestram {

struct EngineWork
{
    // The engine's, and the folder that it runs in.
    std::vector<std::string> command;
    std::filesystem::path folder;
    // Comes first on its search path.
    std::filesystem::path programs;
    // Called when nothing of the engine runs any more and the adapter has gone; isDone is false
    // when it has not said before that it was done.
    std::function<void(bool isDone)> atEnd;
    // Called each time that so long has passed.
    std::function<void()> atTimes = {};
    std::chrono::milliseconds pause{60'000};
};

class EngineWatch
{
public:
    // The adapter's words: these, and the numbers of signals.
    static constexpr char kStart = 'S';
    static constexpr char kDone = 'D';

    // words is read, and its end is that of the adapter; status is written to.
    EngineWatch(const EngineWork &work, int words, int status);

    // Until the adapter has gone.
    [[noreturn]] void run();

private:
    using Clock = std::chrono::steady_clock;

    void separate();
    // False at their end.
    [[nodiscard]] bool takeWords();
    void take(char word);
    void start();
    [[noreturn]] void becomeEngine(pid_t watcher);
    // Processes that have ended, of which one may be the engine.
    void reap();
    void passOn(int signal);
    void tellStatus(int status) const;
    // Until there is something to do without being told: in milliseconds, as poll() takes it.
    [[nodiscard]] int timeLeft() const;

    const EngineWork &m_Work;
    int m_Words;
    int m_Status;
    // Readable when a child has ended.
    int m_Ended = -1;
    sigset_t m_MaskBefore{};
    std::array<void (*)(int), kEndingSignals.size()> m_HandlersBefore{};
    pid_t m_Engine = -1;
    // One that has come before the engine was started.
    int m_EarlySignal = 0;
    // When the engine is ended that was asked to end.
    std::optional<Clock::time_point> m_Deadline;
    Clock::time_point m_NextTime = Clock::now() + m_Work.pause;
    bool m_IsDone = false;
};

} // namespace kestram
