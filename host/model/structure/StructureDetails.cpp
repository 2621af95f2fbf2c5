// SPDX-License-Identifier: GPL-3.0-or-later
#include "StructureDetails.h"

#include "Atom.h"
#include "Peptide.h"
#include "ResidueGroup.h"
#include "Structure.h"

#include <algorithm>
#include <span>

namespace TAMBO {

namespace {

// What is called if the object is a structure with chains or a chain.
template <typename Visit> void forEachChain(const Compound *object, Visit visit)
{
    // Nothing is changed through it.
    auto *const changeable = const_cast<Compound *>(object);
    if (Peptide *const chain = Peptide::from(changeable)) {
        if (chain->hasOwnAtoms())
            visit(*chain);
        return;
    }
    const auto *const structure = dynamic_cast<const Structure *>(object);
    for (std::size_t i = 0; structure != nullptr && i < structure->objectCount(); ++i)
        visit(*structure->chain(i));
}

std::uint32_t sizeOf(const auto &list)
{
    return static_cast<std::uint32_t>(list.size());
}

void setNumber(const SequenceNumber &number, ResidueDetails &residue)
{
    if (!number.isValid())
        return;
    residue.number = number.number();
    residue.insertionCode = number.insertionCode();
}

void addAtoms(std::span<Atom> atoms, StructureTable &table)
{
    ResidueDetails &residue = table.residues.back();
    residue.chain = sizeOf(table.chains) - 1;
    residue.atomBegin = sizeOf(table.atoms);
    for (Atom &atom : atoms)
        table.atoms.push_back({&atom, atom.name(), atom.element(), atom.place(), atom.bFactor(),
                               atom.occupancy(), sizeOf(table.residues) - 1});
    residue.atomEnd = sizeOf(table.atoms);
}

void addChain(Peptide &chain, StructureTable &table)
{
    ChainDetails &details = table.chains.emplace_back();
    details.chain = &chain;
    details.residueBegin = sizeOf(table.residues);
    const std::vector<char> elements = chain.elementTypes();
    for (std::size_t i = 0; i < chain.residueCount(); ++i) {
        ResidueDetails &residue = table.residues.emplace_back();
        residue.name = chain.typeNameView(i);
        setNumber(chain.number(i), residue);
        residue.letter = chain.letter(i);
        residue.element = elements[i];
        residue.child = static_cast<std::uint32_t>(i);
        addAtoms(chain.atoms(i), table);
    }
    for (std::size_t i = 0; i < chain.objectCount(); ++i) {
        const auto *const group = dynamic_cast<const ResidueGroup *>(chain.object(i));
        if (group == nullptr)
            continue;
        ResidueDetails &residue = table.residues.emplace_back();
        residue.name = group->typeNameView();
        setNumber(group->GetSeqId(), residue);
        residue.letter = group->TypeCode();
        residue.isGroup = true;
        residue.child = static_cast<std::uint32_t>(chain.residueCount() + i);
        addAtoms(group->atoms(), table);
    }
    details.residueEnd = sizeOf(table.residues);
}

std::size_t atomCount(const Peptide &chain)
{
    std::size_t count = 0;
    for (std::size_t i = 0; i < chain.residueCount(); ++i)
        count += chain.atoms(i).size();
    for (std::size_t i = 0; i < chain.objectCount(); ++i) {
        if (const auto *const group = dynamic_cast<const ResidueGroup *>(chain.object(i)))
            count += group->atoms().size();
    }
    return count;
}

} // namespace

StructureTable StructureDetails::read(const Compound *object)
{
    StructureTable table;
    std::size_t atoms = 0;
    forEachChain(object, [&atoms](const Peptide &chain) { atoms += atomCount(chain); });
    table.atoms.reserve(atoms);
    forEachChain(object, [&table](Peptide &chain) { addChain(chain, table); });
    return table;
}

float StructureDetails::bFactor(const Compound *atom)
{
    const auto *const found = dynamic_cast<const Atom *>(atom);
    return found == nullptr ? AtomDetails().bFactor : found->bFactor();
}

float StructureDetails::occupancy(const Compound *atom)
{
    const auto *const found = dynamic_cast<const Atom *>(atom);
    return found == nullptr ? AtomDetails().occupancy : found->occupancy();
}

} // namespace TAMBO
