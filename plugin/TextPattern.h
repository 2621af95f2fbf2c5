// SPDX-License-Identifier: GPL-3.0-or-later
// A regular expression that is looked for in the texts of rows.
#pragma once

#include <QRegularExpression>
#include <QString>

#include <functional>
#include <optional>
#include <string>

namespace ZEP {

class TextPattern
{
public:
    explicit TextPattern(const QString &text);

    // What is wrong with the text, and where; empty when it is a regular expression. One that is
    // none matches nothing.
    [[nodiscard]] QString error() const;

    // Calls visit(begin, length) for each match, of which none overlaps the one before. Ends at the
    // first empty one, behind which the search would never get on, and gives false.
    using Visitor = std::function<void(unsigned long, unsigned long)>;
    bool forEachMatch(const std::string &row, const Visitor &visit) const;

private:
    QRegularExpression m_Expression;
    // The text when no character of it has a meaning of its own.
    std::optional<std::string> m_Plain;
};

} // namespace ZEP
