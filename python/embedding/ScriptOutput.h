// SPDX-License-Identifier: GPL-3.0-or-later
// What scripts print, on its way to the workbench: collected, since a script may print a million
// lines, and handed on in the GUI thread alone. The lock is that of the interpreter.
#pragma once

#include "ScriptEngine.h"

#include <string>
#include <string_view>
#include <thread>
#include <vector>

namespace TAMBO::scripting {

class ScriptOutput
{
public:
    void setHost(ScriptHost *host) noexcept { m_Host = host; }
    // From any thread.
    void write(std::string_view text, OutputKind kind);
    // In the GUI thread.
    void flush();

private:
    struct Part
    {
        OutputKind kind;
        std::string text;
    };

    ScriptHost *m_Host = nullptr;
    const std::thread::id m_Owner = std::this_thread::get_id();
    std::vector<Part> m_Parts;
    std::size_t m_Size = 0;
};

} // namespace TAMBO::scripting
