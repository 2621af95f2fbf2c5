// SPDX-License-Identifier: GPL-3.0-or-later
#include "Breathing.h"

#include <csignal>
#include <stdexcept>
#include <string>
#include <system_error>
#include <utility>

namespace TAMBO::scripting {

namespace py = pybind11;

namespace {

// Ignored by whoever does not know of it.
constexpr int kSignal = SIGURG;
constexpr std::chrono::milliseconds kBetweenLooks(50);
// After so many ticks without a look the script waits for the system.
constexpr int kPatience = 3;

} // namespace

Breathing::Breathing(std::function<void()> show)
    : m_Show(std::move(show)),
      m_Handler(py::cpp_function([this](const py::object &, const py::object &) { breathe(); }))
{
    hear();
    ::sigaction(kSignal, nullptr, &m_Action);
}

Breathing::~Breathing()
{
    end();
    ::signal(kSignal, SIG_DFL);
}

void Breathing::hear()
{
    const py::module_ signals = py::module_::import("_signal");
    if (!signals.attr("getsignal")(kSignal).is(m_Handler))
        signals.attr("signal")(kSignal, m_Handler);
}

int Breathing::hearAgain(void *breathing)
{
    auto &self = *static_cast<Breathing *>(breathing);
    self.m_IsCalled = false;
    try {
        self.hear();
    } catch (py::error_already_set &error) {
        error.discard_as_unraisable("the signal by which scripts are stopped");
    }
    return 0;
}

void Breathing::begin(ScriptHost &host)
{
    hearAgain(this);
    m_Stops = 0;
    m_Missed = 0;
    m_LastLook = Clock::now();
    m_HasEnded = false;
    try {
        m_Thread = std::thread([this] { tick(); });
    } catch (const std::system_error &error) {
        throw std::runtime_error("Nothing was run, since it could not be stopped: the system "
                                 "begins no thread (" +
                                 error.code().message() + ").");
    }
    m_Host = &host;
}

void Breathing::end()
{
    m_Host = nullptr;
    if (!m_Thread.joinable())
        return;
    {
        const std::lock_guard lock(m_Mutex);
        m_HasEnded = true;
    }
    m_Ended.notify_one();
    m_Thread.join();
}

void Breathing::tick()
{
    std::unique_lock lock(m_Mutex);
    while (!m_Ended.wait_for(lock, kBetweenLooks, [this] { return m_HasEnded; })) {
        if (m_IsLooking)
            continue;
        PyErr_SetInterruptEx(kSignal);
        if (++m_Missed <= kPatience)
            continue;
        insist();
    }
}

// A script that sets all handlers takes this one, too. What is asked for here is done between two
// instructions as well, but only when a signal has come there.
void Breathing::insist()
{
    struct sigaction present = {};
    ::sigaction(kSignal, nullptr, &present);
    if (present.sa_handler != m_Action.sa_handler) {
        if (!m_IsCalled.exchange(true) && Py_AddPendingCall(hearAgain, this) != 0)
            m_IsCalled = false;
        ::sigaction(kSignal, &m_Action, nullptr);
    }
    ::pthread_kill(m_Owner, kSignal);
}

void Breathing::breathe()
{
    // A signal that has come late, or while the window is being looked at.
    if (m_Host == nullptr || m_IsLooking)
        return;
    bool isStopped = m_Stops > 1;
    // Whoever does not end is asked at each instruction, which is too often for the window.
    if (!isStopped || Clock::now() - m_LastLook >= kBetweenLooks) {
        m_IsLooking = true;
        m_Show();
        const bool goesOn = m_Host->breathe();
        m_LastLook = Clock::now();
        m_IsLooking = false;
        m_Missed = 0;
        if (!goesOn)
            ++m_Stops;
        isStopped = isStopped || !goesOn;
    }
    if (!isStopped)
        return;
    if (m_Stops > 1)
        PyErr_SetInterruptEx(kSignal);
    PyErr_SetNone(PyExc_KeyboardInterrupt);
    throw py::error_already_set();
}

} // namespace TAMBO::scripting
