// SPDX-License-Identifier: GPL-3.0-or-later
#include "ObjectNames.h"

#include "Compound.h"
#include "ObjectTwins.h"

#include <cstddef>

namespace TAMBO {

std::vector<std::string> ObjectNames::toldApart(const std::vector<const Compound *> &objects)
{
    services::ObjectTwins::Objects known;
    for (const Compound *const object : objects)
        if (object != nullptr)
            known.push_back(object);
    const std::vector<QString> differences = services::ObjectTwins::differences(
        known, [](const Compound &object) { return object.Name(); });
    std::vector<std::string> names;
    names.reserve(objects.size());
    std::size_t next = 0;
    for (const Compound *const object : objects) {
        names.push_back(object == nullptr ? std::string() : object->Name());
        if (object == nullptr)
            continue;
        const QString &difference = differences[next++];
        if (!difference.isEmpty())
            names.back() += " (" + difference.toStdString() + ')';
    }
    return names;
}

} // namespace TAMBO
