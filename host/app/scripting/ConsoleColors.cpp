// SPDX-License-Identifier: GPL-3.0-or-later
#include "ConsoleColors.h"

#include <QPalette>

#include <algorithm>
#include <cmath>

namespace TAMBO::app {

namespace {

double linear(double part)
{
    return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
}

double luminance(const QColor &color)
{
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) +
           0.0722 * linear(color.blueF());
}

// The one that stands out; on a ground between the two the palette's own text.
QColor readable(const QColor &dark, const QColor &bright, const QPalette &palette)
{
    const QColor ground = palette.color(QPalette::Base);
    const QColor best = contrastOf(dark, ground) >= contrastOf(bright, ground) ? dark : bright;
    return contrastOf(best, ground) >= kLeastContrast ? best : palette.color(QPalette::Text);
}

} // namespace

double contrastOf(const QColor &text, const QColor &ground)
{
    const double first = luminance(text);
    const double second = luminance(ground);
    return (std::max(first, second) + 0.05) / (std::min(first, second) + 0.05);
}

QColor errorColor(const QPalette &palette)
{
    return readable(QColor(0xb0, 0x00, 0x20), QColor(0xff, 0x9a, 0x90), palette);
}

QColor noticeColor(const QPalette &palette)
{
    return readable(QColor(0x1f, 0x4f, 0x8f), QColor(0x9c, 0xc4, 0xff), palette);
}

} // namespace TAMBO::app
