// SPDX-License-Identifier: GPL-3.0-or-later
#include "ObjectsEdit.h"

#include "ChangeScope.h"
#include "Compound.h"
#include "ObjectContainer.h"
#include "Space.h"
#include "ValueStore.h"

#include <algorithm>
#include <numeric>
#include <string_view>
#include <typeinfo>
#include <utility>

namespace TAMBO {

ObjectsEdit::ObjectsEdit(ObjectContainer &container, std::size_t index, const char *kind,
                         EditPart part)
    : m_Container(container),
      m_Index(index),
      m_Kind(kind),
      m_Part(part),
      m_Members{container.object(index)}
{ }

ObjectsEdit::ObjectsEdit(ObjectContainer &container, std::size_t index, const char *kind,
                         EditPart part, std::vector<Compound *> members)
    : m_Container(container),
      m_Index(index),
      m_Kind(kind),
      m_Part(part),
      m_Members(std::move(members))
{ }

ObjectsEdit::ObjectsEdit(ObjectContainer &container, std::size_t index, const char *kind,
                         std::unique_ptr<Compound> object)
    : m_Container(container), m_Index(index), m_Kind(kind), m_Members{object.get()}
{
    m_Owned.push_back(std::move(object));
}

ObjectsEdit::ObjectsEdit(ObjectContainer &container, std::vector<std::size_t> indices,
                         const char *kind, std::vector<std::unique_ptr<Compound>> objects)
    : m_Container(container), m_Index(indices.front()), m_Kind(kind), m_Owned(std::move(objects))
{
    m_Members.reserve(m_Owned.size());
    for (const std::unique_ptr<Compound> &object : m_Owned)
        m_Members.push_back(object.get());
    if (indices.back() - indices.front() != indices.size() - 1)
        m_Indices = std::move(indices);
}

ObjectsEdit::ObjectsEdit(ObjectsEdit &applied)
    : m_Container(applied.m_Container),
      m_Index(applied.m_Index),
      m_Indices(std::move(applied.m_Indices)),
      m_Kind(applied.m_Kind),
      m_Part(applied.m_Part),
      m_Members(std::move(applied.m_Members))
{ }

ObjectsEdit::~ObjectsEdit() = default;

Compound &ObjectContainer::add(std::unique_ptr<Compound> object, EditPart part)
{
    const ChangeScope scope;
    Compound &added = *object;
    const std::size_t index = objectCount();
    insertObject(index, std::move(object));
    recordInverse(std::make_unique<ObjectsEdit>(*this, index, "add", part));
    return added;
}

void ObjectContainer::addAll(std::vector<std::unique_ptr<StoredObject>> objects, EditPart part)
{
    if (objects.empty())
        return;
    const ChangeScope scope;
    const std::size_t index = objectCount();
    std::vector<Compound *> added;
    added.reserve(objects.size());
    for (const std::unique_ptr<StoredObject> &object : objects)
        added.push_back(&object->asCompound());
    appendObjects(std::move(objects));
    recordInverse(std::make_unique<ObjectsEdit>(*this, index, "add", part, std::move(added)));
}

bool ObjectsEdit::absorb(const Edit &edit)
{
    const auto *const next = dynamic_cast<const ObjectsEdit *>(&edit);
    if (next == nullptr || !m_Owned.empty() || !next->m_Owned.empty() || !m_Indices.empty() ||
        !next->m_Indices.empty() || &m_Container != &next->m_Container ||
        m_Index + m_Members.size() != next->m_Index || std::string_view(m_Kind) != next->m_Kind ||
        m_Part != next->m_Part)
        return false;
    const Compound &last = *m_Members.back();
    const Compound &following = *next->m_Members.front();
    if (typeid(last) != typeid(following))
        return false;
    m_Members.insert(m_Members.end(), next->m_Members.begin(), next->m_Members.end());
    return true;
}

std::unique_ptr<Edit> ObjectsEdit::apply()
{
    const std::vector<std::size_t> places = indices();
    std::unique_ptr<ObjectsEdit> inverse(new ObjectsEdit(*this));
    if (m_Owned.empty()) {
        inverse->m_Owned = m_Container.takeObjects(places);
        publishAtEnd(Publisher::Delete);
    } else {
        m_Container.insertObjects(places, std::move(m_Owned));
        m_Owned.clear();
        publishAtEnd(Publisher::Add);
    }
    return inverse;
}

std::vector<std::size_t> ObjectsEdit::indices() const
{
    if (!m_Indices.empty())
        return m_Indices;
    std::vector<std::size_t> indices(m_Members.size());
    std::iota(indices.begin(), indices.end(), m_Index);
    return indices;
}

std::size_t ObjectsEdit::bytes() const
{
    std::size_t bytes = sizeof(*this) + m_Indices.capacity() * sizeof(std::size_t) +
                        m_Members.capacity() * sizeof(void *) +
                        m_Owned.capacity() * sizeof(m_Owned[0]);
    for (const std::unique_ptr<Compound> &object : m_Owned)
        bytes += StoredObject::from(object.get())->bytes() + ValueStore::get().bytes(*object);
    return bytes;
}

Compound *ObjectsEdit::subject() const
{
    return m_Members.front();
}

void ObjectsEdit::appendSubjects(std::vector<const Compound *> &out) const
{
    out.insert(out.end(), m_Members.begin(), m_Members.end());
}

EditPart ObjectsEdit::part() const
{
    return isTop() ? m_Part : StoredObject::from(m_Members.front())->partOfParent();
}

void ObjectsEdit::appendHolders(std::vector<const Compound *> &out) const
{
    if (isTop())
        appendSubjects(out);
    else
        out.push_back(&m_Container.asCompound());
}

void ObjectsEdit::appendOwned(std::vector<const Compound *> &out) const
{
    for (const std::unique_ptr<Compound> &object : m_Owned)
        out.push_back(object.get());
}

void ObjectsEdit::appendNeeded(std::vector<const Compound *> &out) const
{
    out.push_back(&container());
    for (const std::unique_ptr<Compound> &object : m_Owned)
        StoredObject::from(object.get())->forEachOther([&out](const Compound &other) {
            out.push_back(&other);
        });
}

const Compound &ObjectsEdit::container() const noexcept
{
    return m_Container.asCompound();
}

bool ObjectsEdit::isTop() const
{
    return &container() == Space::instance();
}

const Compound *ObjectsEdit::guarded() const
{
    if (!m_Owned.empty())
        return &m_Container.asCompound();
    const auto locked =
        std::ranges::find_if(m_Members, [](const Compound *member) { return lockOn(*member); });
    return locked == m_Members.end() ? m_Members.front() : *locked;
}

} // namespace TAMBO
