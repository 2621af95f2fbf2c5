// SPDX-License-Identifier: GPL-3.0-or-later
// A tool bar whose buttons are configured in the settings.
#pragma once

#include "Export.h"

#include <QString>
#include <QToolBar>

class QMainWindow;

// The buttons come from the settings, section: the class name of the main window without its
// namespace (for example "KALMO2"), key: a list of "number|icon|text|tool tip|toggle" separated by
// ";", with a lone "-" for a separator. The icon is a file in Config::GetIconDir(); fields may be
// left out from the end; the word "toggle" makes a button that stays pressed. What cannot be read
// is left out with a line in the log. Pressing a button calls slot, a (int,int,bool) given with or
// without the toolkit's SLOT(), with the button's number, 0 and whether it is pressed now.
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
