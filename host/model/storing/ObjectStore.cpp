// SPDX-License-Identifier: GPL-3.0-or-later
#include "ObjectStore.h"

#include "Alignment.h"
#include "ObjectSpace.h"
#include "ObjectWriter.h"

#include <algorithm>
#include <utility>

namespace TAMBO {

namespace {

// What takes as long as writing so many bytes: going to an object, and to all that a further part
// of a large one is about, some thousand rows or numbers.
constexpr std::size_t kBytesOfObject = 256;
constexpr std::size_t kBytesOfPart = std::size_t(128) << 10;

} // namespace

ObjectStore::ObjectStore(const ObjectSpace &space, std::vector<const StoredObject *> others)
{
    m_Objects.reserve(space.objectCount() + others.size() + 1);
    for (std::size_t i = 0; i < space.objectCount(); ++i)
        m_Objects.push_back(StoredObject::from(space.object(i)));
    m_Objects.insert(m_Objects.end(), others.begin(), others.end());
    arrange();
    m_Objects.push_back(&space);
}

ObjectStore::ObjectStore(std::vector<const StoredObject *> objects) : m_Objects(std::move(objects))
{
    arrange();
}

// Rows refer to sequences. Ties are made when all is there.
void ObjectStore::arrange()
{
    std::stable_partition(m_Objects.begin(), m_Objects.end(), [](const StoredObject *object) {
        // A cast that fails takes its time, and there may be a million sequences.
        return !object->refersToOthers() || dynamic_cast<const Alignment *>(object) == nullptr;
    });
}

bool ObjectStore::writeNext(ObjectWriter &out, std::size_t bytes)
{
    if (m_Next == m_Objects.size())
        return false;
    std::size_t visits = 0;
    do {
        const StoredObject &object = *m_Objects[m_Next];
        visits += m_Part == 0 ? kBytesOfObject : kBytesOfPart;
        object.writePart(m_Part++, out);
        if (m_Part == object.partCount()) {
            m_Part = 0;
            ++m_Next;
        }
    } while (m_Next < m_Objects.size() && out.size() + visits < bytes);
    return true;
}

} // namespace TAMBO
