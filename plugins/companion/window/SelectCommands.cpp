// SPDX-License-Identifier: GPL-3.0-or-later
#include "CommandLists.h"
#include "Companion.h"
#include "Texts.h"
#include "WholeSelection.h"

namespace companion {

std::vector<Command> selectCommands()
{
    const QString menu = tr("Se&lect");
    return {
        {tr("&None"),
         tr("Take everything out of the selection, in all windows"),
         {QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_A)},
         [](Companion &companion) { companion.selectNothing(); },
         false,
         menu,
         true},
        {tr("&Select Again"),
         tr("Select what was selected before everything was taken out of the selection"),
         {QKeySequence(kSelectAgainKeys)},
         [](Companion &companion) { companion.selectAgain(); },
         false,
         menu,
         true},
        {tr("&All"),
         tr("Select all residues of the alignment"),
         {},
         [](Companion &companion) { companion.selectAll(); },
         false,
         menu},
        {tr("&Invert"),
         tr("Select the residues of the alignment that are not selected, instead of those that "
            "are"),
         {QKeySequence(Qt::CTRL | Qt::Key_I)},
         [](Companion &companion) { companion.invertSelection(); },
         false,
         menu},
        {tr("&Block…"),
         tr("Select rows and columns by their numbers"),
         {},
         [](Companion &companion) { companion.selecting().ask(SelectBy::Block); },
         false,
         menu},
        {tr("Rows &Like This One…"),
         tr("Select the rows that are identical enough with the one under the pointer"),
         {QKeySequence(Qt::CTRL | Qt::Key_L)},
         [](Companion &companion) { companion.selecting().ask(SelectBy::Likeness); },
         false,
         menu},
        {tr("Rows by Na&me…"),
         tr("Select the rows whose names are like a pattern"),
         {},
         [](Companion &companion) { companion.selecting().ask(SelectBy::Names); },
         false,
         menu},
        {tr("Columns by &Conservation…"),
         tr("Select the columns that are as conserved, or as little"),
         {},
         [](Companion &companion) { companion.selecting().ask(SelectBy::Conservation); },
         false,
         menu},
        {tr("Columns by &Gaps…"),
         tr("Select the columns in which as many rows have a gap, or as few"),
         {},
         [](Companion &companion) { companion.selecting().ask(SelectBy::Gaps); },
         false,
         menu},
    };
}

} // namespace companion
