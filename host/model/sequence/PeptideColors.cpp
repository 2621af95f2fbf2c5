// SPDX-License-Identifier: GPL-3.0-or-later
// The part of a peptide that is seen: colours and selection of its residues, wherever their data
// are.
#include "AminoAcids.h"
#include "Bits.h"
#include "ChangeScope.h"
#include "LetterColors.h"
#include "Peptide.h"
#include "ResidueSelection.h"
#include "Revisions.h"
#include "SelectionColor.h"
#include "StructureContents.h"

#include <algorithm>
#include <utility>

namespace TAMBO {

Color Peptide::colorHere(std::size_t index) const noexcept
{
    const std::optional<Color> color = m_Colors.at(index);
    return color ? *color : aminoAcidColor(letter(index));
}

Color Peptide::ownColor(std::size_t index) const noexcept
{
    const ReadPlace place = readPlace(index);
    return place.owner.colorHere(place.index);
}

Color Peptide::displayColor(std::size_t index) const noexcept
{
    const ReadPlace place = readPlace(index);
    const Color color = place.owner.colorHere(place.index);
    return place.owner.isSelectedHere(place.index) ? selectedColor(color) : color;
}

bool Peptide::hasOwnColors(std::size_t begin, std::size_t end) const
{
    bool has = false;
    forEachOwner(begin, end,
                 [&](const Peptide &owner, std::size_t there, std::size_t, std::size_t count) {
                     has = has || owner.m_Colors.hasAny(there, there + count);
                 });
    return has;
}

void Peptide::setColor(std::size_t index, std::optional<Color> color)
{
    const ResiduePlace place = resolve(index);
    if (place.peptide != this) {
        place.peptide->setColor(place.index, color);
        return;
    }
    if (color == aminoAcidColor(letter(index)))
        color.reset();
    if (m_Colors.at(index) == color || !mayChange(*this))
        return;
    const ChangeScope scope;
    m_Colors.set(*this, index, color);
}

void Peptide::setColors(const ResidueSelection &residues, const LetterColors &colors)
{
    if (residues.count() == 0 || !mayChange(*this))
        return;
    const ChangeScope scope;
    if (m_Ties == nullptr) {
        m_Colors.set(*this, residues, m_Letters, colors);
        return;
    }
    // What follows each other with one owner, as residues of the owner.
    std::unique_ptr<ResidueSelection> owned;
    Peptide *last = nullptr;
    const auto store = [&] {
        if (last == this)
            m_Colors.set(*this, *owned, m_Letters, colors);
        else if (last != nullptr)
            last->setColors(*owned, colors);
        last = nullptr;
    };
    const auto visit = [&](Peptide &owner, std::size_t there, std::size_t here, std::size_t count) {
        if (owner.letters().substr(there, count) != letters().substr(here, count)) {
            store();
            for (std::size_t i = 0; i < count; ++i)
                owner.setColor(there + i, colors.color(letter(here + i)));
            return;
        }
        if (&owner != last) {
            store();
            last = &owner;
            owned = std::make_unique<ResidueSelection>(owner.residueCount());
        }
        owned->set(there, there + count, true);
    };
    residues.forEachRun(
        [&](std::size_t begin, std::size_t end) { forEachOwner(begin, end, visit); });
    store();
}

void Peptide::setPositionedColors(std::string choices, const LetterColors &colors)
{
    if (m_Ties != nullptr) {
        std::vector<Vertex> positions(residueCount());
        readPositions(0, residueCount(), positions.data());
        for (std::size_t i = 0; i < residueCount(); ++i) {
            if (choices[i] != '\0' && positions[i].isDefined())
                setColor(i, colors.color(choices[i]));
        }
        return;
    }
    if (m_Contents == nullptr || m_Contents->positions.empty() || !mayChange(*this))
        return;
    std::vector<std::uint64_t> words(bits::wordsFor(residueCount()));
    for (std::size_t i = 0; i < residueCount(); ++i) {
        if (choices[i] == '\0' || !m_Contents->positions[i].isDefined())
            continue;
        bits::set(words, i);
        if (colors.color(choices[i]) == aminoAcidColor(m_Letters[i]))
            choices[i] = '\0';
    }
    const ResidueSelection residues(std::move(words));
    if (residues.count() == 0)
        return;
    const ChangeScope scope;
    m_Colors.set(*this, residues, choices, colors);
}

// ---- Selection

bool Peptide::isSelectedHere(std::size_t index) const noexcept
{
    return m_Selection != nullptr && m_Selection->at(index);
}

bool Peptide::isSelected(std::size_t index) const noexcept
{
    const ReadPlace place = readPlace(index);
    return place.owner.isSelectedHere(place.index);
}

void Peptide::setSelected(std::size_t index, bool selected)
{
    setSelected(index, index + 1, selected);
}

void Peptide::setSelected(std::size_t begin, std::size_t end, bool selected)
{
    const ChangeScope scope;
    forEachOwner(begin, end,
                 [&](Peptide &owner, std::size_t there, std::size_t, std::size_t count) {
                     if (&owner == this)
                         storeSelected(there, there + count, selected);
                     else
                         owner.setSelected(there, there + count, selected);
                 });
}

void Peptide::select(const ResidueSelection &residues)
{
    if (residues.count() == 0)
        return;
    const ChangeScope scope;
    if (m_Ties != nullptr) {
        residues.forEachRun(
            [&](std::size_t begin, std::size_t end) { setSelected(begin, end, true); });
        return;
    }
    if (m_Selection == nullptr)
        m_Selection = std::make_unique<ResidueSelection>(residueCount());
    if (m_Selection->add(residues, 0, residueCount()))
        growSelectionRevision();
}

void Peptide::addSelected(std::size_t begin, std::size_t end, ResidueSelection &out) const
{
    const auto visit = [&](const Peptide &owner, std::size_t there, std::size_t here,
                           std::size_t count) {
        if (owner.m_Selection == nullptr)
            return;
        if (&owner == this) {
            out.add(*m_Selection, here, here + count);
            return;
        }
        owner.m_Selection->forEachRun(there, there + count, [&](std::size_t from, std::size_t to) {
            out.set(here + (from - there), here + (to - there), true);
        });
    };
    forEachOwner(begin, end, visit);
}

void Peptide::storeSelected(std::size_t begin, std::size_t end, bool selected)
{
    end = std::min(end, residueCount());
    if (begin >= end || (m_Selection == nullptr && !selected))
        return;
    if (m_Selection == nullptr)
        m_Selection = std::make_unique<ResidueSelection>(residueCount());
    if (m_Selection->set(begin, end, selected))
        growSelectionRevision();
    if (m_Selection->count() == 0)
        m_Selection.reset();
}

std::size_t Peptide::selectedCount() const noexcept
{
    // The own flag of a tied residue is never set.
    std::size_t count = m_Selection == nullptr ? 0 : m_Selection->count();
    if (m_Ties != nullptr) {
        for (const ResidueTies::Run &run : m_Ties->runs()) {
            if (run.chain->m_Selection != nullptr)
                count += run.chain->m_Selection->count(run.chainFirst,
                                                       std::size_t(run.chainFirst) + run.count);
        }
    }
    return count;
}

} // namespace TAMBO
