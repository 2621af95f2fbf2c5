// SPDX-License-Identifier: GPL-3.0-or-later
#include "StructureMaking.h"

#include "Element.h"
#include "Peptide.h"
#include "ResidueGroup.h"
#include "Structure.h"
#include "StructureExtras.h"

#include <numeric>
#include <utility>
#include <vector>

namespace TAMBO {

namespace {

Peptide *chainNamed(const Structure &structure, const std::string &name, const SequenceNumber &with)
{
    for (std::size_t i = 0; i < structure.objectCount(); ++i) {
        Peptide *const chain = structure.chain(i);
        if (chain->Name() != name)
            continue;
        for (std::size_t k = 0; k < chain->residueCount(); ++k) {
            if (chain->number(k) == with)
                return chain;
        }
    }
    return nullptr;
}

void addElement(const Structure &structure, ElementRecord &&record)
{
    Peptide *const chain = chainNamed(structure, record.chain, record.first);
    if (chain == nullptr)
        return;
    const auto indexOf = [chain](const SequenceNumber &number, std::size_t from) {
        std::size_t index = from;
        while (index < chain->residueCount() && !(chain->number(index) == number))
            ++index;
        return index;
    };
    const std::size_t first = indexOf(record.first, 0);
    const std::size_t last = indexOf(record.last, first);
    if (last == chain->residueCount())
        return;
    std::vector<std::uint32_t> residues(last - first + 1);
    std::iota(residues.begin(), residues.end(), static_cast<std::uint32_t>(first));
    chain->insertObject(
        chain->objectCount(),
        std::make_unique<Element>(std::move(record.name), record.type, std::move(residues)));
}

// Where the residues of a chain's record have gone: to the chain, or to groups of it.
class MadeChain
{
public:
    explicit MadeChain(const ChainRecord &record)
    {
        std::uint32_t residues = 0;
        std::uint32_t groups = 0;
        m_Places.reserve(record.residues.size());
        for (const ResidueRecord &residue : record.residues)
            m_Places.push_back({residue.isAminoAcid, residue.isAminoAcid ? residues++ : groups++,
                                residue.atoms.size()});
    }

    // The groups alone are objects of the chain by now.
    void setChain(Peptide *chain) noexcept { m_Chain = chain; }
    [[nodiscard]] bool isThere() const noexcept { return m_Chain != nullptr; }
    [[nodiscard]] KeptBond::End endOf(const BondRecord::End &end) const
    {
        const ResiduePart &part = m_Places[end.residue];
        if (part.isAminoAcid)
            return {m_Chain->identity(), part.index, end.atom};
        return {identityOf(*m_Chain->object(part.index)), 0, end.atom};
    }

    // Of all atoms of the record, the first of which are not this chain's; gives how many belong to
    // it or to those before it.
    std::size_t takeModels(const std::vector<std::vector<ModelPlaces::Place>> &models,
                           std::size_t first)
    {
        std::vector<ModelPlaces::Place> ofResidues;
        std::vector<std::vector<ModelPlaces::Place>> ofGroups(m_Chain->objectCount());
        std::size_t next = first;
        for (const std::vector<ModelPlaces::Place> &model : models) {
            next = first;
            for (const ResiduePart &part : m_Places) {
                const auto begin = model.begin() + std::ptrdiff_t(next);
                next += part.atoms;
                std::vector<ModelPlaces::Place> &to =
                    part.isAminoAcid ? ofResidues : ofGroups[part.index];
                to.insert(to.end(), begin, begin + std::ptrdiff_t(part.atoms));
            }
        }
        ofResidues.shrink_to_fit();
        m_Chain->presetModels(ModelPlaces(std::move(ofResidues)));
        for (std::size_t i = 0; i < ofGroups.size(); ++i)
            dynamic_cast<ResidueGroup &>(*m_Chain->object(i))
                .presetModels(ModelPlaces(std::move(ofGroups[i])));
        return next;
    }

private:
    struct ResiduePart
    {
        bool isAminoAcid;
        // Among the amino acids or the groups.
        std::uint32_t index;
        std::size_t atoms;
    };

    Peptide *m_Chain = nullptr;
    std::vector<ResiduePart> m_Places;
};

} // namespace

std::unique_ptr<Structure> makeStructure(StructureRecord &&record)
{
    auto made = std::make_unique<Structure>(std::move(record.name), record.models, record.isModel);
    std::vector<MadeChain> chains;
    for (ChainRecord &chain : record.chains) {
        MadeChain &here = chains.emplace_back(chain);
        if (chain.residues.empty())
            continue;
        made->insertObject(made->objectCount(), std::make_unique<Peptide>(std::move(chain)));
        here.setChain(made->chain(made->objectCount() - 1));
    }
    std::size_t atoms = 0;
    for (MadeChain &chain : chains) {
        if (!record.furtherModels.empty() && chain.isThere())
            atoms = chain.takeModels(record.furtherModels, atoms);
    }
    if (!record.waters.places.empty() || !record.bonds.empty() || !record.furtherModels.empty()) {
        auto extras = std::make_unique<StructureExtras>();
        extras->waters = std::move(record.waters);
        for (const BondRecord &bond : record.bonds)
            extras->bonds.push_back({chains[bond.first.chain].endOf(bond.first),
                                     chains[bond.second.chain].endOf(bond.second), bond.kind});
        made->presetExtras(std::move(extras));
    }
    for (ElementRecord &element : record.elements)
        addElement(*made, std::move(element));
    return made;
}

} // namespace TAMBO
