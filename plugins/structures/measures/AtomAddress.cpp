// SPDX-License-Identifier: GPL-3.0-or-later
#include "AtomAddress.h"

#include "SessionPart.h"

namespace structures {

namespace {

std::string nameOf(const ViewedStructure &structure, std::uint32_t atom)
{
    const TAMBO::Compound *const object = structure.atom(atom);
    return object ? object->Name() : std::string();
}

} // namespace

AtomAddress addressOf(const ViewedStructure &structure, std::uint32_t atom)
{
    const Molecule &molecule = structure.molecule();
    const std::uint32_t index = molecule.atoms[atom].residue;
    const MoleculeResidue &residue = molecule.residues[index];
    AtomAddress address{SessionPart::NumberOf(structure.chain(residue.chain)),
                        structure.childOf(index), nameOf(structure, atom)};
    for (std::uint32_t i = residue.firstAtom; i < atom; ++i)
        if (nameOf(structure, i) == address.atom)
            ++address.nth;
    return address;
}

AtomAddress addressOfWater(const ViewedStructure &structure, std::uint32_t water)
{
    AtomAddress address;
    address.structure = SessionPart::NumberOf(structure.object());
    address.water = water;
    return address;
}

std::uint32_t waterAt(const ViewedStructure &structure, const AtomAddress &address)
{
    const bool isThere = address.isWater() && address.structure != 0 &&
                         address.water < structure.molecule().waters.size() &&
                         SessionPart::NumberOf(structure.object()) == address.structure;
    return isThere ? address.water : kNone;
}

std::uint32_t atomAt(const ViewedStructure &structure, const AtomAddress &address)
{
    const Molecule &molecule = structure.molecule();
    for (std::uint32_t i = 0; i < molecule.chains.size(); ++i) {
        if (address.chain == 0 || SessionPart::NumberOf(structure.chain(i)) != address.chain)
            continue;
        const std::uint32_t index = structure.residueAt(i, address.child);
        if (index == kNone)
            continue;
        const MoleculeResidue &residue = molecule.residues[index];
        std::uint32_t left = address.nth;
        for (std::uint32_t a = residue.firstAtom; a < residue.firstAtom + residue.atomCount; ++a)
            if (nameOf(structure, a) == address.atom && left-- == 0)
                return a;
    }
    return kNone;
}

} // namespace structures
