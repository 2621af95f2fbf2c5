// SPDX-License-Identifier: GPL-3.0-or-later
// A set of objects by their addresses, for sets of a million.
#pragma once

#include "PointerMap.h"

#include <cstddef>
#include <utility>

namespace TAMBO {

template <typename Object> class PointerSet
{
public:
    PointerSet() = default;
    // Has room for so many; more make it grow.
    explicit PointerSet(std::size_t expected) : m_Objects(expected) { }
    template <typename Iterator>
    PointerSet(Iterator begin, Iterator end) : m_Objects(static_cast<std::size_t>(end - begin))
    {
        for (; begin != end; ++begin)
            insert(*begin);
    }

    // False when it is in already.
    bool insert(const Object *object)
    {
        return object == nullptr ? !std::exchange(m_HasNull, true)
                                 : m_Objects.insert(*object).second;
    }
    [[nodiscard]] bool contains(const Object *object) const noexcept
    {
        return object == nullptr ? m_HasNull : m_Objects.find(*object) != nullptr;
    }
    [[nodiscard]] std::size_t size() const noexcept
    {
        return m_Objects.size() + (m_HasNull ? 1 : 0);
    }
    [[nodiscard]] bool empty() const noexcept { return size() == 0; }

private:
    struct Nothing
    {
    };

    PointerMap<Object, Nothing> m_Objects;
    bool m_HasNull = false;
};

} // namespace TAMBO
