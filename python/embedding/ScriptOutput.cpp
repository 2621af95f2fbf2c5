// SPDX-License-Identifier: GPL-3.0-or-later
#include "ScriptOutput.h"

#include <utility>

namespace TAMBO::scripting {

namespace {

constexpr std::size_t kMostAtOnce = std::size_t(64) << 10;
// Of a script's threads that go on when it has ended, until the next one is run.
constexpr std::size_t kMostKept = std::size_t(4) << 20;

} // namespace

void ScriptOutput::write(std::string_view text, OutputKind kind)
{
    const bool isOurs = std::this_thread::get_id() == m_Owner;
    if (text.empty() || (!isOurs && m_Size + text.size() > kMostKept))
        return;
    if (m_Parts.empty() || m_Parts.back().kind != kind)
        m_Parts.push_back({kind, {}});
    m_Parts.back().text += text;
    m_Size += text.size();
    if (isOurs && m_Size >= kMostAtOnce)
        flush();
}

void ScriptOutput::flush()
{
    m_Size = 0;
    for (const Part &part : std::exchange(m_Parts, {})) {
        if (m_Host != nullptr)
            m_Host->write(part.text, part.kind);
    }
}

} // namespace TAMBO::scripting
