// SPDX-License-Identifier: GPL-3.0-or-later
// Counts the letters of neighbouring columns over many rows.
#pragma once

#include "AlignmentRow.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace TAMBO {

// A few rows at a time are written out, a character for each column, and each letter is looked for
// in many columns at once. Going from residue to residue takes several times as long.
class LetterTally
{
public:
    using Column = OccupancyRow::Column;

    // begin is the column of a word.
    LetterTally(Column begin, Column end);

    void add(const AlignmentRow &row);
    // After the last row.
    void finish();

    // In the order in which they were found.
    [[nodiscard]] const std::vector<std::uint8_t> &letters() const noexcept { return m_Letters; }
    [[nodiscard]] std::uint32_t count(std::size_t letter, Column column) const noexcept
    {
        return m_Counts[letter][column - m_Begin];
    }

private:
    // What they occupy fits the fastest memory, and their number a byte.
    static constexpr std::size_t kRows = 48;
    static constexpr std::size_t kBlock = 16;
    // So many letters are looked for in one pass.
    static constexpr std::size_t kGroup = 4;

    using Bytes [[gnu::vector_size(kBlock)]] = std::uint8_t;
    using Group = std::array<Bytes, kGroup>;

    void write(const AlignmentRow &row, std::uint8_t *cells);
    void countBlock(std::size_t block);
    // Of the letters from one on.
    [[nodiscard]] Group countGroup(std::size_t block, std::size_t letter) const noexcept;
    [[nodiscard]] std::uint8_t unknownLetter(std::size_t block) const noexcept;

    Column m_Begin;
    Column m_End;
    // Characters of a written row.
    std::size_t m_Stride;
    std::vector<std::uint8_t> m_Cells;
    std::vector<std::uint8_t> m_Text;
    std::size_t m_Rows = 0;
    std::vector<std::uint8_t> m_Letters;
    std::array<bool, 256> m_IsKnown{};
    // A letter's in one stretch.
    std::vector<std::vector<std::uint32_t>> m_Counts;
};

} // namespace TAMBO
