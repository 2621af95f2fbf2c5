// SPDX-License-Identifier: GPL-3.0-or-later
#include "MarkupText.h"

#include <cmath>

namespace companion {

namespace {

bool isAllowed(QChar each)
{
    const char16_t unit = each.unicode();
    return unit == u'\t' || (unit >= u' ' && unit != 0x7f && unit < 0xfffe);
}

} // namespace

QByteArray markupText(const QString &text)
{
    QString clean;
    clean.reserve(text.size());
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text[i].isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate())
            clean += text[i++];
        else if (text[i].isSurrogate() || !isAllowed(text[i])) {
            clean += QChar(QChar::ReplacementCharacter);
            continue;
        }
        clean += text[i];
    }
    return clean.toHtmlEscaped().toUtf8();
}

QByteArray markupNumber(double number)
{
    constexpr double kParts = 1000;
    return QByteArray::number(std::round(number * kParts) / kParts, 'g', 12);
}

QByteArray markupColor(QRgb color)
{
    return '#' + QByteArray::number(color & 0xffffffU, 16).rightJustified(6, '0');
}

} // namespace companion
