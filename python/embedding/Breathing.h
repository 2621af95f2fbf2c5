// SPDX-License-Identifier: GPL-3.0-or-later
// Lets the window live while Python runs in its thread: a small thread of its own asks for a look
// at the window as a signal's handler has it, between two instructions of the script; where the
// script waits for the system, the signal itself ends the wait, which Python then takes up again.
#pragma once

#include "ScriptEngine.h"

#include <pybind11/pybind11.h>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <csignal>
#include <functional>
#include <mutex>
#include <thread>

namespace TAMBO::scripting {

class Breathing
{
public:
    // Once Python runs, in the GUI thread. show: hands on what was printed.
    explicit Breathing(std::function<void()> show);
    ~Breathing();
    Breathing(const Breathing &) = delete;
    Breathing &operator=(const Breathing &) = delete;

    // Throws when there is no thread to be had.
    void begin(ScriptHost &host);
    void end();
    // Whether the run was to be stopped.
    [[nodiscard]] bool isStopAsked() const noexcept { return m_Stops > 0; }

private:
    using Clock = std::chrono::steady_clock;

    void tick();
    // Makes the handler Python's, unless it is.
    void hear();
    static int hearAgain(void *breathing);
    // By the signal itself.
    void insist();
    // Called by Python; raises KeyboardInterrupt.
    void breathe();

    const std::function<void()> m_Show;
    const pybind11::object m_Handler;
    // What the process does on the signal: Python's.
    struct sigaction m_Action
    {
    };
    const pthread_t m_Owner = ::pthread_self();
    ScriptHost *m_Host = nullptr;
    int m_Stops = 0;
    Clock::time_point m_LastLook;
    // What the thread knows: the ticks since the last look, and that one is being taken.
    std::atomic<int> m_Missed = 0;
    std::atomic<bool> m_IsLooking = false;
    // Of hearAgain(), which has not come yet.
    std::atomic<bool> m_IsCalled = false;
    std::mutex m_Mutex;
    std::condition_variable m_Ended;
    bool m_HasEnded = false;
    std::thread m_Thread;
};

} // namespace TAMBO::scripting
