// SPDX-License-Identifier: GPL-3.0-or-later
#include "NamePattern.h"

#include "Texts.h"

namespace companion {

namespace {

// That of the toolkit is for files, in which "*" stops at "/".
QString expressionOf(const QString &wildcard)
{
    QString expression;
    for (const QChar character : wildcard) {
        if (character == u'*')
            expression += QStringLiteral(".*");
        else if (character == u'?')
            expression += u'.';
        else
            expression += QRegularExpression::escape(QString(character));
    }
    return QRegularExpression::anchoredPattern(expression);
}

} // namespace

NamePattern::NamePattern(const QString &text, NameLanguage language)
    : m_Expression(language == NameLanguage::Plain      ? QRegularExpression::escape(text)
                   : language == NameLanguage::Wildcard ? expressionOf(text)
                                                        : text,
                   QRegularExpression::CaseInsensitiveOption |
                       QRegularExpression::DotMatchesEverythingOption |
                       QRegularExpression::UseUnicodePropertiesOption)
{
    if (!m_Expression.isValid())
        m_Mistake = tr("Character %1: %2.")
                        .arg(m_Expression.patternErrorOffset() + 1)
                        .arg(m_Expression.errorString());
}

bool NamePattern::isIn(const QString &name) const
{
    return m_Mistake.isEmpty() && m_Expression.match(name).hasMatch();
}

bool NamePattern::hasPart() const
{
    return m_Expression.captureCount() > 0;
}

std::optional<QString> NamePattern::partOf(const QString &name) const
{
    if (!m_Mistake.isEmpty())
        return std::nullopt;
    const QRegularExpressionMatch match = m_Expression.match(name);
    if (!match.hasMatch())
        return std::nullopt;
    return hasPart() ? match.captured(1) : QString();
}

} // namespace companion
