// SPDX-License-Identifier: GPL-3.0-or-later
#include "ResidueHandle.h"

#include "Atom.h"
#include "ChangeScope.h"
#include "Element.h"
#include "ResidueOwner.h"

namespace TAMBO {

ResidueHandle::~ResidueHandle() = default;

std::string ResidueHandle::Name() const
{
    return TypeName() + " " + GetSeqId().getValue();
}

char ResidueHandle::TypeCode() const
{
    return m_Owner->letter(m_Index);
}

std::string ResidueHandle::TypeName() const
{
    return m_Owner->typeName(m_Index);
}

Compound *ResidueHandle::Parent() const
{
    return m_Owner;
}

std::size_t ResidueHandle::ChildCount() const
{
    return m_Owner->atomCount(m_Index);
}

Compound *ResidueHandle::Child(std::size_t index) const
{
    return m_Owner->atom(m_Index, index);
}

bool ResidueHandle::IsLocked() const
{
    const Compound &data = m_Owner->dataOwner(m_Index);
    return &data != m_Owner && lockOn(data) != nullptr;
}

Vertex ResidueHandle::Position() const
{
    return m_Owner->position(m_Index);
}

Color ResidueHandle::OwnColor() const
{
    return m_Owner->ownColor(m_Index);
}

void ResidueHandle::AssignColor(const Color &color)
{
    m_Owner->setColor(m_Index, color);
}

void ResidueHandle::SetSelected(bool selected)
{
    m_Owner->setSelected(m_Index, selected);
}

bool ResidueHandle::IsSelected() const
{
    return m_Owner->isSelected(m_Index);
}

SequenceNumber ResidueHandle::GetSeqId() const
{
    return m_Owner->number(m_Index);
}

void ResidueHandle::SetSeqId(const SequenceNumber &number)
{
    m_Owner->setNumber(m_Index, number);
}

Compound *ResidueHandle::GetSSE() const
{
    return m_Owner->elementAt(m_Index);
}

} // namespace TAMBO
