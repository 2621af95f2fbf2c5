// SPDX-License-Identifier: GPL-3.0-or-later
// Sees what the editor asks of its surroundings where no other way leads to it: the linker leads
// some calls here (--wrap), in test programs that are linked with editor_host_spy.
#pragma once

#include <functional>
#include <string>
#include <vector>

struct HostSpy
{
    // Called in place of QGuiApplication::sync().
    static inline std::function<void()> onSync;
    // The workbench makes no alignment while it is set.
    static inline bool makesNoAlignment = false;
    // The variables of the environment that were asked for, by all cases of the program.
    static inline std::vector<std::string> variables;
};
