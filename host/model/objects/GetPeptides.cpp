// SPDX-License-Identifier: GPL-3.0-or-later
#include "Compound.h"
#include "StoredObject.h"

namespace TAMBO {

namespace {

// Nobody descends into residues and atoms for peptides, nor into alignments, whose rows borrow
// their sequences.
void collect(Compound *object, std::vector<Compound *> &out, bool descends)
{
    const StoredObject *const stored = StoredObject::from(object);
    if (stored == nullptr)
        return;
    if (stored->isProtein())
        out.push_back(object);
    if (!descends || !stored->holdsSequences())
        return;
    const std::size_t count = object->ChildCount();
    for (std::size_t i = 0; i < count; ++i)
        collect(object->Child(i), out, true);
}

} // namespace

void GetPeptides(Compound *root, std::vector<Compound *> &out, bool recursive)
{
    if (recursive) {
        collect(root, out, true);
        return;
    }
    const StoredObject *const stored = StoredObject::from(root);
    if (stored == nullptr || !stored->holdsSequences())
        return;
    const std::size_t count = root->ChildCount();
    for (std::size_t i = 0; i < count; ++i)
        collect(root->Child(i), out, false);
}

} // namespace TAMBO
