// SPDX-License-Identifier: GPL-3.0-or-later
#include "ObjectContainer.h"

#include "Compound.h"
#include "ValueStore.h"

#include <utility>

namespace TAMBO {

ObjectContainer::~ObjectContainer() = default;

void ObjectContainer::appendObjects(std::vector<std::unique_ptr<StoredObject>> objects)
{
    for (std::unique_ptr<StoredObject> &object : objects)
        insertObject(objectCount(), std::unique_ptr<Compound>(&object.release()->asCompound()));
}

void ObjectContainer::insertObjects(const std::vector<std::size_t> &indices, Objects objects)
{
    for (std::size_t i = 0; i < indices.size(); ++i)
        insertObject(indices[i], std::move(objects[i]));
}

ObjectContainer::Objects ObjectContainer::takeObjects(const std::vector<std::size_t> &indices)
{
    Objects taken(indices.size());
    for (std::size_t i = indices.size(); i-- > 0;)
        taken[i] = takeObject(indices[i]);
    return taken;
}

std::size_t ObjectContainer::bytesOfObjects() const noexcept
{
    std::size_t sum = 0;
    const ValueStore &values = ValueStore::get();
    for (std::size_t i = 0; i < objectCount(); ++i)
        sum += StoredObject::from(object(i))->bytes() + values.bytes(*object(i));
    return sum;
}

} // namespace TAMBO
