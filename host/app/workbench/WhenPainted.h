// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QList>

#include <functional>

class QObject;
class QWidget;

namespace TAMBO::app {

// Calls then when the windows are on the screen and nothing is left to be laid out, unless the
// context goes before. windows is asked again and again.
void whenPainted(QObject &context, const std::function<QList<QWidget *>()> &windows,
                 const std::function<void()> &then);

} // namespace TAMBO::app
