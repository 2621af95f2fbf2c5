// SPDX-License-Identifier: GPL-3.0-or-later
#include "StoredObject.h"

#include "Compound.h"
#include "CompoundState.h"

namespace TAMBO {

StoredObject *StoredObject::from(Compound *object) noexcept
{
    return dynamic_cast<StoredObject *>(object);
}

const StoredObject *StoredObject::from(const Compound *object) noexcept
{
    return dynamic_cast<const StoredObject *>(object);
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

void StoredObject::collectAtoms(std::vector<Compound *> &, bool) const { }

CompoundState *stateOf(Compound &object) noexcept
{
    StoredObject *const stored = StoredObject::from(&object);
    return stored == nullptr ? nullptr : stored->ownState();
}

std::uint32_t identityOf(const Compound &object) noexcept
{
    static std::uint32_t last = 0;
    const StoredObject *const stored = StoredObject::from(&object);
    const CompoundState *const state = stored == nullptr ? nullptr : stored->ownState();
    if (state == nullptr)
        return 0;
    if (state->identity == 0)
        state->identity = ++last;
    return state->identity;
}

} // namespace TAMBO
