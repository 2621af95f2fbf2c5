// SPDX-License-Identifier: GPL-3.0-or-later
// Objects that come or go, as bytes.
#include "ObjectsEdit.h"

#include "Compound.h"
#include "ObjectContainer.h"
#include "ObjectIndex.h"
#include "ObjectOperations.h"
#include "ObjectSpace.h"

#include <algorithm>
#include <limits>
#include <string>
#include <unordered_set>
#include <utility>

namespace TAMBO {

namespace {

constexpr std::uint64_t kMostIdentity = std::numeric_limits<std::uint32_t>::max();

// Of a million objects each is a wait for memory, unless it has been asked for before its turn.
template <typename Visit>
void forEachSoon(const std::vector<Compound *> &objects, const Visit &visit)
{
    constexpr std::size_t kAhead = 16;
    for (std::size_t i = 0; i < objects.size(); ++i) {
        if (i + kAhead < objects.size())
            __builtin_prefetch(objects[i + kAhead], 1);
        visit(*objects[i]);
    }
}

// Those that came together mostly have numbers that follow each other.
void storeNumbers(const std::vector<Compound *> &objects, EditWriter &out)
{
    std::uint64_t expected = 0;
    forEachSoon(objects, [&](const Compound &object) {
        const std::uint64_t identity = identityOf(object);
        out.signedNumber(std::int64_t(identity) - std::int64_t(expected));
        expected = identity + 1;
    });
}

std::vector<Compound *> loadNumbers(std::size_t count, EditReader &in)
{
    std::vector<Compound *> objects;
    std::int64_t expected = 0;
    for (std::size_t i = 0; i < count && !in.failed(); ++i) {
        const std::int64_t identity =
            expected + in.signedNumber(-std::int64_t(kMostIdentity), std::int64_t(kMostIdentity));
        objects.push_back(in.index().find(static_cast<std::uint32_t>(identity)));
        if (objects.back() == nullptr)
            in.fail("it refers to object " + std::to_string(identity) + ", which is not there");
        expected = identity + 1;
    }
    return objects;
}

// Also the chains of structures.
using Going = std::unordered_set<const Compound *>;

void addTo(Going &going, const Compound &object)
{
    going.insert(&object);
    if (object.Kind() != CompoundKind::Structure)
        return;
    for (std::size_t i = 0; i < object.ChildCount(); ++i)
        going.insert(object.Child(i));
}

} // namespace

void ObjectsEdit::store(bool withContents, EditWriter &out) const
{
    out.tag(EditTag::Objects);
    out.reference(m_Container.asCompound());
    out.text(m_Kind);
    out.number(static_cast<std::uint64_t>(m_Part));
    out.ascendingNumbers(indices());
    out.flag(withContents);
    if (!withContents) {
        storeNumbers(m_Members, out);
        return;
    }
    forEachSoon(m_Members, [&out](const Compound &member) { out.content(member); });
}

void ObjectsEdit::store(EditWriter &out) const
{
    store(!m_Owned.empty(), out);
}

void ObjectsEdit::storeInverse(EditWriter &out) const
{
    store(m_Owned.empty(), out);
}

bool ObjectsEdit::fits() const
{
    if (m_Owned.empty())
        return fitsAsRemoval();
    const std::vector<std::size_t> places = indices();
    for (std::size_t i = 0; i < places.size(); ++i) {
        const StoredObject *const object = StoredObject::from(m_Owned[i].get());
        bool isAlone = true;
        object->forEachOther([&](const Compound &other) { isAlone = isAlone && isInTree(other); });
        if (places[i] > m_Container.objectCount() + i || !m_Container.canHold(*m_Owned[i]) ||
            !isAlone)
            return false;
    }
    return true;
}

// Nobody who stays refers to what goes.
bool ObjectsEdit::fitsAsRemoval() const
{
    const std::vector<std::size_t> places = indices();
    Going going;
    for (std::size_t i = 0; i < places.size(); ++i) {
        if (m_Container.object(places[i]) != m_Members[i])
            return false;
        addTo(going, *m_Members[i]);
    }
    bool isFree = true;
    for (const StoredObject *const referrer : ObjectSpace::get().referrers<StoredObject>()) {
        if (isFree && !going.contains(&const_cast<StoredObject *>(referrer)->asCompound()))
            referrer->forEachOther(
                [&](const Compound &other) { isFree = isFree && !going.contains(&other); });
    }
    return isFree;
}

LoadedEdit ObjectsEdit::load(EditReader &in)
{
    auto *const container = in.reference<ObjectContainer>();
    const char *const kind = in.kind();
    const auto part =
        static_cast<EditPart>(in.number(static_cast<std::uint64_t>(EditPart::HeaderNumbers)));
    std::vector<std::size_t> indices = in.ascendingNumbers();
    const bool hasContents = in.flag();
    std::vector<Compound *> members;
    std::vector<std::unique_ptr<Compound>> owned;
    if (!hasContents)
        members = loadNumbers(indices.size(), in);
    for (std::size_t i = 0; hasContents && i < indices.size() && !in.failed(); ++i) {
        owned.push_back(in.content());
        members.push_back(owned.back().get());
    }
    const auto isNoObject = [](const Compound *member) {
        return StoredObject::from(member) == nullptr || member->Kind() == CompoundKind::Space;
    };
    if (members.empty() || std::ranges::any_of(members, isNoObject))
        in.fail("there are no objects");
    if (in.failed())
        return in.failure();
    auto edit =
        std::make_unique<ObjectsEdit>(*container, indices.front(), kind, part, std::move(members));
    edit->m_Owned = std::move(owned);
    if (indices.back() - indices.front() != indices.size() - 1)
        edit->m_Indices = std::move(indices);
    return LoadedEdit(std::move(edit));
}

} // namespace TAMBO
