// SPDX-License-Identifier: GPL-3.0-or-later
// The commands of one alignment window: by their keys, and in a menu on its corner, which the menu
// key and Shift+F10 open as well.
#pragma once

#include "CellEventFilter.h"

#include <QObject>
#include <QPointer>

class QMenu;

namespace companion {

class Companion;

class WindowCommands : public QObject, public TAMBO::CellEventFilter
{
    Q_OBJECT

public:
    // The companion is that of the window, and outlives this.
    WindowCommands(TAMBO::AlignmentWindow &window, Companion &companion);
    ~WindowCommands() override;

    bool handle(TAMBO::AlignmentWindow &window, TAMBO::WindowArea area, QEvent &event) override;

protected:
    // The key that asks for a menu, while cells, names or header have the keyboard.
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void showMenu(const QPoint &global);
    // Below the corner, for who has no pointer there.
    void showMenuByKey();

    Companion &m_Companion;
    // Made when it is asked for the first time, and kept: it is still at work while a command runs
    // that was chosen in it.
    QPointer<QMenu> m_Menu;
};

} // namespace companion
