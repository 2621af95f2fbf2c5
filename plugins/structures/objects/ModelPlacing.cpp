// SPDX-License-Identifier: GPL-3.0-or-later
#include "ModelPlacing.h"

#include "StructureDetails.h"

namespace structures {

void placeInModel(const TAMBO::Compound &structure, std::size_t model,
                  const std::vector<MoleculeResidue> &ofFirst, Molecule &molecule)
{
    const std::vector<TAMBO::Vertex> places =
        TAMBO::StructureDetails::modelPositions(&structure, model);
    for (MoleculeAtom &atom : molecule.atoms) {
        atom.isPlaced = false;
        if (atom.source >= places.size() || !places[atom.source].isDefined())
            continue;
        const TAMBO::Vertex &vertex = places[atom.source];
        const Vec3 place{vertex.x(), vertex.y(), vertex.z()};
        if (!isFinite(place))
            continue;
        atom.isPlaced = true;
        atom.position = place - molecule.centre;
    }
    const auto known = [&molecule](std::uint32_t atom) {
        return atom != kNone && molecule.atoms[atom].isPlaced ? atom : kNone;
    };
    for (std::size_t i = 0; i < molecule.residues.size(); ++i) {
        molecule.residues[i].tracePoint = known(ofFirst[i].tracePoint);
        molecule.residues[i].carbonylOxygen = known(ofFirst[i].carbonylOxygen);
    }
}

} // namespace structures
