// SPDX-License-Identifier: GPL-3.0-or-later
// Sorts the characters of an alignment row into residues and gaps, 64 at a time.
#pragma once

#include <cstdint>

namespace TAMBO::formats {

// One bit a character, the first character in the lowest bit.
struct CellMasks
{
    // A to Z in either case.
    std::uint64_t letters = 0;
    std::uint64_t lowerCase = 0;
    // '-'
    std::uint64_t dashes = 0;
    // '.' and '~'
    std::uint64_t otherGaps = 0;
};

constexpr unsigned kScanWidth = 64;

// Reads 64 characters from there on.
[[nodiscard]] CellMasks scanCells(const char *text) noexcept;
// The same for machines without vector instructions that we know.
[[nodiscard]] CellMasks scanCellsOneByOne(const char *text) noexcept;

} // namespace TAMBO::formats
