// SPDX-License-Identifier: GPL-3.0-or-later
// The windows of the program as they come onto the screen, for pictures and for those who measure
// how long opening takes.
#pragma once

#include <QList>

#include <functional>

class QWidget;

namespace TAMBO::app {

class Workbench;

// All windows of the program that are on the screen, the workbench's own first.
[[nodiscard]] QList<QWidget *> shownWindows(const Workbench &workbench);

// Calls then when they are on the screen and nothing is left to be laid out.
void whenPainted(Workbench &workbench, const std::function<void()> &then);

} // namespace TAMBO::app
