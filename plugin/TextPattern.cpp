// SPDX-License-Identifier: GPL-3.0-or-later
#include "TextPattern.h"

#include <algorithm>

namespace ZEP {

namespace {

bool isPlain(QChar character)
{
    constexpr QLatin1String kSpecial("\\^$.[|()?*+{");
    return character.unicode() > 0 && character.unicode() < 0x80 && !kSpecial.contains(character);
}

// Most searches are for plain residues, and text is found much faster than an expression is tried.
std::optional<std::string> plainText(const QString &text)
{
    if (text.isEmpty() || !std::all_of(text.begin(), text.end(), isPlain))
        return std::nullopt;
    return text.toStdString();
}

} // namespace

TextPattern::TextPattern(const QString &text) : m_Expression(text), m_Plain(plainText(text))
{
    m_Expression.optimize();
}

QString TextPattern::error() const
{
    if (m_Expression.isValid())
        return {};
    return QStringLiteral("%1 at position %2")
        .arg(m_Expression.errorString(), QString::number(m_Expression.patternErrorOffset()));
}

bool TextPattern::forEachMatch(const std::string &row, const Visitor &visit) const
{
    if (m_Plain) {
        for (std::size_t at = row.find(*m_Plain); at != std::string::npos;
             at = row.find(*m_Plain, at + m_Plain->size()))
            visit(at, m_Plain->size());
        return true;
    }
    if (!m_Expression.isValid())
        return true;
    const QString text = QString::fromLatin1(row.data(), static_cast<qsizetype>(row.size()));
    qsizetype at = 0;
    while (true) {
        const QRegularExpressionMatch match =
            m_Expression.match(text, at, QRegularExpression::NormalMatch,
                               QRegularExpression::DontCheckSubjectStringMatchOption);
        if (!match.hasMatch())
            return true;
        if (match.capturedLength() == 0)
            return false;
        visit(static_cast<unsigned long>(match.capturedStart()),
              static_cast<unsigned long>(match.capturedLength()));
        at = match.capturedEnd();
    }
}

} // namespace ZEP
