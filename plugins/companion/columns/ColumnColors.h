// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "AminoAcidOrder.h"
#include "Color.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>

namespace companion {

// The colors that the letters of one column get. What has none stays as it is.
class ColumnColors
{
public:
    // Of a capital letter and of a small one; nothing for gaps and signs.
    [[nodiscard]] std::optional<Color> of(char letter) const noexcept
    {
        const std::size_t place = placeOf(letter);
        if (place >= m_Colors.size() || !(m_Colored >> place & 1U))
            return std::nullopt;
        return m_Colors[place];
    }
    // Takes the place of the color that the letter had. What is no letter gets none.
    void set(char letter, Color color) noexcept
    {
        const std::size_t place = placeOf(letter);
        if (place >= m_Colors.size())
            return;
        m_Colors[place] = color;
        m_Colored |= std::uint32_t(1) << place;
    }
    [[nodiscard]] bool isEmpty() const noexcept { return m_Colored == 0; }

    friend bool operator==(const ColumnColors &, const ColumnColors &) = default;

private:
    static constexpr std::size_t placeOf(char letter) noexcept
    {
        return std::size_t(static_cast<unsigned char>(capital(letter))) - std::size_t('A');
    }

    std::array<Color, 26> m_Colors = {};
    std::uint32_t m_Colored = 0;
};

} // namespace companion
