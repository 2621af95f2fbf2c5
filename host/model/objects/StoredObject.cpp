// SPDX-License-Identifier: GPL-3.0-or-later
#include "StoredObject.h"

#include "Compound.h"
#include "CompoundState.h"
#include "ObjectMarks.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <typeinfo>

namespace TAMBO {

namespace {

// Space has the first number in every run of the program.
std::uint32_t s_LastIdentity = kSpaceIdentity;
// So many are left for new objects, whatever numbers are restored.
constexpr std::uint32_t kMostRestored = ~std::uint32_t(0) / 2;

} // namespace

// Of a million objects nearly all are of one class, and in each of these the part that is asked for
// stands at the same place; a cast would search all bases of the class again.
const StoredObject *StoredObject::from(const Compound *object) noexcept
{
    thread_local const std::type_info *lastClass = nullptr;
    thread_local std::optional<std::ptrdiff_t> lastPlace;
    if (object == nullptr)
        return nullptr;
    const auto *const begin = reinterpret_cast<const std::byte *>(object);
    if (&typeid(*object) != lastClass) {
        const auto *const stored = dynamic_cast<const StoredObject *>(object);
        lastClass = &typeid(*object);
        lastPlace.reset();
        if (stored != nullptr)
            lastPlace = reinterpret_cast<const std::byte *>(stored) - begin;
    }
    return lastPlace ? reinterpret_cast<const StoredObject *>(begin + *lastPlace) : nullptr;
}

StoredObject *StoredObject::from(Compound *object) noexcept
{
    return const_cast<StoredObject *>(from(static_cast<const Compound *>(object)));
}

StoredObject::~StoredObject() = default;

void StoredObject::setParent(Compound *parent) noexcept
{
    if (CompoundState *const state = ownState())
        state->parent = parent;
}

void StoredObject::storeName(const std::string &) { }

std::string StoredObject::allowedName(const std::string &wanted) const
{
    return wanted;
}

void StoredObject::collectMarks(ObjectMarks &out) const
{
    if (const CompoundState *const state = ownState()) {
        out.isSelected = state->isSelected;
        out.isLocked = state->isLocked;
    }
}

void StoredObject::restoreMarks(const ObjectMarks &marks)
{
    if (CompoundState *const state = ownState()) {
        state->isSelected = marks.isSelected;
        state->isLocked = marks.isLocked;
    }
}

void StoredObject::collectAtoms(std::vector<Compound *> &, bool) const { }

CompoundState *stateOf(Compound &object) noexcept
{
    StoredObject *const stored = StoredObject::from(&object);
    return stored == nullptr ? nullptr : stored->ownState();
}

std::uint32_t &StoredObject::identitySlot() const noexcept
{
    return ownState()->identity;
}

std::uint32_t StoredObject::identity() const noexcept
{
    std::uint32_t &slot = identitySlot();
    if (slot == 0)
        slot = ++s_LastIdentity;
    return slot;
}

bool StoredObject::restoreIdentity(std::uint32_t identity) noexcept
{
    std::uint32_t &slot = identitySlot();
    if (slot != 0 || identity <= kSpaceIdentity || identity > kMostRestored)
        return false;
    slot = identity;
    s_LastIdentity = std::max(s_LastIdentity, identity);
    return true;
}

std::uint32_t identityOf(const Compound &object) noexcept
{
    const StoredObject *const stored = StoredObject::from(&object);
    return stored == nullptr ? 0 : stored->identity();
}

} // namespace TAMBO
