// SPDX-License-Identifier: GPL-3.0-or-later
#include "MoleculeReading.h"

#include "Bonds.h"
#include "Elements.h"
#include "FoldFromTrace.h"

#include <algorithm>
#include <cctype>
#include <string_view>

namespace structures {

namespace {

constexpr std::string_view kNucleotides[] = {"A",  "C",  "G",  "U",  "T",  "I",  "N",
                                             "DA", "DC", "DG", "DT", "DU", "DI", "DN"};

// Angstrom.
constexpr float kLongestLink = 4.5F;

std::array<char, 2> elementOf(std::string_view text) noexcept
{
    const auto capital = [](char c) { return char(std::toupper(static_cast<unsigned char>(c))); };
    return {text.empty() ? '?' : capital(text[0]), text.size() > 1 ? capital(text[1]) : '\0'};
}

bool isBackbone(std::string_view name) noexcept
{
    return name == "N" || name == "CA" || name == "C" || name == "O" || name == "OXT";
}

Fold foldOf(char element) noexcept
{
    switch (element) {
    case 'H':
    case 'h':
        return Fold::Helix;
    case 'E':
    case 'e':
        return Fold::Strand;
    default:
        return Fold::Coil;
    }
}

LinkKind kindOf(TAMBO::BondKind kind) noexcept
{
    switch (kind) {
    case TAMBO::BondKind::Disulfide:
        return LinkKind::Disulfide;
    case TAMBO::BondKind::Metal:
        return LinkKind::Metal;
    case TAMBO::BondKind::Hydrogen:
        return LinkKind::Hydrogen;
    case TAMBO::BondKind::Covalent:
        break;
    }
    return LinkKind::Covalent;
}

class Reading
{
public:
    Reading(const std::string &name, const TAMBO::StructureTable &table,
            const MoleculeExtras &extras)
        : m_Table(table), m_Extras(extras)
    {
        m_Molecule.name = name;
    }

    [[nodiscard]] Molecule molecule()
    {
        findCentre();
        for (const TAMBO::ChainDetails &chain : m_Table.chains) {
            m_Molecule.chains.push_back(
                {chain.residueBegin, chain.residueEnd - chain.residueBegin});
            for (std::uint32_t i = chain.residueBegin; i < chain.residueEnd; ++i)
                addResidue(m_Table.residues[i]);
        }
        const bool hasElements =
            std::any_of(m_Table.residues.begin(), m_Table.residues.end(),
                        [](const TAMBO::ResidueDetails &residue) { return residue.element != 0; });
        if (!hasElements)
            assignFold(m_Molecule);
        addLinks();
        addWaters();
        return std::move(m_Molecule);
    }

private:
    [[nodiscard]] static bool isUsable(const TAMBO::AtomDetails &atom) noexcept
    {
        return atom.position.isDefined() &&
               isFinite({atom.position.x(), atom.position.y(), atom.position.z()});
    }

    // In doubles: a picture of what is a million Angstrom from the origin loses nothing.
    void findCentre()
    {
        double x = 0;
        double y = 0;
        double z = 0;
        double count = 0;
        for (const TAMBO::AtomDetails &atom : m_Table.atoms)
            if (isUsable(atom)) {
                x += double(atom.position.x());
                y += double(atom.position.y());
                z += double(atom.position.z());
                ++count;
            }
        if (count > 0)
            m_Molecule.centre = {float(x / count), float(y / count), float(z / count)};
    }

    void addResidue(const TAMBO::ResidueDetails &details)
    {
        MoleculeResidue residue;
        residue.firstAtom = std::uint32_t(m_Molecule.atoms.size());
        residue.chain = std::uint32_t(m_Molecule.chains.size() - 1);
        residue.fold = foldOf(details.element);
        const auto index = std::uint32_t(m_Molecule.residues.size());
        std::uint32_t phosphorus = kNone;
        std::uint32_t sugar = kNone;
        for (std::uint32_t i = details.atomBegin; i < details.atomEnd; ++i) {
            const TAMBO::AtomDetails &atom = m_Table.atoms[i];
            if (!isUsable(atom))
                continue;
            const auto place = std::uint32_t(m_Molecule.atoms.size());
            MoleculeAtom drawn;
            drawn.position =
                Vec3{atom.position.x(), atom.position.y(), atom.position.z()} - m_Molecule.centre;
            drawn.element = elementOf(atom.element);
            drawn.radius = factsOf(drawn.element).vanDerWaals;
            drawn.residue = index;
            drawn.isBackbone = !details.isGroup && isBackbone(atom.name);
            drawn.source = i;
            m_Molecule.atoms.push_back(drawn);
            if (!details.isGroup && atom.name == "CA" && drawn.isElement('C'))
                residue.tracePoint = place;
            else if (!details.isGroup && atom.name == "O")
                residue.carbonylOxygen = place;
            else if (atom.name == "P")
                phosphorus = place;
            else if (atom.name == "O5'" || atom.name == "O5*")
                sugar = place;
        }
        residue.atomCount = std::uint32_t(m_Molecule.atoms.size()) - residue.firstAtom;
        if (details.isGroup) {
            residue.role = details.name == "HOH" || details.name == "DOD" || details.name == "WAT"
                               ? Role::Water
                               : Role::Ligand;
            const bool isNucleotide = std::find(std::begin(kNucleotides), std::end(kNucleotides),
                                                details.name) != std::end(kNucleotides);
            // O5' is next to where P would be: a strand begins with it.
            const std::uint32_t trace = phosphorus != kNone ? phosphorus : sugar;
            if (isNucleotide && trace != kNone) {
                residue.role = Role::Nucleotide;
                residue.tracePoint = trace;
            }
        }
        m_Molecule.residues.push_back(residue);
    }

    void addLinks()
    {
        std::vector<std::uint32_t> drawn(m_Extras.bonds.empty() ? 0 : m_Table.atoms.size(), kNone);
        if (!drawn.empty())
            for (std::uint32_t i = 0; i < m_Molecule.atoms.size(); ++i)
                drawn[m_Molecule.atoms[i].source] = i;
        for (const TAMBO::BondDetails &bond : m_Extras.bonds) {
            if (bond.first >= drawn.size() || bond.second >= drawn.size())
                continue;
            const auto [first, second] = std::minmax(drawn[bond.first], drawn[bond.second]);
            if (second == kNone || first == second ||
                distance(m_Molecule.atoms[first].position, m_Molecule.atoms[second].position) >
                    kLongestLink)
                continue;
            m_Molecule.links.push_back({{first, second}, kindOf(bond.kind)});
        }
        std::vector<Link> &links = m_Molecule.links;
        std::stable_sort(links.begin(), links.end(), comesBefore);
        const auto isSame = [](const Link &a, const Link &b) {
            return !comesBefore(a, b) && !comesBefore(b, a);
        };
        links.erase(std::unique(links.begin(), links.end(), isSame), links.end());
    }

    void addWaters()
    {
        m_Molecule.waters.reserve(m_Extras.waters.size());
        for (const TAMBO::WaterDetails &water : m_Extras.waters)
            m_Molecule.waters.push_back(
                Vec3{water.position.x(), water.position.y(), water.position.z()} -
                m_Molecule.centre);
    }

    const TAMBO::StructureTable &m_Table;
    const MoleculeExtras &m_Extras;
    Molecule m_Molecule;
};

} // namespace

Molecule readMolecule(const std::string &name, const TAMBO::StructureTable &table,
                      const MoleculeExtras &extras)
{
    return Reading(name, table, extras).molecule();
}

} // namespace structures
