// SPDX-License-Identifier: GPL-3.0-or-later
// Objects by the number that identityOf() gives, for what is kept beside them and refers to them.
// An object that is destroyed leaves every index by itself, so none ever leads to one that is gone.
#pragma once

#include "CompoundState.h"

#include <cstddef>
#include <cstdint>
#include <unordered_map>
#include <vector>

namespace TAMBO {

class Compound;
class StoredObject;

class ObjectIndex
{
public:
    ObjectIndex();
    ~ObjectIndex();
    ObjectIndex(const ObjectIndex &) = delete;
    ObjectIndex &operator=(const ObjectIndex &) = delete;

    // Null when no object in it has the number.
    [[nodiscard]] Compound *find(std::uint32_t identity) const noexcept;
    // An object that has not got its number yet. False when another one has it.
    [[nodiscard]] bool insert(std::uint32_t identity, Compound &object);
    void erase(std::uint32_t identity) noexcept { m_Objects.erase(identity); }
    // Gets a number if it has none.
    void add(StoredObject &object);
    // The same with all that it owns.
    void addTree(StoredObject &object);
    void clear() noexcept { m_Objects.clear(); }
    // Calls visit(object) for each, in no particular order.
    template <typename Visit> void forEach(Visit visit) const
    {
        for (const auto &[identity, object] : m_Objects)
            visit(*object);
    }
    [[nodiscard]] std::size_t size() const noexcept { return m_Objects.size(); }

private:
    friend void forgetIndexed(std::uint32_t identity) noexcept;

    // Those there are; mostly none.
    [[nodiscard]] static std::vector<ObjectIndex *> &all() noexcept;

    std::unordered_map<std::uint32_t, Compound *> m_Objects;
};

} // namespace TAMBO
