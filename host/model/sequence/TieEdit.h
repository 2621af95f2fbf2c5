// SPDX-License-Identifier: GPL-3.0-or-later
// The ties of a sequence before others took their place.
#pragma once

#include "Edit.h"
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

    std::unique_ptr<Edit> apply() override;
    std::size_t bytes() const override;
    const char *kind() const override { return "tie residues"; }
    EditPart part() const override { return EditPart::Display; }
    Compound *subject() const override;

private:
    StoredObject &m_Sequence;
    std::unique_ptr<ResidueTies> &m_Slot;
    std::unique_ptr<ResidueTies> m_Ties;
};

} // namespace TAMBO
