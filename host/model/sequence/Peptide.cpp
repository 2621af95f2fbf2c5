// SPDX-License-Identifier: GPL-3.0-or-later
#include "Peptide.h"

#include "AminoAcids.h"
#include "ChangeScope.h"
#include "Element.h"
#include "NumberEdit.h"
#include "ResidueHandle.h"
#include "ResidueSelection.h"
#include "Revisions.h"
#include "Space.h"
#include "StructureContents.h"
#include "TieEdit.h"

#include <algorithm>
#include <typeinfo>
#include <utility>

namespace TAMBO {

Peptide::Peptide(std::string_view name, std::string_view letters) : m_Text(name, letters) { }

Peptide::Peptide(SequenceText &&text) noexcept : m_Text(std::move(text)) { }

Peptide::~Peptide() = default;

PeptideExtras &Peptide::extras() const
{
    if (m_Extras == nullptr)
        m_Extras = std::make_unique<PeptideExtras>(self());
    return *m_Extras;
}

Peptide *Peptide::from(Compound *object) noexcept
{
    // Of a final class this compares one pointer, where a cast would try all bases.
    return object != nullptr && typeid(*object) == typeid(Peptide) ? static_cast<Peptide *>(object)
                                                                   : nullptr;
}

ResiduePlace Peptide::placeOf(const Compound *residue) noexcept
{
    const auto *const handle = dynamic_cast<const ResidueHandle *>(residue);
    // There is no other owner.
    return handle == nullptr
               ? ResiduePlace()
               : ResiduePlace{static_cast<Peptide *>(&handle->owner()), handle->index()};
}

std::string Peptide::sequenceName() const
{
    if (!isChain())
        return Name();
    return Name().empty() ? Parent()->Name() : Parent()->Name() + "_" + Name();
}

bool Peptide::isChain() const
{
    // Nothing else holds sequences.
    return Parent() != nullptr && Parent() != Space::instance();
}

// ---- Residues

Residue *Peptide::residue(std::size_t index) const
{
    return &extras().handles.at(index);
}

ResiduePlace Peptide::resolve(std::size_t index) const noexcept
{
    if (const ResidueTies *const tied = ties()) {
        if (const ResidueTies::Run *const run = tied->find(index))
            return {run->chain, run->chainFirst + (index - run->first)};
    }
    return {&self(), index};
}

const Compound &Peptide::dataOwner(std::size_t index) const noexcept
{
    return readPlace(index).owner;
}

std::string Peptide::typeName(std::size_t index) const
{
    return std::string(typeNameView(index));
}

std::string_view Peptide::typeNameView(std::size_t index) const
{
    const ReadPlace place = readPlace(index);
    if (&place.owner != this)
        return place.owner.typeNameView(place.index);
    if (const StructureContents *const inside = contents()) {
        const auto &names = inside->typeNames;
        const auto found = std::ranges::lower_bound(
            names, index, {}, [](const auto &entry) { return std::size_t(entry.first); });
        if (found != names.end() && found->first == index)
            return found->second;
    }
    return aminoAcidName(letter(index));
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
        const StructureContents *const contents = owner.contents();
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
    const ReadPlace place = readPlace(index);
    const StructureContents *const contents = place.owner.contents();
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
    return atoms(index).size();
}

std::span<Atom> Peptide::atoms(std::size_t index) const noexcept
{
    const ReadPlace place = readPlace(index);
    const StructureContents *const contents = place.owner.contents();
    if (contents == nullptr || contents->atomStarts.empty())
        return {};
    return {contents->atoms.get() + contents->atomStarts[place.index],
            contents->atoms.get() + contents->atomStarts[place.index + 1]};
}

bool Peptide::hasOwnAtoms() const noexcept
{
    return contents() != nullptr && !contents()->atomStarts.empty();
}

bool Peptide::hasAtoms() const noexcept
{
    return hasOwnAtoms() ||
           (ties() != nullptr && std::ranges::any_of(ties()->runs(), [](const auto &run) {
                return run.chain->hasOwnAtoms();
            }));
}

Atom *Peptide::atom(std::size_t index, std::size_t atom) const noexcept
{
    const std::span<Atom> all = atoms(index);
    return atom < all.size() ? &all[atom] : nullptr;
}

// ---- Numbers

SequenceNumber Peptide::number(std::size_t index) const
{
    const ReadPlace place = readPlace(index);
    const PeptideExtras *const kept = place.owner.m_Extras.get();
    const NumberSlot *const slot = kept == nullptr ? nullptr : kept->numbers.get();
    return slot == nullptr ? ResidueNumbers().at(place.index) : slot->numbers.at(place.index);
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
    NumberSlot &slot = numberSlot();
    if (slot.open == nullptr && ChangeSession::get().isRecording()) {
        auto edit = std::make_unique<NumberEdit>(*this, slot);
        slot.open = edit.get();
        ChangeSession::get().recordGrowing(std::move(edit));
    }
    slot.numbers.set(index, number, residueCount());
    if (slot.numbers.isDefault())
        slot.numbers = {};
    growNumberingRevision();
    growStructureRevision();
}

bool Peptide::hasOwnNumbers() const noexcept
{
    return m_Extras != nullptr && m_Extras->numbers != nullptr &&
           !m_Extras->numbers->numbers.isDefault();
}

void Peptide::presetNumber(std::size_t index, const SequenceNumber &number)
{
    // As they count anyhow.
    const bool isFirst = m_Extras == nullptr || m_Extras->numbers == nullptr;
    if (isFirst && number == ResidueNumbers().at(index))
        return;
    std::unique_ptr<NumberSlot> &slot = extras().numbers;
    if (slot == nullptr) {
        slot = std::make_unique<NumberSlot>();
        if (index > 0)
            slot->numbers.append(0, SequenceNumber(1));
    }
    slot->numbers.append(index, number);
}

// ---- Slots

ColorSlot &Peptide::colorSlot()
{
    return extras().colors.slot();
}

NumberSlot &Peptide::numberSlot()
{
    std::unique_ptr<NumberSlot> &slot = extras().numbers;
    if (slot == nullptr)
        slot = std::make_unique<NumberSlot>();
    return *slot;
}

// ---- Ties

void Peptide::tie(std::size_t index, Peptide &chain, std::size_t first, std::size_t count)
{
    if (count == 0)
        return;
    std::unique_ptr<ResidueTies> &slot = extras().ties;
    if (slot == nullptr)
        slot = std::make_unique<ResidueTies>();
    slot->append({static_cast<std::uint32_t>(index), static_cast<std::uint32_t>(count),
                  static_cast<std::uint32_t>(first), &chain});
}

bool Peptide::hasTies() const noexcept
{
    return ties() != nullptr && !ties()->runs().empty();
}

void Peptide::untieFrom(const Peptide &chain)
{
    if (ties() == nullptr || !ties()->holds(chain))
        return;
    const ChangeScope scope;
    std::unique_ptr<ResidueTies> &slot = extras().ties;
    auto remaining = std::make_unique<ResidueTies>(*slot);
    remaining->erase(chain);
    recordInverse(
        std::make_unique<TieEdit>(*this, slot, std::exchange(slot, std::move(remaining))));
    growAllRevisions();
}

void Peptide::retie(ResidueTies ties)
{
    const ChangeScope scope;
    recordInverse(
        TieEdit(*this, extras().ties, std::make_unique<ResidueTies>(std::move(ties))).apply());
}

void Peptide::forEachTiedChain(const TieVisitor &visit) const
{
    if (ties() == nullptr)
        return;
    for (const ResidueTies::Run &run : ties()->runs())
        visit(*run.chain);
}

// ---- Compound

std::string Peptide::Name() const
{
    return std::string(m_Text.name());
}

std::string Peptide::TypeName() const
{
    return isChain() ? "chain" : "sequence";
}

std::size_t Peptide::ChildCount() const
{
    return residueCount() + objectCount();
}

Compound *Peptide::Child(std::size_t index) const
{
    if (index < residueCount())
        return residue(index);
    return object(index - residueCount());
}

void Peptide::AssignColor(const Color &color)
{
    const ChangeScope scope;
    OwnedCompound::AssignColor(color);
    for (std::size_t i = 0; i < residueCount(); ++i)
        setColor(i, color);
}

void Peptide::SetSelected(bool selected)
{
    const ChangeScope scope;
    OwnedCompound::SetSelected(selected);
    setSelected(0, residueCount(), selected);
}

bool Peptide::IsSelected() const
{
    return residueCount() == 0 ? OwnedCompound::IsSelected() : selectedCount() == residueCount();
}

} // namespace TAMBO
