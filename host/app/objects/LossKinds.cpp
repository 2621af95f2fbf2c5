// SPDX-License-Identifier: GPL-3.0-or-later
#include "LossKinds.h"

#include <QHash>
#include <QRegularExpression>
#include <QSet>

#include <algorithm>

namespace TAMBO::app {

namespace {

// The same word of one and of many, or nothing for a word that only one of them has.
QString wordOfAny(const QString &word)
{
    static const QHash<QString, QString> irregular = {
        {"are", "is"}, {"have", "has"},      {"a", ""},           {"an", ""},
        {"one", ""},   {"another", "other"}, {"others", "other"}, {"helices", "helix"},
    };
    if (const auto found = irregular.constFind(word); found != irregular.cend())
        return *found;
    const bool isPlural = word.size() > 3 && word.endsWith(u's');
    return isPlural ? word.chopped(1) : word;
}

} // namespace

QString lossKind(const QString &sentence)
{
    static const QRegularExpression name("\\bIt is called .* now,");
    static const QRegularExpression example("\"[^\"]*\"|\\([^()]*\\)");
    static const QRegularExpression number("[0-9][0-9,.]*( of [0-9][0-9,.]*)?");
    static const QRegularExpression space("[\\s.,:;]+");
    QString text = sentence;
    text.replace(name, "It is called # now,").remove(example).replace(number, "#");
    QStringList words;
    for (const QString &word : text.split(space, Qt::SkipEmptyParts)) {
        const QString plain = wordOfAny(word);
        if (!plain.isEmpty())
            words << plain;
    }
    return words.join(u' ');
}

bool areKindsKnown(const QStringList &sentences, const QStringList &known)
{
    QSet<QString> kinds;
    for (const QString &sentence : known)
        kinds.insert(lossKind(sentence));
    return std::ranges::all_of(sentences, [&kinds](const QString &sentence) {
        return kinds.contains(lossKind(sentence));
    });
}

} // namespace TAMBO::app
