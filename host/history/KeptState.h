// SPDX-License-Identifier: GPL-3.0-or-later
// The state of an object at one moment, which the history remembers while this lives: for whoever
// writes the object to a file while it may be edited.
#pragma once

#include <cstddef>

namespace TAMBO {

class Compound;
class History;

class KeptState
{
public:
    // The history outlives this.
    KeptState(History &history, const Compound &object);
    ~KeptState();
    KeptState(const KeptState &) = delete;
    KeptState &operator=(const KeptState &) = delete;

    [[nodiscard]] std::size_t number() const noexcept { return m_Number; }

private:
    History &m_History;
    std::size_t m_Number;
};

} // namespace TAMBO
