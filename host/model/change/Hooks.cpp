// SPDX-License-Identifier: GPL-3.0-or-later
#include "Hooks.h"

namespace TAMBO {

ModelHooks &modelHooks() noexcept
{
    // Never destroyed: objects may still ask while the program ends.
    static auto *const hooks = new ModelHooks;
    return *hooks;
}

void writeLog(const std::string &message, LogSeverity severity)
{
    if (modelHooks().log)
        modelHooks().log(message, severity);
}

} // namespace TAMBO
