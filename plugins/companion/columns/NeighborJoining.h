// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DistanceMatrix.h"
#include "Tree.h"

#include <optional>
#include <span>
#include <string>

namespace companion {

// The tree of neighbor joining: N. Saitou and M. Nei, Mol. Biol. Evol. 4, 406 (1987), with the sums
// of rows of J. A. Studier and K. J. Keppler, Mol. Biol. Evol. 5, 729 (1988): time grows with the
// third power of the rows. Of pairs that are equally near the first in a fixed order is joined, so
// that the same distances always give the same tree.
//
// The first nodes are the leaves, in the order of the rows, with the names, if there are any. The
// tree has no root by itself: tree.root is the node at which the last three meet, between two rows
// the middle, and one row is its own root. Lengths are in the unit of the distances and never
// negative: where a pair would have a negative one it has 0, and the other one all of the pair's
// distance (M. K. Kuhner and J. Felsenstein, Mol. Biol. Evol. 11, 459, 1994); at the last node it
// has 0 alone.
//
// Distances are finite numbers. Nothing when it was given up; an empty tree without rows.
[[nodiscard]] std::optional<Tree> neighborJoining(const DistanceMatrix &distances,
                                                  std::span<const std::string> names = {},
                                                  const GoOn &goOn = {});

} // namespace companion
