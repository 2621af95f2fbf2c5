// SPDX-License-Identifier: GPL-3.0-or-later
// What of an object an edit changes, as far as it matters to whoever keeps the object in a file.
#pragma once

#include <cstdint>

namespace TAMBO {

enum class EditPart : std::uint8_t {
    // A top-level object that the user made came or went.
    Whole,
    // The same of one that is in a file, or can be made again by a command: no work of the user's.
    Arrival,
    // Chains or groups of a structure came or went.
    Members,
    Cells,
    Name,
    Numbers,
    Places,
    Elements,
    // Colours, ties: no file holds them.
    Display,
    // Of an alignment, because of what its rows are made of: the names of rows, and the numbers of
    // residues with coordinates, which some files mention.
    RowNames,
    HeaderNumbers
};

class EditParts
{
public:
    constexpr EditParts() noexcept = default;

    constexpr void add(EditPart part) noexcept { m_Bits |= bit(part); }
    constexpr void add(EditParts parts) noexcept { m_Bits |= parts.m_Bits; }
    constexpr void remove(EditPart part) noexcept { m_Bits &= ~bit(part); }
    [[nodiscard]] constexpr bool has(EditPart part) const noexcept
    {
        return (m_Bits & bit(part)) != 0;
    }
    [[nodiscard]] constexpr bool empty() const noexcept { return m_Bits == 0; }

    // All as one number, for files; what no part stands for is left out.
    [[nodiscard]] constexpr std::uint32_t number() const noexcept { return m_Bits; }
    [[nodiscard]] static constexpr EditParts ofNumber(std::uint32_t number) noexcept
    {
        EditParts parts;
        parts.m_Bits = number & (bit(EditPart::HeaderNumbers) * 2 - 1);
        return parts;
    }

    friend constexpr bool operator==(EditParts, EditParts) noexcept = default;

private:
    static constexpr std::uint32_t bit(EditPart part) noexcept
    {
        return std::uint32_t(1) << unsigned(part);
    }

    std::uint32_t m_Bits = 0;
};

// Whether the user would miss it.
[[nodiscard]] constexpr bool isWork(EditPart part) noexcept
{
    return part != EditPart::Arrival && part != EditPart::Display;
}

// Whether structures may be made of something else behind it, or be elsewhere.
[[nodiscard]] constexpr bool isOfStructures(EditPart part) noexcept
{
    return part != EditPart::Cells && part != EditPart::Display && part != EditPart::RowNames &&
           part != EditPart::HeaderNumbers;
}

} // namespace TAMBO
