// SPDX-License-Identifier: GPL-3.0-or-later
#include "NamedCompound.h"

#include "TextBytes.h"

namespace TAMBO {

NamedCompound::~NamedCompound() = default;

std::string NamedCompound::Name() const
{
    return m_Name;
}

std::size_t NamedCompound::nameBytes() const noexcept
{
    return textBytes(m_Name);
}

} // namespace TAMBO
