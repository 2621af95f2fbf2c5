// SPDX-License-Identifier: GPL-3.0-or-later
#include "ResidueColors.h"

#include "LetterColors.h"

#include <algorithm>

namespace TAMBO {

namespace {

// No colour has this value: its alpha is never lacking.
constexpr std::uint32_t kByType = 0;
constexpr std::size_t kPaletteLimit = 255;

std::uint32_t wideValue(std::optional<Color> color) noexcept
{
    return color ? color->argb() : kByType;
}

std::vector<std::uint32_t> wideValues(const LetterColors &colors)
{
    std::vector<std::uint32_t> values;
    for (const std::optional<Color> &color : colors.choices())
        values.push_back(wideValue(color));
    return values;
}

} // namespace

ResidueColors::ResidueColors(std::string_view letters, const LetterColors &colors)
    : ResidueColors(letters.size())
{
    set(0, letters, colors, {});
}

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

std::vector<std::uint8_t> ResidueColors::entriesOf(const LetterColors &colors)
{
    std::vector<std::uint8_t> entries;
    entries.reserve(colors.choices().size());
    for (const std::optional<Color> &color : colors.choices()) {
        entries.push_back(color ? paletteEntry(*color) : std::uint8_t(0));
        if (color && entries.back() == 0)
            return {};
    }
    return entries;
}

void ResidueColors::widen()
{
    m_Wide.reserve(m_Small.size());
    for (const std::uint8_t entry : m_Small)
        m_Wide.push_back(entry == 0 ? kByType : m_Palette[entry - 1U].argb());
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
    m_Wide[index] = wideValue(color);
}

void ResidueColors::set(std::size_t first, std::string_view letters, const LetterColors &colors,
                        const Note &note)
{
    if (m_Wide.empty()) {
        const std::vector<std::uint8_t> entries = entriesOf(colors);
        if (!entries.empty()) {
            store(m_Small, entries, first, letters, colors, note);
            return;
        }
        widen();
    }
    store(m_Wide, wideValues(colors), first, letters, colors, note);
}

// Residues side by side that had one colour are told of at once.
template <typename Value>
void ResidueColors::store(std::vector<Value> &kept, const std::vector<Value> &values,
                          std::size_t first, std::string_view letters, const LetterColors &colors,
                          const Note &note)
{
    constexpr Value kNone{};
    const auto wanted = [&](std::size_t i) { return values[colors.choice(letters[i])]; };
    for (std::size_t i = 0; i < letters.size();) {
        const Value before = kept[first + i];
        if (wanted(i) == before) {
            ++i;
            continue;
        }
        const std::optional<Color> color = at(first + i);
        const std::size_t begin = i;
        std::size_t added = 0;
        for (; i < letters.size() && kept[first + i] == before; ++i) {
            const Value value = wanted(i);
            if (value == before)
                break;
            kept[first + i] = value;
            added += value != kNone ? 1 : 0;
        }
        m_Colored += added;
        if (before != kNone)
            m_Colored -= i - begin;
        if (note)
            note(first + begin, i - begin, color);
    }
}

std::size_t ResidueColors::bytes() const noexcept
{
    return sizeof(*this) + m_Palette.capacity() * sizeof(Color) + m_Small.capacity() +
           m_Wide.capacity() * sizeof(std::uint32_t);
}

bool ResidueColors::isSameAs(const ResidueColors &other) const noexcept
{
    if (m_Palette == other.m_Palette && m_Small == other.m_Small && m_Wide == other.m_Wide)
        return true;
    const std::size_t count = std::max(m_Small.size(), m_Wide.size());
    for (std::size_t i = 0; i < count; ++i) {
        if (at(i) != other.at(i))
            return false;
    }
    return true;
}

} // namespace TAMBO
