// SPDX-License-Identifier: GPL-3.0-or-later
// Finds rows by the hashes of their names, in 16 to 32 bytes a row.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

namespace TAMBO::formats {

class NameIndex
{
public:
    // The first row added with that name; hasName(row) says whether a row has it.
    template <typename HasName>
    [[nodiscard]] std::optional<std::size_t> find(std::string_view name, HasName hasName) const
    {
        const std::uint32_t hash = hashOf(name);
        for (std::size_t slot = hash; !m_Slots.empty(); ++slot) {
            const Entry &entry = m_Slots[slot & (m_Slots.size() - 1)];
            if (entry.row == kNone)
                break;
            if (entry.hash == hash && hasName(std::size_t(entry.row)))
                return entry.row;
        }
        return std::nullopt;
    }
    void add(std::string_view name, std::size_t row)
    {
        if (2 * (m_Count + 1) > m_Slots.size())
            grow();
        ++m_Count;
        put({hashOf(name), static_cast<std::uint32_t>(row)});
    }
    void clear() { *this = {}; }

private:
    static constexpr std::uint32_t kNone = ~std::uint32_t(0);

    struct Entry
    {
        std::uint32_t hash = 0;
        std::uint32_t row = kNone;
    };

    [[nodiscard]] static std::uint32_t hashOf(std::string_view name) noexcept
    {
        return static_cast<std::uint32_t>(std::hash<std::string_view>()(name));
    }
    void put(const Entry &entry)
    {
        std::size_t slot = entry.hash;
        while (m_Slots[slot & (m_Slots.size() - 1)].row != kNone)
            ++slot;
        m_Slots[slot & (m_Slots.size() - 1)] = entry;
    }
    void grow()
    {
        constexpr std::size_t fewest = 16;
        const std::vector<Entry> old =
            std::exchange(m_Slots, std::vector<Entry>(std::max(fewest, 2 * m_Slots.size())));
        for (const Entry &entry : old) {
            if (entry.row != kNone)
                put(entry);
        }
    }

    // As many as a power of two, at most half of them taken. Equal names stand in the order in
    // which they were added.
    std::vector<Entry> m_Slots;
    std::size_t m_Count = 0;
};

} // namespace TAMBO::formats
