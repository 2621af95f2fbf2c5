// SPDX-License-Identifier: GPL-3.0-or-later
// The checksum of one row of an MSF file, from its text piece by piece.
#pragma once

#include "Text.h"

#include <cstdint>
#include <string_view>

namespace TAMBO::formats {

class MsfChecksum
{
public:
    void add(std::string_view text) noexcept
    {
        for (const char character : text)
            add(character);
    }
    // Over every column, gaps as they are written.
    [[nodiscard]] std::uint32_t ofColumns() const noexcept { return reduced(m_OfColumns); }
    // Over the residues alone: some programs leave the gaps out.
    [[nodiscard]] std::uint32_t ofResidues() const noexcept { return reduced(m_OfResidues); }

private:
    void add(char character) noexcept
    {
        const auto capital = static_cast<unsigned char>(capitalLetter(character));
        if (capital <= ' ')
            return;
        add(m_OfColumns, m_Columns, capital);
        if (isLetter(character))
            add(m_OfResidues, m_Residues, capital);
    }
    // Places count from 1 to 57, again and again.
    static void add(std::uint64_t &sum, std::uint32_t &place, unsigned char character) noexcept
    {
        constexpr std::uint32_t period = 57;
        sum += std::uint64_t{place + 1} * character;
        place = place + 1 == period ? 0 : place + 1;
    }
    static std::uint32_t reduced(std::uint64_t sum) noexcept
    {
        constexpr std::uint64_t modulus = 10000;
        return static_cast<std::uint32_t>(sum % modulus);
    }

    std::uint64_t m_OfColumns = 0;
    std::uint64_t m_OfResidues = 0;
    std::uint32_t m_Columns = 0;
    std::uint32_t m_Residues = 0;
};

} // namespace TAMBO::formats
