// SPDX-License-Identifier: GPL-3.0-or-later
#include "ObjectStore.h"

#include "Alignment.h"
#include "ObjectSpace.h"
#include "ObjectWriter.h"

#include <utility>

namespace TAMBO {

namespace {

// What takes as long as writing so many bytes: going to an object, and to all that a further part
// of a large one is about, some thousand rows or numbers.
constexpr std::size_t kBytesOfObject = 256;
constexpr std::size_t kBytesOfPart = std::size_t(128) << 10;

// Rows refer to sequences. Ties are made when all is there.
bool isAlignment(const StoredObject &object)
{
    // A cast that fails takes its time, and there may be a million sequences.
    return object.refersToOthers() && dynamic_cast<const Alignment *>(&object) != nullptr;
}

} // namespace

ObjectStore::ObjectStore(const ObjectSpace &space, std::vector<const StoredObject *> others)
    : m_Space(&space), m_Others(std::move(others))
{ }

ObjectStore::ObjectStore(std::vector<const StoredObject *> objects) : m_Others(std::move(objects))
{ }

std::size_t ObjectStore::size() const noexcept
{
    return m_Others.size() + (m_Space == nullptr ? 0 : m_Space->objectCount() + 1);
}

const StoredObject *ObjectStore::findNext()
{
    const std::size_t standing = m_Space == nullptr ? 0 : m_Space->objectCount();
    for (; m_Next < standing + m_Others.size(); ++m_Next) {
        const StoredObject *const object = m_Next < standing
                                               ? StoredObject::from(m_Space->object(m_Next))
                                               : m_Others[m_Next - standing];
        if (!isAlignment(*object))
            return object;
        m_Alignments.push_back(object);
    }
    if (m_NextAlignment < m_Alignments.size())
        return m_Alignments[m_NextAlignment];
    return m_IsSpaceWritten ? nullptr : m_Space;
}

bool ObjectStore::areOthersDone() const noexcept
{
    return m_Next == size() - (m_Space == nullptr ? 0 : 1);
}

bool ObjectStore::writeNext(ObjectWriter &out, std::size_t bytes)
{
    const StoredObject *object = findNext();
    if (object == nullptr)
        return false;
    m_HasBegunAlignments = areOthersDone();
    std::size_t visits = 0;
    do {
        visits += m_Part == 0 ? kBytesOfObject : kBytesOfPart;
        object->writePart(m_Part++, out);
        if (m_Part == object->partCount()) {
            m_Part = 0;
            ++m_Written;
            if (!m_HasBegunAlignments)
                ++m_Next;
            else if (m_NextAlignment < m_Alignments.size())
                ++m_NextAlignment;
            else
                m_IsSpaceWritten = true;
            object = findNext();
        }
    } while (object != nullptr && areOthersDone() == m_HasBegunAlignments &&
             out.size() + visits < bytes);
    return true;
}

void ObjectStore::goBack()
{
    if (!m_HasBegunAlignments)
        return;
    m_HasBegunAlignments = false;
    m_Written -= m_NextAlignment + (m_IsSpaceWritten ? 1 : 0);
    m_NextAlignment = 0;
    m_IsSpaceWritten = false;
    m_Part = 0;
}

} // namespace TAMBO
