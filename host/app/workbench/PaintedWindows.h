// SPDX-License-Identifier: GPL-3.0-or-later
// The windows of the program as they come onto the screen, for pictures and for those who measure
// how long opening takes.
#pragma once

#include <QList>

#include <functional>

class QObject;
class QWidget;

namespace TAMBO::app {

class Workbench;

// All windows of the program that are on the screen, the workbench's own first.
[[nodiscard]] QList<QWidget *> shownWindows(const Workbench &workbench);

// Calls then when the windows are on the screen and nothing is left to be laid out, unless the
// context goes before. windows is asked again and again.
void whenPainted(QObject &context, const std::function<QList<QWidget *>()> &windows,
                 const std::function<void()> &then);
// Those of the program.
void whenPainted(Workbench &workbench, const std::function<void()> &then);

} // namespace TAMBO::app
