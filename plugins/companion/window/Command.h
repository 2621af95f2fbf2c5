// SPDX-License-Identifier: GPL-3.0-or-later
// A command of this plug-in, as menus and keys are made from it.
#pragma once

#include <QKeySequence>
#include <QList>
#include <QString>

#include <functional>

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
    // The workbench has a command of its own with these keys, which does the same, or lists in
    // which they mean something of their own: its menu shows them, and they are taken in alignment
    // windows only.
    bool hasKeysOfWorkbench = false;
};

} // namespace companion
