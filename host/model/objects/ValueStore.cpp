// SPDX-License-Identifier: GPL-3.0-or-later
#include "ValueStore.h"

#include "StoredObject.h"
#include "TextBytes.h"

#include <utility>

namespace TAMBO {

namespace {

// What a map's entry takes beside its content.
constexpr std::size_t kEntry = 4 * sizeof(void *);

std::uint32_t knownIdentity(const Compound &object) noexcept
{
    const StoredObject *const stored = StoredObject::from(&object);
    const CompoundState *const state = stored == nullptr ? nullptr : stored->ownState();
    return state == nullptr ? 0 : state->identity;
}

} // namespace

ValueStore &ValueStore::get()
{
    // Never destroyed: objects may go while the program ends.
    static auto *const store = new ValueStore;
    return *store;
}

const ValueStore::Plugins *ValueStore::of(const Compound &object) const noexcept
{
    return m_Objects.empty() ? nullptr : of(knownIdentity(object));
}

const ValueStore::Plugins *ValueStore::of(std::uint32_t identity) const noexcept
{
    const auto found = m_Objects.find(identity);
    return found == m_Objects.end() ? nullptr : &found->second;
}

const std::string *ValueStore::find(const Compound &object, const std::string &plugin,
                                    const std::string &key) const
{
    const Plugins *const plugins = of(object);
    if (plugins == nullptr)
        return nullptr;
    const auto values = plugins->find(plugin);
    if (values == plugins->end())
        return nullptr;
    const auto value = values->second.find(key);
    return value == values->second.end() ? nullptr : &value->second;
}

std::optional<std::string> ValueStore::exchange(const Compound &object, const std::string &plugin,
                                                const std::string &key,
                                                std::optional<std::string> value)
{
    const std::uint32_t identity = identityOf(object);
    if (value) {
        const auto [place, isNew] = m_Objects[identity][plugin].try_emplace(key);
        std::string before = std::exchange(place->second, std::move(*value));
        return isNew ? std::nullopt : std::optional(std::move(before));
    }
    std::optional<std::string> before;
    const auto plugins = m_Objects.find(identity);
    if (plugins == m_Objects.end())
        return before;
    const auto values = plugins->second.find(plugin);
    if (values == plugins->second.end())
        return before;
    if (const auto taken = values->second.extract(key))
        before = std::move(taken.mapped());
    if (values->second.empty())
        plugins->second.erase(values);
    if (plugins->second.empty())
        m_Objects.erase(plugins);
    return before;
}

void ValueStore::copy(const Compound &from, const Compound &to)
{
    if (const Plugins *const plugins = of(from)) {
        // Making room may move what is copied.
        Plugins copied = *plugins;
        m_Objects[identityOf(to)] = std::move(copied);
    }
}

std::size_t ValueStore::bytes(const Compound &object) const noexcept
{
    const Plugins *const plugins = of(object);
    if (plugins == nullptr)
        return 0;
    std::size_t bytes = kEntry + sizeof(*plugins);
    for (const auto &[plugin, values] : *plugins) {
        bytes += kEntry + sizeof(plugin) + sizeof(values) + textBytes(plugin);
        for (const auto &[key, value] : values)
            bytes += kEntry + 2 * sizeof(key) + textBytes(key) + textBytes(value);
    }
    return bytes;
}

void forgetValues(std::uint32_t identity) noexcept
{
    ValueStore::get().forget(identity);
}

} // namespace TAMBO
