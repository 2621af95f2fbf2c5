// SPDX-License-Identifier: GPL-3.0-or-later
// A command of this plug-in, as menus and keys are made from it.
#pragma once

#include <QKeySequence>
#include <QList>
#include <QString>

#include <functional>
#include <utility>

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
    // Of what the command switches on and off, whether it is on; empty for other commands.
    std::function<bool(Companion &)> isOn = {};
    // Why it can do nothing now; empty when it can. Asked when a menu opens, which shows it.
    std::function<QString(const Companion &)> lack = {};
};

[[nodiscard]] inline Command switching(std::function<bool(Companion &)> isOn, Command command)
{
    command.isOn = std::move(isOn);
    return command;
}

} // namespace companion
