// SPDX-License-Identifier: GPL-3.0-or-later
// Which of black and white is readable on a colour.
#pragma once

#include <QColor>

namespace ZEP {

[[nodiscard]] inline QColor letterColorOn(const QColor &background)
{
    const int grey = (11 * background.red() + 16 * background.green() + 5 * background.blue()) >> 5;
    return grey <= 126 ? Qt::white : Qt::black;
}

} // namespace ZEP
