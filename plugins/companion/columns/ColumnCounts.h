// SPDX-License-Identifier: GPL-3.0-or-later
// How often each amino acid stands in a column. A plain value of 88 bytes: whoever shows columns
// keeps one for each, and an edit of a row takes a letter out and puts one in.
#pragma once

#include "AminoAcidOrder.h"

#include <cstdint>
#include <span>

namespace companion {

class ColumnCounts
{
public:
    ColumnCounts() = default;
    // A letter for each row, as letterKind() takes it: '\0' is a gap, small letters are as capital
    // ones.
    explicit ColumnCounts(std::span<const char> letters) noexcept;

    void add(char letter) noexcept { ++m_Counts[letterKind(letter)]; }
    // False, and nothing changes, when no letter of this kind is left.
    bool remove(char letter) noexcept;
    // The rows of both.
    ColumnCounts &operator+=(const ColumnCounts &other) noexcept;

    // By the place in kAminoAcids.
    [[nodiscard]] std::uint32_t of(std::size_t aminoAcid) const noexcept
    {
        return m_Counts[aminoAcid];
    }
    // How many letters are of the kind of this one: all others or all gaps, if it is one.
    [[nodiscard]] std::uint32_t ofLetter(char letter) const noexcept
    {
        return m_Counts[letterKind(letter)];
    }
    [[nodiscard]] std::uint32_t others() const noexcept { return m_Counts[kOtherLetter]; }
    [[nodiscard]] std::uint32_t gaps() const noexcept { return m_Counts[kGapLetter]; }
    // Letters that say which amino acid it is.
    [[nodiscard]] std::uint32_t aminoAcids() const noexcept;
    // All that is no gap.
    [[nodiscard]] std::uint32_t residues() const noexcept { return aminoAcids() + others(); }
    [[nodiscard]] std::uint32_t rows() const noexcept { return residues() + gaps(); }

    friend bool operator==(const ColumnCounts &, const ColumnCounts &) = default;

private:
    std::array<std::uint32_t, kAminoAcidCount + 2> m_Counts = {};
};

// A row that has come into an alignment, or has left it: its letters, one for each of the columns
// that both have.
void addRow(std::span<ColumnCounts> columns, std::span<const char> letters) noexcept;
void removeRow(std::span<ColumnCounts> columns, std::span<const char> letters) noexcept;

} // namespace companion
