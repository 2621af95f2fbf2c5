// SPDX-License-Identifier: GPL-3.0-or-later
// Names and messages shown as they are: the toolkit takes a tool tip with a "<b>" in it for markup.
#pragma once

#include <QString>
#include <QTextDocument>

namespace TAMBO {

// What to give to the toolkit so that its tool tip reads like the text.
[[nodiscard]] inline QString plainToolTip(const QString &text)
{
    if (!Qt::mightBeRichText(text))
        return text;
    return QStringLiteral("<p style='white-space:pre'>%1</p>").arg(text.toHtmlEscaped());
}

} // namespace TAMBO
