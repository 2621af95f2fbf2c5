// SPDX-License-Identifier: GPL-3.0-or-later
#include "PaintedWindows.h"

#include "MainWindow.h"
#include "WhenPainted.h"
#include "Workbench.h"

#include <QApplication>
#include <QWidget>

namespace TAMBO::app {

QList<QWidget *> shownWindows(const Workbench &workbench)
{
    QList<QWidget *> windows;
    if (QWidget *const own = workbench.shownWindow())
        windows << own;
    for (QWidget *window : QApplication::topLevelWidgets()) {
        const bool isTool = window->isVisible() && window->windowType() == Qt::Window;
        if (isTool && !windows.contains(window))
            windows << window;
    }
    return windows;
}

void whenPainted(Workbench &workbench, const std::function<void()> &then)
{
    whenPainted(
        workbench, [&workbench] { return shownWindows(workbench); }, then);
}

} // namespace TAMBO::app
