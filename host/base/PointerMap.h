// SPDX-License-Identifier: GPL-3.0-or-later
// Values of objects by their addresses, for maps of a million: one block of memory in place of a
// node for each, so that asking costs one look into it.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace TAMBO {

template <typename Object, typename Value> class PointerMap
{
public:
    PointerMap() = default;
    // Has room for so many; more make it grow.
    explicit PointerMap(std::size_t expected) { reserve(expected); }

    // Whether it is new. The value stays where it is until the next one comes.
    std::pair<Value &, bool> insert(const Object &object)
    {
        if (2 * (m_Count + 1) > m_Places.size())
            reserve(2 * m_Count + 4);
        Place &place = m_Places[placeOf(&object)];
        const bool isNew = place.object == nullptr;
        if (isNew) {
            place.object = &object;
            ++m_Count;
        }
        return {place.value, isNew};
    }
    Value &operator[](const Object &object) { return insert(object).first; }
    // Null when there is none.
    [[nodiscard]] const Value *find(const Object &object) const noexcept
    {
        if (m_Count == 0)
            return nullptr;
        const Place &place = m_Places[placeOf(&object)];
        return place.object == nullptr ? nullptr : &place.value;
    }
    [[nodiscard]] Value *find(const Object &object) noexcept
    {
        return const_cast<Value *>(std::as_const(*this).find(object));
    }
    // Calls visit(object, value) for each until one call gives false.
    template <typename Visit> void forEachWhile(const Visit &visit) const
    {
        for (const Place &place : m_Places) {
            if (place.object != nullptr && !visit(*place.object, place.value))
                return;
        }
    }
    [[nodiscard]] std::size_t size() const noexcept { return m_Count; }
    [[nodiscard]] bool empty() const noexcept { return m_Count == 0; }

private:
    struct Place
    {
        // Null where there is none.
        const Object *object = nullptr;
        [[no_unique_address]] Value value{};
    };

    void reserve(std::size_t count)
    {
        std::vector<Place> before(std::bit_ceil(2 * count + 2));
        before.swap(m_Places);
        m_Shift = 64U - static_cast<unsigned>(std::countr_zero(m_Places.size()));
        for (Place &place : before) {
            if (place.object != nullptr)
                m_Places[placeOf(place.object)] = std::move(place);
        }
    }
    // Where it is, or would be. At most half of the places are taken.
    [[nodiscard]] std::size_t placeOf(const Object *object) const noexcept
    {
        // Spreads neighbours, whose last bits are the same, over all places.
        constexpr std::uint64_t kSpread = 0x9e3779b97f4a7c15;
        std::size_t place = reinterpret_cast<std::uintptr_t>(object) * kSpread >> m_Shift;
        while (m_Places[place].object != nullptr && m_Places[place].object != object)
            place = (place + 1) & (m_Places.size() - 1);
        return place;
    }

    std::vector<Place> m_Places;
    unsigned m_Shift = 0;
    std::size_t m_Count = 0;
};

} // namespace TAMBO
