// SPDX-License-Identifier: GPL-3.0-or-later
// One row of an alignment as plain data: the residues' letters without gaps, and one bit a column
// that says where they stand.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace TAMBO {

struct GappedSequence
{
    std::string letters;
    // Bit c is set when column c holds a residue. Bits at and beyond width are
    // clear, and there are no more words than width needs.
    std::vector<std::uint64_t> occupancy;
    std::uint64_t width = 0;

    // Appends columns; '-', '.' and '~' are gaps, every other character is a residue's letter.
    void append(std::string_view columns);
    void appendGaps(std::uint64_t count);
    // One character per column, '-' for a gap.
    [[nodiscard]] std::string text() const;
};

} // namespace TAMBO
