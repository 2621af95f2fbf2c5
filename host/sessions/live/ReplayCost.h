// SPDX-License-Identifier: GPL-3.0-or-later
// How long it would take to do again what has been recorded since the state, in nanoseconds of a
// usual processor. It is counted and not measured, so that the same work always costs the same;
// bench_session shows what it takes indeed.
#pragma once

#include "StoreRecord.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace TAMBO::sessions {

class ReplayCost
{
public:
    // What has been handed over.
    void add(const StoreEntry &entry);
    // Steps that undo or redo goes through.
    void addSteps(std::size_t count) { m_Records += count * kRecord; }
    // An edit that goes through all rows of an alignment.
    void addRows(std::size_t count, std::size_t columns)
    {
        m_Records += count * (kRow + columns / kColumns);
    }

    // What has been recorded takes longer than so long, and longer than loading the state, which
    // would be written instead.
    [[nodiscard]] bool isAbove(std::uint64_t limit) const noexcept
    {
        return m_Records > std::max(limit, m_State);
    }

private:
    static constexpr std::uint64_t kRecord = 2'000;
    // Of long sequences it is 1.4, of a great many short ones 6.
    static constexpr std::uint64_t kByte = 5;
    static constexpr std::uint64_t kRow = 30;
    // That take one more.
    static constexpr std::size_t kColumns = 64;

    std::uint64_t m_State = 0;
    // Of each part of the state that is being written.
    std::vector<std::uint64_t> m_NextState;
    std::uint64_t m_Records = 0;
};

} // namespace TAMBO::sessions
