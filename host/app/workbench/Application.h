// SPDX-License-Identifier: GPL-3.0-or-later
// The toolkit's application, which goes on when the handling of an event throws. A plug-in's
// mistake must not take the unsaved work of everything else with it.
#pragma once

#include <QApplication>
#include <QString>

struct QMetaObject;

namespace TAMBO::app {

class Application : public QApplication
{
public:
    // argc: as long as the application lives, as the toolkit wants it.
    Application(int &argc, char **argv);

    // The event counts as not handled when a handler threw; the log says what.
    bool notify(QObject *receiver, QEvent *event) override;

private:
    void tell(const QMetaObject *kind, const QString &what);

    // A window that throws while it is painted would fill the log.
    QString m_LastFailure;
};

} // namespace TAMBO::app
