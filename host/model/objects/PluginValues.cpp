// SPDX-License-Identifier: GPL-3.0-or-later
#include "PluginValues.h"

#include "ChangeScope.h"
#include "Compound.h"
#include "StoredObject.h"
#include "TextBytes.h"
#include "ValueEdit.h"
#include "ValueName.h"
#include "ValueStore.h"

#include <utility>

namespace TAMBO {

namespace {

bool refuseValue(const std::string &plugin, const std::string &key, const std::string &cause)
{
    refuse("The value \"" + shownName(key) + "\" of \"" + shownName(plugin) +
           "\" was not kept: " + cause + '.');
    return false;
}

std::size_t sizeOf(const ValueStore::Plugins &plugins)
{
    std::size_t size = 0;
    for (const auto &[plugin, values] : plugins) {
        for (const auto &[key, value] : values)
            size += key.size() + value.size();
    }
    return size;
}

// Empty when the object may have the value.
std::string problemOf(Compound *object, const std::string &plugin, const std::string &key)
{
    const std::string problem =
        valueNameProblem(plugin, PluginValues::kLongestName, key, PluginValues::kLongestKey);
    if (!problem.empty())
        return problem;
    if (object == nullptr)
        return "there is no object";
    if (stateOf(*object) == nullptr || object->Kind() == CompoundKind::Space)
        return "objects of this kind have none";
    if (object->Parent() == nullptr)
        return "\"" + object->GetFQName() + "\" has been deleted";
    if (Publisher::isPublishing())
        return "a change is being published";
    return {};
}

bool change(Compound *object, const std::string &plugin, const std::string &key,
            std::optional<std::string> value)
{
    const std::string problem = problemOf(object, plugin, key);
    if (!problem.empty())
        return refuseValue(plugin, key, problem);
    ValueStore &store = ValueStore::get();
    const std::string *const now = store.find(*object, plugin, key);
    if (value ? now != nullptr && *now == *value : now == nullptr)
        return true;
    if (value) {
        if (value->size() > PluginValues::kLongestValue)
            return refuseValue(plugin, key, "it is longer than 16 MB");
        const ValueStore::Plugins *const others = store.of(*object);
        const std::size_t former = now == nullptr ? 0 : key.size() + now->size();
        const std::size_t size = (others == nullptr ? 0 : sizeOf(*others)) - former;
        if (size + key.size() + value->size() > PluginValues::kMostOfObject)
            return refuseValue(plugin, key,
                               "the values of \"" + object->GetFQName() + "\" would exceed 64 MB");
    }
    if (!mayChange(*object))
        return false;
    const ChangeScope scope;
    recordInverse(ValueEdit(*object, plugin, key, std::move(value)).apply());
    return true;
}

} // namespace

} // namespace TAMBO

using TAMBO::ValueStore;

bool PluginValues::Set(TAMBO::Compound *object, const std::string &plugin, const std::string &key,
                       const std::string &value)
{
    return TAMBO::change(object, plugin, key, value);
}

bool PluginValues::Remove(TAMBO::Compound *object, const std::string &plugin,
                          const std::string &key)
{
    return TAMBO::change(object, plugin, key, std::nullopt);
}

std::optional<std::string> PluginValues::Get(const TAMBO::Compound *object,
                                             const std::string &plugin, const std::string &key)
{
    const std::string *const value =
        object == nullptr ? nullptr : ValueStore::get().find(*object, plugin, key);
    return value == nullptr ? std::nullopt : std::optional(*value);
}

std::vector<std::string> PluginValues::Keys(const TAMBO::Compound *object,
                                            const std::string &plugin)
{
    std::vector<std::string> keys;
    const ValueStore::Plugins *const plugins =
        object == nullptr ? nullptr : ValueStore::get().of(*object);
    if (plugins == nullptr || !plugins->contains(plugin))
        return keys;
    for (const auto &[key, value] : plugins->at(plugin))
        keys.push_back(key);
    return keys;
}

std::vector<std::string> PluginValues::Plugins(const TAMBO::Compound *object)
{
    std::vector<std::string> names;
    if (const ValueStore::Plugins *const plugins =
            object == nullptr ? nullptr : ValueStore::get().of(*object)) {
        for (const auto &[name, values] : *plugins)
            names.push_back(name);
    }
    return names;
}
