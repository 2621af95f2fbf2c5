// SPDX-License-Identifier: GPL-3.0-or-later
// A residue as plug-ins see it: one place of a sequence's arrays.
#pragma once

#include "Compound.h"

#include <cstdint>

namespace TAMBO {

class ResidueOwner;

class ResidueHandle final : public Residue
{
public:
    ResidueHandle() = default;
    ~ResidueHandle() override;
    void fill(ResidueOwner &owner, std::uint32_t index) noexcept
    {
        m_Owner = &owner;
        m_Index = index;
    }
    [[nodiscard]] ResidueOwner &owner() const noexcept { return *m_Owner; }
    [[nodiscard]] std::size_t index() const noexcept { return m_Index; }

    // "ALA 12".
    std::string Name() const override;
    char TypeCode() const override;
    std::string TypeName() const override;
    Compound *Parent() const override;
    std::size_t ChildCount() const override;
    Compound *Child(std::size_t index) const override;
    // True for a residue that is tied to one of a locked chain.
    bool IsLocked() const override;
    Vertex Position() const override;
    Color OwnColor() const override;
    void AssignColor(const Color &color) override;
    void SetSelected(bool selected) override;
    bool IsSelected() const override;
    SequenceNumber GetSeqId() const override;
    void SetSeqId(const SequenceNumber &number) override;
    Compound *GetSSE() const override;

private:
    ResidueOwner *m_Owner = nullptr;
    std::uint32_t m_Index = 0;
};

} // namespace TAMBO
