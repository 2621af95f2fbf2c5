// SPDX-License-Identifier: GPL-3.0-or-later
#include "ObjectStore.h"

#include "Alignment.h"
#include "AlignmentTable.h"
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

// Rows refer to sequences. Ties are made when all is there.
bool isAlignment(const StoredObject &object)
{
    // A cast that fails takes its time, and there may be a million sequences.
    return object.refersToOthers() && dynamic_cast<const Alignment *>(&object) != nullptr;
}

// About what it takes, without a look at each row.
std::size_t sizeOf(const StoredObject &object)
{
    constexpr std::size_t kBytesBesideCells = 8;
    if (!isAlignment(object))
        return object.bytes();
    const AlignmentTable &rows = dynamic_cast<const Alignment &>(object).table();
    return rows.rowCount() * (kBytesBesideCells + rows.width() / 8);
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

bool ObjectStore::isWritten(const StoredObject &alignment) const noexcept
{
    const auto end = m_Alignments.begin() + std::ptrdiff_t(m_NextAlignment);
    return std::find(m_Alignments.begin(), end, &alignment) != end;
}

std::size_t ObjectStore::partCount(const StoredObject &object) const
{
    const auto kept = m_Kept.find(&object);
    return kept == m_Kept.end() ? object.partCount() : kept->second.partCount();
}

void ObjectStore::writePart(const StoredObject &object, ObjectWriter &out)
{
    if (const auto kept = m_Kept.find(&object); kept != m_Kept.end())
        kept->second.writePart(m_Part++, out);
    else
        object.writePart(m_Part++, out);
}

void ObjectStore::keepRow(const StoredObject &alignment, std::size_t row)
{
    if (!isWritten(alignment))
        m_Kept.try_emplace(&alignment, alignment).first->second.keep(row);
}

bool ObjectStore::keepMove(const StoredObject &alignment, std::size_t from, std::size_t to)
{
    return isWritten(alignment) ||
           m_Kept.try_emplace(&alignment, alignment).first->second.move(from, to);
}

bool ObjectStore::isBelow(std::size_t bytes) const
{
    if ((size() - m_Written) * kBytesOfObject > bytes)
        return false;
    const std::size_t standing = m_Space == nullptr ? 0 : m_Space->objectCount();
    std::size_t sum = 0;
    const auto add = [&](const StoredObject &object) { sum += kBytesOfObject + sizeOf(object); };
    for (std::size_t i = m_Next; i < standing + m_Others.size() && sum <= bytes; ++i)
        add(i < standing ? *StoredObject::from(m_Space->object(i)) : *m_Others[i - standing]);
    for (std::size_t i = m_NextAlignment; i < m_Alignments.size() && sum <= bytes; ++i)
        add(*m_Alignments[i]);
    return sum <= bytes;
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
        writePart(*object, out);
        if (m_Part == partCount(*object)) {
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
    m_Kept.clear();
}

} // namespace TAMBO
