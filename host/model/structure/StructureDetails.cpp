// SPDX-License-Identifier: GPL-3.0-or-later
#include "StructureDetails.h"

#include "Atom.h"
#include "Peptide.h"
#include "ResidueGroup.h"
#include "Revisions.h"
#include "Structure.h"
#include "StructureExtras.h"

#include <algorithm>
#include <optional>
#include <span>
#include <unordered_map>

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

const StructureExtras *extrasOf(const Compound *object)
{
    const auto *const structure = dynamic_cast<const Structure *>(object);
    return structure == nullptr ? nullptr : structure->extras();
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

// Calls visit(atoms, models) for those of each chain and of each of its groups.
template <typename Visit> void forEachAtoms(const Compound &object, Visit visit)
{
    forEachChain(&object, [&visit](const Peptide &chain) {
        visit(chain.ownAtoms(), chain.models());
        for (std::size_t i = 0; i < chain.objectCount(); ++i) {
            if (const auto *const group = dynamic_cast<const ResidueGroup *>(chain.object(i)))
                visit(group->atoms(), group->models());
        }
    });
}

// Where the atoms of a structure stand in its table.
class AtomPlaces
{
public:
    explicit AtomPlaces(const Compound &structure)
    {
        std::uint32_t next = 0;
        forEachChain(&structure, [&](const Peptide &chain) {
            std::vector<std::uint32_t> &starts = m_Owners[chain.identity()];
            starts.reserve(chain.residueCount() + 1);
            for (std::size_t i = 0; i < chain.residueCount(); ++i) {
                starts.push_back(next);
                next += sizeOf(chain.atoms(i));
            }
            starts.push_back(next);
            for (std::size_t i = 0; i < chain.objectCount(); ++i) {
                const auto *const group = dynamic_cast<const ResidueGroup *>(chain.object(i));
                if (group == nullptr)
                    continue;
                const std::uint32_t begin = next;
                next += sizeOf(group->atoms());
                m_Owners[group->identity()] = {begin, next};
            }
        });
    }

    [[nodiscard]] std::optional<std::uint32_t> find(const KeptBond::End &end) const
    {
        const auto found = m_Owners.find(end.owner);
        if (found == m_Owners.end() || end.residue + std::size_t(1) >= found->second.size())
            return std::nullopt;
        const std::uint32_t begin = found->second[end.residue];
        const std::uint32_t count = found->second[end.residue + std::size_t(1)] - begin;
        return end.atom < count ? std::optional(begin + end.atom) : std::nullopt;
    }

private:
    // Where the atoms of each residue of a chain or a group begin, and the last ones end.
    std::unordered_map<std::uint32_t, std::vector<std::uint32_t>> m_Owners;
};

} // namespace

StructureTable StructureDetails::read(const Compound *object)
{
    StructureTable table;
    if (object == nullptr)
        return table;
    std::size_t count = 0;
    forEachAtoms(*object, [&count](std::span<const Atom> atoms, const ModelPlaces &) {
        count += atoms.size();
    });
    table.atoms.reserve(count);
    forEachChain(object, [&table](Peptide &chain) { addChain(chain, table); });
    return table;
}

std::vector<WaterDetails> StructureDetails::waters(const Compound *structure)
{
    std::vector<WaterDetails> result;
    const StructureExtras *const extras = extrasOf(structure);
    if (extras == nullptr)
        return result;
    result.reserve(extras->waters.places.size());
    for (const Water &water : extras->waters.places)
        result.push_back({extras->motion(water.position), water.bFactor, water.number,
                          water.insertionCode, extras->waters.chains[water.chain]});
    return result;
}

std::vector<BondDetails> StructureDetails::bonds(const Compound *structure)
{
    std::vector<BondDetails> result;
    const StructureExtras *const extras = extrasOf(structure);
    if (extras == nullptr || extras->bonds.empty())
        return result;
    const AtomPlaces places(*structure);
    for (const KeptBond &bond : extras->bonds) {
        const std::optional<std::uint32_t> first = places.find(bond.first);
        const std::optional<std::uint32_t> second = places.find(bond.second);
        if (first && second)
            result.push_back({*first, *second, bond.kind});
    }
    return result;
}

std::size_t StructureDetails::modelCount(const Compound *structure)
{
    if (dynamic_cast<const Structure *>(structure) == nullptr)
        return 0;
    std::size_t further = 0;
    forEachAtoms(*structure, [&further](std::span<const Atom> atoms, const ModelPlaces &models) {
        further = std::max(further, models.count(atoms.size()));
    });
    return 1 + further;
}

std::vector<Vertex> StructureDetails::modelPositions(const Compound *structure, std::size_t model)
{
    std::vector<Vertex> result;
    if (model >= modelCount(structure))
        return result;
    const StructureExtras *const extras = extrasOf(structure);
    const RigidMotion motion = extras == nullptr ? RigidMotion() : extras->motion;
    forEachAtoms(*structure, [&](std::span<const Atom> atoms, const ModelPlaces &models) {
        const auto places =
            model == 0 ? std::span<const ModelPlaces::Place>() : models.of(model - 1, atoms.size());
        for (std::size_t i = 0; i < atoms.size(); ++i) {
            if (model == 0)
                result.push_back(atoms[i].place());
            else if (places.empty() || !ModelPlaces::isSomewhere(places[i]))
                result.emplace_back();
            else
                result.push_back(motion(places[i]));
        }
    });
    return result;
}

std::vector<ResidueSource> StructureDetails::sources(const Compound *sequence)
{
    std::vector<ResidueSource> sources;
    // Nothing is changed through it.
    const Peptide *const peptide = Peptide::from(const_cast<Compound *>(sequence));
    for (std::size_t i = 0; peptide != nullptr && i < peptide->residueCount(); ++i) {
        const ResiduePlace place = peptide->resolve(i);
        const bool hasAtoms = place.peptide->atomCount(place.index) > 0;
        sources.push_back(
            hasAtoms ? ResidueSource{place.peptide, static_cast<std::uint32_t>(place.index)}
                     : ResidueSource());
    }
    return sources;
}

std::uint64_t StructureDetails::revision() noexcept
{
    return structureRevision();
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
