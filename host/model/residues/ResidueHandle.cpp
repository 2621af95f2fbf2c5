// SPDX-License-Identifier: GPL-3.0-or-later
#include "ResidueHandle.h"

#include "Atom.h"
#include "ChangeScope.h"
#include "Element.h"
#include "Peptide.h"

namespace TAMBO {

ResidueHandle::~ResidueHandle() = default;

std::string ResidueHandle::Name() const
{
    return TypeName() + " " + GetSeqId().getValue();
}

char ResidueHandle::TypeCode() const
{
    return m_Peptide->letter(m_Index);
}

std::string ResidueHandle::TypeName() const
{
    return m_Peptide->typeName(m_Index);
}

Compound *ResidueHandle::Parent() const
{
    return m_Peptide;
}

std::size_t ResidueHandle::ChildCount() const
{
    return m_Peptide->atomCount(m_Index);
}

Compound *ResidueHandle::Child(std::size_t index) const
{
    return m_Peptide->atom(m_Index, index);
}

bool ResidueHandle::IsLocked() const
{
    const Peptide *const owner = m_Peptide->resolve(m_Index).peptide;
    return owner != m_Peptide && lockOn(*owner) != nullptr;
}

Vertex ResidueHandle::Position() const
{
    return m_Peptide->position(m_Index);
}

Color ResidueHandle::OwnColor() const
{
    return m_Peptide->ownColor(m_Index);
}

void ResidueHandle::AssignColor(const Color &color)
{
    m_Peptide->setColor(m_Index, color);
}

void ResidueHandle::SetSelected(bool selected)
{
    m_Peptide->setSelected(m_Index, selected);
}

bool ResidueHandle::IsSelected() const
{
    return m_Peptide->isSelected(m_Index);
}

SequenceNumber ResidueHandle::GetSeqId() const
{
    return m_Peptide->number(m_Index);
}

void ResidueHandle::SetSeqId(const SequenceNumber &number)
{
    m_Peptide->setNumber(m_Index, number);
}

Compound *ResidueHandle::GetSSE() const
{
    return m_Peptide->elementAt(m_Index);
}

} // namespace TAMBO
