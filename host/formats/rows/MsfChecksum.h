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
    // Of a row's columns without any blank among them, gaps as they are written.
    [[nodiscard]] static std::uint32_t ofCells(std::string_view cells) noexcept
    {
        std::uint64_t sum = 0;
        for (; cells.size() >= kPeriod; cells.remove_prefix(kPeriod))
            sum += weighed(cells.substr(0, kPeriod));
        return reduced(sum + weighed(cells));
    }
    // Over every column, gaps as they are written.
    [[nodiscard]] std::uint32_t ofColumns() const noexcept { return reduced(m_OfColumns); }
    // Over the residues alone: some programs leave the gaps out.
    [[nodiscard]] std::uint32_t ofResidues() const noexcept { return reduced(m_OfResidues); }

private:
    // Places count from 1 to this number, again and again.
    static constexpr std::uint32_t kPeriod = 57;

    static std::uint32_t weighed(std::string_view period) noexcept
    {
        std::uint32_t sum = 0;
        for (std::uint32_t place = 0; place < period.size(); ++place)
            sum += (place + 1) * static_cast<unsigned char>(capitalLetter(period[place]));
        return sum;
    }
    void add(char character) noexcept
    {
        const auto capital = static_cast<unsigned char>(capitalLetter(character));
        if (capital <= ' ')
            return;
        add(m_OfColumns, m_Columns, capital);
        if (isLetter(character))
            add(m_OfResidues, m_Residues, capital);
    }
    static void add(std::uint64_t &sum, std::uint32_t &place, unsigned char character) noexcept
    {
        sum += std::uint64_t{place + 1} * character;
        place = place + 1 == kPeriod ? 0 : place + 1;
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
