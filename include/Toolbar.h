// SPDX-License-Identifier: GPL-3.0-or-later
// A tool bar whose buttons are configured in the settings.
#pragma once

#include "Export.h"

#include <QString>
#include <QToolBar>

class QMainWindow;

// The buttons come from the settings section of the main window's meta-class name without its
// namespace (for example "KALMO2"), key: a list of "number|icon|text" separated by ";". Pressing
// one calls slot, a (int,int,bool), with the button's number, 0 and the button's state.
class TAMBO_API Toolbar : public QToolBar
{
    Q_OBJECT

public:
    Toolbar(const QString &key, QMainWindow *window, const QString &title, Qt::ToolBarArea area,
            QObject *receiver, const char *slot);
    ~Toolbar() override;

signals:
    void pressed(int number, int second, bool state);
};
