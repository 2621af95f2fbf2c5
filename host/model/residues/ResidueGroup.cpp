// SPDX-License-Identifier: GPL-3.0-or-later
#include "ResidueGroup.h"

#include "Atom.h"
#include "ChangeScope.h"
#include "CompoundState.h"
#include "GroupNumberEdit.h"
#include "ObjectOperations.h"
#include "ObjectReader.h"
#include "TextBytes.h"

#include <utility>

namespace TAMBO {

namespace {

constexpr Color kGroupColor(0x9fb8b0);

} // namespace

ResidueGroup::ResidueGroup(ResidueRecord &&record)
    : m_TypeName(std::move(record.typeName)),
      m_Letter(record.letter),
      m_Number(record.number),
      m_AtomCount(record.atoms.size()),
      m_Atoms(std::make_unique<Atom[]>(m_AtomCount))
{
    for (std::size_t i = 0; i < m_AtomCount; ++i)
        m_Atoms[i].fill(record.atoms[i], *this);
}

ResidueGroup::~ResidueGroup()
{
    forgetObject(m_Identity);
}

std::unique_ptr<ResidueGroup> ResidueGroup::read(ObjectReader &in)
{
    const std::uint64_t version = in.version();
    StoredHead head = in.head();
    ResidueRecord record;
    record.typeName = in.text();
    record.letter = in.character();
    record.number = in.sequenceNumber();
    const bool isSelected = in.flag();
    const std::optional<Color> color = in.optionalColor();
    auto made = std::make_unique<ResidueGroup>(std::move(record));
    made->m_IsSelected = isSelected;
    made->m_Color = color;
    made->m_AtomCount = in.count(Atom::kLeastBytes);
    made->m_Atoms = std::make_unique<Atom[]>(made->m_AtomCount);
    for (std::size_t i = 0; i < made->m_AtomCount; ++i)
        made->m_Atoms[i].fill(in, *made);
    if (version >= 2)
        made->m_Models = ModelPlaces::read(in, made->m_AtomCount);
    in.add(*made, std::move(head));
    return made;
}

void ResidueGroup::writePart(std::size_t, ObjectWriter &out) const
{
    out.begin(StoredKind::Group);
    out.head(*this);
    out.text(m_TypeName);
    out.character(m_Letter);
    out.sequenceNumber(m_Number);
    out.flag(m_IsSelected);
    out.color(m_Color);
    out.number(m_AtomCount);
    for (std::size_t i = 0; i < m_AtomCount; ++i)
        m_Atoms[i].write(out);
    m_Models.write(out, m_AtomCount);
}

SequenceNumber ResidueGroup::GetSeqId() const
{
    return m_Number;
}

void ResidueGroup::SetSeqId(const SequenceNumber &number)
{
    if (!number.isValid()) {
        refuse("\"" + number.getValue() + "\" is no residue number; " + GetFQName() +
               " keeps its own.");
        return;
    }
    if (number == m_Number || !mayChange(*this))
        return;
    const ChangeScope scope;
    recordInverse(GroupNumberEdit(*this, m_Number, number).apply());
}

std::string ResidueGroup::Name() const
{
    return m_TypeName + " " + m_Number.getValue();
}

char ResidueGroup::TypeCode() const
{
    return m_Letter;
}

std::string ResidueGroup::TypeName() const
{
    return m_TypeName;
}

Compound *ResidueGroup::Parent() const
{
    return m_Parent;
}

std::size_t ResidueGroup::ChildCount() const
{
    return m_AtomCount;
}

Compound *ResidueGroup::Child(std::size_t index) const
{
    return index < m_AtomCount ? &m_Atoms[index] : nullptr;
}

bool ResidueGroup::IsLocked() const
{
    return false;
}

Vertex ResidueGroup::Position() const
{
    return {};
}

Color ResidueGroup::OwnColor() const
{
    return m_Color.value_or(kGroupColor);
}

void ResidueGroup::AssignColor(const Color &color)
{
    assignColor(*this, m_Color, color);
}

void ResidueGroup::SetSelected(bool selected)
{
    assignSelected(*this, m_IsSelected, selected);
}

bool ResidueGroup::IsSelected() const
{
    return m_IsSelected;
}

void ResidueGroup::collectMarks(ObjectMarks &out) const
{
    out.isSelected = m_IsSelected;
    Atom::collectSelected({m_Atoms.get(), m_AtomCount}, out.atoms);
}

void ResidueGroup::restoreMarks(const ObjectMarks &marks)
{
    m_IsSelected = marks.isSelected;
    Atom::restoreSelected({m_Atoms.get(), m_AtomCount}, marks.atoms);
}

void ResidueGroup::collectAtoms(std::vector<Compound *> &out, bool) const
{
    for (std::size_t i = 0; i < m_AtomCount; ++i)
        out.push_back(&m_Atoms[i]);
}

std::span<Atom> ResidueGroup::atoms() const noexcept
{
    return {m_Atoms.get(), m_AtomCount};
}

std::size_t ResidueGroup::bytes() const noexcept
{
    std::size_t sum =
        sizeof(*this) + textBytes(m_TypeName) + m_AtomCount * sizeof(Atom) + m_Models.bytes();
    for (std::size_t i = 0; i < m_AtomCount; ++i)
        sum += m_Atoms[i].bytes();
    return sum;
}

} // namespace TAMBO
