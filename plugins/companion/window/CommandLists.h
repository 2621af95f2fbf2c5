// SPDX-License-Identifier: GPL-3.0-or-later
// The commands by what they are about: for each submenu a list of its own.
#pragma once

#include "Command.h"

#include <vector>

namespace companion {

[[nodiscard]] std::vector<Command> findCommands();
[[nodiscard]] std::vector<Command> selectCommands();
[[nodiscard]] std::vector<Command> editCommands();
[[nodiscard]] std::vector<Command> zoomCommands();
[[nodiscard]] std::vector<Command> trackCommands();
[[nodiscard]] std::vector<Command> guideCommands();
[[nodiscard]] std::vector<Command> pageCommands();
[[nodiscard]] std::vector<Command> rowCommands();
[[nodiscard]] std::vector<Command> columnCommands();
[[nodiscard]] std::vector<Command> colorCommands();
[[nodiscard]] std::vector<Command> compareCommands();
[[nodiscard]] std::vector<Command> treeCommands();
[[nodiscard]] std::vector<Command> nameCommands();
[[nodiscard]] std::vector<Command> keyboardCommands();

} // namespace companion
