// SPDX-License-Identifier: GPL-3.0-or-later
#include "Element.h"

#include "ObjectReader.h"
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

Element::Element(std::string name, char type, std::vector<Run> runs)
    : NamedCompound(std::move(name)), m_Type(type), m_Runs(std::move(runs))
{
    for (const Run &run : m_Runs)
        m_ResidueCount += run.last - run.first;
}

std::unique_ptr<Element> Element::read(ObjectReader &in)
{
    constexpr std::size_t kLeastBytes = 2;
    StoredHead head = in.head();
    std::string name(in.text());
    const char type = in.character();
    if (!isType(type))
        in.fail("an element is neither helix nor strand nor turn");
    std::vector<Run> runs;
    const std::size_t count = in.count(kLeastBytes);
    runs.reserve(count);
    std::uint64_t end = 0;
    for (std::size_t i = 0; i < count && !in.failed(); ++i) {
        const std::uint64_t first = end + in.index();
        end = first + in.index();
        if (end > ObjectReader::kMostIndex || end == first)
            in.fail("an element has residues that cannot be");
        runs.push_back({static_cast<std::uint32_t>(first), static_cast<std::uint32_t>(end)});
    }
    std::unique_ptr<Element> made(new Element(std::move(name), type, std::move(runs)));
    in.add(*made, std::move(head));
    return made;
}

void Element::writePart(std::size_t, ObjectWriter &out) const
{
    out.begin(StoredKind::Element);
    out.head(*this);
    out.text(Name());
    out.character(m_Type);
    out.number(m_Runs.size());
    std::uint32_t end = 0;
    for (const Run &run : m_Runs) {
        out.number(run.first - end);
        out.number(run.last - run.first);
        end = run.last;
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
