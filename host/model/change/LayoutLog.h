// SPDX-License-Identifier: GPL-3.0-or-later
// The last changes of the cells of an alignment, for whoever keeps something of its columns.
#pragma once

#include "LayoutChanges.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace TAMBO {

class LayoutLog
{
public:
    void add(const LayoutChange &change);
    // More has changed than is worth being told.
    void forget() noexcept;

    [[nodiscard]] std::uint64_t revision() const noexcept { return m_Revision; }
    [[nodiscard]] std::optional<std::vector<LayoutChange>> since(std::uint64_t revision) const;

    // On the heap.
    [[nodiscard]] std::size_t bytes() const noexcept
    {
        return m_Kept.capacity() * sizeof(LayoutChange);
    }

private:
    // Which revision the first one led to is m_Revision - m_Count + 1; it stands at m_First, and
    // the others behind it, around the end.
    std::vector<LayoutChange> m_Kept;
    std::size_t m_First = 0;
    std::size_t m_Count = 0;
    std::uint64_t m_Revision = 0;
};

} // namespace TAMBO
