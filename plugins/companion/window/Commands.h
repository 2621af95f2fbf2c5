// SPDX-License-Identifier: GPL-3.0-or-later
// The commands of this plug-in: the one table that menus and keys are made from.
#pragma once

#include <QKeySequence>
#include <QList>
#include <QString>

#include <functional>
#include <vector>

class QMenu;

namespace companion {

class Companion;

struct Command
{
    // As in a menu.
    QString text;
    QString toolTip;
    QList<QKeySequence> keys;
    std::function<void(Companion &)> run;
    // A line is drawn above it.
    bool beginsGroup = false;
    // The title of the submenu that it is in; empty for none. Those of one stand beside each other.
    QString menu = {};
    // The workbench has a command of its own with these keys, which does the same: its menu shows
    // them, and they are taken in alignment windows only.
    bool hasKeysOfWorkbench = false;
};

[[nodiscard]] const std::vector<Command> &commands();

// Puts all commands into the menu. target says at each command whom it is for; null means nobody,
// and the commands are greyed out while the menu is open.
void fillMenu(QMenu &menu, const std::function<Companion *()> &target);

} // namespace companion
