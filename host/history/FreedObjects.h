// SPDX-License-Identifier: GPL-3.0-or-later
// Objects that are freed together, maybe a million of them.
#pragma once

#include "Compound.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace TAMBO {

class FreedObjects
{
public:
    explicit FreedObjects(std::vector<const Compound *> objects) : m_Objects(std::move(objects))
    {
        // Those that came one after the other mostly stand in memory so.
        if (!std::ranges::is_sorted(m_Objects))
            std::ranges::sort(m_Objects);
    }

    [[nodiscard]] bool contains(const Compound *object) const
    {
        return std::ranges::binary_search(m_Objects, object);
    }
    // It goes, or what it is a part of.
    [[nodiscard]] bool holds(const Compound &object) const
    {
        const Compound *whole = &object;
        while (whole != nullptr && !contains(whole))
            whole = whole->Parent();
        return whole != nullptr;
    }
    [[nodiscard]] auto begin() const noexcept { return m_Objects.begin(); }
    [[nodiscard]] auto end() const noexcept { return m_Objects.end(); }

private:
    std::vector<const Compound *> m_Objects;
};

} // namespace TAMBO
