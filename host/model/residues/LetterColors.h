// SPDX-License-Identifier: GPL-3.0-or-later
// Which colour the residues of each letter are to have, made ready for many residues.
#pragma once

#include "Color.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

namespace TAMBO {

class LetterColors
{
public:
    static constexpr std::size_t kLetters = 256;
    // Choice 0 is the colour of the type.
    using Choice = std::uint16_t;

    // By the character code of the letter.
    explicit LetterColors(const std::array<Color, kLetters> &colors);
    // The same for every letter.
    explicit LetterColors(Color color);
    // In place of letters, texts hold numbers of choices. At most kLetters - 1 different colours,
    // the first of which is choice 1.
    explicit LetterColors(const std::vector<Color> &colors);

    [[nodiscard]] Color color(char letter) const noexcept { return m_Colors[code(letter)]; }
    [[nodiscard]] Choice choice(char letter) const noexcept { return m_Choices[code(letter)]; }
    // The different colours by their choice.
    [[nodiscard]] const std::vector<std::optional<Color>> &choices() const noexcept
    {
        return m_Different;
    }

    // The same without the first, for whoever keeps colours as choices.
    [[nodiscard]] const std::shared_ptr<const std::vector<Color>> &palette() const noexcept
    {
        return m_Palette;
    }

private:
    void makePalette();
    static std::size_t code(char letter) noexcept { return static_cast<unsigned char>(letter); }
    [[nodiscard]] Choice find(Color color);

    std::array<Color, kLetters> m_Colors;
    std::array<Choice, kLetters> m_Choices{};
    std::vector<std::optional<Color>> m_Different{std::nullopt};
    std::shared_ptr<const std::vector<Color>> m_Palette;
};

} // namespace TAMBO
