// SPDX-License-Identifier: GPL-3.0-or-later
#include "ObjectSpace.h"

#include "Alignment.h"
#include "ChangeScope.h"
#include "ObjectOperations.h"
#include "Peptide.h"

#include <algorithm>
#include <utility>

namespace TAMBO {

Space *Space::instance()
{
    return &ObjectSpace::get();
}

ObjectSpace &ObjectSpace::get()
{
    // Never destroyed, so that it outlives whatever static object still refers to it.
    static auto *const space = new ObjectSpace;
    return *space;
}

ObjectSpace::ObjectSpace()
{
    m_State.name = "Space";
}

ObjectSpace::~ObjectSpace()
{
    reset();
}

void ObjectSpace::reset()
{
    // The newest first: alignments and tied sequences refer to what was there before them.
    while (!m_Objects.empty()) {
        const std::unique_ptr<Compound> last(m_Objects.back());
        m_Objects.pop_back();
    }
    m_Alignments.clear();
    m_Tied.clear();
    m_State.isLocked = false;
    m_State.isSelected = false;
    m_State.color.reset();
}

Space::iterator ObjectSpace::begin()
{
    return m_Objects.begin();
}

Space::iterator ObjectSpace::end()
{
    return m_Objects.end();
}

std::string ObjectSpace::Name() const
{
    return m_State.name;
}

char ObjectSpace::TypeCode() const
{
    return '\0';
}

std::string ObjectSpace::TypeName() const
{
    return "space";
}

Compound *ObjectSpace::Parent() const
{
    return nullptr;
}

std::size_t ObjectSpace::ChildCount() const
{
    return m_Objects.size();
}

Compound *ObjectSpace::Child(std::size_t index) const
{
    return object(index);
}

bool ObjectSpace::IsLocked() const
{
    return m_State.isLocked;
}

Vertex ObjectSpace::Position() const
{
    return {};
}

Color ObjectSpace::OwnColor() const
{
    return m_State.color.value_or(Color());
}

void ObjectSpace::AssignColor(const Color &color)
{
    assignColor(*this, m_State.color, color);
}

void ObjectSpace::SetSelected(bool selected)
{
    const ChangeScope scope;
    assignSelected(m_State.isSelected, selected);
    for (Compound *object : m_Objects)
        object->SetSelected(selected);
}

bool ObjectSpace::IsSelected() const
{
    if (m_Objects.empty())
        return m_State.isSelected;
    return std::ranges::all_of(m_Objects,
                               [](const Compound *object) { return object->IsSelected(); });
}

Compound *ObjectSpace::object(std::size_t index) const noexcept
{
    return index < m_Objects.size() ? m_Objects[index] : nullptr;
}

void ObjectSpace::insertObject(std::size_t index, std::unique_ptr<Compound> object)
{
    if (object == nullptr)
        return;
    if (CompoundState *const state = stateOf(*object))
        state->parent = this;
    const auto place = m_Objects.begin() + std::ptrdiff_t(std::min(index, m_Objects.size()));
    m_Objects.insert(place, object.get());
    if (auto *const alignment = dynamic_cast<Alignment *>(object.get()))
        m_Alignments.push_back(alignment);
    else if (Peptide *const peptide = Peptide::from(object.get()); peptide && peptide->wasTied())
        m_Tied.push_back(peptide);
    static_cast<void>(object.release());
}

void ObjectSpace::noteTies(Peptide &sequence)
{
    const bool isListed = std::ranges::find(m_Tied, &sequence) != m_Tied.end();
    if (sequence.Parent() == this && sequence.wasTied() && !isListed)
        m_Tied.push_back(&sequence);
}

std::unique_ptr<Compound> ObjectSpace::takeObject(std::size_t index)
{
    if (index >= m_Objects.size())
        return nullptr;
    std::unique_ptr<Compound> taken(m_Objects[index]);
    m_Objects.erase(m_Objects.begin() + std::ptrdiff_t(index));
    if (CompoundState *const state = stateOf(*taken))
        state->parent = nullptr;
    std::erase(m_Alignments, taken.get());
    std::erase(m_Tied, taken.get());
    return taken;
}

} // namespace TAMBO
