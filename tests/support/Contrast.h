// SPDX-License-Identifier: GPL-3.0-or-later
// How well a text is read on its ground: the contrast ratio of the Web Content Accessibility
// Guidelines 2.1, from 1 to 21. Of 4.5 it says that texts of any size can be read.
#pragma once

#include <QColor>

#include <algorithm>
#include <cmath>

inline constexpr double kReadableContrast = 4.5;

[[nodiscard]] inline double luminanceOf(const QColor &color)
{
    const auto linear = [](double part) {
        return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) +
           0.0722 * linear(color.blueF());
}

// Of a text that lets its ground shine through, as it is seen.
[[nodiscard]] inline double contrastOf(const QColor &text, const QColor &ground)
{
    const auto seen = [&](double over, double under) {
        return over * text.alphaF() + under * (1 - text.alphaF());
    };
    const QColor shown = QColor::fromRgbF(float(seen(text.redF(), ground.redF())),
                                          float(seen(text.greenF(), ground.greenF())),
                                          float(seen(text.blueF(), ground.blueF())));
    const double one = luminanceOf(shown);
    const double other = luminanceOf(ground);
    return (std::max(one, other) + 0.05) / (std::min(one, other) + 0.05);
}
