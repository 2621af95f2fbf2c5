// SPDX-License-Identifier: GPL-3.0-or-later
// The colours of residues that do not have the colour of their type: one byte a residue as long as
// no more than 255 colours occur.
#pragma once

#include "Color.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

namespace TAMBO {

class LetterColors;
class ObjectReader;
class ObjectWriter;
class ResidueSelection;

class ResidueColors
{
public:
    // A colour and kOwnColor, or 0 by type.
    using WideValue = std::uint64_t;
    static constexpr WideValue kOwnColor = WideValue(1) << 32;

    // Residues that changed alike: the first, how many, and what colour they had.
    using Note = std::function<void(std::size_t, std::size_t, std::optional<Color>)>;

    explicit ResidueColors(std::size_t count) : m_Small(count, 0) { }
    // Of residues with these letters.
    ResidueColors(std::string_view letters, const LetterColors &colors);
    // Only some of them have other colours than those of their types.
    ResidueColors(std::string_view letters, const ResidueSelection &residues,
                  const LetterColors &colors);

    // None: the colour of the type.
    [[nodiscard]] std::optional<Color> at(std::size_t index) const noexcept
    {
        return m_Wide.empty() ? colorOf(m_Small[index]) : colorOf(m_Wide[index]);
    }
    void set(std::size_t index, std::optional<Color> color);
    // Some of the residues, all of which have these letters. Tells of those that change.
    void set(std::string_view letters, const ResidueSelection &residues, const LetterColors &colors,
             const Note &note);
    // The same without telling, as fast however the residues are scattered.
    void set(std::string_view letters, const ResidueSelection &residues,
             const LetterColors &colors);
    // Whether that would change any of them.
    [[nodiscard]] bool differs(std::string_view letters, const ResidueSelection &residues,
                               const LetterColors &colors) const;
    // How many residues have a colour of their own.
    [[nodiscard]] std::size_t colored() const noexcept { return m_Colored; }
    [[nodiscard]] std::size_t bytes() const noexcept;

    // Every residue has the same colour, however the two keep them.
    [[nodiscard]] bool isSameAs(const ResidueColors &other) const noexcept;

    void write(ObjectWriter &out) const;
    // Of so many residues.
    [[nodiscard]] static std::unique_ptr<ResidueColors> read(ObjectReader &in, std::size_t count);

private:
    [[nodiscard]] std::optional<Color> colorOf(std::uint8_t entry) const noexcept
    {
        return entry == 0 ? std::nullopt : std::optional((*m_Palette)[entry - 1U]);
    }
    [[nodiscard]] static std::optional<Color> colorOf(WideValue value) noexcept
    {
        if (value == 0)
            return std::nullopt;
        return Color::fromArgb(static_cast<std::uint32_t>(value));
    }
    using Palette = std::vector<Color>;

    // An entry has a byte, one of which says that there is none.
    static constexpr std::size_t kMostOfPalette = 255;

    [[nodiscard]] static std::shared_ptr<const Palette>
    withMore(const std::shared_ptr<const Palette> &palette, Color color);
    [[nodiscard]] bool hasPaletteOf(const ResidueColors &other) const noexcept;
    // Index into the palette plus one, or 0 by type; 0 when there are too many colours.
    [[nodiscard]] std::uint8_t paletteEntry(Color color);
    // What m_Small keeps for each choice.
    using Entries = std::array<std::uint8_t, kMostOfPalette + 1>;
    // False when there are too many colours.
    [[nodiscard]] bool findEntries(const LetterColors &colors, Entries &entries);
    // Calls store(kept, values) with what is kept for each residue and for each choice.
    template <typename Store> void withValues(const LetterColors &colors, const Store &store);
    void widen();

    std::size_t m_Colored = 0;
    // Sequences that were coloured by one command share it; it is never changed, but replaced. Null
    // before there is a colour.
    std::shared_ptr<const Palette> m_Palette;
    std::vector<std::uint8_t> m_Small;
    // Instead of m_Small when there are many colours; 0 marks "by type".
    std::vector<WideValue> m_Wide;
    std::uint8_t m_LastEntry = 0;
};

} // namespace TAMBO
