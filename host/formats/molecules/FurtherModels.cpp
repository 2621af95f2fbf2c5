// SPDX-License-Identifier: GPL-3.0-or-later
#include "FurtherModels.h"

#include "StructureConversion.h"

#include <gemmi/model.hpp>

#include <algorithm>
#include <limits>
#include <map>
#include <optional>
#include <utility>
#include <vector>

namespace TAMBO::formats {

namespace {

// A model with fewer of the first one's atoms is none of it.
constexpr std::size_t kLeastShare = 10;

using Place = Vector<float, 3>;

std::size_t atomCount(const StructureRecord &structure)
{
    std::size_t count = 0;
    for (const ChainRecord &chain : structure.chains) {
        for (const ResidueRecord &residue : chain.residues)
            count += residue.atoms.size();
    }
    return count;
}

std::size_t atomCount(const gemmi::Model &model)
{
    std::size_t count = 0;
    for (const gemmi::Chain &chain : model.chains) {
        for (const gemmi::Residue &residue : chain.residues)
            count += residue.atoms.size();
    }
    return count;
}

bool isSame(const ResidueRecord &residue, const ResidueRecord &other)
{
    return residue.number == other.number && residue.typeName == other.typeName;
}

// The residue of another model. Mostly each comes behind the one before.
class ResidueFinder
{
public:
    explicit ResidueFinder(const ChainRecord *chain) : m_Chain(chain) { }

    [[nodiscard]] const ResidueRecord *find(const ResidueRecord &wanted)
    {
        if (m_Chain == nullptr)
            return nullptr;
        const std::vector<ResidueRecord> &residues = m_Chain->residues;
        if (m_Next < residues.size() && isSame(residues[m_Next], wanted))
            return &residues[m_Next++];
        if (m_Places.empty()) {
            for (std::size_t i = 0; i < residues.size(); ++i)
                m_Places.try_emplace(keyOf(residues[i]), i);
        }
        const auto found = m_Places.find(keyOf(wanted));
        if (found == m_Places.end())
            return nullptr;
        m_Next = found->second + 1;
        return &residues[found->second];
    }

private:
    using Key = std::pair<std::string, std::string>;
    static Key keyOf(const ResidueRecord &residue)
    {
        return {residue.number.getValue(), residue.typeName};
    }

    const ChainRecord *m_Chain;
    std::size_t m_Next = 0;
    std::map<Key, std::size_t> m_Places;
};

const AtomRecord *findAtom(const ResidueRecord *residue, std::size_t index, const std::string &name)
{
    if (residue == nullptr)
        return nullptr;
    const std::vector<AtomRecord> &atoms = residue->atoms;
    if (index < atoms.size() && atoms[index].name == name)
        return &atoms[index];
    const auto found = std::find_if(atoms.begin(), atoms.end(),
                                    [&](const AtomRecord &atom) { return atom.name == name; });
    return found == atoms.end() ? nullptr : &*found;
}

// Of several chains of one name each has its own in the other model.
std::vector<const ChainRecord *> partners(const StructureRecord &structure,
                                          const StructureRecord &other)
{
    std::map<std::string, std::vector<const ChainRecord *>> byName;
    for (auto chain = other.chains.rbegin(); chain != other.chains.rend(); ++chain)
        byName[chain->name].push_back(&*chain);
    std::vector<const ChainRecord *> found;
    for (const ChainRecord &chain : structure.chains) {
        std::vector<const ChainRecord *> &left = byName[chain.name];
        found.push_back(left.empty() ? nullptr : left.back());
        if (!left.empty())
            left.pop_back();
    }
    return found;
}

// Those of all atoms of the structure, and how many the other one lacks.
std::pair<std::vector<Place>, std::size_t> placesIn(const StructureRecord &other,
                                                    const StructureRecord &structure)
{
    constexpr float none = std::numeric_limits<float>::quiet_NaN();
    std::vector<Place> places;
    std::size_t missing = 0;
    const std::vector<const ChainRecord *> chains = partners(structure, other);
    for (std::size_t c = 0; c < chains.size(); ++c) {
        ResidueFinder residues(chains[c]);
        for (const ResidueRecord &residue : structure.chains[c].residues) {
            const ResidueRecord *const there = residues.find(residue);
            for (std::size_t i = 0; i < residue.atoms.size(); ++i) {
                const AtomRecord *const atom = findAtom(there, i, residue.atoms[i].name);
                missing += atom == nullptr ? 1 : 0;
                places.push_back(atom == nullptr ? Place(none, none, none)
                                                 : atom->position.coordinates());
            }
        }
    }
    return {std::move(places), missing};
}

} // namespace

FurtherModels::FurtherModels(const std::string &file, StructureRecord &structure)
    : m_File(file), m_Structure(structure), m_Atoms(atomCount(structure))
{ }

void FurtherModels::add(const gemmi::Model *model)
{
    ++m_Number;
    std::size_t missing = m_Atoms;
    if (model != nullptr && atomCount(*model) >= m_Atoms / kLeastShare) {
        StructureRecord other;
        convertModel(*model, m_File, other);
        auto [places, lacks] = placesIn(other, m_Structure);
        missing = lacks;
        if (m_Atoms - missing > m_Atoms / kLeastShare)
            m_Structure.furtherModels.push_back(std::move(places));
    }
    if (missing > 0 && m_Incomplete++ == 0)
        m_FirstIncomplete = m_Number;
}

void FurtherModels::finish()
{
    if (m_Incomplete == 0)
        return;
    std::string remark = m_File + ": atoms of the first model are missing in model " +
                         std::to_string(m_FirstIncomplete);
    if (m_Incomplete > 1)
        remark += " and in " + std::to_string(m_Incomplete - 1) + " more";
    m_Structure.remarks.push_back(std::move(remark));
}

} // namespace TAMBO::formats
