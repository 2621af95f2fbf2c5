// SPDX-License-Identifier: GPL-3.0-or-later
#include "Alignment.h"
#include "Atom.h"
#include "Compound.h"
#include "Peptide.h"

namespace TAMBO {

namespace {

void appendBelow(Compound &object, const Compound &root, std::vector<Compound *> &out)
{
    if (dynamic_cast<Atom *>(&object) != nullptr) {
        out.push_back(&object);
        return;
    }
    // An alignment only refers to residues that stand elsewhere in the tree.
    if (dynamic_cast<Alignment *>(&object) != nullptr)
        return;
    if (const Peptide *const peptide = Peptide::from(&object)) {
        // The atoms of tied residues are listed for their chain already, unless the sequence itself
        // was asked for.
        if (peptide->hasTies() && &object != &root)
            return;
        peptide->appendAtoms(out);
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
    for (std::size_t i = 0; i < count; ++i) {
        if (dynamic_cast<Atom *>(root->Child(i)) != nullptr)
            out.push_back(root->Child(i));
    }
}

} // namespace TAMBO
