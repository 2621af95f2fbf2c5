// SPDX-License-Identifier: GPL-3.0-or-later
// The ties of a sequence before others took their place.
#pragma once

#include "EditBytes.h"
#include "ResidueTies.h"

#include <memory>

namespace TAMBO {

class StoredObject;

class TieEdit final : public Edit
{
public:
    // The slot is the sequence's.
    TieEdit(StoredObject &sequence, std::unique_ptr<ResidueTies> &slot,
            std::unique_ptr<ResidueTies> ties);
    ~TieEdit() override;
    // What one has stored behind its tag and its sequence, which has the slot.
    [[nodiscard]] static LoadedEdit load(StoredObject &sequence, std::unique_ptr<ResidueTies> &slot,
                                         EditReader &in);

    std::unique_ptr<Edit> apply() override;
    std::size_t bytes() const override;
    const char *kind() const override { return "tie residues"; }
    EditPart part() const override { return EditPart::Display; }
    Compound *subject() const override;
    // With the chains.
    void appendNeeded(std::vector<const Compound *> &out) const override;
    void store(EditWriter &out) const override;
    void storeInverse(EditWriter &out) const override;
    bool fits() const override;

private:
    void store(const ResidueTies *ties, EditWriter &out) const;

    StoredObject &m_Sequence;
    std::unique_ptr<ResidueTies> &m_Slot;
    std::unique_ptr<ResidueTies> m_Ties;
};

} // namespace TAMBO
