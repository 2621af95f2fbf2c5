// SPDX-License-Identifier: GPL-3.0-or-later
// Which names are given to rows already. Keeps a few bytes a name, whatever its length.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace TAMBO::formats {

class TakenNames
{
public:
    // For so many names.
    explicit TakenNames(std::size_t names);

    // False when a row has the name already. nameOf(row) gives the name of a row taken before.
    template <typename NameOf> bool take(std::string_view name, std::size_t row, NameOf nameOf)
    {
        const std::uint64_t hash = hashOf(name);
        std::size_t place = hash & m_Mask;
        for (; m_Slots[place].row != kFree; place = (place + 1) & m_Mask) {
            const Slot &slot = m_Slots[place];
            if (slot.hash == tagOf(hash) && nameOf(slot.row - 1) == name)
                return false;
        }
        m_Slots[place] = {tagOf(hash), static_cast<std::uint32_t>(row + 1)};
        return true;
    }

private:
    static constexpr std::uint32_t kFree = 0;
    // Row is one more than it is, so that nothing stands for a free slot.
    struct Slot
    {
        std::uint32_t hash = 0;
        std::uint32_t row = kFree;
    };

    [[nodiscard]] static std::uint64_t hashOf(std::string_view name) noexcept;
    // Of the bits that do not say where the slot is.
    [[nodiscard]] static constexpr std::uint32_t tagOf(std::uint64_t hash) noexcept
    {
        return static_cast<std::uint32_t>(hash >> 32U);
    }

    std::vector<Slot> m_Slots;
    std::size_t m_Mask;
};

} // namespace TAMBO::formats
