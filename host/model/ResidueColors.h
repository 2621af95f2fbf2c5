// SPDX-License-Identifier: GPL-3.0-or-later
// The colours of residues that do not have the colour of their type: one byte a residue as long as
// no more than 255 colours occur.
#pragma once

#include "Color.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace TAMBO {

class ResidueColors
{
public:
    explicit ResidueColors(std::size_t count) : m_Small(count, 0) { }

    // None: the colour of the type.
    [[nodiscard]] std::optional<Color> at(std::size_t index) const noexcept;
    void set(std::size_t index, std::optional<Color> color);
    // How many residues have a colour of their own.
    [[nodiscard]] std::size_t colored() const noexcept { return m_Colored; }
    [[nodiscard]] std::size_t bytes() const noexcept;

private:
    // Index into the palette plus one, or 0 by type; 0 when there are too many colours.
    [[nodiscard]] std::uint8_t paletteEntry(Color color);
    void widen();

    std::size_t m_Colored = 0;
    std::vector<Color> m_Palette;
    std::vector<std::uint8_t> m_Small;
    // Instead of m_Small when there are many colours; the top bit marks "by type".
    std::vector<std::uint32_t> m_Wide;
    std::uint8_t m_LastEntry = 0;
};

} // namespace TAMBO
