// SPDX-License-Identifier: GPL-3.0-or-later
// One atom of a residue or a group.
#pragma once

#include "AtomName.h"
#include "Compound.h"
#include "ObjectMarks.h"
#include "Records.h"

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

namespace TAMBO {

class ObjectReader;
class ObjectWriter;
class PositionEdit;
class ResidueOwner;

class Atom final : public Compound
{
public:
    Atom() = default;
    ~Atom() override;
    // Atoms stand in arrays, so they are made first and filled then.
    void fill(const AtomRecord &record, ResidueOwner &chain, std::size_t residue);
    void fill(const AtomRecord &record, Group &group);
    // Of what write() has left.
    void fill(ObjectReader &in, ResidueOwner &chain, std::size_t residue);
    void fill(ObjectReader &in, Group &group);
    void write(ObjectWriter &out) const;
    // So many bytes each atom has as such.
    static constexpr std::size_t kLeastBytes = 3;

    std::string Name() const override;
    char TypeCode() const override;
    // The element.
    std::string TypeName() const override;
    Compound *Parent() const override;
    std::size_t ChildCount() const override;
    Compound *Child(std::size_t index) const override;
    bool IsLocked() const override;
    Vertex Position() const override;
    // By element unless set.
    Color OwnColor() const override;
    [[nodiscard]] bool hasOwnColor() const noexcept { return m_Color.has_value(); }
    // For the edits of its colour.
    [[nodiscard]] std::optional<Color> &colorSlot() noexcept { return m_Color; }
    void AssignColor(const Color &color) override;
    void SetSelected(bool selected) override;
    bool IsSelected() const override;
    // Those of one object, in their order.
    static void collectSelected(std::span<const Atom> atoms, ObjectMarks::Runs &out);
    // Without recording, and nobody is told.
    static void restoreSelected(std::span<Atom> atoms, const ObjectMarks::Runs &selected);

    [[nodiscard]] const Vertex &place() const noexcept { return m_Position; }
    // The letters stand in the atom.
    [[nodiscard]] std::string_view name() const noexcept { return m_Name.view(); }
    [[nodiscard]] std::string_view element() const noexcept { return m_Element.data(); }
    // In square Angstrom; 0 when the file does not say.
    [[nodiscard]] float bFactor() const noexcept { return m_BFactor; }
    // 1 when the file does not say.
    [[nodiscard]] float occupancy() const noexcept { return m_Occupancy; }
    // The chain whose residue it is an atom of, and which one; null for that of a group.
    [[nodiscard]] const ResidueOwner *chain() const noexcept
    {
        return isOfGroup() ? nullptr : m_Chain;
    }
    [[nodiscard]] std::size_t residue() const noexcept { return m_Residue; }
    // On the heap.
    [[nodiscard]] std::size_t bytes() const noexcept;

private:
    friend class PositionEdit;

    [[nodiscard]] bool isOfGroup() const noexcept { return m_Residue == kOfGroup; }
    void fill(const AtomRecord &record);
    void fill(ObjectReader &in);

    // That of a group has kOfGroup in place of a residue.
    static constexpr std::uint32_t kOfGroup = 0xffffffffU;

    // There are millions of atoms: what is small stands where the name leaves room.
    union {
        ResidueOwner *m_Chain = nullptr;
        Group *m_Group;
    };
    [[no_unique_address]] AtomName m_Name;
    std::array<char, 4> m_Element{};
    bool m_IsSelected = false;
    Vertex m_Position;
    std::uint32_t m_Residue = 0;
    float m_BFactor = 0;
    float m_Occupancy = 1;
    std::optional<Color> m_Color;
};

} // namespace TAMBO
