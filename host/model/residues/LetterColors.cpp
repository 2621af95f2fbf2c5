// SPDX-License-Identifier: GPL-3.0-or-later
#include "LetterColors.h"

#include "AminoAcids.h"

#include <algorithm>
#include <utility>

namespace TAMBO {

namespace {

std::array<Color, LetterColors::kLetters> everywhere(Color color)
{
    std::array<Color, LetterColors::kLetters> colors;
    colors.fill(color);
    return colors;
}

} // namespace

LetterColors::LetterColors(const std::array<Color, kLetters> &colors) : m_Colors(colors)
{
    for (std::size_t i = 0; i < kLetters; ++i) {
        if (colors[i] != aminoAcidColor(static_cast<char>(i)))
            m_Choices[i] = find(colors[i]);
    }
    makePalette();
}

LetterColors::LetterColors(Color color) : LetterColors(everywhere(color)) { }

LetterColors::LetterColors(const std::vector<Color> &colors)
    : m_Different(colors.begin(), colors.end())
{
    m_Different.insert(m_Different.begin(), std::nullopt);
    std::ranges::copy(colors, m_Colors.begin() + 1);
    for (std::size_t i = 0; i < m_Different.size(); ++i)
        m_Choices[i] = static_cast<Choice>(i);
    makePalette();
}

void LetterColors::makePalette()
{
    std::vector<Color> palette;
    for (std::size_t i = 1; i < m_Different.size(); ++i)
        palette.push_back(*m_Different[i]);
    palette.shrink_to_fit();
    m_Palette = std::make_shared<const std::vector<Color>>(std::move(palette));
}

LetterColors::Choice LetterColors::find(Color color)
{
    const auto found = std::ranges::find(m_Different, std::optional(color));
    const auto place = static_cast<Choice>(found - m_Different.begin());
    if (found == m_Different.end())
        m_Different.emplace_back(color);
    return place;
}

} // namespace TAMBO
