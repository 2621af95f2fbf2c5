// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Molecule.h"

#include <vector>

namespace structures {

// Residues of a chain that follow each other without a break: their trace points are in order.
struct TraceRun
{
    std::vector<std::uint32_t> residues;
    Role role = Role::AminoAcid;
};

// Amino acids of which CA atoms are at most this far apart follow each other; nucleotides with a
// P each, the second.
inline constexpr float kLongestCaStep = 4.3F;
inline constexpr float kLongestPhosphateStep = 8.5F;

// The runs of a chain, in its order; residues without a trace point belong to none.
[[nodiscard]] std::vector<TraceRun> traceRuns(const Molecule &molecule, const MoleculeChain &chain);

} // namespace structures
