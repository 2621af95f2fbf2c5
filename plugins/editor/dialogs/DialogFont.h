// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QFont>

namespace ZEP {

// The font by the names of family and style that the font dialog knows it by. A font that is known
// by weight and slant alone would show up there in whatever style comes first.
[[nodiscard]] QFont dialogFont(const QFont &font);

} // namespace ZEP
