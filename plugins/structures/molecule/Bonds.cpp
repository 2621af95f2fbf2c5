// SPDX-License-Identifier: GPL-3.0-or-later
#include "Bonds.h"

#include "Elements.h"

#include <algorithm>
#include <cmath>
#include <unordered_map>

namespace structures {

namespace {

constexpr float kShortest = 0.4F;
constexpr float kTolerance = 0.45F;
// Two of the largest covalent radii that are no metal's, and the tolerance.
constexpr float kCell = 3.3F;
constexpr int kMostBonds = 8;
// Of atoms in a cell: a cube of that size has place for some twenty.
constexpr std::size_t kMostInCell = 256;

struct Cell
{
    std::int64_t x = 0;
    std::int64_t y = 0;
    std::int64_t z = 0;

    friend constexpr bool operator==(const Cell &, const Cell &) = default;
};

struct CellHash
{
    std::size_t operator()(const Cell &cell) const noexcept
    {
        const auto mixed = std::uint64_t(cell.x) * 0x9e3779b97f4a7c15ULL ^
                           std::uint64_t(cell.y) * 0xc2b2ae3d27d4eb4fULL ^
                           std::uint64_t(cell.z) * 0x165667b19e3779f9ULL;
        return std::size_t(mixed ^ (mixed >> 29U));
    }
};

Cell cellOf(Vec3 position) noexcept
{
    return {std::int64_t(std::floor(position.x / kCell)),
            std::int64_t(std::floor(position.y / kCell)),
            std::int64_t(std::floor(position.z / kCell))};
}

bool isBefore(const Bond &a, const Bond &b) noexcept
{
    return a.first != b.first ? a.first < b.first : a.second < b.second;
}

bool areBonded(const MoleculeAtom &a, const ElementFacts &factsA, const MoleculeAtom &b,
               const ElementFacts &factsB) noexcept
{
    if (factsA.isMetal || factsB.isMetal || (a.isHydrogen() && b.isHydrogen()))
        return false;
    const float most = factsA.covalent + factsB.covalent + kTolerance;
    const Vec3 way = a.position - b.position;
    const float square = dot(way, way);
    return square <= most * most && square > kShortest * kShortest;
}

} // namespace

std::vector<Bond> bondsBetween(const Molecule &molecule, const std::vector<std::uint32_t> &atoms)
{
    std::unordered_map<Cell, std::vector<std::uint32_t>, CellHash> cells;
    cells.reserve(atoms.size() / 4 + 1);
    for (const std::uint32_t atom : atoms) {
        std::vector<std::uint32_t> &cell = cells[cellOf(molecule.atoms[atom].position)];
        if (cell.size() < kMostInCell)
            cell.push_back(atom);
    }
    std::vector<Bond> bonds;
    std::unordered_map<std::uint32_t, int> bondCounts;
    bondCounts.reserve(atoms.size());
    std::vector<std::uint32_t> near;
    for (const std::uint32_t index : atoms) {
        const MoleculeAtom &atom = molecule.atoms[index];
        const ElementFacts &facts = factsOf(atom.element);
        const Cell home = cellOf(atom.position);
        near.clear();
        for (std::int64_t x = home.x - 1; x <= home.x + 1; ++x)
            for (std::int64_t y = home.y - 1; y <= home.y + 1; ++y)
                for (std::int64_t z = home.z - 1; z <= home.z + 1; ++z)
                    if (const auto cell = cells.find({x, y, z}); cell != cells.end())
                        near.insert(near.end(), cell->second.begin(), cell->second.end());
        std::sort(near.begin(), near.end());
        for (const std::uint32_t other : near) {
            const MoleculeAtom &partner = molecule.atoms[other];
            if (other <= index || !areBonded(atom, facts, partner, factsOf(partner.element)))
                continue;
            const int most = atom.isHydrogen() ? 1 : kMostBonds;
            const int mostOfPartner = partner.isHydrogen() ? 1 : kMostBonds;
            int &count = bondCounts[index];
            int &countOfPartner = bondCounts[other];
            if (count >= most || countOfPartner >= mostOfPartner)
                continue;
            ++count;
            ++countOfPartner;
            bonds.push_back({index, other});
        }
    }
    std::sort(bonds.begin(), bonds.end(), isBefore);
    return bonds;
}

bool comesBefore(const Link &a, const Link &b) noexcept
{
    return isBefore(a.atoms, b.atoms);
}

} // namespace structures
