// SPDX-License-Identifier: GPL-3.0-or-later
#include "MoleculeShapes.h"

#include "Bonds.h"
#include "Elements.h"
#include "RibbonPath.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace structures {

namespace {

// Angstrom.
constexpr float kStickRadius = 0.20F;
constexpr float kBallShare = 0.27F;
constexpr float kMetalShare = 0.45F;
constexpr float kDashRadius = 0.14F;
constexpr float kDash = 0.9F;
constexpr int kMostDashes = 40;
// Of what a metal or a hydrogen holds.
constexpr float kContactRadius = 0.09F;
constexpr int kContactDashes = 4;

// How finely the mesh follows its curve.
struct Fineness
{
    int steps;
    int corners;
};

// So many that all triangles of the molecule stay below some half a million, and some hundred
// thousand.
Fineness fineness(std::size_t residues) noexcept
{
    if (residues <= 1500)
        return {8, 14};
    if (residues <= 6000)
        return {5, 10};
    if (residues <= 20000)
        return {4, 8};
    return {3, 6};
}

Fineness coarseFineness(std::size_t residues) noexcept
{
    if (residues <= 1500)
        return {4, 8};
    if (residues <= 6000)
        return {3, 6};
    return {2, 4};
}

class RibbonMesh
{
public:
    RibbonMesh(const Molecule &molecule, Mesh &mesh, int corners)
        : m_Molecule(molecule), m_Mesh(mesh), m_Corners(corners)
    {
        for (int i = 0; i < corners; ++i) {
            const float angle = 2 * std::numbers::pi_v<float> * float(i) / float(corners);
            m_Cosines.push_back(std::cos(angle));
            m_Sines.push_back(std::sin(angle));
        }
    }

    void add(const std::vector<RibbonRing> &rings)
    {
        for (std::size_t i = 0; i + 1 < rings.size();) {
            if (rings[i].residue == kNone) {
                ++i;
                continue;
            }
            addCap(rings[i], false);
            std::uint32_t before = addRing(rings[i], slope(rings, i));
            for (; i + 1 < rings.size() && rings[i].residue != kNone; ++i) {
                const std::uint32_t next = addRing(rings[i + 1], slope(rings, i + 1));
                join(before, next, pickOfResidue(m_Molecule, rings[i].residue));
                before = next;
            }
            RibbonRing end = rings[i];
            if (end.residue == kNone)
                end.residue = rings[i - 1].residue;
            addCap(end, true);
            // A ring that is the first of what comes next is looked at once more.
            if (i + 1 >= rings.size())
                break;
        }
    }

private:
    // How much wider the ribbon gets a unit of length, for the normals of an arrow's sides.
    [[nodiscard]] static float slope(const std::vector<RibbonRing> &rings, std::size_t i)
    {
        const RibbonRing &before = rings[i > 0 ? i - 1 : i];
        const RibbonRing &next = rings[i + 1 < rings.size() ? i + 1 : i];
        const float way = distance(before.centre, next.centre);
        return way > 1e-4F ? std::clamp((next.width - before.width) / way, -2.0F, 2.0F) : 0;
    }

    std::uint32_t addRing(const RibbonRing &ring, float slope)
    {
        const auto first = std::uint32_t(m_Mesh.vertices.size());
        const Vec3 along = cross(ring.side, ring.up);
        for (int i = 0; i < m_Corners; ++i) {
            const float c = m_Cosines[std::size_t(i)];
            const float s = m_Sines[std::size_t(i)];
            const Vec3 place =
                ring.centre + ring.side * (c * ring.width) + ring.up * (s * ring.thickness);
            const Vec3 normal =
                normalized(ring.side * (c * ring.thickness) + ring.up * (s * ring.width) -
                           along * (slope * std::abs(c) * ring.thickness));
            m_Mesh.vertices.push_back({place, normal});
        }
        return first;
    }

    void join(std::uint32_t before, std::uint32_t next, Pick pick)
    {
        for (int i = 0; i < m_Corners; ++i) {
            const auto a = std::uint32_t(i);
            const auto b = std::uint32_t((i + 1) % m_Corners);
            m_Mesh.triangles.push_back({{before + a, before + b, next + b}, pick});
            m_Mesh.triangles.push_back({{before + a, next + b, next + a}, pick});
        }
    }

    void addCap(const RibbonRing &ring, bool isEnd)
    {
        const Vec3 along = cross(ring.side, ring.up);
        const Vec3 normal = isEnd ? along : -along;
        const auto first = std::uint32_t(m_Mesh.vertices.size());
        m_Mesh.vertices.push_back({ring.centre, normal});
        for (int i = 0; i < m_Corners; ++i)
            m_Mesh.vertices.push_back({ring.centre +
                                           ring.side * (m_Cosines[std::size_t(i)] * ring.width) +
                                           ring.up * (m_Sines[std::size_t(i)] * ring.thickness),
                                       normal});
        const Pick pick = pickOfResidue(m_Molecule, ring.residue);
        for (int i = 0; i < m_Corners; ++i) {
            const std::uint32_t a = first + 1 + std::uint32_t(i);
            const std::uint32_t b = first + 1 + std::uint32_t((i + 1) % m_Corners);
            if (isEnd)
                m_Mesh.triangles.push_back({{first, a, b}, pick});
            else
                m_Mesh.triangles.push_back({{first, b, a}, pick});
        }
    }

    const Molecule &m_Molecule;
    Mesh &m_Mesh;
    int m_Corners;
    std::vector<float> m_Cosines;
    std::vector<float> m_Sines;
};

// Dashes over residues that are missing between two runs.
void addDashes(const Molecule &molecule, std::uint32_t from, std::uint32_t to, Shapes &shapes)
{
    const Vec3 a = molecule.atoms[molecule.residues[from].tracePoint].position;
    const Vec3 b = molecule.atoms[molecule.residues[to].tracePoint].position;
    const int count =
        std::clamp(int(std::min(distance(a, b), 1000.0F) / (2 * kDash)), 1, kMostDashes);
    for (int i = 0; i < count; ++i) {
        const float begin = (float(i) + 0.5F) / (float(count) + 0.5F);
        const float half = 0.5F / (float(count) + 0.5F);
        const Pick pick = pickOfResidue(molecule, 2 * i < count ? from : to);
        shapes.sticks.push_back({a + (b - a) * (begin - half * 0.5F),
                                 a + (b - a) * (begin + half * 0.5F), kDashRadius, pick, pick});
    }
}

void addRibbons(const Molecule &molecule, const std::vector<ResidueStyle> &styles, Shapes &shapes)
{
    const Fineness fine = fineness(molecule.residues.size());
    const Fineness coarse = coarseFineness(molecule.residues.size());
    RibbonMesh mesh(molecule, shapes.mesh, fine.corners);
    RibbonMesh coarseMesh(molecule, shapes.coarseMesh, coarse.corners);
    const auto isDrawn = [&](std::uint32_t residue) {
        return styles[residue].style == Style::Cartoon || styles[residue].style == Style::Trace;
    };
    for (const MoleculeChain &chain : molecule.chains) {
        std::uint32_t last = kNone;
        Role lastRole = Role::AminoAcid;
        for (const TraceRun &run : traceRuns(molecule, chain)) {
            if (run.residues.size() == 1) {
                // Nothing to draw a curve through.
                const std::uint32_t residue = run.residues.front();
                if (isDrawn(residue))
                    shapes.spheres.push_back(
                        {molecule.atoms[molecule.residues[residue].tracePoint].position, 0.5F,
                         pickOfResidue(molecule, residue)});
            } else {
                mesh.add(ribbonPath(molecule, run, styles, fine.steps));
                coarseMesh.add(ribbonPath(molecule, run, styles, coarse.steps));
            }
            if (last != kNone && lastRole == run.role && isDrawn(last) &&
                isDrawn(run.residues.front()))
                addDashes(molecule, last, run.residues.front(), shapes);
            last = run.residues.back();
            lastRole = run.role;
        }
    }
}

// Dashes between two atoms.
void addContact(const Molecule &molecule, const Bond &bond, Shapes &shapes)
{
    const Vec3 from = molecule.atoms[bond.first].position;
    const Vec3 way = molecule.atoms[bond.second].position - from;
    for (int i = 0; i < kContactDashes; ++i) {
        const float begin = (float(i) + 0.25F) / kContactDashes;
        const float end = (float(i) + 0.75F) / kContactDashes;
        const Pick pick = pickOfAtom(2 * i < kContactDashes ? bond.first : bond.second);
        shapes.sticks.push_back({from + way * begin, from + way * end, kContactRadius, pick, pick});
    }
}

// Whether the atom is drawn by itself, and not only as a part of a ribbon.
bool isShown(const Molecule &molecule, const std::vector<ResidueStyle> &styles, std::uint32_t index)
{
    const MoleculeAtom &atom = molecule.atoms[index];
    if (!atom.isPlaced)
        return false;
    const ResidueStyle &style = styles[atom.residue];
    switch (style.style) {
    case Style::Hidden:
        return false;
    case Style::Cartoon:
    case Style::Trace:
        return style.hasSideChain && !atom.isHydrogen() &&
               (!atom.isBackbone || index == molecule.residues[atom.residue].tracePoint);
    case Style::Sticks:
    case Style::BallsAndSticks:
    case Style::Spheres:
        break;
    }
    return true;
}

void addAtoms(const Molecule &molecule, const std::vector<ResidueStyle> &styles, Shapes &shapes)
{
    std::vector<std::uint32_t> bonded;
    std::vector<bool> hasBond(molecule.atoms.size());
    std::vector<bool> isBonded(molecule.atoms.size());
    for (std::uint32_t i = 0; i < molecule.atoms.size(); ++i) {
        const Style style = styles[molecule.atoms[i].residue].style;
        if (isShown(molecule, styles, i) && style != Style::Spheres)
            bonded.push_back(i);
    }
    const auto addBond = [&](const Bond &bond) {
        const MoleculeAtom &a = molecule.atoms[bond.first];
        const MoleculeAtom &b = molecule.atoms[bond.second];
        shapes.sticks.push_back({a.position, b.position, kStickRadius, pickOfAtom(bond.first),
                                 pickOfAtom(bond.second)});
        hasBond[bond.first] = hasBond[bond.second] = true;
    };
    const auto isLinked = [&molecule](const Bond &bond) {
        return std::binary_search(molecule.links.begin(), molecule.links.end(), Link{bond},
                                  comesBefore);
    };
    for (const std::uint32_t i : bonded)
        isBonded[i] = true;
    for (const Link &link : molecule.links) {
        if (!isBonded[link.atoms.first] || !isBonded[link.atoms.second])
            continue;
        if (link.kind == LinkKind::Metal || link.kind == LinkKind::Hydrogen)
            addContact(molecule, link.atoms, shapes);
        else
            addBond(link.atoms);
    }
    for (const Bond &bond : bondsBetween(molecule, bonded))
        if (!isLinked(bond))
            addBond(bond);
    for (std::uint32_t i = 0; i < molecule.atoms.size(); ++i) {
        if (!isShown(molecule, styles, i))
            continue;
        const MoleculeAtom &atom = molecule.atoms[i];
        const Style style = styles[atom.residue].style;
        float radius = kStickRadius;
        if (style == Style::Spheres)
            radius = atom.radius;
        else if (factsOf(atom.element).isMetal)
            radius = kMetalShare * atom.radius;
        else if (style == Style::BallsAndSticks || !hasBond[i])
            radius = kBallShare * atom.radius;
        shapes.spheres.push_back({atom.position, radius, pickOfAtom(i)});
    }
}

} // namespace

Shapes shapesOf(const Molecule &molecule, const std::vector<ResidueStyle> &styles)
{
    Shapes shapes;
    addRibbons(molecule, styles, shapes);
    addAtoms(molecule, styles, shapes);
    return shapes;
}

} // namespace structures
