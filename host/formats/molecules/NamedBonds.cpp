// SPDX-License-Identifier: GPL-3.0-or-later
#include "NamedBonds.h"

#include <gemmi/elem.hpp>

#include <algorithm>
#include <set>
#include <unordered_map>
#include <utility>

namespace TAMBO::formats {

namespace {

using BondEnd = BondRecord::End;

class AtomLookup
{
public:
    explicit AtomLookup(const StructureRecord &structure) : m_Structure(structure)
    {
        for (std::uint32_t c = 0; c < structure.chains.size(); ++c) {
            const ChainRecord &chain = structure.chains[c];
            for (std::uint32_t i = 0; i < chain.residues.size(); ++i)
                m_Residues.try_emplace(keyOf(chain.name, chain.residues[i].number),
                                       BondEnd{c, i, 0});
        }
    }

    [[nodiscard]] std::optional<BondEnd> find(const NamedAtom &named) const
    {
        const auto known = m_Residues.find(keyOf(named.chain, named.number));
        if (known == m_Residues.end())
            return std::nullopt;
        BondEnd end = known->second;
        const auto &atoms = m_Structure.chains[end.chain].residues[end.residue].atoms;
        const auto atom = std::find_if(atoms.begin(), atoms.end(), [&](const AtomRecord &each) {
            return each.name == named.name;
        });
        if (atom == atoms.end())
            return std::nullopt;
        end.atom = static_cast<std::uint32_t>(atom - atoms.begin());
        return end;
    }

    [[nodiscard]] gemmi::Element elementOf(const BondEnd &end) const
    {
        return gemmi::Element(
            m_Structure.chains[end.chain].residues[end.residue].atoms[end.atom].element);
    }

private:
    static std::string keyOf(const std::string &chain, const SequenceNumber &number)
    {
        return number.getValue() + '\n' + chain;
    }

    const StructureRecord &m_Structure;
    std::unordered_map<std::string, BondEnd> m_Residues;
};

BondKind kindOf(gemmi::Element first, gemmi::Element second)
{
    if (first.is_metal() || second.is_metal())
        return BondKind::Metal;
    const bool areSulfurs = first == gemmi::El::S && second == gemmi::El::S;
    return areSulfurs ? BondKind::Disulfide : BondKind::Covalent;
}

} // namespace

void addBonds(const std::vector<NamedBond> &named, StructureRecord &structure)
{
    if (named.empty())
        return;
    const AtomLookup lookup(structure);
    std::set<std::pair<BondEnd, BondEnd>> known;
    for (const NamedBond &bond : named) {
        const std::optional<BondEnd> first = lookup.find(bond.first);
        const std::optional<BondEnd> second = lookup.find(bond.second);
        if (!first || !second || *first == *second)
            continue;
        if (!known.insert(std::minmax(*first, *second)).second)
            continue;
        const BondKind kind =
            bond.kind.value_or(kindOf(lookup.elementOf(*first), lookup.elementOf(*second)));
        structure.bonds.push_back({*first, *second, kind});
    }
}

} // namespace TAMBO::formats
