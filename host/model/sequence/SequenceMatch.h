// SPDX-License-Identifier: GPL-3.0-or-later
// Which letters of two versions of one sequence belong together: the one in a file and the one that
// a chain shows, where residues may be missing, modified or inserted.
#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

namespace TAMBO {

// Letters first to first + count - 1 of the one belong to those of the other from second on, equal
// or not.
struct MatchRun
{
    std::size_t first = 0;
    std::size_t second = 0;
    std::size_t count = 0;

    friend bool operator==(const MatchRun &, const MatchRun &) = default;
};

struct SequenceMatch
{
    // Ascending in both.
    std::vector<MatchRun> runs;
    // Letters that are equal, case aside.
    std::size_t identical = 0;
    std::size_t matched = 0;
};

// breaks holds, in ascending order, the letters of the second sequence before which residues may be
// missing (its numbering jumps); there a gap is preferred. Lengths whose product is beyond reason
// are matched as far as long stretches agree.
[[nodiscard]] SequenceMatch matchSequences(std::string_view first, std::string_view second,
                                           const std::vector<std::size_t> &breaks);

} // namespace TAMBO
