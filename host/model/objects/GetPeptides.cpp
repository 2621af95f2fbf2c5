// SPDX-License-Identifier: GPL-3.0-or-later
#include "Compound.h"
#include "StoredObject.h"

namespace TAMBO {

namespace {

void appendIfProtein(Compound *object, std::vector<Compound *> &out)
{
    const StoredObject *const stored = StoredObject::from(object);
    if (stored != nullptr && stored->isProtein())
        out.push_back(object);
}

} // namespace

void GetPeptides(Compound *root, std::vector<Compound *> &out, bool recursive)
{
    if (root == nullptr)
        return;
    if (recursive)
        appendIfProtein(root, out);
    // Nobody descends into residues and atoms for peptides, nor into alignments, whose rows borrow
    // their sequences.
    const StoredObject *const stored = StoredObject::from(root);
    if (stored == nullptr || !stored->holdsSequences())
        return;
    const std::size_t count = root->ChildCount();
    for (std::size_t i = 0; i < count; ++i) {
        if (recursive)
            GetPeptides(root->Child(i), out, true);
        else
            appendIfProtein(root->Child(i), out);
    }
}

} // namespace TAMBO
