// SPDX-License-Identifier: GPL-3.0-or-later
#include "TraceRuns.h"

namespace structures {

std::vector<TraceRun> traceRuns(const Molecule &molecule, const MoleculeChain &chain)
{
    std::vector<TraceRun> runs;
    Vec3 last;
    for (std::uint32_t i = 0; i < chain.residueCount; ++i) {
        const std::uint32_t index = chain.firstResidue + i;
        const MoleculeResidue &residue = molecule.residues[index];
        if (residue.tracePoint == kNone)
            continue;
        const Vec3 point = molecule.atoms[residue.tracePoint].position;
        const float longest =
            residue.role == Role::Nucleotide ? kLongestPhosphateStep : kLongestCaStep;
        if (runs.empty() || runs.back().role != residue.role || distance(last, point) > longest)
            runs.push_back({{}, residue.role});
        runs.back().residues.push_back(index);
        last = point;
    }
    return runs;
}

} // namespace structures
