// SPDX-License-Identifier: GPL-3.0-or-later
#include "Peptide.h"

#include "AminoAcids.h"
#include "Atom.h"
#include "Bits.h"
#include "ChangeScope.h"
#include "ColorEdit.h"
#include "Element.h"
#include "LetterColors.h"
#include "NumberEdit.h"
#include "ResidueColors.h"
#include "ResidueGroup.h"
#include "ResidueHandles.h"
#include "ResidueNumbers.h"
#include "ResidueSelection.h"
#include "ResidueTies.h"
#include "Revisions.h"
#include "SelectionColor.h"
#include "Structure.h"
#include "StructureContents.h"
#include "TieEdit.h"

#include <algorithm>
#include <utility>

namespace TAMBO {

Peptide::Peptide(std::string name, std::string letters)
    : NamedCompound(std::move(name)), m_Letters(std::move(letters))
{ }

Peptide::~Peptide() = default;

Peptide *Peptide::from(Compound *object) noexcept
{
    return dynamic_cast<Peptide *>(object);
}

ResiduePlace Peptide::placeOf(const Compound *residue) noexcept
{
    const auto *const handle = dynamic_cast<const ResidueHandle *>(residue);
    return handle == nullptr ? ResiduePlace() : ResiduePlace{&handle->peptide(), handle->index()};
}

std::string Peptide::sequenceName() const
{
    const auto *const structure = dynamic_cast<const Structure *>(Parent());
    if (structure == nullptr)
        return Name();
    return Name().empty() ? structure->Name() : structure->Name() + "_" + Name();
}

// ---- Residues

Residue *Peptide::residue(std::size_t index)
{
    if (m_Handles == nullptr)
        m_Handles = std::make_unique<ResidueHandles>(residueCount());
    return &m_Handles->at(*this, index);
}

ResiduePlace Peptide::resolve(std::size_t index) const noexcept
{
    if (m_Ties != nullptr) {
        if (const ResidueTies::Run *const run = m_Ties->find(index))
            return {run->chain, run->chainFirst + (index - run->first)};
    }
    return {const_cast<Peptide *>(this), index};
}

template <typename Visit>
void Peptide::forEachOwner(std::size_t begin, std::size_t end, Visit visit) const
{
    Peptide &self = const_cast<Peptide &>(*this);
    if (m_Ties != nullptr) {
        for (const ResidueTies::Run &run : m_Ties->runs()) {
            const std::size_t runEnd = std::size_t(run.first) + run.count;
            if (runEnd <= begin)
                continue;
            if (run.first >= end)
                break;
            if (begin < run.first) {
                visit(self, begin, begin, run.first - begin);
                begin = run.first;
            }
            const std::size_t count = std::min(end, runEnd) - begin;
            visit(*run.chain, run.chainFirst + (begin - run.first), begin, count);
            begin += count;
        }
    }
    if (begin < end)
        visit(self, begin, begin, end - begin);
}

std::string Peptide::typeName(std::size_t index) const
{
    const ResiduePlace place = resolve(index);
    if (place.peptide != this)
        return place.peptide->typeName(place.index);
    if (m_Contents != nullptr) {
        const auto &names = m_Contents->typeNames;
        const auto found = std::ranges::lower_bound(
            names, index, {}, [](const auto &entry) { return std::size_t(entry.first); });
        if (found != names.end() && found->first == index)
            return found->second;
    }
    return std::string(aminoAcidName(letter(index)));
}

Vertex Peptide::position(std::size_t index) const
{
    Vertex found;
    readPositions(index, index + 1, &found);
    return found;
}

void Peptide::readPositions(std::size_t begin, std::size_t end, Vertex *out) const
{
    const auto visit = [&](const Peptide &owner, std::size_t there, std::size_t here,
                           std::size_t count) {
        const StructureContents *const contents = owner.m_Contents.get();
        if (contents == nullptr || contents->positions.empty())
            return;
        for (std::size_t i = 0; i < count; ++i) {
            const Vertex &position = contents->positions[there + i];
            if (position.isDefined())
                out[here - begin + i] = position;
        }
    };
    forEachOwner(begin, end, visit);
}

Element *Peptide::elementAt(std::size_t index) const noexcept
{
    const ResiduePlace place = resolve(index);
    const StructureContents *const contents = place.peptide->m_Contents.get();
    if (contents == nullptr)
        return nullptr;
    // A later element covers an earlier one.
    const auto found =
        std::find_if(contents->elements.rbegin(), contents->elements.rend(),
                     [&](const Element *element) { return element->contains(place.index); });
    return found == contents->elements.rend() ? nullptr : *found;
}

std::size_t Peptide::atomCount(std::size_t index) const noexcept
{
    const ResiduePlace place = resolve(index);
    const StructureContents *const contents = place.peptide->m_Contents.get();
    if (contents == nullptr || contents->atomStarts.empty())
        return 0;
    return contents->atomStarts[place.index + 1] - contents->atomStarts[place.index];
}

bool Peptide::hasAtoms() const noexcept
{
    const auto holdsAtoms = [](const Peptide &peptide) {
        return peptide.m_Contents != nullptr && !peptide.m_Contents->atomStarts.empty();
    };
    return holdsAtoms(*this) ||
           (m_Ties != nullptr &&
            std::ranges::any_of(m_Ties->runs(), [&](const ResidueTies::Run &run) {
                return holdsAtoms(*run.chain);
            }));
}

Atom *Peptide::atom(std::size_t index, std::size_t atom) const noexcept
{
    if (atom >= atomCount(index))
        return nullptr;
    const ResiduePlace place = resolve(index);
    const StructureContents &contents = *place.peptide->m_Contents;
    return &contents.atoms[contents.atomStarts[place.index] + atom];
}

SequenceNumber Peptide::number(std::size_t index) const
{
    const ResiduePlace place = resolve(index);
    const ResidueNumbers *const numbers = place.peptide->m_Numbers.get();
    return numbers == nullptr ? ResidueNumbers().at(place.index) : numbers->at(place.index);
}

void Peptide::setNumber(std::size_t index, const SequenceNumber &number)
{
    const ResiduePlace place = resolve(index);
    if (place.peptide != this) {
        place.peptide->setNumber(place.index, number);
        return;
    }
    if (!number.isValid()) {
        refuse("\"" + number.getValue() + "\" is no residue number; " + sequenceName() +
               " keeps its numbers.");
        return;
    }
    if (this->number(index) == number || !mayChange(*this))
        return;
    const ChangeScope scope;
    if (m_OpenNumbers == nullptr && ChangeSession::get().isRecording()) {
        auto edit = std::make_unique<NumberEdit>(*this);
        m_OpenNumbers = edit.get();
        ChangeSession::get().recordGrowing(std::move(edit));
    }
    if (m_Numbers == nullptr)
        m_Numbers = std::make_unique<ResidueNumbers>();
    m_Numbers->set(index, number, residueCount());
    if (m_Numbers->isDefault())
        m_Numbers.reset();
    growNumberingRevision();
}

bool Peptide::hasOwnNumbers() const noexcept
{
    return m_Numbers != nullptr && !m_Numbers->isDefault();
}

void Peptide::presetNumber(std::size_t index, const SequenceNumber &number)
{
    if (m_Numbers == nullptr) {
        m_Numbers = std::make_unique<ResidueNumbers>();
        if (index > 0)
            m_Numbers->append(0, SequenceNumber(1));
    }
    m_Numbers->append(index, number);
}

Color Peptide::ownColor(std::size_t index) const noexcept
{
    const ResiduePlace place = resolve(index);
    const Peptide &owner = *place.peptide;
    if (owner.m_Colors != nullptr) {
        if (const std::optional<Color> color = owner.m_Colors->at(place.index))
            return *color;
    }
    return aminoAcidColor(owner.letter(place.index));
}

Color Peptide::displayColor(std::size_t index) const noexcept
{
    return isSelected(index) ? selectedColor(ownColor(index)) : ownColor(index);
}

bool Peptide::hasOwnColors(std::size_t begin, std::size_t end) const
{
    bool has = false;
    forEachOwner(begin, end,
                 [&](const Peptide &owner, std::size_t there, std::size_t, std::size_t count) {
                     for (std::size_t i = 0; i < count && owner.m_Colors != nullptr && !has; ++i)
                         has = owner.m_Colors->at(there + i).has_value();
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
    const std::optional<Color> before = m_Colors ? m_Colors->at(index) : std::nullopt;
    if (before == color || !mayChange(*this))
        return;
    const ChangeScope scope;
    if (ColorEdit *const edit = openColors())
        edit->note(index, 1, before);
    storeColor(index, color);
    growColorRevision();
}

ColorEdit *Peptide::openColors()
{
    if (m_OpenColors == nullptr && ChangeSession::get().isRecording()) {
        auto edit = std::make_unique<ColorEdit>(*this);
        m_OpenColors = edit.get();
        ChangeSession::get().recordGrowing(std::move(edit));
    }
    return m_OpenColors;
}

void Peptide::setColors(const ResidueSelection &residues, const LetterColors &colors)
{
    if (residues.count() == 0 || !mayChange(*this))
        return;
    const ChangeScope scope;
    if (m_Ties == nullptr) {
        storeColors(residues, m_Letters, colors);
        return;
    }
    // What follows each other with one owner, as residues of the owner.
    std::unique_ptr<ResidueSelection> owned;
    Peptide *last = nullptr;
    const auto store = [&] {
        if (last == this)
            storeColors(*owned, m_Letters, colors);
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
    storeColors(residues, choices, colors);
}

void Peptide::storeColors(const ResidueSelection &residues, std::string_view letters,
                          const LetterColors &colors)
{
    if (residues.count() == residueCount()) {
        storeAllColors(letters, colors);
        return;
    }
    if (m_Colors == nullptr)
        m_Colors = std::make_unique<ResidueColors>(residueCount());
    bool isChanged = false;
    if (ColorEdit::prefersRuns(residues.runs(), residueCount())) {
        const auto note = [&](std::size_t first, std::size_t count, std::optional<Color> before) {
            isChanged = true;
            if (ColorEdit *const edit = openColors())
                edit->note(first, count, before);
        };
        m_Colors->set(letters, residues, colors, note);
    } else if (m_Colors->differs(letters, residues, colors)) {
        isChanged = true;
        if (ColorEdit *const edit = openColors())
            edit->noteAll(std::make_unique<ResidueColors>(*m_Colors));
        m_Colors->set(letters, residues, colors);
    }
    if (m_Colors->colored() == 0)
        m_Colors.reset();
    if (isChanged)
        growColorRevision();
}

// Replaces what was there, which is then all that undoing needs.
void Peptide::storeAllColors(std::string_view letters, const LetterColors &colors)
{
    auto fresh = std::make_unique<ResidueColors>(letters, colors);
    if (fresh->colored() == 0)
        fresh.reset();
    const bool isSame =
        fresh == nullptr || m_Colors == nullptr ? fresh == m_Colors : fresh->isSameAs(*m_Colors);
    if (isSame)
        return;
    std::swap(m_Colors, fresh);
    if (ColorEdit *const edit = openColors())
        edit->noteAll(std::move(fresh));
    growColorRevision();
}

void Peptide::storeColor(std::size_t index, std::optional<Color> color)
{
    if (m_Colors == nullptr) {
        if (!color)
            return;
        m_Colors = std::make_unique<ResidueColors>(residueCount());
    }
    m_Colors->set(index, color);
    if (m_Colors->colored() == 0)
        m_Colors.reset();
}

bool Peptide::isSelected(std::size_t index) const noexcept
{
    const ResiduePlace place = resolve(index);
    const ResidueSelection *const selection = place.peptide->m_Selection.get();
    return selection != nullptr && selection->at(place.index);
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

// ---- Ties

void Peptide::tie(std::size_t index, Peptide &chain, std::size_t first, std::size_t count)
{
    if (count == 0)
        return;
    if (m_Ties == nullptr)
        m_Ties = std::make_unique<ResidueTies>();
    m_Ties->append({static_cast<std::uint32_t>(index), static_cast<std::uint32_t>(count),
                    static_cast<std::uint32_t>(first), &chain});
}

bool Peptide::hasTies() const noexcept
{
    return m_Ties != nullptr && !m_Ties->runs().empty();
}

void Peptide::untieFrom(const Peptide &chain)
{
    if (m_Ties == nullptr || !m_Ties->holds(chain))
        return;
    const ChangeScope scope;
    auto remaining = std::make_unique<ResidueTies>(*m_Ties);
    remaining->erase(chain);
    recordInverse(std::make_unique<TieEdit>(*this, std::exchange(m_Ties, std::move(remaining))));
    growAllRevisions();
}

void Peptide::retie(ResidueTies ties)
{
    const ChangeScope scope;
    recordInverse(TieEdit(*this, std::make_unique<ResidueTies>(std::move(ties))).apply());
}

void Peptide::forEachTiedChain(const TieVisitor &visit) const
{
    if (m_Ties == nullptr)
        return;
    for (const ResidueTies::Run &run : m_Ties->runs())
        visit(*run.chain);
}

void Peptide::growAllRevisions() noexcept
{
    growSelectionRevision();
    growNumberingRevision();
    growColorRevision();
}

// ---- Compound

std::string Peptide::TypeName() const
{
    return dynamic_cast<const Structure *>(Parent()) != nullptr ? "chain" : "sequence";
}

std::size_t Peptide::ChildCount() const
{
    return residueCount() + objectCount();
}

Compound *Peptide::Child(std::size_t index) const
{
    // Handles are made on demand, which changes nothing that anybody can see.
    if (index < residueCount())
        return const_cast<Peptide *>(this)->residue(index);
    return object(index - residueCount());
}

void Peptide::AssignColor(const Color &color)
{
    const ChangeScope scope;
    NamedCompound::AssignColor(color);
    for (std::size_t i = 0; i < residueCount(); ++i)
        setColor(i, color);
}

void Peptide::SetSelected(bool selected)
{
    const ChangeScope scope;
    NamedCompound::SetSelected(selected);
    setSelected(0, residueCount(), selected);
}

bool Peptide::IsSelected() const
{
    return residueCount() == 0 ? NamedCompound::IsSelected() : selectedCount() == residueCount();
}

} // namespace TAMBO
