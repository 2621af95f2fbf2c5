// SPDX-License-Identifier: GPL-3.0-or-later
// What pictures of structures need: all atoms of a structure in one pass, with what its file says
// of each.
#pragma once

#include "Compound.h"

#include <cstdint>
#include <string_view>
#include <vector>

namespace TAMBO {

// Pointers and texts are the workbench's own: they are good for as long as the structure is there,
// and nothing of it comes or goes.
struct AtomDetails
{
    Compound *atom = nullptr;
    // "CA".
    std::string_view name;
    // "C", "SE": in capitals.
    std::string_view element;
    // In Angstrom; may be undefined.
    Vertex position;
    // In square Angstrom; 0 when the file does not say.
    float bFactor = 0;
    // 1 when the file does not say.
    float occupancy = 1;
    // In StructureTable::residues.
    std::uint32_t residue = 0;
};

// An amino acid or a group, as a ligand is.
struct ResidueDetails
{
    // "ALA", "HEM".
    std::string_view name;
    // 0 when what it was given is no number.
    int number = 0;
    // ' ' without.
    char insertionCode = ' ';
    // 'X' when it is unknown.
    char letter = 'X';
    // That of its secondary structure: 'H', 'E' or 'T' in either case; '\0' without.
    char element = '\0';
    bool isGroup = false;
    // In StructureTable::chains.
    std::uint32_t chain = 0;
    // chain->Child(child) is the residue's object, which is made when somebody first asks for it.
    std::uint32_t child = 0;
    // Its atoms are [atomBegin, atomEnd).
    std::uint32_t atomBegin = 0;
    std::uint32_t atomEnd = 0;
};

struct ChainDetails
{
    Compound *chain = nullptr;
    // [residueBegin, residueEnd): the amino acids, then the groups.
    std::uint32_t residueBegin = 0;
    std::uint32_t residueEnd = 0;
};

// In tree order: the atoms are those of GetAtoms().
struct StructureTable
{
    std::vector<ChainDetails> chains;
    std::vector<ResidueDetails> residues;
    std::vector<AtomDetails> atoms;
};

// Null and what is no such object give what is empty, or the value of which nothing is said.
class TAMBO_API StructureDetails
{
public:
    // Of a structure, or of a chain alone. No text is copied, and no residue's object is made:
    // 100,000 atoms take some milliseconds.
    static StructureTable read(const Compound *object);
    static float bFactor(const Compound *atom);
    static float occupancy(const Compound *atom);
};

} // namespace TAMBO
