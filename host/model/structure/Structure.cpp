// SPDX-License-Identifier: GPL-3.0-or-later
#include "Structure.h"

#include "ChangeScope.h"
#include "ObjectReader.h"
#include "Peptide.h"
#include "StructureExtras.h"
#include "TextBytes.h"

#include <algorithm>
#include <utility>

namespace TAMBO {

Structure::Structure(std::string name, unsigned long models, bool isModel)
    : NamedCompound(name), m_Code(std::move(name)), m_ModelCount(models), m_IsModel(isModel)
{ }

Structure::~Structure() = default;

std::pair<std::unique_ptr<Structure>, Structure::Rest> Structure::read(ObjectReader &in)
{
    StoredHead head = in.head();
    const std::string_view name = in.text();
    const std::string_view code = in.text();
    const std::uint64_t models = in.number();
    const bool isModel = in.flag();
    const Rest rest{in.number(), in.version() < 2 ? 0 : in.number()};
    auto made = std::make_unique<Structure>(std::string(name), models, isModel);
    made->m_Code = code;
    in.add(*made, std::move(head));
    return {std::move(made), rest};
}

void Structure::readExtras(ObjectReader &in)
{
    if (m_Extras == nullptr)
        m_Extras = std::make_unique<StructureExtras>();
    m_Extras->readPart(in);
}

void Structure::presetExtras(std::unique_ptr<StructureExtras> extras)
{
    m_Extras = std::move(extras);
}

std::size_t Structure::partCount() const noexcept
{
    return 1 + m_Chains.size() + extraParts();
}

std::size_t Structure::extraParts() const noexcept
{
    return m_Extras == nullptr ? 0 : m_Extras->partCount();
}

void Structure::writePart(std::size_t part, ObjectWriter &out) const
{
    if (part > m_Chains.size()) {
        out.begin(StoredKind::StructureExtras);
        out.number(identity());
        m_Extras->writePart(part - 1 - m_Chains.size(), out);
        return;
    }
    if (part > 0) {
        out.begin(StoredKind::Chain);
        out.number(identity());
        m_Chains[part - 1]->writeContent(out);
        return;
    }
    out.begin(StoredKind::Structure);
    out.head(*this);
    out.text(Name());
    out.text(m_Code);
    out.number(m_ModelCount);
    out.flag(m_IsModel);
    out.number(m_Chains.size());
    out.number(extraParts());
}

Peptide *Structure::chain(std::size_t index) const noexcept
{
    return index < m_Chains.size() ? m_Chains[index].get() : nullptr;
}

std::string Structure::TypeName() const
{
    return "structure";
}

std::size_t Structure::ChildCount() const
{
    return m_Chains.size();
}

Compound *Structure::Child(std::size_t index) const
{
    return chain(index);
}

void Structure::AssignColor(const Color &color)
{
    const ChangeScope scope;
    NamedCompound::AssignColor(color);
    for (const std::unique_ptr<Peptide> &chain : m_Chains)
        chain->AssignColor(color);
}

void Structure::SetSelected(bool selected)
{
    const ChangeScope scope;
    NamedCompound::SetSelected(selected);
    for (const std::unique_ptr<Peptide> &chain : m_Chains)
        chain->SetSelected(selected);
}

bool Structure::IsSelected() const
{
    if (m_Chains.empty())
        return NamedCompound::IsSelected();
    return std::ranges::all_of(m_Chains, [](const auto &chain) { return chain->IsSelected(); });
}

std::size_t Structure::bytes() const noexcept
{
    return sizeof(*this) + nameBytes() + textBytes(m_Code) +
           m_Chains.capacity() * sizeof(m_Chains[0]) + bytesOfObjects() +
           (m_Extras == nullptr ? 0 : m_Extras->bytes());
}

Compound *Structure::object(std::size_t index) const noexcept
{
    return chain(index);
}

bool Structure::canHold(const Compound &object) const
{
    // What a chain knows is its own.
    const auto *const sequence = dynamic_cast<const Peptide *>(&object);
    return sequence != nullptr && !sequence->hasTies();
}

void Structure::insertObject(std::size_t index, std::unique_ptr<Compound> object)
{
    Peptide *const peptide = Peptide::from(object.get());
    if (peptide == nullptr)
        return;
    static_cast<void>(object.release());
    peptide->state().parent = this;
    m_Chains.emplace(m_Chains.begin() + std::ptrdiff_t(std::min(index, m_Chains.size())), peptide);
}

std::unique_ptr<Compound> Structure::takeObject(std::size_t index)
{
    if (index >= m_Chains.size())
        return nullptr;
    std::unique_ptr<Peptide> taken = std::move(m_Chains[index]);
    m_Chains.erase(m_Chains.begin() + std::ptrdiff_t(index));
    taken->state().parent = nullptr;
    return taken;
}

} // namespace TAMBO
