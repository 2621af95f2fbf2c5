// SPDX-License-Identifier: GPL-3.0-or-later
#include "Color.h"

#include <QColor>

Color::Color(const QColor &color) : Color(color.rgb()) { }

QColor Color::toQColor() const
{
    return QColor::fromRgb(m_Rgb);
}
