// SPDX-License-Identifier: GPL-3.0-or-later
#include "CommandLists.h"
#include "Companion.h"
#include "Texts.h"

namespace companion {

std::vector<Command> columnCommands()
{
    const QString menu = tr("Col&umns");
    return {
        {tr("Remove &Empty"),
         tr("Remove the columns without residues"),
         {},
         [](Companion &companion) { companion.columns().removeEmpty(); },
         false,
         menu},
        {tr("Remove with &Gaps…"),
         tr("Remove the columns in which too many rows have a gap"),
         {},
         [](Companion &companion) { companion.columns().askForGaps(); },
         false,
         menu},
        {tr("&Realign All Columns"),
         tr("Let the aligner of the settings place the residues of all rows anew"),
         {QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_R)},
         [](Companion &companion) { companion.columns().realignAll(); },
         false,
         menu},
        {tr("New &Alignment of Block"),
         tr("Make an alignment of the rows and columns of the block"),
         {},
         [](Companion &companion) {
             const CellCursor &cursor = companion.cursor();
             companion.columns().newAlignmentOfBlock(cursor.hasBlock() ? cursor.block()
                                                                       : std::nullopt);
         },
         false,
         menu},
    };
}

} // namespace companion
