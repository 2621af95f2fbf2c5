// SPDX-License-Identifier: GPL-3.0-or-later
// Pictures for the tool bar, drawn in the colours of the desktop.
#pragma once

#include <QIcon>

namespace TAMBO::app {

[[nodiscard]] QIcon openIcon();
[[nodiscard]] QIcon undoIcon();
[[nodiscard]] QIcon redoIcon();

} // namespace TAMBO::app
