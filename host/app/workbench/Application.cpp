// SPDX-License-Identifier: GPL-3.0-or-later
#include "Application.h"

#include "ColorPicking.h"
#include "Logger.h"

#include <QColorDialog>
#include <QEvent>
#include <QMetaObject>

#include <exception>

namespace TAMBO::app {

Application::Application(int &argc, char **argv) : QApplication(argc, argv) { }

bool Application::notify(QObject *receiver, QEvent *event)
{
    // Known now; the handler may delete the receiver before it throws.
    const QMetaObject *const kind = receiver == nullptr ? nullptr : receiver->metaObject();
    // Of all dialogs, also those of plug-ins, which know nothing of it.
    if (event->type() == QEvent::Hide)
        if (const auto *const colors = qobject_cast<const QColorDialog *>(receiver))
            services::keepColorsOf(*colors);
    try {
        return QApplication::notify(receiver, event);
    } catch (const std::exception &exception) {
        tell(kind, QString::fromLocal8Bit(exception.what()));
    } catch (...) {
        tell(kind, QStringLiteral("an unknown exception"));
    }
    return false;
}

void Application::tell(const QMetaObject *kind, const QString &what)
{
    const QString failure =
        QStringLiteral("An action was broken off: %1 (in %2)")
            .arg(what, QString::fromLatin1(kind == nullptr ? "?" : kind->className()));
    if (failure == m_LastFailure)
        return;
    m_LastFailure = failure;
    Logger::Write(failure, Logger::Severity::Error);
}

} // namespace TAMBO::app
