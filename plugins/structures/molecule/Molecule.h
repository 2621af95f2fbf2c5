// SPDX-License-Identifier: GPL-3.0-or-later
// A structure as what is drawn of it is computed from: flat arrays, positions in Angstrom relative
// to a centre, no objects of the workbench.
#pragma once

#include "Vec3.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <vector>

namespace structures {

// What a residue does in the fold of its chain.
enum class Fold : std::uint8_t { Coil, Helix, Strand };

// What something with a number in a chain is.
enum class Role : std::uint8_t { AminoAcid, Nucleotide, Ligand, Water };

// An index that names nothing.
inline constexpr std::uint32_t kNone = std::numeric_limits<std::uint32_t>::max();

struct MoleculeAtom
{
    Vec3 position;
    // Van der Waals radius.
    float radius = 1.7F;
    std::uint32_t residue = 0;
    // "C", "SE"; a second letter of '\0' for one.
    std::array<char, 2> element{'C', '\0'};
    // N, CA, C, O and OXT of an amino acid.
    bool isBackbone = false;
    // Not where the model that is shown lacks the atom: it is drawn nowhere.
    bool isPlaced = true;
    // Which of all atoms of the structure it is: some may have no place to be drawn at.
    std::uint32_t source = 0;

    [[nodiscard]] bool isElement(char letter) const noexcept
    {
        return element[0] == letter && element[1] == '\0';
    }
    // Deuterium included.
    [[nodiscard]] bool isHydrogen() const noexcept { return isElement('H') || isElement('D'); }
};

struct MoleculeResidue
{
    std::uint32_t firstAtom = 0;
    std::uint32_t atomCount = 0;
    std::uint32_t chain = 0;
    Role role = Role::AminoAcid;
    Fold fold = Fold::Coil;
    // The atom that the chain is drawn through: CA of an amino acid, P of a nucleotide (C4' or C3'
    // where there is none). kNone: the residue is not a part of the trace.
    std::uint32_t tracePoint = kNone;
    // O of the peptide bond.
    std::uint32_t carbonylOxygen = kNone;
};

struct MoleculeChain
{
    std::uint32_t firstResidue = 0;
    std::uint32_t residueCount = 0;
};

struct Bond
{
    std::uint32_t first = 0;
    std::uint32_t second = 0;
};

// What a bond that the file names is.
enum class LinkKind : std::uint8_t { Covalent, Disulfide, Metal, Hydrogen };

struct Link
{
    Bond atoms;
    LinkKind kind = LinkKind::Covalent;
};

struct Molecule
{
    std::string name;
    // Added to each position, gives that of the workbench.
    Vec3 centre;
    // Every position of an atom is finite.
    std::vector<MoleculeAtom> atoms;
    std::vector<MoleculeResidue> residues;
    std::vector<MoleculeChain> chains;
    // The first atom of each is below its second one; in order, each pair once.
    std::vector<Link> links;
    // The places of waters that are no residues.
    std::vector<Vec3> waters;

    [[nodiscard]] bool isEmpty() const noexcept { return atoms.empty(); }
};

} // namespace structures
