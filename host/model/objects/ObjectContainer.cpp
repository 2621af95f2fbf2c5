// SPDX-License-Identifier: GPL-3.0-or-later
#include "ObjectContainer.h"

#include "ChangeScope.h"
#include "Compound.h"
#include "ObjectsEdit.h"

#include <utility>

namespace TAMBO {

ObjectContainer::~ObjectContainer() = default;

Compound &ObjectContainer::add(std::unique_ptr<Compound> object, EditPart part)
{
    const ChangeScope scope;
    Compound &added = *object;
    const std::size_t index = objectCount();
    insertObject(index, std::move(object));
    recordInverse(std::make_unique<ObjectsEdit>(*this, index, "add", part));
    return added;
}

} // namespace TAMBO
