// SPDX-License-Identifier: GPL-3.0-or-later
// Names that are longer than their place.
#pragma once

#include <QString>

class QFontMetrics;

namespace companion {

// Cut in the middle, with "…" where it was cut, to at most width pixels: both ends of a name are
// what tells it from its neighbours. Empty when not even the "…" has room.
[[nodiscard]] QString cutInTheMiddle(const QString &name, int width, const QFontMetrics &metrics);

} // namespace companion
