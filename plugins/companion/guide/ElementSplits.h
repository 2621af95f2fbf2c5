// SPDX-License-Identifier: GPL-3.0-or-later
// Helices and strands that a gap would come into the middle of.
#pragma once

#include "GapMove.h"

#include <QString>

#include <optional>

namespace companion {

// A helix or strand of the chain that a row is, or is tied to.
struct SplitElement
{
    unsigned long row = 0;
    // Of the row, the one that would stand behind the gaps.
    unsigned long residue = 0;
    TAMBO::Compound *element = nullptr;

    friend bool operator==(const SplitElement &, const SplitElement &) = default;
};

// The one whose residues would stand on both sides of the gaps, and of those that touch them. Turns
// may be split.
[[nodiscard]] std::optional<SplitElement> splitBy(const TAMBO::Alignment &alignment,
                                                  const GapMove &move);
// The first of any of the rows.
[[nodiscard]] std::optional<SplitElement> splitBy(const TAMBO::Alignment &alignment,
                                                  const GapMoves &moves);

// "splits helix 45–57 of chain A": the residues of it that the row has.
[[nodiscard]] QString splitText(const TAMBO::Alignment &alignment, const SplitElement &split);

// Where on both sides of a column nobody looks any more: of so many rows that move, a part of it,
// but that of the least spread at least.
inline constexpr unsigned long kFarthestPlace = 200;
inline constexpr unsigned long kLeastFarthest = 10;
// The nearest column where letting go would split nothing, of two the left one.
[[nodiscard]] std::optional<unsigned long>
nearestWhole(const TAMBO::Alignment &alignment, const MovesAt &movesAt, unsigned long column);

} // namespace companion
