// SPDX-License-Identifier: GPL-3.0-or-later
#include "DialogFont.h"

#include <QFontDatabase>
#include <QFontInfo>
#include <QStringList>

#include <algorithm>
#include <cstdlib>

namespace ZEP {

namespace {

// How far the style is from what the font looks like.
int distance(const QString &family, const QString &style, const QFontInfo &wanted)
{
    constexpr int kOtherSlant = 10000;
    const bool isSlanted = wanted.style() != QFont::StyleNormal;
    const int slant = QFontDatabase::italic(family, style) == isSlanted ? 0 : kOtherSlant;
    return slant + std::abs(QFontDatabase::weight(family, style) - wanted.weight());
}

QString styleOf(const QString &family, const QFontInfo &wanted)
{
    const QStringList styles = QFontDatabase::styles(family);
    if (styles.isEmpty() || styles.contains(wanted.styleName()))
        return wanted.styleName();
    return *std::ranges::min_element(
        styles, {}, [&](const QString &style) { return distance(family, style, wanted); });
}

} // namespace

QFont dialogFont(const QFont &font)
{
    // What is shown: the family of the font may be another name of it, or lack.
    const QFontInfo shown(font);
    QFont named(font);
    named.setFamilies({shown.family()});
    named.setStyleName(styleOf(shown.family(), shown));
    return named;
}

} // namespace ZEP
