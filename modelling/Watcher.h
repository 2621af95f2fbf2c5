// SPDX-License-Identifier: GPL-3.0-or-later
// A process of its own that runs the engine for the adapter and outlives it, if only for a moment:
// however the adapter ends, the watcher ends the engine with all that comes from it, and puts
// things in order. It has a session of its own, so that what ends the adapter's group does not
// reach it.
#pragma once

#include "EngineWatch.h"
#include "Result.h"

#include <string>
#include <sys/types.h>

namespace kestram {

class Watcher
{
public:
    // Starts it. Signals that ask the adapter to end go to the engine from then on, but for those
    // that were ignored; an engine that does not end by them is ended. To be made while they are
    // held, and once in a process.
    explicit Watcher(EngineWork work);
    // Waits for its end.
    ~Watcher();
    Watcher(const Watcher &) = delete;
    Watcher &operator=(const Watcher &) = delete;

    // The engine's status as wait() tells it, when it has ended with all that comes from it.
    [[nodiscard]] TAMBO::Result<int> runEngine();
    // The adapter has done all that there was to do.
    void finish();
    // The signal that has asked the adapter to end, 0 for none.
    [[nodiscard]] static int endingSignal();

private:
    [[nodiscard]] bool tell(char word) const;

    EngineWork m_Work;
    pid_t m_Process = -1;
    // It ends when the other end of this is closed.
    int m_Words = -1;
    // Where it tells the engine's status.
    int m_Status = -1;
    std::string m_Trouble;
};

} // namespace kestram
