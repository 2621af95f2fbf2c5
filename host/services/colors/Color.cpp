// SPDX-License-Identifier: GPL-3.0-or-later
#include "Color.h"

#include <QColor>

Color::Color(const QColor &color) : Color(fromArgb(color.rgba())) { }

QColor Color::toQColor() const
{
    return QColor::fromRgba(argb());
}
