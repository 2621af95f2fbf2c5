// SPDX-License-Identifier: GPL-3.0-or-later
// A set of objects by their addresses, for sets of a million: one block of memory in place of a
// node for each, so that asking costs one look into it.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace TAMBO {

template <typename Object> class PointerSet
{
public:
    PointerSet() = default;
    // Has room for so many; more make it grow.
    explicit PointerSet(std::size_t expected) { reserve(expected); }
    template <typename Iterator> PointerSet(Iterator begin, Iterator end)
    {
        reserve(static_cast<std::size_t>(end - begin));
        for (; begin != end; ++begin)
            insert(*begin);
    }

    // False when it is in already.
    bool insert(const Object *object)
    {
        if (object == nullptr)
            return !std::exchange(m_HasNull, true);
        if (2 * (m_Count + 1) > m_Places.size())
            reserve(2 * m_Count + 4);
        const Object *&place = m_Places[placeOf(object)];
        if (place == object)
            return false;
        place = object;
        ++m_Count;
        return true;
    }
    [[nodiscard]] bool contains(const Object *object) const noexcept
    {
        if (object == nullptr)
            return m_HasNull;
        return m_Count > 0 && m_Places[placeOf(object)] == object;
    }
    [[nodiscard]] std::size_t size() const noexcept { return m_Count + (m_HasNull ? 1 : 0); }
    [[nodiscard]] bool empty() const noexcept { return size() == 0; }

private:
    void reserve(std::size_t count)
    {
        std::vector<const Object *> before(std::bit_ceil(2 * count + 2));
        before.swap(m_Places);
        m_Shift = 64U - static_cast<unsigned>(std::countr_zero(m_Places.size()));
        for (const Object *object : before) {
            if (object != nullptr)
                m_Places[placeOf(object)] = object;
        }
    }
    // Where it is, or would be. At most half of the places are taken.
    [[nodiscard]] std::size_t placeOf(const Object *object) const noexcept
    {
        // Spreads neighbours, whose last bits are the same, over all places.
        constexpr std::uint64_t kSpread = 0x9e3779b97f4a7c15;
        std::size_t place = reinterpret_cast<std::uintptr_t>(object) * kSpread >> m_Shift;
        while (m_Places[place] != nullptr && m_Places[place] != object)
            place = (place + 1) & (m_Places.size() - 1);
        return place;
    }

    // Null where there is none.
    std::vector<const Object *> m_Places;
    bool m_HasNull = false;
    unsigned m_Shift = 0;
    std::size_t m_Count = 0;
};

} // namespace TAMBO
