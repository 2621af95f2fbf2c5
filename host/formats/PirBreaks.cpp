// SPDX-License-Identifier: GPL-3.0-or-later
#include "PirBreaks.h"

#include <bit>

namespace TAMBO::formats {

std::vector<PlacedBreak> placedBreaks(const RowRecord &row)
{
    std::vector<PlacedBreak> placed;
    if (row.chainBreaks.empty())
        return placed;
    const GappedSequence &cells = row.sequence;
    std::size_t next = 0;
    std::uint64_t letters = 0;
    // The first column behind the last letter, or behind the break that was placed last.
    std::uint64_t free = 0;
    // Several breaks at one place stand side by side, as far as the gap has room.
    const auto placeBefore = [&](std::uint64_t column) {
        while (next < row.chainBreaks.size() && row.chainBreaks[next] <= letters) {
            if (row.chainBreaks[next] == letters && free < column)
                placed.push_back({free++, letters});
            ++next;
        }
    };
    for (std::size_t word = 0; word < cells.occupancy.size(); ++word) {
        for (std::uint64_t bits = cells.occupancy[word]; bits != 0; bits &= bits - 1) {
            const std::uint64_t column = word * 64 + static_cast<unsigned>(std::countr_zero(bits));
            placeBefore(column);
            ++letters;
            free = column + 1;
        }
    }
    placeBefore(cells.width);
    return placed;
}

} // namespace TAMBO::formats
