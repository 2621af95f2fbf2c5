// SPDX-License-Identifier: GPL-3.0-or-later
// An object has another name.
#pragma once

#include "EditBytes.h"

#include <string>
#include <utility>

namespace TAMBO {

class RenameEdit final : public Edit
{
public:
    // Of a stored object that has a name.
    RenameEdit(Compound &object, std::string name) : m_Object(object), m_Name(std::move(name)) { }
    // What one has stored behind its tag.
    [[nodiscard]] static LoadedEdit load(EditReader &in);

    std::unique_ptr<Edit> apply() override;
    std::size_t bytes() const override { return sizeof(*this) + m_Name.capacity(); }
    const char *kind() const override { return "rename"; }
    EditPart part() const override { return EditPart::Name; }
    Compound *subject() const override { return &m_Object; }
    bool actsOnWhole() const override { return true; }
    void store(EditWriter &out) const override;
    void storeInverse(EditWriter &out) const override;
    bool fits() const override;

private:
    Compound &m_Object;
    std::string m_Name;
};

} // namespace TAMBO
