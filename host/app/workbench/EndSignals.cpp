// SPDX-License-Identifier: GPL-3.0-or-later
#include "EndSignals.h"

#include "Logger.h"

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace TAMBO::app {

namespace {

constexpr std::array kSignals = {SIGINT, SIGTERM, SIGHUP};

volatile std::sig_atomic_t s_WriteEnd = -1;

// A handler may do hardly anything else. When the pipe is full, there is a request in it already.
void passOn(int signal)
{
    const char byte = static_cast<char>(signal);
    // Whatever it has interrupted may be about to look at it.
    const int error = errno;
    [[maybe_unused]] const ssize_t written = ::write(s_WriteEnd, &byte, 1);
    errno = error;
}

void setHandler(int signal, void (*handler)(int))
{
    struct sigaction action = {};
    action.sa_handler = handler;
    action.sa_flags = SA_RESTART;
    sigemptyset(&action.sa_mask);
    sigaction(signal, &action, nullptr);
}

// As "nohup" has it for what is to outlive its terminal.
bool isIgnored(int signal)
{
    struct sigaction action = {};
    return sigaction(signal, nullptr, &action) == 0 && action.sa_handler == SIG_IGN;
}

const char *nameOf(int signal)
{
    return signal == SIGTERM ? "SIGTERM" : signal == SIGHUP ? "SIGHUP" : "SIGINT";
}

std::array<int, 2> openPipe()
{
    std::array<int, 2> ends = {-1, -1};
    if (pipe2(ends.data(), O_CLOEXEC | O_NONBLOCK) != 0)
        return {-1, -1};
    return ends;
}

} // namespace

EndSignals::EndSignals() : m_Ends(openPipe()), m_Notifier(m_Ends[0], QSocketNotifier::Read)
{
    if (m_Ends[1] < 0)
        return;
    s_WriteEnd = m_Ends[1];
    connect(&m_Notifier, &QSocketNotifier::activated, this, &EndSignals::take);
    for (const int signal : kSignals) {
        if (!isIgnored(signal))
            setHandler(signal, passOn);
    }
    // Nobody may read any more what the program prints.
    setHandler(SIGPIPE, SIG_IGN);
}

EndSignals::~EndSignals()
{
    if (m_Ends[1] < 0)
        return;
    for (const int signal : kSignals) {
        if (!isIgnored(signal))
            setHandler(signal, SIG_DFL);
    }
    s_WriteEnd = -1;
    m_Notifier.setEnabled(false);
    for (const int end : m_Ends)
        close(end);
}

void EndSignals::take()
{
    std::array<unsigned char, 64> bytes{};
    int signal = SIGTERM;
    for (ssize_t count = 0; (count = read(m_Ends[0], bytes.data(), bytes.size())) > 0;)
        signal = bytes[std::size_t(count) - 1];
    // Who finds the program gone wants to know that nothing has failed.
    Logger::Write(
        tr("Tambo is asked to end, by the signal %1.").arg(QLatin1String(nameOf(signal))));
    emit asked();
}

} // namespace TAMBO::app

#include "moc_EndSignals.cpp"
