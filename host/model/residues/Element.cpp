// SPDX-License-Identifier: GPL-3.0-or-later
#include "Element.h"

#include "ResidueOwner.h"
#include "TextBytes.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace TAMBO {

Element::Element(std::string name, char type, std::vector<std::uint32_t> residues)
    : NamedCompound(std::move(name)), m_Type(type)
{
    std::ranges::sort(residues);
    residues.erase(std::unique(residues.begin(), residues.end()), residues.end());
    m_ResidueCount = residues.size();
    for (const std::uint32_t residue : residues) {
        if (!m_Runs.empty() && m_Runs.back().last == residue)
            ++m_Runs.back().last;
        else
            m_Runs.push_back({residue, residue + 1});
    }
}

Element::~Element() = default;

bool Element::isType(char type) noexcept
{
    return type != '\0' && std::string_view("HEThet").find(type) != std::string_view::npos;
}

bool Element::contains(std::size_t residue) const noexcept
{
    const auto after = std::ranges::upper_bound(m_Runs, residue, {}, &Run::last);
    return after != m_Runs.end() && after->first <= residue;
}

char Element::TypeCode() const
{
    return m_Type;
}

std::string Element::TypeName() const
{
    switch (m_Type) {
    case 'H':
    case 'h':
        return "helix";
    case 'E':
    case 'e':
        return "strand";
    default:
        return "turn";
    }
}

Residue *Element::residue(std::size_t index) const
{
    const auto *const owner = dynamic_cast<const ResidueOwner *>(Parent());
    if (owner == nullptr)
        return nullptr;
    for (const Run &run : m_Runs) {
        if (index < run.last - run.first)
            return owner->residue(run.first + index);
        index -= run.last - run.first;
    }
    return nullptr;
}

std::size_t Element::bytes() const noexcept
{
    return sizeof(*this) + nameBytes() + m_Runs.capacity() * sizeof(Run);
}

} // namespace TAMBO
