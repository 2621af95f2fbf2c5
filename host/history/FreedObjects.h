// SPDX-License-Identifier: GPL-3.0-or-later
// Objects that are freed together, maybe a million of them.
#pragma once

#include <algorithm>
#include <utility>
#include <vector>

namespace TAMBO {

class Compound;

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
    [[nodiscard]] auto begin() const noexcept { return m_Objects.begin(); }
    [[nodiscard]] auto end() const noexcept { return m_Objects.end(); }

private:
    std::vector<const Compound *> m_Objects;
};

} // namespace TAMBO
