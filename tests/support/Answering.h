// SPDX-License-Identifier: GPL-3.0-or-later
// Answers the next modal dialog of a kind.
#pragma once

#include <QApplication>
#include <QTimer>

// Calls answer with the dialog once it is open, however long that takes.
template <typename Dialog, typename Answer> void answering(const Answer &answer)
{
    QTimer::singleShot(1, qApp, [answer] {
        auto *dialog = qobject_cast<Dialog *>(QApplication::activeModalWidget());
        if (dialog != nullptr && dialog->isVisible())
            answer(*dialog);
        else
            answering<Dialog>(answer);
    });
}
