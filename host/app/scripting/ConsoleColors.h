// SPDX-License-Identifier: GPL-3.0-or-later
// The colors of the console's lines, which can be read on any background.
#pragma once

#include <QColor>

class QPalette;

namespace TAMBO::app {

// As the guidelines for accessible texts count it, from 1 to 21.
[[nodiscard]] double contrastOf(const QColor &text, const QColor &ground);
// What normal text has to have.
constexpr double kLeastContrast = 4.5;

// On the palette's ground for texts.
[[nodiscard]] QColor errorColor(const QPalette &palette);
[[nodiscard]] QColor noticeColor(const QPalette &palette);

} // namespace TAMBO::app
