// SPDX-License-Identifier: GPL-3.0-or-later
// The residue numbers of a sequence before a step, which are few runs whatever was renumbered.
#pragma once

#include "ChangeSession.h"
#include "EditBytes.h"
#include "ResidueNumbers.h"

#include <memory>

namespace TAMBO {

class NumberEdit;
class ResidueOwner;

// Where a sequence keeps its numbers.
struct NumberSlot
{
    ResidueNumbers numbers;
    // Of the step under way, which owns it; null when there is none.
    NumberEdit *open = nullptr;
};

class NumberEdit final : public GrowingEdit
{
public:
    // Keeps the numbers as they are now. The slot is the owner's.
    NumberEdit(ResidueOwner &owner, NumberSlot &slot);
    ~NumberEdit() override;
    // What one has stored behind its tag and its owner, which has the slot.
    [[nodiscard]] static LoadedEdit load(ResidueOwner &owner, NumberSlot &slot, EditReader &in);

    void close() noexcept override;
    std::unique_ptr<Edit> apply() override;
    // Residues that have been tied to a chain meanwhile get their numbers there.
    std::unique_ptr<Edit> repeat() override;
    std::size_t bytes() const override;
    const char *kind() const override { return "renumber"; }
    EditPart part() const override { return EditPart::Numbers; }
    Compound *subject() const override;
    void store(EditWriter &out) const override;
    void storeInverse(EditWriter &out) const override;
    bool fits() const override;

private:
    void store(const ResidueNumbers &numbers, EditWriter &out) const;

    ResidueOwner &m_Owner;
    NumberSlot &m_Slot;
    ResidueNumbers m_Numbers;
};

} // namespace TAMBO
