// SPDX-License-Identifier: GPL-3.0-or-later
#include "CompactSvg.h"

#include <QHash>
#include <QRegularExpression>

namespace TAMBO::app {

namespace {

// Shorter ones are as long as a reference to them.
constexpr int kLongOutline = 100;

const QRegularExpression &outlines()
{
    static const QRegularExpression pattern(
        QStringLiteral("<path [^>]*fill-rule=\"(\\w+)\" d=\"([^\"]{%1,})\"\\s*/>")
            .arg(kLongOutline));
    return pattern;
}

QString withoutEmptyGroups(QString svg)
{
    static const QRegularExpression empty(
        QStringLiteral("<g [^>]*>\\s*(?:<text [^>]*>\\s*</text>\\s*)?</g>\\s*"));
    static const QRegularExpression fonts(
        QStringLiteral("\\s*font-family=\"[^\"]*\" font-size=\"[^\"]*\" font-weight=\"[^\"]*\" "
                       "font-style=\"[^\"]*\"\\s*(?=>)"));
    svg.remove(empty);
    if (!svg.contains(QStringLiteral("<text ")))
        svg.remove(fonts);
    return svg;
}

QString withSharedOutlines(const QString &svg)
{
    QHash<QString, int> counts;
    for (const QRegularExpressionMatch &path : outlines().globalMatch(svg))
        ++counts[path.captured(1) + path.captured(2)];
    QHash<QString, QString> names;
    QString shared;
    QString result;
    qsizetype copied = 0;
    for (const QRegularExpressionMatch &path : outlines().globalMatch(svg)) {
        const QString key = path.captured(1) + path.captured(2);
        if (counts.value(key) < 2)
            continue;
        QString &name = names[key];
        if (name.isEmpty()) {
            name = QStringLiteral("o%1").arg(names.size());
            shared += QStringLiteral("<path id=\"%1\" fill-rule=\"%2\" d=\"%3\"/>\n")
                          .arg(name, path.captured(1), path.captured(2));
        }
        result += svg.mid(copied, path.capturedStart() - copied);
        result += QStringLiteral("<use xlink:href=\"#%1\"/>").arg(name);
        copied = path.capturedEnd();
    }
    result += svg.mid(copied);
    const qsizetype place = result.indexOf(QStringLiteral("</defs>"));
    return place < 0 ? svg : result.insert(place, shared);
}

} // namespace

QString compactSvg(const QString &svg)
{
    return withSharedOutlines(withoutEmptyGroups(svg));
}

} // namespace TAMBO::app
