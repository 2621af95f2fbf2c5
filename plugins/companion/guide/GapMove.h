// SPDX-License-Identifier: GPL-3.0-or-later
// What letting go of a gap would do, in the words of Alignment::moveGaps().
#pragma once

#include "Alignment.h"
#include "AlignmentViewObserver.h"

#include <algorithm>
#include <functional>
#include <optional>
#include <vector>

namespace companion {

// The gaps [from, from + count) of a row come to stand at [to, to + count), and what is between
// closes up. Gaps behind the last column are those that come by it.
struct GapMove
{
    unsigned long row = 0;
    unsigned long from = 0;
    unsigned long count = 0;
    unsigned long to = 0;

    // The columns whose cells change, half-open.
    [[nodiscard]] unsigned long begin() const noexcept { return std::min(from, to); }
    [[nodiscard]] unsigned long end() const noexcept { return std::max(from, to) + count; }
    // Where the cell stands now that is at a column of these afterwards; nothing for the gaps.
    [[nodiscard]] std::optional<unsigned long> source(unsigned long col) const noexcept
    {
        if (col >= to && col < to + count)
            return std::nullopt;
        return to < from ? col - count : col + count;
    }

    friend bool operator==(const GapMove &, const GapMove &) = default;
};

// Of each row one at most; none when nothing would change.
using GapMoves = std::vector<GapMove>;
// What would be if it was let go over a column.
using MovesAt = std::function<GapMoves(unsigned long column)>;

// As the editor takes what is held there with the button: one gap with the left one; with the
// middle one the whole run, or the residue and what follows it; a gap more where it was pressed.
[[nodiscard]] GapMoves movesOf(const TAMBO::Alignment &alignment, const TAMBO::GapDrag &press,
                               unsigned long column);

} // namespace companion
