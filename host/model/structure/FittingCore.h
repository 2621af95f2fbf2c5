// SPDX-License-Identifier: GPL-3.0-or-later
// The pairs of two structures that fit each other, of all pairs: domains that have moved, and loops
// that differ, are left out.
#pragma once

#include "Superposition.h"

#include <cstddef>
#include <vector>

namespace TAMBO {

// Fewer leave open how to turn.
inline constexpr std::size_t kFewestPairs = 3;

// A turn about the line would change nothing, so that no turn is the best one. At least one point.
[[nodiscard]] bool areOnLine(const std::vector<Vertex> &points);

struct FittingCore
{
    Superposition motion;
    // Places among the pairs, ascending.
    std::vector<std::size_t> pairs;
    // Of these, in Angstrom, once moved.
    double rmsd;
};

// The largest core in which no pair is farther apart than the cutoff, in Angstrom, as far as it can
// be found by pruning: some pairs are superposed, the farthest are left out, and the rest is
// superposed anew, until none is beyond the cutoff; each time a tenth of those left or half of
// those beyond, whichever are fewer, and one at least (E. C. Meng et al., BMC Bioinformatics 7, 339
// (2006)). A core takes in what fits it then, and is pruned again, as long as it grows. It begins
// with all pairs, and, since a domain that has moved far may pull all of them along, with stretches
// of a fourth, too (as N. Siew et al., Bioinformatics 16, 776 (2000) do with short ones).
//
// Its distance is never above that of all when these are superposed. With a core of fewer than
// kFewestPairs, or of one in a line, there is none: pairs is empty, and the motion is that of all.
[[nodiscard]] FittingCore fittingCore(const std::vector<PointPair> &pairs, double cutoff);

} // namespace TAMBO
