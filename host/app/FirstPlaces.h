// SPDX-License-Identifier: GPL-3.0-or-later
// Where windows stand when nobody has placed them yet: the workbench at the left edge of the
// screen, the first tool window beside it.
#pragma once

#include <QRect>

#include <optional>

class QWidget;

namespace TAMBO::app {

// Of the workbench, for the room that the desktop leaves to windows.
[[nodiscard]] QRect workbenchPlace(const QRect &room);
// The top left corner of a window's frame beside another; nothing when there is no room for it.
[[nodiscard]] std::optional<QPoint> placeBeside(const QRect &frame, const QRect &other,
                                                const QRect &room);
// Moves a tool window beside the workbench unless its place is remembered.
void placeFirstTime(QWidget &tool, const QWidget &workbench);

} // namespace TAMBO::app
