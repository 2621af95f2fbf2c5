// SPDX-License-Identifier: GPL-3.0-or-later
// What names are to be like. Small and capital letters are the same.
#pragma once

#include <QRegularExpression>
#include <QString>

#include <optional>

namespace companion {

enum class NameLanguage {
    // Somewhere in the name.
    Plain,
    // The whole name: "*" stands for anything, "?" for one character.
    Wildcard,
    // Somewhere in the name.
    Expression
};

class NamePattern
{
public:
    NamePattern(const QString &text, NameLanguage language);

    // What is wrong with it, and where, for people; empty when nothing is. Then it is in no name.
    [[nodiscard]] const QString &mistake() const noexcept { return m_Mistake; }
    [[nodiscard]] bool isIn(const QString &name) const;
    // Whether an expression has a part in parentheses to remember.
    [[nodiscard]] bool hasPart() const;
    // What the first such part stands for in the name, empty without one; nothing when the pattern
    // is not in it.
    [[nodiscard]] std::optional<QString> partOf(const QString &name) const;

private:
    QRegularExpression m_Expression;
    QString m_Mistake;
};

} // namespace companion
