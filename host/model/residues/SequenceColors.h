// SPDX-License-Identifier: GPL-3.0-or-later
// The colours of a sequence's own residues, ties not followed: kept where they differ from the
// colour of the type, and every change of them recorded.
#pragma once

#include "ColorEdit.h"
#include "ResidueColors.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <string_view>
#include <utility>

namespace TAMBO {

class LetterColors;
class ResidueOwner;
class ResidueSelection;

class SequenceColors
{
public:
    // None: the colour of the type.
    [[nodiscard]] std::optional<Color> at(std::size_t index) const noexcept
    {
        return m_Slot.colors == nullptr ? std::nullopt : m_Slot.colors->at(index);
    }
    // Whether one of the residues [begin, end) has another one.
    [[nodiscard]] bool hasAny(std::size_t begin, std::size_t end) const noexcept;
    [[nodiscard]] ColorSlot &slot() noexcept { return m_Slot; }
    // On the heap.
    [[nodiscard]] std::size_t bytes() const noexcept
    {
        return m_Slot.colors == nullptr ? 0 : m_Slot.colors->bytes();
    }

    // Null: all have the colour of their type.
    [[nodiscard]] const ResidueColors *kept() const noexcept { return m_Slot.colors.get(); }
    // No edit: for a sequence that is being made.
    void preset(std::unique_ptr<ResidueColors> colors) noexcept
    {
        m_Slot.colors = std::move(colors);
    }

    // ---- Changes, inside a ChangeScope. The owner is the sequence whose colours these are.

    void set(ResidueOwner &owner, std::size_t index, std::optional<Color> color);
    // Some of the residues, each by the letter, or the choice, that stands at its index.
    void set(ResidueOwner &owner, const ResidueSelection &residues, std::string_view letters,
             const LetterColors &colors);

    // All of them.
    void setAll(ResidueOwner &owner, std::string_view letters, const LetterColors &colors);

private:
    void colorFirst(ResidueOwner &owner, const ResidueSelection &residues, std::string_view letters,
                    const LetterColors &colors);
    // What undoes the colouring under way; null when nobody keeps it.
    [[nodiscard]] ColorEdit *openEdit(ResidueOwner &owner);

    ColorSlot m_Slot;
};

} // namespace TAMBO
