// SPDX-License-Identifier: GPL-3.0-or-later
#include "ObjectSpace.h"

#include "ChangeScope.h"
#include "ObjectOperations.h"
#include "ObjectWriter.h"
#include "Revisions.h"
#include "StoredHead.h"

#include <algorithm>
#include <utility>

namespace TAMBO {

namespace {

// So many numbers take half a millisecond: each object is looked at.
constexpr std::size_t kObjectsOfPart = 4096;

} // namespace

Space *Space::instance()
{
    return &ObjectSpace::get();
}

ObjectSpace &ObjectSpace::get()
{
    // Never destroyed, so that it outlives whatever static object still refers to it.
    static auto *const space = new ObjectSpace;
    return *space;
}

ObjectSpace::ObjectSpace()
{
    m_State.identity = kSpaceIdentity;
}

ObjectSpace::~ObjectSpace()
{
    reset();
}

void ObjectSpace::reset()
{
    // The newest first: alignments and tied sequences refer to what was there before them.
    while (!m_Objects.empty()) {
        const std::unique_ptr<Compound> last(m_Objects.back());
        m_Objects.pop_back();
    }
    m_Referrers.clear();
    growStructureRevision();
    m_State.isLocked = false;
    m_State.isSelected = false;
    m_State.color.reset();
}

Space::iterator ObjectSpace::begin()
{
    return m_Objects.begin();
}

Space::iterator ObjectSpace::end()
{
    return m_Objects.end();
}

std::string ObjectSpace::Name() const
{
    return m_Name;
}

char ObjectSpace::TypeCode() const
{
    return '\0';
}

std::string ObjectSpace::TypeName() const
{
    return "space";
}

Compound *ObjectSpace::Parent() const
{
    return nullptr;
}

std::size_t ObjectSpace::ChildCount() const
{
    return m_Objects.size();
}

Compound *ObjectSpace::Child(std::size_t index) const
{
    return object(index);
}

bool ObjectSpace::IsLocked() const
{
    return m_State.isLocked;
}

Vertex ObjectSpace::Position() const
{
    return {};
}

Color ObjectSpace::OwnColor() const
{
    return m_State.color.value_or(Color());
}

void ObjectSpace::AssignColor(const Color &color)
{
    assignColor(*this, m_State.color, color);
}

void ObjectSpace::SetSelected(bool selected)
{
    const ChangeScope scope;
    assignSelected(*this, m_State.isSelected, selected);
    for (Compound *object : m_Objects)
        object->SetSelected(selected);
}

bool ObjectSpace::IsSelected() const
{
    if (m_Objects.empty())
        return m_State.isSelected;
    return std::ranges::all_of(m_Objects,
                               [](const Compound *object) { return object->IsSelected(); });
}

Compound *ObjectSpace::object(std::size_t index) const noexcept
{
    return index < m_Objects.size() ? m_Objects[index] : nullptr;
}

void ObjectSpace::insertObject(std::size_t index, std::unique_ptr<Compound> object)
{
    StoredObject *const stored = StoredObject::from(object.get());
    if (stored == nullptr)
        return;
    stored->setParent(this);
    const auto place = m_Objects.begin() + std::ptrdiff_t(std::min(index, m_Objects.size()));
    m_Objects.insert(place, object.get());
    if (stored->refersToOthers())
        m_Referrers.push_back(stored);
    static_cast<void>(object.release());
}

// Room for twice as many would be a good part of what a million short sequences occupy, and so
// would what an alignment behind them asks for when there is none.
void ObjectSpace::makeRoomFor(std::size_t more)
{
    const std::size_t wanted = m_Objects.size() + more;
    if (wanted > m_Objects.capacity())
        m_Objects.reserve(wanted + wanted / 16 + 1);
}

void ObjectSpace::appendObjects(std::vector<std::unique_ptr<StoredObject>> objects)
{
    makeRoomFor(objects.size());
    for (std::unique_ptr<StoredObject> &object : objects) {
        StoredObject *const stored = object.release();
        m_Objects.push_back(&stored->asCompound());
        stored->setParent(this);
        if (stored->refersToOthers())
            m_Referrers.push_back(stored);
    }
}

void ObjectSpace::adopt(std::vector<Compound *> objects,
                        std::vector<StoredObject *> referrers) noexcept
{
    m_Objects = std::move(objects);
    m_Referrers = std::move(referrers);
}

bool ObjectSpace::canHold(const Compound &object) const
{
    // A sequence that stands nowhere yet is one by itself.
    const CompoundKind kind = object.Kind();
    return kind == CompoundKind::Structure || kind == CompoundKind::Sequence ||
           kind == CompoundKind::Chain || kind == CompoundKind::Alignment;
}

void ObjectSpace::noteReferences(StoredObject &object)
{
    const bool isListed = std::ranges::find(m_Referrers, &object) != m_Referrers.end();
    if (object.asCompound().Parent() == this && object.refersToOthers() && !isListed)
        m_Referrers.push_back(&object);
}

std::size_t ObjectSpace::bytes() const noexcept
{
    return sizeof(*this) + m_Objects.capacity() * sizeof(void *) +
           m_Referrers.capacity() * sizeof(void *) + bytesOfObjects();
}

std::size_t ObjectSpace::partCount() const noexcept
{
    return 1 + (m_Objects.size() + kObjectsOfPart - 1) / kObjectsOfPart;
}

void ObjectSpace::writePart(std::size_t part, ObjectWriter &out) const
{
    if (part == 0) {
        out.begin(StoredKind::Space);
        out.head(*this);
        out.text(m_Name);
        out.number(m_Objects.size());
        return;
    }
    const std::size_t begin = (part - 1) * kObjectsOfPart;
    const std::size_t end = std::min(begin + kObjectsOfPart, m_Objects.size());
    out.begin(StoredKind::SpaceOrder);
    out.number(end - begin);
    std::int64_t last = 0;
    for (std::size_t i = begin; i < end; ++i) {
        const std::int64_t number = identityOf(*m_Objects[i]);
        out.signedNumber(number - last);
        last = number;
    }
}

void ObjectSpace::restore(std::string name, const StoredHead &head)
{
    m_Name = std::move(name);
    m_State.color = head.color;
    m_State.isSelected = head.isSelected;
    m_State.isLocked = head.isLocked;
}

std::unique_ptr<Compound> ObjectSpace::takeObject(std::size_t index)
{
    if (index >= m_Objects.size())
        return nullptr;
    std::unique_ptr<Compound> taken(m_Objects[index]);
    m_Objects.erase(m_Objects.begin() + std::ptrdiff_t(index));
    StoredObject *const stored = StoredObject::from(taken.get());
    stored->setParent(nullptr);
    std::erase(m_Referrers, stored);
    return taken;
}

// One pass over the others, however many come or go.
void ObjectSpace::insertObjects(const std::vector<std::size_t> &indices, Objects objects)
{
    std::size_t kept = m_Objects.size();
    makeRoomFor(objects.size());
    m_Objects.resize(kept + objects.size());
    std::size_t place = m_Objects.size();
    for (std::size_t i = objects.size(); i-- > 0;) {
        while (place > indices[i] + 1)
            m_Objects[--place] = m_Objects[--kept];
        m_Objects[--place] = objects[i].get();
    }
    for (std::unique_ptr<Compound> &object : objects) {
        StoredObject *const stored = StoredObject::from(object.release());
        stored->setParent(this);
        if (stored->refersToOthers())
            m_Referrers.push_back(stored);
    }
}

ObjectContainer::Objects ObjectSpace::takeObjects(const std::vector<std::size_t> &indices)
{
    Objects taken;
    taken.reserve(indices.size());
    std::size_t kept = indices.empty() ? m_Objects.size() : indices.front();
    for (std::size_t i = kept; i < m_Objects.size(); ++i) {
        if (taken.size() < indices.size() && i == indices[taken.size()]) {
            taken.emplace_back(m_Objects[i]);
            StoredObject::from(m_Objects[i])->setParent(nullptr);
        } else {
            m_Objects[kept++] = m_Objects[i];
        }
    }
    m_Objects.resize(kept);
    std::erase_if(m_Referrers, [this](StoredObject *referrer) {
        return referrer->asCompound().Parent() != this;
    });
    return taken;
}

} // namespace TAMBO
