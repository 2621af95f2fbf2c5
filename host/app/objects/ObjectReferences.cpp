// SPDX-License-Identifier: GPL-3.0-or-later
#include "ObjectReferences.h"

#include "Space.h"

#include <utility>

namespace TAMBO::app {

ObjectReferences::ObjectReferences(std::vector<Compound *> objects) : m_Objects(std::move(objects))
{ }

ObjectReferences::~ObjectReferences() = default;

void ObjectReferences::commUpdate() { }

void ObjectReferences::commAdd() { }

// Objects are freed only when everybody has been told, so they can still be asked here.
void ObjectReferences::commDelete()
{
    std::erase_if(m_Objects, [](const Compound *object) { return !isLoaded(*object); });
}

bool isLoaded(const Compound &object)
{
    const Compound *top = &object;
    while (top->Parent() != nullptr)
        top = top->Parent();
    return top == Space::instance();
}

} // namespace TAMBO::app
