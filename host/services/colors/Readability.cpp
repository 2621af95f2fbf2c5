// SPDX-License-Identifier: GPL-3.0-or-later
#include "Readability.h"

#include <QApplication>
#include <QPalette>

#include <algorithm>
#include <cmath>

namespace TAMBO::services {

namespace {

// The toolkit's is half of it, which gives 3.9 to 1 on white.
constexpr double kQuietAlpha = 0.7;

// What the Web Content Accessibility Guidelines ask for, and a little for rounding.
constexpr double kLeastContrast = 4.55;
constexpr int kMostLightness = 255;

double brightnessOf(const QColor &color)
{
    const auto linear = [](double part) {
        return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) +
           0.0722 * linear(color.blueF());
}

double contrastBetween(const QColor &one, const QColor &other)
{
    constexpr double glare = 0.05;
    const auto [dark, bright] = std::minmax({brightnessOf(one), brightnessOf(other)});
    return (bright + glare) / (dark + glare);
}

} // namespace

PlainIconStyle::PlainIconStyle() = default;

PlainIconStyle::~PlainIconStyle() = default;

QPixmap PlainIconStyle::generatedIconPixmap(QIcon::Mode mode, const QPixmap &pixmap,
                                            const QStyleOption *option) const
{
    return mode == QIcon::Selected ? pixmap
                                   : QProxyStyle::generatedIconPixmap(mode, pixmap, option);
}

QColor readableGround(const QColor &text, const QColor &ground)
{
    if (contrastBetween(text, ground) >= kLeastContrast)
        return ground;
    const int step = brightnessOf(text) > brightnessOf(ground) ? -1 : 1;
    QColor color = ground.toHsl();
    while (contrastBetween(text, color.toRgb()) < kLeastContrast) {
        const int lightness = color.lightness() + step;
        if (lightness < 0 || lightness > kMostLightness)
            return ground;
        color.setHsl(color.hslHue(), color.hslSaturation(), lightness, color.alpha());
    }
    return color.toRgb();
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
        const QColor chosen = now.color(group, QPalette::HighlightedText);
        const QColor ground = now.color(group, QPalette::Highlight);
        const QColor readable = readableGround(chosen, ground);
        if (readable == ground)
            continue;
        // Together: what the desktop changes later would fit neither alone.
        quiet.setColor(group, QPalette::Highlight, readable);
        quiet.setColor(group, QPalette::HighlightedText, chosen);
    }
    QApplication::setPalette(quiet);
}

} // namespace TAMBO::services

#include "moc_Readability.cpp"
