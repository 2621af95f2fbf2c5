// SPDX-License-Identifier: GPL-3.0-or-later
#include "Atom.h"

#include "ObjectOperations.h"
#include "ObjectReader.h"
#include "ResidueOwner.h"

#include <algorithm>
#include <cmath>
#include <string_view>
#include <utility>

namespace TAMBO {

namespace {

Color elementColor(std::string_view element) noexcept
{
    static constexpr std::pair<std::string_view, unsigned> kColors[] = {
        {"C", 0x909090}, {"N", 0x3050f8}, {"O", 0xff2010}, {"S", 0xc8a020},
        {"P", 0xff8000}, {"H", 0xe8e8e8}, {"D", 0xe8e8e8}, {"SE", 0xffa100},
    };
    static constexpr unsigned kOther = 0x70a070;
    for (const auto &[name, rgb] : kColors) {
        if (name == element)
            return Color(rgb);
    }
    return Color(kOther);
}

// What is said of an atom.
constexpr unsigned kHasPlace = 1;
constexpr unsigned kHasColor = 2;
constexpr unsigned kIsSelected = 4;
constexpr unsigned kHasBFactor = 8;
constexpr unsigned kHasOccupancy = 16;
constexpr unsigned kHasAll = 31;

float finiteNumber(ObjectReader &in)
{
    const float value = in.real32();
    if (std::isfinite(value))
        return value;
    in.fail("a number of an atom is none");
    return 0;
}

} // namespace

Atom::~Atom() = default;

void Atom::fill(const AtomRecord &record)
{
    m_Name.set(record.name);
    m_Position = record.position;
    m_BFactor = record.bFactor;
    m_Occupancy = record.occupancy;
    std::transform(record.element.begin(),
                   record.element.begin() +
                       std::ptrdiff_t(std::min(record.element.size(), m_Element.size() - 1)),
                   m_Element.begin(),
                   [](char c) { return c >= 'a' && c <= 'z' ? char(c - 'a' + 'A') : c; });
}

void Atom::fill(const AtomRecord &record, ResidueOwner &chain, std::size_t residue)
{
    fill(record);
    m_Chain = &chain;
    m_Residue = static_cast<std::uint32_t>(residue);
}

void Atom::fill(const AtomRecord &record, Group &group)
{
    fill(record);
    m_Group = &group;
    m_Residue = kOfGroup;
}

void Atom::fill(ObjectReader &in)
{
    const std::uint64_t flags = in.number(kHasAll);
    m_Name.set(in.text());
    const std::string_view element = in.text();
    if (element.size() >= m_Element.size())
        in.fail("an atom is of no element");
    else
        std::ranges::copy(element, m_Element.begin());
    if ((flags & kHasPlace) != 0) {
        const float x = in.real32();
        const float y = in.real32();
        const float z = in.real32();
        // No change of it could be read.
        if (!std::isfinite(x) || !std::isfinite(y) || !std::isfinite(z))
            in.fail("an atom is nowhere");
        m_Position = Vertex(x, y, z);
    }
    if ((flags & kHasBFactor) != 0)
        m_BFactor = finiteNumber(in);
    if ((flags & kHasOccupancy) != 0)
        m_Occupancy = finiteNumber(in);
    if ((flags & kHasColor) != 0)
        m_Color = in.color();
    m_IsSelected = (flags & kIsSelected) != 0;
}

void Atom::fill(ObjectReader &in, ResidueOwner &chain, std::size_t residue)
{
    fill(in);
    m_Chain = &chain;
    m_Residue = static_cast<std::uint32_t>(residue);
}

void Atom::fill(ObjectReader &in, Group &group)
{
    fill(in);
    m_Group = &group;
    m_Residue = kOfGroup;
}

void Atom::write(ObjectWriter &out) const
{
    out.number((m_Position.isDefined() ? kHasPlace : 0U) | (m_Color ? kHasColor : 0U) |
               (m_IsSelected ? kIsSelected : 0U) | (m_BFactor != 0 ? kHasBFactor : 0U) |
               (m_Occupancy != 1 ? kHasOccupancy : 0U));
    out.text(name());
    out.text(m_Element.data());
    if (m_Position.isDefined()) {
        out.real(m_Position.x());
        out.real(m_Position.y());
        out.real(m_Position.z());
    }
    if (m_BFactor != 0)
        out.real(m_BFactor);
    if (m_Occupancy != 1)
        out.real(m_Occupancy);
    if (m_Color)
        out.color(*m_Color);
}

std::string Atom::Name() const
{
    return std::string(name());
}

char Atom::TypeCode() const
{
    return '\0';
}

std::string Atom::TypeName() const
{
    return m_Element.data();
}

Compound *Atom::Parent() const
{
    if (isOfGroup())
        return m_Group;
    return m_Chain == nullptr ? nullptr : m_Chain->residue(m_Residue);
}

std::size_t Atom::ChildCount() const
{
    return 0;
}

Compound *Atom::Child(std::size_t) const
{
    return nullptr;
}

bool Atom::IsLocked() const
{
    return false;
}

Vertex Atom::Position() const
{
    return m_Position;
}

Color Atom::OwnColor() const
{
    return m_Color.value_or(elementColor(m_Element.data()));
}

void Atom::AssignColor(const Color &color)
{
    assignColor(*this, m_Color, color);
}

void Atom::SetSelected(bool selected)
{
    Compound &whole = isOfGroup() ? *m_Group : static_cast<Compound &>(*m_Chain);
    assignSelected(whole, m_IsSelected, selected);
}

void Atom::collectSelected(std::span<const Atom> atoms, ObjectMarks::Runs &out)
{
    for (std::size_t i = 0; i < atoms.size(); ++i) {
        if (atoms[i].m_IsSelected)
            ObjectMarks::append(out, i, i + 1);
    }
}

void Atom::restoreSelected(std::span<Atom> atoms, const ObjectMarks::Runs &selected)
{
    for (Atom &atom : atoms)
        atom.m_IsSelected = false;
    for (const auto &[begin, end] : selected) {
        for (std::size_t i = begin; i < std::min<std::size_t>(end, atoms.size()); ++i)
            atoms[i].m_IsSelected = true;
    }
}

bool Atom::IsSelected() const
{
    return m_IsSelected;
}

std::size_t Atom::bytes() const noexcept
{
    return m_Name.bytes();
}

} // namespace TAMBO
