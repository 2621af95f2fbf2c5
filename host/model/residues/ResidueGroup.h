// SPDX-License-Identifier: GPL-3.0-or-later
// A ligand, a nucleotide or another group of a chain that is no amino acid of it.
#pragma once

#include "Compound.h"
#include "ModelPlaces.h"
#include "Records.h"
#include "StoredObject.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <utility>

namespace TAMBO {

class Atom;
class ObjectReader;

class ResidueGroup final : public Group, public StoredObject
{
public:
    explicit ResidueGroup(ResidueRecord &&record);
    // Of what writePart() has left; fails when there is none.
    [[nodiscard]] static std::unique_ptr<ResidueGroup> read(ObjectReader &in);
    ~ResidueGroup() override;

    SequenceNumber GetSeqId() const override;
    void SetSeqId(const SequenceNumber &number) override;

    // "ATP 401".
    std::string Name() const override;
    char TypeCode() const override;
    std::string TypeName() const override;
    Compound *Parent() const override;
    std::size_t ChildCount() const override;
    Compound *Child(std::size_t index) const override;
    bool IsLocked() const override;
    Vertex Position() const override;
    Color OwnColor() const override;
    void AssignColor(const Color &color) override;
    void SetSelected(bool selected) override;
    bool IsSelected() const override;

    [[nodiscard]] const std::string &typeNameView() const noexcept { return m_TypeName; }
    // All of them; who has the group may change them.
    [[nodiscard]] std::span<Atom> atoms() const noexcept;
    [[nodiscard]] const ModelPlaces &models() const noexcept { return m_Models; }
    // For a group that is being made.
    void presetModels(ModelPlaces models) noexcept { m_Models = std::move(models); }

    [[nodiscard]] bool hasOwnColor() const noexcept { return m_Color.has_value(); }
    // For their edits.
    [[nodiscard]] std::optional<Color> &colorSlot() noexcept { return m_Color; }
    [[nodiscard]] SequenceNumber &numberSlot() noexcept { return m_Number; }

    [[nodiscard]] Compound &asCompound() noexcept override { return *this; }
    // Its name says what it is.
    [[nodiscard]] CompoundState *ownState() noexcept override { return nullptr; }
    [[nodiscard]] const CompoundState *ownState() const noexcept override { return nullptr; }
    void setParent(Compound *parent) noexcept override { m_Parent = parent; }
    [[nodiscard]] std::size_t bytes() const noexcept override;
    void writePart(std::size_t part, ObjectWriter &out) const override;
    void collectMarks(ObjectMarks &out) const override;
    void restoreMarks(const ObjectMarks &marks) override;
    void collectAtoms(std::vector<Compound *> &out, bool isAsked) const override;

protected:
    [[nodiscard]] std::uint32_t &identitySlot() const noexcept override { return m_Identity; }

private:
    std::string m_TypeName;
    char m_Letter;
    bool m_IsSelected = false;
    mutable std::uint32_t m_Identity = 0;
    SequenceNumber m_Number;
    Compound *m_Parent = nullptr;
    std::optional<Color> m_Color;
    std::size_t m_AtomCount;
    std::unique_ptr<Atom[]> m_Atoms;
    ModelPlaces m_Models;
};

} // namespace TAMBO
