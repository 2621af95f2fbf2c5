// SPDX-License-Identifier: GPL-3.0-or-later
// What people read of a text that the toolkit may take for markup.
#pragma once

#include <QString>
#include <QTextDocument>

[[nodiscard]] inline QString shownText(const QString &text)
{
    if (!Qt::mightBeRichText(text))
        return text;
    QTextDocument document;
    document.setHtml(text);
    return document.toPlainText();
}
