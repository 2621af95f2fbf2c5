// SPDX-License-Identifier: GPL-3.0-or-later
#include "CommandLists.h"
#include "Companion.h"
#include "Texts.h"

namespace companion {

std::vector<Command> treeCommands()
{
    const QString menu = tr("&Tree");
    return {
        switching([](Companion &companion) { return !companion.tree().isHidden(); },
                  {tr("Show &Tree"),
                   tr("Show the tree of the rows beside their names, or take it away"),
                   {QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_T)},
                   [](Companion &companion) { companion.tree().toggle(); },
                   false,
                   menu}),
        {tr("&Compute Tree"),
         tr("Make a tree of the rows as they are now"),
         {},
         [](Companion &companion) { companion.tree().compute(); },
         false,
         menu},
        {tr("&Sort Rows by Tree"),
         tr("Put the rows into the order of the tree"),
         {},
         [](Companion &companion) { companion.tree().sortRows(); },
         false,
         menu},
        {tr("&Open Tree…"),
         tr("Show a tree of the rows that is in a Newick file"),
         {},
         [](Companion &companion) { companion.tree().askAndOpen(); },
         false,
         menu},
        {tr("Sa&ve Tree…"),
         tr("Write the tree into a Newick file"),
         {},
         [](Companion &companion) { companion.tree().askAndSave(); },
         false,
         menu},
    };
}

} // namespace companion
