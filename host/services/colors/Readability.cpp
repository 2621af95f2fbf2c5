// SPDX-License-Identifier: GPL-3.0-or-later
#include "Readability.h"

#include <QApplication>
#include <QPalette>

namespace TAMBO::services {

namespace {

// The toolkit's is half of it, which gives 3.9 to 1 on white.
constexpr double kQuietAlpha = 0.7;

} // namespace

PlainIconStyle::PlainIconStyle() = default;

PlainIconStyle::~PlainIconStyle() = default;

QPixmap PlainIconStyle::generatedIconPixmap(QIcon::Mode mode, const QPixmap &pixmap,
                                            const QStyleOption *option) const
{
    return mode == QIcon::Selected ? pixmap
                                   : QProxyStyle::generatedIconPixmap(mode, pixmap, option);
}

void makeReadable()
{
    QApplication::setStyle(new PlainIconStyle);
    const QPalette now = QApplication::palette();
    // The other colors stay those of the desktop, also when they change.
    QPalette quiet;
    for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive}) {
        QColor text = now.color(group, QPalette::Text);
        text.setAlphaF(kQuietAlpha);
        quiet.setColor(group, QPalette::PlaceholderText, text);
    }
    QApplication::setPalette(quiet);
}

} // namespace TAMBO::services

#include "moc_Readability.cpp"
