// SPDX-License-Identifier: GPL-3.0-or-later
#include "HelpViewer.h"

#include "HelpWindow.h"

#include <QCoreApplication>
#include <QPointer>

using TAMBO::services::HelpWindow;

namespace {

QPointer<HelpWindow> s_Window;

void deleteWindow()
{
    delete s_Window.data();
}

} // namespace

void HelpViewer::Show(const QString &document)
{
    if (!s_Window) {
        s_Window = new HelpWindow;
        // A widget must not outlive the application object; run once however often it is added.
        qAddPostRoutine(deleteWindow);
    }
    s_Window->showDocument(document);
    s_Window->show();
    s_Window->raise();
    s_Window->activateWindow();
}
