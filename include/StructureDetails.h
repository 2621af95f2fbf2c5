// SPDX-License-Identifier: GPL-3.0-or-later
// What pictures of structures need: all atoms of a structure in one pass, with what its file says
// of each, its waters, the bonds that it names, and further models.
#pragma once

#include "BondKind.h"
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

// A water is no object, and stands in no tree.
struct WaterDetails
{
    // Of its oxygen, in Angstrom: where it is now, when the structure was superposed.
    Vertex position;
    // As AtomDetails has it.
    float bFactor = 0;
    int number = 0;
    // ' ' without.
    char insertionCode = ' ';
    // As its file says; there may be no chain of that name.
    std::string_view chain;
};

// Between two atoms that the file names: all that are no peptide bonds between amino acids, mostly.
struct BondDetails
{
    // In StructureTable::atoms of the structure.
    std::uint32_t first = 0;
    std::uint32_t second = 0;
    BondKind kind = BondKind::Covalent;
};

// Whose atoms, color and selection a residue has.
struct ResidueSource
{
    // Null for a residue without atoms.
    Compound *chain = nullptr;
    // chain->Child(child).
    std::uint32_t child = 0;
};

// Null and what is no such object give what is empty, or the value of which nothing is said.
class TAMBO_API StructureDetails
{
public:
    // Of a structure, or of a chain alone. No text is copied, and no residue's object is made:
    // 100,000 atoms take some milliseconds.
    static StructureTable read(const Compound *object);
    // Those of a structure's first model, in the order of the file.
    static std::vector<WaterDetails> waters(const Compound *structure);
    // Those of a structure whose atoms are both there. Waters have none.
    static std::vector<BondDetails> bonds(const Compound *structure);
    // Those of its file that have most of the first one's atoms, which are the tree's; 1 mostly. 0
    // for what is no structure.
    static std::size_t modelCount(const Compound *structure);
    // Where the atoms of the table are in a model, 0 for the first; undefined where it lacks one.
    // None for a model that is not there.
    static std::vector<Vertex> modelPositions(const Compound *structure, std::size_t model);
    // Grows whenever what the functions above tell of any structure may have changed, as by undo
    // and redo; by no change of colors, selection or alignments. Never goes back.
    static std::uint64_t revision() noexcept;
    // Of each residue of a sequence, which may be tied to residues of loaded chains, or of a chain.
    static std::vector<ResidueSource> sources(const Compound *sequence);
    static float bFactor(const Compound *atom);
    static float occupancy(const Compound *atom);
};

} // namespace TAMBO
