// SPDX-License-Identifier: GPL-3.0-or-later
// The font in which letters have room in a cell.
#pragma once

#include <QFont>
#include <QSize>

#include <optional>

namespace companion {

// As large as fits in a cell of the size; nothing when no letter could be read there.
[[nodiscard]] std::optional<QFont> letterFont(const QFont &family, const QSize &cell);
// So large that a line of it is as high as the height; nothing when no letter could be read there.
[[nodiscard]] std::optional<QFont> lineFont(const QFont &family, int height);

} // namespace companion
