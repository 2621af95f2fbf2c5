// SPDX-License-Identifier: GPL-3.0-or-later
// The text of names in the window, and names that are longer than their place.
#pragma once

#include <QString>

namespace TAMBO {
class Alignment;
class AlignmentWindow;
} // namespace TAMBO

class QFontMetrics;

namespace companion {

// What the window writes behind a name, so that the place of the name is known.
inline const QString kSelectedMark = QStringLiteral("  X");
inline const QString kUnselectedMark = QStringLiteral("  O");

[[nodiscard]] QString shownName(const TAMBO::Alignment &alignment, unsigned long row);
// Between the marks and the cells, in pixels.
[[nodiscard]] int marginOfNames(const TAMBO::AlignmentWindow &window);

// Cut in the middle, with "…" where it was cut, to at most width pixels: both ends of a name are
// what tells it from its neighbours. Empty when not even the "…" has room.
[[nodiscard]] QString cutInTheMiddle(const QString &name, int width, const QFontMetrics &metrics);

} // namespace companion
