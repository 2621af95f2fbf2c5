// SPDX-License-Identifier: GPL-3.0-or-later
// The entries of a menu that run scripts: one with a file dialog, and a menu of those run last.
#pragma once

#include <QObject>

class QMenu;

namespace TAMBO::app {

class ScriptDesk;

class ScriptMenu : public QObject
{
    Q_OBJECT

public:
    // At the menu's end; goes with the menu. desk outlives it.
    ScriptMenu(ScriptDesk &desk, QMenu &menu);

private:
    void fill();

    ScriptDesk &m_Desk;
    QMenu *m_Recent;
};

} // namespace TAMBO::app
