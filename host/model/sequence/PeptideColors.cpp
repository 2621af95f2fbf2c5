// SPDX-License-Identifier: GPL-3.0-or-later
// The part of a peptide that is seen: colours and selection of its residues, wherever their data
// are.
#include "AminoAcids.h"
#include "Bits.h"
#include "ChangeScope.h"
#include "LetterColors.h"
#include "MarkFollower.h"
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
    const std::optional<Color> color =
        m_Extras == nullptr ? std::nullopt : m_Extras->colors.at(index);
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
                     has = has || (owner.m_Extras != nullptr &&
                                   owner.m_Extras->colors.hasAny(there, there + count));
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
    const std::optional<Color> before =
        m_Extras == nullptr ? std::nullopt : m_Extras->colors.at(index);
    if (before == color || !mayChange(*this))
        return;
    const ChangeScope scope;
    extras().colors.set(*this, index, color);
}

void Peptide::storeColors(const ResidueSelection &residues, std::string_view letters,
                          const LetterColors &colors)
{
    const bool wasPlain = m_Extras == nullptr;
    extras().colors.set(*this, residues, letters, colors);
    // The colours were those of the types, so nothing refers to what was made for them.
    if (wasPlain && m_Extras->colors.bytes() == 0)
        m_Extras.reset();
}

void Peptide::setColors(const ResidueSelection &residues, const LetterColors &colors)
{
    if (residues.count() == 0 || !mayChange(*this))
        return;
    const ChangeScope scope;
    if (ties() == nullptr) {
        storeColors(residues, letters(), colors);
        return;
    }
    // What follows each other with one owner, as residues of the owner.
    std::unique_ptr<ResidueSelection> owned;
    Peptide *last = nullptr;
    const auto store = [&] {
        if (last == this)
            storeColors(*owned, letters(), colors);
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

void Peptide::setColors(const LetterColors &colors)
{
    if (ties() != nullptr) {
        ResidueSelection all(residueCount());
        all.set(0, residueCount(), true);
        setColors(all, colors);
        return;
    }
    if (residueCount() == 0 || !mayChange(*this))
        return;
    const ChangeScope scope;
    const bool wasPlain = m_Extras == nullptr;
    extras().colors.setAll(*this, letters(), colors);
    if (wasPlain && m_Extras->colors.bytes() == 0)
        m_Extras.reset();
}

void Peptide::setPositionedColors(std::string choices, const LetterColors &colors)
{
    if (ties() != nullptr) {
        std::vector<Vertex> positions(residueCount());
        readPositions(0, residueCount(), positions.data());
        for (std::size_t i = 0; i < residueCount(); ++i) {
            if (choices[i] != '\0' && positions[i].isDefined())
                setColor(i, colors.color(choices[i]));
        }
        return;
    }
    if (contents() == nullptr || contents()->positions.empty() || !mayChange(*this))
        return;
    std::vector<std::uint64_t> words(bits::wordsFor(residueCount()));
    for (std::size_t i = 0; i < residueCount(); ++i) {
        if (choices[i] == '\0' || !contents()->positions[i].isDefined())
            continue;
        bits::set(words, i);
        if (colors.color(choices[i]) == aminoAcidColor(letter(i)))
            choices[i] = '\0';
    }
    const ResidueSelection residues(std::move(words));
    if (residues.count() == 0)
        return;
    const ChangeScope scope;
    storeColors(residues, choices, colors);
}

// ---- Selection

bool Peptide::isSelectedHere(std::size_t index) const noexcept
{
    return selection() != nullptr && selection()->at(index);
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

void Peptide::select(std::unique_ptr<ResidueSelection> residues)
{
    if (residues->count() == 0)
        return;
    const ChangeScope scope;
    if (ties() != nullptr) {
        residues->forEachRun(
            [&](std::size_t begin, std::size_t end) { setSelected(begin, end, true); });
        return;
    }
    std::unique_ptr<ResidueSelection> &kept = extras().selection;
    if (kept == nullptr)
        kept = std::move(residues);
    else if (!kept->add(*residues, 0, residueCount()))
        return;
    growSelectionRevision();
    noteStoredMarks(*this);
}

void Peptide::deselect(const ResidueSelection &residues)
{
    if (selectedCount() == 0)
        return;
    const ChangeScope scope;
    if (ties() != nullptr) {
        residues.forEachRun(
            [&](std::size_t begin, std::size_t end) { setSelected(begin, end, false); });
        return;
    }
    std::unique_ptr<ResidueSelection> &kept = extras().selection;
    if (kept->remove(residues)) {
        growSelectionRevision();
        noteStoredMarks(*this);
    }
    if (kept->count() == 0)
        kept.reset();
}

std::size_t Peptide::keepDeselected(std::uint32_t time)
{
    if (selection() == nullptr)
        return 0;
    const ChangeScope scope;
    extras().deselected = std::move(extras().selection);
    extras().deselectedAt = time;
    growSelectionRevision();
    noteStoredMarks(*this);
    return extras().deselected->count();
}

std::size_t Peptide::selectKept(std::uint32_t time)
{
    if (m_Extras == nullptr || m_Extras->deselected == nullptr || m_Extras->deselectedAt != time)
        return 0;
    const std::size_t count = m_Extras->deselected->count();
    select(std::move(m_Extras->deselected));
    return count;
}

void Peptide::forgetKept(std::uint32_t otherThan) noexcept
{
    if (m_Extras != nullptr && m_Extras->deselectedAt != otherThan)
        m_Extras->deselected.reset();
}

void Peptide::addSelected(std::size_t begin, std::size_t end, ResidueSelection &out) const
{
    const auto visit = [&](const Peptide &owner, std::size_t there, std::size_t here,
                           std::size_t count) {
        if (owner.selection() == nullptr)
            return;
        if (&owner == this) {
            out.add(*selection(), here, here + count);
            return;
        }
        owner.selection()->forEachRun(there, there + count, [&](std::size_t from, std::size_t to) {
            out.set(here + (from - there), here + (to - there), true);
        });
    };
    forEachOwner(begin, end, visit);
}

void Peptide::storeSelected(std::size_t begin, std::size_t end, bool selected)
{
    end = std::min(end, residueCount());
    if (begin >= end || (selection() == nullptr && !selected))
        return;
    std::unique_ptr<ResidueSelection> &kept = extras().selection;
    if (kept == nullptr)
        kept = std::make_unique<ResidueSelection>(residueCount());
    if (kept->set(begin, end, selected)) {
        growSelectionRevision();
        noteStoredMarks(*this);
    }
    if (kept->count() == 0)
        kept.reset();
}

std::size_t Peptide::selectedCount() const noexcept
{
    // The own flag of a tied residue is never set.
    std::size_t count = selection() == nullptr ? 0 : selection()->count();
    if (ties() != nullptr) {
        for (const ResidueTies::Run &run : ties()->runs()) {
            if (run.chain->selection() != nullptr)
                count += run.chain->selection()->count(run.chainFirst,
                                                       std::size_t(run.chainFirst) + run.count);
        }
    }
    return count;
}

} // namespace TAMBO
