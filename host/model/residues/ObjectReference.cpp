// SPDX-License-Identifier: GPL-3.0-or-later
#include "ObjectReference.h"

#include "Atom.h"
#include "ObjectIndex.h"
#include "ResidueGroup.h"
#include "ResidueHandle.h"
#include "ResidueOwner.h"
#include "ValueBytes.h"

#include <limits>
#include <string>

namespace TAMBO {

namespace {

// Behind a 0 in place of the number.
enum class PartKind : char { Residue = 'r', Atom = 'a' };

constexpr std::uint64_t kMostIndex = std::numeric_limits<std::uint32_t>::max();

// Where the atom stands among the children; their number when it does not.
std::size_t placeAmong(const Compound &parent, const Atom &atom)
{
    std::size_t place = 0;
    while (place < parent.ChildCount() && parent.Child(place) != &atom)
        ++place;
    return place;
}

void storePart(PartKind kind, const Compound &owner, ValueWriter &out)
{
    out.number(0);
    out.character(static_cast<char>(kind));
    out.number(identityOf(owner));
}

Compound *loadPart(ValueReader &in, const ObjectIndex &index)
{
    const char kind = in.character();
    Compound *const owner = index.find(static_cast<std::uint32_t>(in.number(kMostIndex)));
    auto *const sequence = dynamic_cast<ResidueOwner *>(owner);
    const std::uint64_t first = in.number(kMostIndex);
    if (kind == static_cast<char>(PartKind::Residue)) {
        return sequence != nullptr && first < sequence->residueCount() ? sequence->residue(first)
                                                                       : nullptr;
    }
    if (kind != static_cast<char>(PartKind::Atom))
        return nullptr;
    if (dynamic_cast<ResidueGroup *>(owner) != nullptr)
        return owner->Child(first);
    const std::uint64_t atom = in.number(kMostIndex);
    return sequence != nullptr && first < sequence->residueCount() ? sequence->atom(first, atom)
                                                                   : nullptr;
}

} // namespace

void storeReference(const Compound &object, ValueWriter &out)
{
    if (const auto *const residue = dynamic_cast<const ResidueHandle *>(&object)) {
        storePart(PartKind::Residue, residue->owner(), out);
        out.number(residue->index());
    } else if (const auto *const atom = dynamic_cast<const Atom *>(&object)) {
        const bool isOfGroup = atom->chain() == nullptr;
        const Compound *const owner = isOfGroup ? atom->Parent() : atom->chain();
        storePart(PartKind::Atom, *owner, out);
        if (!isOfGroup)
            out.number(atom->residue());
        out.number(placeAmong(*atom->Parent(), *atom));
    } else {
        out.number(identityOf(object));
    }
}

Compound *loadReference(ValueReader &in, const ObjectIndex &index)
{
    const auto identity = static_cast<std::uint32_t>(in.number(kMostIndex));
    Compound *const found = identity == 0 ? loadPart(in, index) : index.find(identity);
    if (found != nullptr && !in.failed())
        return found;
    in.fail(identity == 0
                ? "it refers to a residue or an atom that is not there"
                : "it refers to object " + std::to_string(identity) + ", which is not there");
    return nullptr;
}

} // namespace TAMBO
