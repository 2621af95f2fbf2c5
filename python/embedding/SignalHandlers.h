// SPDX-License-Identifier: GPL-3.0-or-later
// What the process does on signals, which a script may change for itself: put back afterwards.
#pragma once

#include <array>
#include <csignal>
#include <cstddef>

namespace TAMBO::scripting {

class SignalHandlers
{
public:
    SignalHandlers() noexcept
    {
        for (std::size_t i = 1; i < m_Actions.size(); ++i)
            ::sigaction(int(i), nullptr, &m_Actions[i]);
    }
    ~SignalHandlers()
    {
        for (std::size_t i = 1; i < m_Actions.size(); ++i)
            ::sigaction(int(i), &m_Actions[i], nullptr);
    }
    SignalHandlers(const SignalHandlers &) = delete;
    SignalHandlers &operator=(const SignalHandlers &) = delete;

private:
    // The common ones; the system refuses to change two of them.
    std::array<struct sigaction, 32> m_Actions{};
};

} // namespace TAMBO::scripting
