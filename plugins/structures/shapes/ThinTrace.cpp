// SPDX-License-Identifier: GPL-3.0-or-later
#include "ThinTrace.h"

#include "MoleculeShapes.h"
#include "TraceRuns.h"

namespace structures {

namespace {

// Angstrom.
constexpr float kThinRadius = 0.16F;

} // namespace

void addThinTrace(const Molecule &molecule, const std::vector<ResidueStyle> &styles, Shapes &shapes)
{
    const auto isDrawn = [&styles](std::uint32_t residue) {
        return styles[residue].style == Style::Cartoon || styles[residue].style == Style::Trace;
    };
    const auto placeOf = [&molecule](std::uint32_t residue) {
        return molecule.atoms[molecule.residues[residue].tracePoint].position;
    };
    for (const MoleculeChain &chain : molecule.chains)
        for (const TraceRun &run : traceRuns(molecule, chain)) {
            std::uint32_t before = kNone;
            for (const std::uint32_t residue : run.residues) {
                const bool isPart = isDrawn(residue);
                const Pick pick = pickOfResidue(molecule, residue);
                if (isPart)
                    shapes.spheres.push_back({placeOf(residue), kThinRadius, pick});
                if (isPart && before != kNone)
                    shapes.sticks.push_back({placeOf(before), placeOf(residue), kThinRadius,
                                             pickOfResidue(molecule, before), pick});
                before = isPart ? residue : kNone;
            }
        }
}

} // namespace structures
