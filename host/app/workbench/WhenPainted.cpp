// SPDX-License-Identifier: GPL-3.0-or-later
#include "WhenPainted.h"

#include <QTimer>
#include <QWidget>
#include <QWindow>

#include <algorithm>

namespace TAMBO::app {

// Timers of no length come round only when all other events have been dealt with, and may start the
// next one.
void whenPainted(QObject &context, const std::function<QList<QWidget *>()> &windows,
                 const std::function<void()> &then)
{
    constexpr int kQuietRounds = 10;
    auto *rounds = new QTimer(&context);
    QObject::connect(
        rounds, &QTimer::timeout, rounds, [windows, rounds, then, quiet = 0]() mutable {
            const QList<QWidget *> now = windows();
            const bool areExposed = std::ranges::all_of(now, [](const QWidget *window) {
                return window->windowHandle() != nullptr && window->windowHandle()->isExposed();
            });
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
