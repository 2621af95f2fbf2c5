// SPDX-License-Identifier: GPL-3.0-or-later
// Where all kinds are known.
#include "Alignment.h"
#include "Atom.h"
#include "Compound.h"
#include "Element.h"
#include "Peptide.h"
#include "Space.h"
#include "Structure.h"

#include <type_traits>
#include <typeinfo>

namespace TAMBO {

namespace {

template <typename T> bool isOf(const Compound &object)
{
    return dynamic_cast<const T *>(&object) != nullptr;
}

// Of classes that nothing derives from. Lists of a million objects ask, and a cast that fails goes
// through all bases.
template <typename T> bool isExactly(const Compound &object)
{
    static_assert(std::is_final_v<T>);
    return typeid(object) == typeid(T);
}

} // namespace

CompoundKind Compound::Kind() const
{
    // The most numerous first.
    if (isExactly<Peptide>(*this)) {
        // Nothing else holds sequences.
        const bool isChain = Parent() != nullptr && Parent() != Space::instance();
        return isChain ? CompoundKind::Chain : CompoundKind::Sequence;
    }
    if (isExactly<Atom>(*this))
        return CompoundKind::Atom;
    if (isOf<Residue>(*this))
        return CompoundKind::Residue;
    if (isOf<Group>(*this))
        return CompoundKind::Group;
    if (isExactly<Element>(*this))
        return CompoundKind::Element;
    if (isExactly<Structure>(*this))
        return CompoundKind::Structure;
    if (isOf<Alignment>(*this))
        return CompoundKind::Alignment;
    return isOf<Space>(*this) ? CompoundKind::Space : CompoundKind::Other;
}

} // namespace TAMBO
