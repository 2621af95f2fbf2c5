// SPDX-License-Identifier: GPL-3.0-or-later
// A structure as plain values, for DataMaker::makeStructure.
#pragma once

#include "SequenceNumber.h"
#include "Vertex.h"

#include <string>
#include <vector>

namespace TAMBO {

struct AtomValues
{
    // "CA"; each once in a residue.
    std::string name;
    // "C", "SE"; one or two letters.
    std::string element;
    // In Angstrom.
    Vertex position;
    // In square Angstrom.
    float bFactor = 0;
    float occupancy = 1;
};

struct ResidueValues
{
    // Its three-letter code, in capitals: "ALA", "HEM".
    std::string name;
    // Each once in a chain.
    SequenceNumber number;
    // At least one.
    std::vector<AtomValues> atoms;
    // The one-letter code of an amino acid of another name ('M' of "MSE"). '\0': what the name
    // says; a name of no amino acid is that of a group, such as a ligand.
    char letter = '\0';
};

struct ChainValues
{
    // One to four characters without a blank, or none; each once in a structure.
    std::string name;
    // At least one.
    std::vector<ResidueValues> residues;
};

struct StructureValues
{
    // At least one.
    std::vector<ChainValues> chains;
    // Built by a program, not measured.
    bool isModel = false;
};

} // namespace TAMBO
