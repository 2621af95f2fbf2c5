// SPDX-License-Identifier: GPL-3.0-or-later
#include "PaintedWindows.h"

#include "MainWindow.h"
#include "Workbench.h"

#include <QApplication>
#include <QTimer>
#include <QWidget>
#include <QWindow>

#include <algorithm>

namespace TAMBO::app {

QList<QWidget *> shownWindows(Workbench &workbench)
{
    QList<QWidget *> windows = {&workbench.window()};
    for (QWidget *window : QApplication::topLevelWidgets()) {
        const bool isTool = window->isVisible() && window->windowType() == Qt::Window;
        if (isTool && !windows.contains(window))
            windows << window;
    }
    return windows;
}

// Timers of no length come round only when all other events have been dealt with, and may start the
// next one.
void whenPainted(Workbench &workbench, const std::function<void()> &then)
{
    constexpr int kQuietRounds = 10;
    auto *rounds = new QTimer(&workbench);
    QObject::connect(
        rounds, &QTimer::timeout, rounds, [&workbench, rounds, then, quiet = 0]() mutable {
            const QList<QWidget *> windows = shownWindows(workbench);
            const bool areExposed = std::ranges::all_of(
                windows, [](const QWidget *window) { return window->windowHandle()->isExposed(); });
            quiet = areExposed ? quiet + 1 : 0;
            if (quiet < kQuietRounds)
                return;
            rounds->deleteLater();
            rounds->stop();
            then();
        });
    rounds->start(0);
}

} // namespace TAMBO::app
