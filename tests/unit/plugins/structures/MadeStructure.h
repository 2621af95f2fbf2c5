// SPDX-License-Identifier: GPL-3.0-or-later
// A structure of the workbench: a helix of 24 residues as chain A, an ion as chain B.
#pragma once

#include "DataMaker.h"
#include "MadeMolecules.h"

#include <string>

namespace MadeStructure {

inline TAMBO::Compound *make(const std::string &name, float shift = 0)
{
    const char *const names[] = {"ALA", "LYS", "GLU", "LEU", "TRP", "ASP"};
    TAMBO::ChainValues chain;
    chain.name = "A";
    int number = 1;
    for (const structures::Vec3 &place : MadeMolecules::helix(24)) {
        TAMBO::ResidueValues residue;
        residue.name = names[number % 6];
        residue.number = TAMBO::SequenceNumber(std::to_string(number));
        residue.atoms = {
            {"CA", "C", TAMBO::Vertex(place.x + shift, place.y, place.z), float(number), 1},
            {"CB", "C", TAMBO::Vertex(place.x * 1.6F + shift, place.y * 1.6F, place.z),
             float(number), 1}};
        chain.residues.push_back(residue);
        ++number;
    }
    TAMBO::ChainValues ion;
    ion.name = "B";
    ion.residues = {{"ZN",
                     TAMBO::SequenceNumber("1"),
                     {{"ZN", "ZN", TAMBO::Vertex(12 + shift, 0, 18), 30, 1}}}};
    TAMBO::StructureValues values;
    values.chains = {chain, ion};
    return TAMBO::DataMaker::makeStructure(name, values);
}

} // namespace MadeStructure
