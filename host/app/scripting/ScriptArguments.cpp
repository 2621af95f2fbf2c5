// SPDX-License-Identifier: GPL-3.0-or-later
#include "ScriptArguments.h"

namespace TAMBO::app {

Result<std::vector<std::string>> scriptArguments(const QString &text)
{
    std::vector<std::string> words;
    QString word;
    QChar quote;
    // An empty word stands in quotes.
    bool isWord = false;
    const auto end = [&] {
        if (isWord)
            words.push_back(word.toStdString());
        word.clear();
        isWord = false;
    };
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar letter = text[i];
        if (letter == quote) {
            quote = QChar();
        } else if (letter == u'\\' && quote != u'\'' && i + 1 < text.size()) {
            word += text[++i];
            isWord = true;
        } else if (!quote.isNull()) {
            word += letter;
        } else if (letter == u'"' || letter == u'\'') {
            quote = letter;
            isWord = true;
        } else if (letter.isSpace()) {
            end();
        } else {
            word += letter;
            isWord = true;
        }
    }
    if (!quote.isNull())
        return Failure(FailureKind::Refused,
                       QStringLiteral("The arguments have a %1 without a second one: %2")
                           .arg(quote)
                           .arg(text)
                           .toStdString());
    end();
    return words;
}

} // namespace TAMBO::app
