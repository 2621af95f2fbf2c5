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
#include <utility>

namespace TAMBO {

Peptide::Peptide(std::string name, std::string letters)
    : ResidueOwner(std::move(name)), m_Letters(std::move(letters))
{ }

Peptide::~Peptide() = default;

Peptide *Peptide::from(Compound *object) noexcept
{
    return dynamic_cast<Peptide *>(object);
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
    return &m_Handles.at(index);
}

ResiduePlace Peptide::resolve(std::size_t index) const noexcept
{
    if (m_Ties != nullptr) {
        if (const ResidueTies::Run *const run = m_Ties->find(index))
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
    const ReadPlace place = readPlace(index);
    if (&place.owner != this)
        return place.owner.typeName(place.index);
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
    const ReadPlace place = readPlace(index);
    const StructureContents *const contents = place.owner.m_Contents.get();
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
    const ReadPlace place = readPlace(index);
    const StructureContents *const contents = place.owner.m_Contents.get();
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
    const ReadPlace place = readPlace(index);
    const StructureContents &contents = *place.owner.m_Contents;
    return &contents.atoms[contents.atomStarts[place.index] + atom];
}

// ---- Numbers

SequenceNumber Peptide::number(std::size_t index) const
{
    const ReadPlace place = readPlace(index);
    const NumberSlot *const slot = place.owner.m_Numbers.get();
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
    if (m_Numbers == nullptr)
        m_Numbers = std::make_unique<NumberSlot>();
    if (m_Numbers->open == nullptr && ChangeSession::get().isRecording()) {
        auto edit = std::make_unique<NumberEdit>(*this, *m_Numbers);
        m_Numbers->open = edit.get();
        ChangeSession::get().recordGrowing(std::move(edit));
    }
    m_Numbers->numbers.set(index, number, residueCount());
    if (m_Numbers->numbers.isDefault())
        m_Numbers->numbers = {};
    growNumberingRevision();
}

bool Peptide::hasOwnNumbers() const noexcept
{
    return m_Numbers != nullptr && !m_Numbers->numbers.isDefault();
}

void Peptide::presetNumber(std::size_t index, const SequenceNumber &number)
{
    if (m_Numbers == nullptr) {
        m_Numbers = std::make_unique<NumberSlot>();
        if (index > 0)
            m_Numbers->numbers.append(0, SequenceNumber(1));
    }
    m_Numbers->numbers.append(index, number);
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
    recordInverse(
        std::make_unique<TieEdit>(*this, m_Ties, std::exchange(m_Ties, std::move(remaining))));
    growAllRevisions();
}

void Peptide::retie(ResidueTies ties)
{
    const ChangeScope scope;
    recordInverse(TieEdit(*this, m_Ties, std::make_unique<ResidueTies>(std::move(ties))).apply());
}

void Peptide::forEachTiedChain(const TieVisitor &visit) const
{
    if (m_Ties == nullptr)
        return;
    for (const ResidueTies::Run &run : m_Ties->runs())
        visit(*run.chain);
}

// ---- Compound

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
