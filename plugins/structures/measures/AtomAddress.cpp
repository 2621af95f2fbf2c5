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
                        structure.childOf(index), nameOf(structure, atom), 0};
    for (std::uint32_t i = residue.firstAtom; i < atom; ++i)
        if (nameOf(structure, i) == address.atom)
            ++address.nth;
    return address;
}

std::uint32_t atomAt(const ViewedStructure &structure, const AtomAddress &address)
{
    const Molecule &molecule = structure.molecule();
    for (std::uint32_t i = 0; i < molecule.chains.size(); ++i) {
        if (address.chain == 0 || SessionPart::NumberOf(structure.chain(i)) != address.chain)
            continue;
        const MoleculeChain &chain = molecule.chains[i];
        for (std::uint32_t r = chain.firstResidue; r < chain.firstResidue + chain.residueCount;
             ++r) {
            if (structure.childOf(r) != address.child)
                continue;
            const MoleculeResidue &residue = molecule.residues[r];
            std::uint32_t left = address.nth;
            for (std::uint32_t a = residue.firstAtom; a < residue.firstAtom + residue.atomCount;
                 ++a)
                if (nameOf(structure, a) == address.atom && left-- == 0)
                    return a;
        }
    }
    return kNone;
}

} // namespace structures
