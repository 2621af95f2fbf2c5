// SPDX-License-Identifier: GPL-3.0-or-later
// The colors of what is written beside black, all of which can be read: a test computes it.
#pragma once

#include <QColor>

#include <array>

namespace companion {

// On white.
inline constexpr QColor kQuietText(89, 89, 89);
inline constexpr QColor kSelectedText(0, 100, 0);
inline constexpr QColor kLengthText(0, 90, 140);
inline constexpr QColor kCladeText(120, 60, 140);
inline constexpr std::array kTextsOnWhite = {kQuietText, kSelectedText, kLengthText, kCladeText};

// What has to be seen, on the ground of a dock or a bar.
[[nodiscard]] inline QColor warningTextOn(const QColor &ground)
{
    return ground.lightness() < 128 ? QColor(240, 180, 76) : QColor(160, 58, 0);
}

} // namespace companion
