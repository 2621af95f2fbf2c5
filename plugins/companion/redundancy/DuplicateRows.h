// SPDX-License-Identifier: GPL-3.0-or-later
// Rows with the same name, and rows with the same sequence.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace TAMBO {
class AlignmentWindow;
}

namespace companion {

// What stands for a text: two texts that differ have the same one about as often as a disk forgets
// a bit.
using TextDigest = std::array<std::uint64_t, 2>;
[[nodiscard]] TextDigest digestOf(std::string_view text);

struct DuplicateRow
{
    std::uint32_t row = 0;
    // That of the first row of its group, which it may be itself.
    std::uint32_t first = 0;
};

// Those rows of which there are several, group by group; a group stands where its first row does.
using DuplicateGroups = std::vector<DuplicateRow>;
[[nodiscard]] std::size_t groupCount(const DuplicateGroups &groups);
// Of rows that have what such a digest stands for; a row without one has none.
[[nodiscard]] DuplicateGroups duplicatesOf(const std::vector<std::optional<TextDigest>> &digests);

struct DuplicateRows
{
    DuplicateGroups names;
    // Gaps and whether letters are small make no difference. Rows without residues are left out.
    DuplicateGroups sequences;
};

// Of the alignment that the window shows; nothing when it took long and the user has given it up.
[[nodiscard]] std::optional<DuplicateRows> findDuplicates(TAMBO::AlignmentWindow &window);

} // namespace companion
