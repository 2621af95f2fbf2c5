// SPDX-License-Identifier: GPL-3.0-or-later
// Where plug-ins say what the workbench shows in its status line.
#pragma once

#include <QObject>
#include <QString>

namespace TAMBO::services {

class StatusDesk : public QObject
{
    Q_OBJECT

public:
    static StatusDesk &instance();

    void say(const QString &text);

signals:
    void said(const QString &text);
};

} // namespace TAMBO::services
