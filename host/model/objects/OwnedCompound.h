// SPDX-License-Identifier: GPL-3.0-or-later
// Base of the stored objects of the tree: colour, selection, lock and the object above.
#pragma once

#include "Compound.h"
#include "CompoundState.h"

namespace TAMBO {

class OwnedCompound : public Compound
{
public:
    ~OwnedCompound() override;

    // '\0': most kinds have no letter.
    char TypeCode() const override;
    Compound *Parent() const override;
    // No children unless a class says otherwise.
    std::size_t ChildCount() const override;
    Compound *Child(std::size_t index) const override;
    bool IsLocked() const override;
    // Undefined unless a class says otherwise.
    Vertex Position() const override;
    Color OwnColor() const override;
    void AssignColor(const Color &color) override;
    void SetSelected(bool selected) override;
    bool IsSelected() const override;

    [[nodiscard]] CompoundState &state() noexcept { return m_State; }
    [[nodiscard]] const CompoundState &state() const noexcept { return m_State; }

protected:
    OwnedCompound() = default;

private:
    CompoundState m_State;
};

} // namespace TAMBO
