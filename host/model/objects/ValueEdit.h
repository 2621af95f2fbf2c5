// SPDX-License-Identifier: GPL-3.0-or-later
// A plug-in keeps another value with an object, or none.
#pragma once

#include "EditBytes.h"

#include <optional>
#include <string>
#include <utility>

namespace TAMBO {

class ValueEdit final : public Edit
{
public:
    ValueEdit(Compound &object, std::string plugin, std::string key,
              std::optional<std::string> value)
        : m_Object(object),
          m_Plugin(std::move(plugin)),
          m_Key(std::move(key)),
          m_Value(std::move(value))
    { }
    // What one has stored behind its tag.
    [[nodiscard]] static LoadedEdit load(EditReader &in);

    std::unique_ptr<Edit> apply() override;
    // The older value is the one to go back to.
    [[nodiscard]] bool absorb(const Edit &next) override;
    std::size_t bytes() const override;
    const char *kind() const override { return "keep a value"; }
    EditPart part() const override { return EditPart::Display; }
    Compound *subject() const override { return &m_Object; }
    void store(EditWriter &out) const override;
    void storeInverse(EditWriter &out) const override;
    bool fits() const override;

private:
    void store(const std::string *value, EditWriter &out) const;

    Compound &m_Object;
    std::string m_Plugin;
    std::string m_Key;
    std::optional<std::string> m_Value;
};

} // namespace TAMBO
