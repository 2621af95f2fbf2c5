// SPDX-License-Identifier: GPL-3.0-or-later
// The commands of this plug-in: the one table that menus and keys are made from.
#pragma once

#include "Command.h"

#include <functional>
#include <vector>

class QMenu;

namespace companion {

class Companion;

[[nodiscard]] const std::vector<Command> &commands();

// Puts all commands into the menu. target says at each command whom it is for; null means nobody,
// and the commands are greyed out while the menu is open.
void fillMenu(QMenu &menu, const std::function<Companion *()> &target);

} // namespace companion
