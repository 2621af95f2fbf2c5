// SPDX-License-Identifier: GPL-3.0-or-later
// Earlier colours as bytes, and what is made of these again.
#include "ColorEdit.h"

#include "ObjectColorEdit.h"
#include "ResidueOwner.h"

#include <algorithm>
#include <array>
#include <utility>

namespace TAMBO {

namespace {

// Of each letter, and of all residues with it the same.
using ColorsByLetter = std::array<std::optional<Color>, 256>;

std::optional<ColorsByLetter> byLetter(const ResidueOwner &owner, const ResidueColors &colors)
{
    ColorsByLetter found;
    std::array<bool, 256> isKnown{};
    for (std::size_t i = 0; i < owner.residueCount(); ++i) {
        const auto letter = static_cast<unsigned char>(owner.letter(i));
        const std::optional<Color> color = colors.at(i);
        if (!isKnown[letter])
            found[letter] = color;
        else if (found[letter] != color)
            return std::nullopt;
        isKnown[letter] = true;
    }
    return found;
}

enum class ColorsKind : char { Runs, None, ByLetter, Each };

} // namespace

void ColorEdit::storeHead(EditWriter &out) const
{
    out.tag(EditTag::ResidueColors);
    out.reference(m_Owner);
}

void ColorEdit::storeAll(const ResidueColors *colors, EditWriter &out) const
{
    if (colors == nullptr) {
        out.character(static_cast<char>(ColorsKind::None));
        return;
    }
    // What was coloured by its letters is written in a few bytes, however long it is.
    if (const std::optional<ColorsByLetter> choices = byLetter(m_Owner, *colors)) {
        out.character(static_cast<char>(ColorsKind::ByLetter));
        out.number(std::size_t(std::ranges::count_if(
            *choices, [](const std::optional<Color> &color) { return color.has_value(); })));
        for (std::size_t letter = 0; letter < choices->size(); ++letter) {
            if ((*choices)[letter]) {
                out.character(static_cast<char>(letter));
                storeColor((*choices)[letter], out);
            }
        }
        return;
    }
    out.character(static_cast<char>(ColorsKind::Each));
    for (std::size_t i = 0; i < m_Count;) {
        const std::optional<Color> color = colors->at(i);
        const std::size_t first = i;
        while (i < m_Count && colors->at(i) == color)
            ++i;
        out.number(i - first);
        storeColor(color, out);
    }
}

void ColorEdit::loadAll(char how, EditReader &in)
{
    const auto kind = static_cast<ColorsKind>(how);
    if (kind != ColorsKind::None && kind != ColorsKind::ByLetter && kind != ColorsKind::Each)
        in.fail("colors are damaged");
    auto colors = std::make_unique<ResidueColors>(m_Count);
    if (kind == ColorsKind::ByLetter) {
        ColorsByLetter choices;
        for (std::size_t count = in.count(2); count > 0; --count) {
            const auto letter = static_cast<unsigned char>(in.character());
            choices[letter] = loadColor(in);
        }
        for (std::size_t i = 0; i < m_Count && !in.failed(); ++i)
            colors->set(i, choices[static_cast<unsigned char>(m_Owner.letter(i))]);
    }
    for (std::size_t i = 0; kind == ColorsKind::Each && i < m_Count && !in.failed();) {
        const std::size_t end = i + in.number(m_Count - i);
        const std::optional<Color> color = loadColor(in);
        if (end == i)
            in.fail("colors are missing");
        for (; i < end; ++i)
            colors->set(i, color);
    }
    keepAll(std::move(colors));
}

void ColorEdit::store(EditWriter &out) const
{
    storeHead(out);
    if (m_HasAll) {
        storeAll(m_All.get(), out);
        return;
    }
    out.character(static_cast<char>(ColorsKind::Runs));
    out.number(m_Runs.size());
    for (const Run &run : m_Runs) {
        out.number(run.first);
        out.number(run.count);
        storeColor(run.color, out);
    }
}

void ColorEdit::storeInverse(EditWriter &out) const
{
    if (m_HasAll) {
        storeHead(out);
        storeAll(m_Slot.colors.get(), out);
        return;
    }
    // The runs may have got several colours each.
    ColorEdit edit(m_Owner, m_Slot);
    for (const Run &run : m_Runs) {
        for (std::size_t i = run.first; i < std::size_t(run.first) + run.count; ++i)
            edit.note(i, 1, m_Slot.colors ? m_Slot.colors->at(i) : std::nullopt);
    }
    edit.store(out);
}

bool ColorEdit::fits() const
{
    return true;
}

LoadedEdit ColorEdit::load(ResidueOwner &owner, ColorSlot &slot, EditReader &in)
{
    auto edit = std::make_unique<ColorEdit>(owner, slot);
    const std::size_t residues = owner.residueCount();
    const char how = in.character();
    if (how != static_cast<char>(ColorsKind::Runs)) {
        edit->loadAll(how, in);
    } else {
        edit->m_Runs.resize(in.count(3));
        for (Run &run : edit->m_Runs) {
            run.first = static_cast<std::uint32_t>(in.number(residues));
            run.count = static_cast<std::uint32_t>(in.number(residues - run.first));
            run.color = loadColor(in);
        }
    }
    if (in.failed())
        return in.failure();
    return LoadedEdit(std::move(edit));
}

} // namespace TAMBO
