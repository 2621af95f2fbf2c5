// SPDX-License-Identifier: GPL-3.0-or-later
#include "CommandLists.h"
#include "Companion.h"
#include "Texts.h"

namespace companion {

std::vector<Command> nameCommands()
{
    const QString menu = tr("N&ames");
    return {
        {tr("&Fit Names"),
         tr("Make the names as wide as the longest one that is to be seen"),
         {},
         [](Companion &companion) { companion.names().fitVisible(); },
         false,
         menu},
        {tr("&Narrow Names"),
         tr("Make the names eight cells wide"),
         {},
         [](Companion &companion) { companion.names().reset(); },
         false,
         menu},
    };
}

} // namespace companion
