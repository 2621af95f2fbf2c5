// SPDX-License-Identifier: GPL-3.0-or-later
#include "ResidueColors.h"

#include <algorithm>

namespace TAMBO {

namespace {

constexpr std::uint32_t kByType = 0x80000000U;
constexpr std::size_t kPaletteLimit = 255;

} // namespace

std::optional<Color> ResidueColors::at(std::size_t index) const noexcept
{
    if (!m_Wide.empty())
        return m_Wide[index] == kByType ? std::nullopt : std::optional(Color(m_Wide[index]));
    const std::uint8_t entry = m_Small[index];
    return entry == 0 ? std::nullopt : std::optional(m_Palette[entry - 1U]);
}

std::uint8_t ResidueColors::paletteEntry(Color color)
{
    if (m_LastEntry != 0 && m_Palette[m_LastEntry - 1U] == color)
        return m_LastEntry;
    const auto found = std::ranges::find(m_Palette, color);
    if (found == m_Palette.end()) {
        if (m_Palette.size() == kPaletteLimit)
            return 0;
        m_Palette.push_back(color);
        m_LastEntry = static_cast<std::uint8_t>(m_Palette.size());
    } else {
        m_LastEntry = static_cast<std::uint8_t>(found - m_Palette.begin() + 1);
    }
    return m_LastEntry;
}

void ResidueColors::widen()
{
    m_Wide.reserve(m_Small.size());
    for (const std::uint8_t entry : m_Small)
        m_Wide.push_back(entry == 0 ? kByType : m_Palette[entry - 1U].rgb());
    m_Small = {};
    m_Palette = {};
    m_LastEntry = 0;
}

void ResidueColors::set(std::size_t index, std::optional<Color> color)
{
    const bool had = at(index).has_value();
    m_Colored = m_Colored - (had ? 1 : 0) + (color.has_value() ? 1 : 0);
    if (m_Wide.empty()) {
        const std::uint8_t entry = color ? paletteEntry(*color) : std::uint8_t(0);
        if (entry != 0 || !color) {
            m_Small[index] = entry;
            return;
        }
        widen();
    }
    m_Wide[index] = color ? color->rgb() : kByType;
}

std::size_t ResidueColors::bytes() const noexcept
{
    return sizeof(*this) + m_Palette.capacity() * sizeof(Color) + m_Small.capacity() +
           m_Wide.capacity() * sizeof(std::uint32_t);
}

} // namespace TAMBO
