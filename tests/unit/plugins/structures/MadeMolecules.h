// SPDX-License-Identifier: GPL-3.0-or-later
// Chains of CA atoms of known form.
#pragma once

#include "Molecule.h"

#include <cmath>
#include <numbers>
#include <vector>

namespace MadeMolecules {

// One chain of amino acids with nothing but a CA each.
inline structures::Molecule chainThrough(const std::vector<structures::Vec3> &points)
{
    structures::Molecule molecule;
    molecule.name = "made";
    molecule.chains.push_back({0, std::uint32_t(points.size())});
    for (std::uint32_t i = 0; i < points.size(); ++i) {
        structures::MoleculeAtom atom;
        atom.position = points[i];
        atom.residue = i;
        atom.isBackbone = true;
        atom.source = i;
        molecule.atoms.push_back(atom);
        structures::MoleculeResidue residue;
        residue.firstAtom = i;
        residue.atomCount = 1;
        residue.tracePoint = i;
        molecule.residues.push_back(residue);
    }
    return molecule;
}

// 3.6 residues a turn, a rise of 1.5 Angstrom each, CA atoms 2.3 Angstrom from the axis.
inline std::vector<structures::Vec3> helix(int residues)
{
    std::vector<structures::Vec3> points;
    for (int i = 0; i < residues; ++i) {
        const float angle = float(i) * 100 * std::numbers::pi_v<float> / 180;
        points.push_back({2.3F * std::cos(angle), 2.3F * std::sin(angle), 1.5F * float(i)});
    }
    return points;
}

// As in a sheet: a rise of 3.35 Angstrom each, up and down by 0.9.
inline std::vector<structures::Vec3> strand(int residues)
{
    std::vector<structures::Vec3> points;
    for (int i = 0; i < residues; ++i)
        points.push_back({3.35F * float(i), i % 2 == 0 ? 0.9F : -0.9F, 0});
    return points;
}

} // namespace MadeMolecules
