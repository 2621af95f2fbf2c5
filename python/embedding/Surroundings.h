// SPDX-License-Identifier: GPL-3.0-or-later
// What a script may change of the process for itself alone: what is done on signals, the timers
// that send them, the locale, by which numbers are read and written, and the working folder. Put
// back afterwards.
#pragma once

#include "SignalHandlers.h"

#include <array>
#include <string>
#include <sys/time.h>

namespace TAMBO::scripting {

class Surroundings
{
public:
    Surroundings();
    ~Surroundings();
    Surroundings(const Surroundings &) = delete;
    Surroundings &operator=(const Surroundings &) = delete;

private:
    // Put back last: a timer that goes off ends the program where nobody handles its signal.
    const SignalHandlers m_Handlers;
    std::array<itimerval, 3> m_Timers{};
    const std::string m_Locale;
    // The folder itself, which may get another name meanwhile; negative when there is none.
    const int m_Folder;
};

} // namespace TAMBO::scripting
