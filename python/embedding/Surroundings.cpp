// SPDX-License-Identifier: GPL-3.0-or-later
#include "Surroundings.h"

#include <clocale>
#include <cstddef>
#include <cstdio>
#include <fcntl.h>
#include <unistd.h>

namespace TAMBO::scripting {

namespace {

constexpr std::array kTimers = {ITIMER_REAL, ITIMER_VIRTUAL, ITIMER_PROF};

bool isOn(const itimerval &timer)
{
    return timer.it_value.tv_sec != 0 || timer.it_value.tv_usec != 0;
}

std::string presentLocale()
{
    const char *const name = std::setlocale(LC_ALL, nullptr);
    return name != nullptr ? name : "C";
}

} // namespace

Surroundings::Surroundings()
    : m_Locale(presentLocale()), m_Folder(::open(".", O_PATH | O_DIRECTORY | O_CLOEXEC))
{
    for (std::size_t i = 0; i < kTimers.size(); ++i)
        ::getitimer(kTimers[i], &m_Timers[i]);
}

Surroundings::~Surroundings()
{
    for (std::size_t i = 0; i < kTimers.size(); ++i) {
        itimerval present{};
        if (::getitimer(kTimers[i], &present) == 0 && isOn(present) != isOn(m_Timers[i]))
            ::setitimer(kTimers[i], &m_Timers[i], nullptr);
    }
    if (presentLocale() != m_Locale)
        std::setlocale(LC_ALL, m_Locale.c_str());
    if (m_Folder < 0)
        return;
    // Nothing can be done about a folder that may not be entered any more.
    if (::fchdir(m_Folder) != 0)
        std::perror("tambo: the working folder");
    ::close(m_Folder);
}

} // namespace TAMBO::scripting
