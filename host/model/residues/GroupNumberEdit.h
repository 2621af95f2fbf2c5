// SPDX-License-Identifier: GPL-3.0-or-later
// A group of a chain has another number.
#pragma once

#include "EditBytes.h"
#include "SequenceNumber.h"

#include <utility>

namespace TAMBO {

class GroupNumberEdit final : public Edit
{
public:
    // The slot is a part of the group.
    GroupNumberEdit(Compound &group, SequenceNumber &slot, SequenceNumber number)
        : m_Group(group), m_Slot(slot), m_Number(std::move(number))
    { }

    std::unique_ptr<Edit> apply() override;
    std::size_t bytes() const override { return sizeof(*this); }
    const char *kind() const override { return "renumber"; }
    EditPart part() const override { return EditPart::Numbers; }
    Compound *subject() const override { return &m_Group; }
    bool actsOnWhole() const override { return true; }
    void store(EditWriter &out) const override;
    void storeInverse(EditWriter &out) const override;
    bool fits() const override { return true; }

private:
    Compound &m_Group;
    SequenceNumber &m_Slot;
    SequenceNumber m_Number;
};

// A valid number as bytes.
void storeNumber(const SequenceNumber &number, EditWriter &out);
[[nodiscard]] SequenceNumber loadNumber(EditReader &in);

} // namespace TAMBO
