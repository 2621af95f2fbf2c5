// SPDX-License-Identifier: GPL-3.0-or-later
// One value of the settings store.
#pragma once

#include "Export.h"

#include <QFont>

#include <optional>
#include <string>

// A conversion that does not succeed gives false, 0, the application's default font or an empty
// text, and reports false through ok.
class TAMBO_API Setting
{
public:
    Setting() = default;
    explicit Setting(std::string value) : m_Value(std::move(value)) { }

    // true, yes, on, 1 and false, no, off, 0, in either case.
    [[nodiscard]] bool ToBool(bool *ok = nullptr) const;
    // QFont's own description, or "Family, size".
    [[nodiscard]] QFont ToFont(bool *ok = nullptr) const;
    [[nodiscard]] float ToFloat(bool *ok = nullptr) const;
    [[nodiscard]] double ToDouble(bool *ok = nullptr) const;
    [[nodiscard]] std::string ToString(bool *ok = nullptr) const;

private:
    std::optional<std::string> m_Value;
};
