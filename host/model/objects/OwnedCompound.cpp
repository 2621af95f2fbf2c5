// SPDX-License-Identifier: GPL-3.0-or-later
#include "OwnedCompound.h"

#include "ChangeScope.h"
#include "ObjectOperations.h"

namespace TAMBO {

namespace {

constexpr Color kPlain(0xc8c8c8);

} // namespace

OwnedCompound::~OwnedCompound() = default;

char OwnedCompound::TypeCode() const
{
    return '\0';
}

Compound *OwnedCompound::Parent() const
{
    return m_State.parent;
}

std::size_t OwnedCompound::ChildCount() const
{
    return 0;
}

Compound *OwnedCompound::Child(std::size_t) const
{
    return nullptr;
}

bool OwnedCompound::IsLocked() const
{
    return m_State.isLocked;
}

Vertex OwnedCompound::Position() const
{
    return {};
}

Color OwnedCompound::OwnColor() const
{
    return m_State.color.value_or(kPlain);
}

void OwnedCompound::AssignColor(const Color &color)
{
    assignColor(*this, m_State.color, color);
}

void OwnedCompound::SetSelected(bool selected)
{
    assignSelected(*this, m_State.isSelected, selected);
}

bool OwnedCompound::IsSelected() const
{
    return m_State.isSelected;
}

} // namespace TAMBO
