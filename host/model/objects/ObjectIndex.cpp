// SPDX-License-Identifier: GPL-3.0-or-later
#include "ObjectIndex.h"

#include "Compound.h"
#include "ObjectContainer.h"

namespace TAMBO {

std::vector<ObjectIndex *> &ObjectIndex::all() noexcept
{
    // Never destroyed: objects may go while the program ends.
    static auto *const indexes = new std::vector<ObjectIndex *>;
    return *indexes;
}

ObjectIndex::ObjectIndex()
{
    all().push_back(this);
}

ObjectIndex::~ObjectIndex()
{
    std::erase(all(), this);
}

Compound *ObjectIndex::find(std::uint32_t identity) const noexcept
{
    const auto found = m_Objects.find(identity);
    return found == m_Objects.end() ? nullptr : found->second;
}

bool ObjectIndex::insert(std::uint32_t identity, Compound &object)
{
    return m_Objects.try_emplace(identity, &object).second;
}

void ObjectIndex::add(StoredObject &object)
{
    m_Objects.insert_or_assign(object.identity(), &object.asCompound());
}

void ObjectIndex::addTree(StoredObject &object)
{
    add(object);
    const auto *const container = dynamic_cast<const ObjectContainer *>(&object);
    if (container == nullptr)
        return;
    for (std::size_t i = 0; i < container->objectCount(); ++i)
        addTree(*StoredObject::from(container->object(i)));
}

void forgetIndexed(std::uint32_t identity) noexcept
{
    for (ObjectIndex *const index : ObjectIndex::all())
        index->m_Objects.erase(identity);
}

} // namespace TAMBO
