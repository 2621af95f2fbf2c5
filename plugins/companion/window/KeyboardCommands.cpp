// SPDX-License-Identifier: GPL-3.0-or-later
#include "CommandLists.h"
#include "Companion.h"
#include "Texts.h"

namespace companion {

std::vector<Command> keyboardCommands()
{
    const QString menu = tr("Key&board");
    return {
        switching(
            [](Companion &companion) { return companion.cursor().place().has_value(); },
            {tr("Cell &Cursor"),
             tr("Read, select and edit cells by keys: the first arrow key brings it as well; or no "
                "longer"),
             {QKeySequence(Qt::Key_F7)},
             [](Companion &companion) { companion.cursor().toggle(); },
             false,
             menu}),
        {tr("&Next Part of the Window"),
         tr("Give the keyboard to the next one of cells, tool bars and docks; Escape gives it "
            "back"),
         {QKeySequence(Qt::Key_F6)},
         [](Companion &companion) { companion.stops().next(); },
         false,
         menu},
        {tr("&Previous Part of the Window"),
         tr("Give the keyboard to the one before"),
         {QKeySequence(Qt::SHIFT | Qt::Key_F6)},
         [](Companion &companion) { companion.stops().previous(); },
         false,
         menu},
    };
}

} // namespace companion
