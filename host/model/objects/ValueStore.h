// SPDX-License-Identifier: GPL-3.0-or-later
// The values that plug-ins keep with objects. Beside the objects and not in them, since few of a
// million sequences have any.
#pragma once

#include "CompoundState.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <unordered_map>
#include <utility>

namespace TAMBO {

class ValueStore
{
public:
    // By key.
    using Values = std::map<std::string, std::string>;
    // By plug-in. None of them is without values.
    using Plugins = std::map<std::string, Values>;

    [[nodiscard]] static ValueStore &get();

    [[nodiscard]] bool empty() const noexcept { return m_Objects.empty(); }
    // Null when the object has none.
    [[nodiscard]] const Plugins *of(const Compound &object) const noexcept;
    // By its number.
    [[nodiscard]] const Plugins *of(std::uint32_t identity) const noexcept;
    [[nodiscard]] const std::string *find(const Compound &object, const std::string &plugin,
                                          const std::string &key) const;
    // Without recording; the way of the edits. Nothing stands for no value, which is given back
    // when there was none.
    std::optional<std::string> exchange(const Compound &object, const std::string &plugin,
                                        const std::string &key, std::optional<std::string> value);
    // For an object that is being made.
    void copy(const Compound &from, const Compound &to);
    // For an object that was kept in another run of the program.
    void restore(std::uint32_t identity, Plugins values)
    {
        m_Objects.insert_or_assign(identity, std::move(values));
    }
    void forget(std::uint32_t identity) noexcept { m_Objects.erase(identity); }

    // What the values of the object occupy, about; those of its parts are not counted.
    [[nodiscard]] std::size_t bytes(const Compound &object) const noexcept;

private:
    // By identityOf(): the values of a deleted object wait for it.
    std::unordered_map<std::uint32_t, Plugins> m_Objects;
};

} // namespace TAMBO
