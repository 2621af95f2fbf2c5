// SPDX-License-Identifier: GPL-3.0-or-later
// An object has another colour of its own, or none.
#pragma once

#include "Color.h"
#include "EditBytes.h"

#include <optional>

namespace TAMBO {

class ObjectColorEdit final : public Edit
{
public:
    // The slot is a part of the object.
    ObjectColorEdit(Compound &object, std::optional<Color> &slot, std::optional<Color> color)
        : m_Object(object), m_Slot(slot), m_Color(color)
    { }

    std::unique_ptr<Edit> apply() override;
    std::size_t bytes() const override { return sizeof(*this); }
    const char *kind() const override { return "color"; }
    EditPart part() const override { return EditPart::Display; }
    Compound *subject() const override { return &m_Object; }
    bool actsOnWhole() const override { return true; }
    void store(EditWriter &out) const override;
    void storeInverse(EditWriter &out) const override;
    bool fits() const override { return true; }

private:
    Compound &m_Object;
    std::optional<Color> &m_Slot;
    std::optional<Color> m_Color;
};

// A color, or none, as bytes.
void storeColor(const std::optional<Color> &color, EditWriter &out);
[[nodiscard]] std::optional<Color> loadColor(EditReader &in);

} // namespace TAMBO
