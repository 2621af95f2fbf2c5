// SPDX-License-Identifier: GPL-3.0-or-later
#include "Atom.h"
#include "Compound.h"
#include "StoredObject.h"

namespace TAMBO {

namespace {

bool appendIfAtom(Compound &object, std::vector<Compound *> &out)
{
    const bool isAtom = dynamic_cast<Atom *>(&object) != nullptr;
    if (isAtom)
        out.push_back(&object);
    return isAtom;
}

void appendBelow(Compound &object, const Compound &root, std::vector<Compound *> &out)
{
    if (appendIfAtom(object, out))
        return;
    if (const StoredObject *const stored = StoredObject::from(&object)) {
        stored->collectAtoms(out, &object == &root);
        if (!stored->holdsSequences())
            return;
    }
    const std::size_t count = object.ChildCount();
    for (std::size_t i = 0; i < count; ++i)
        appendBelow(*object.Child(i), root, out);
}

} // namespace

void GetAtoms(Compound *root, std::vector<Compound *> &out, bool recursive)
{
    if (root == nullptr)
        return;
    if (recursive) {
        appendBelow(*root, *root, out);
        return;
    }
    const std::size_t count = root->ChildCount();
    for (std::size_t i = 0; i < count; ++i)
        appendIfAtom(*root->Child(i), out);
}

} // namespace TAMBO
