// SPDX-License-Identifier: GPL-3.0-or-later
#include "CommandLists.h"
#include "Companion.h"
#include "Texts.h"

namespace companion {

std::vector<Command> findCommands()
{
    return {
        {tr("&Find…"),
         tr("Find names and pieces of sequences"),
         {QKeySequence(Qt::CTRL | Qt::Key_F)},
         [](Companion &companion) { companion.find().ask(); }},
        {tr("Find &Next"),
         tr("Go to the next hit"),
         {QKeySequence(Qt::Key_F3)},
         [](Companion &companion) { companion.find().next(); }},
        {tr("Find &Previous"),
         tr("Go to the previous hit"),
         {QKeySequence(Qt::SHIFT | Qt::Key_F3)},
         [](Companion &companion) { companion.find().previous(); }},
        {tr("&Go To…"),
         tr("Go to a column, to the row of a name, or to a residue by chain and number"),
         {QKeySequence(Qt::CTRL | Qt::Key_G)},
         [](Companion &companion) { companion.goTo().ask(); }},
    };
}

} // namespace companion
