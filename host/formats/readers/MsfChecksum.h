// SPDX-License-Identifier: GPL-3.0-or-later
// The checksum of one row of an MSF file, from its text piece by piece.
#pragma once

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
    [[nodiscard]] std::uint32_t ofColumns() const noexcept { return m_OfColumns; }
    // Over the residues alone: some programs leave the gaps out.
    [[nodiscard]] std::uint32_t ofResidues() const noexcept { return m_OfResidues; }

private:
    void add(char character) noexcept
    {
        const bool isLower = character >= 'a' && character <= 'z';
        const auto capital =
            static_cast<unsigned char>(isLower ? character - 'a' + 'A' : character);
        if (capital <= ' ')
            return;
        add(m_OfColumns, m_Columns, capital);
        if (capital >= 'A' && capital <= 'Z')
            add(m_OfResidues, m_Residues, capital);
    }
    static void add(std::uint32_t &sum, std::uint32_t &place, unsigned char character) noexcept
    {
        constexpr std::uint32_t period = 57;
        constexpr std::uint32_t modulus = 10000;
        sum = (sum + (place + 1) * character) % modulus;
        place = (place + 1) % period;
    }

    std::uint32_t m_OfColumns = 0;
    std::uint32_t m_OfResidues = 0;
    std::uint32_t m_Columns = 0;
    std::uint32_t m_Residues = 0;
};

} // namespace TAMBO::formats
