// SPDX-License-Identifier: GPL-3.0-or-later
#include "NamedCompound.h"

#include "ChangeScope.h"
#include "ObjectOperations.h"

#include <utility>

namespace TAMBO {

namespace {

constexpr Color kPlain(0xc8c8c8);

} // namespace

NamedCompound::NamedCompound(std::string name)
{
    m_State.name = std::move(name);
}

NamedCompound::~NamedCompound() = default;

std::string NamedCompound::Name() const
{
    return m_State.name;
}

char NamedCompound::TypeCode() const
{
    return '\0';
}

Compound *NamedCompound::Parent() const
{
    return m_State.parent;
}

std::size_t NamedCompound::ChildCount() const
{
    return 0;
}

Compound *NamedCompound::Child(std::size_t) const
{
    return nullptr;
}

bool NamedCompound::IsLocked() const
{
    return m_State.isLocked;
}

Vertex NamedCompound::Position() const
{
    return {};
}

Color NamedCompound::OwnColor() const
{
    return m_State.color.value_or(kPlain);
}

void NamedCompound::AssignColor(const Color &color)
{
    assignColor(*this, m_State.color, color);
}

void NamedCompound::SetSelected(bool selected)
{
    assignSelected(m_State.isSelected, selected);
}

bool NamedCompound::IsSelected() const
{
    return m_State.isSelected;
}

} // namespace TAMBO
