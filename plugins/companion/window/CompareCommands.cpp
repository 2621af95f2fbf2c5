// SPDX-License-Identifier: GPL-3.0-or-later
#include "CommandLists.h"
#include "Companion.h"
#include "Texts.h"

namespace companion {

std::vector<Command> compareCommands()
{
    const QString menu = tr("Co&mpare");
    return {
        {tr("&Compare With…"),
         tr("Compare with another alignment of the same sequences, a file, or a former state"),
         {QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_D)},
         [](Companion &companion) { companion.compare().ask(); },
         false,
         menu},
        {tr("Compare with an &Aligner's"),
         tr("Have a copy aligned by the aligner of the settings, and compare with that"),
         {},
         [](Companion &companion) { companion.compare().compareWithAligner(); },
         false,
         menu},
        {tr("&Next Difference"),
         tr("Go to the next columns in which the compared alignments differ"),
         {QKeySequence(Qt::Key_F4)},
         [](Companion &companion) { companion.compare().next(); },
         false,
         menu},
        {tr("&Previous Difference"),
         tr("Go to the columns before in which they differ"),
         {QKeySequence(Qt::SHIFT | Qt::Key_F4)},
         [](Companion &companion) { companion.compare().previous(); },
         false,
         menu},
        {tr("&Take Over"),
         tr("Lay the columns of the difference out as in the other alignment"),
         {},
         [](Companion &companion) { companion.compare().takeOver(); },
         false,
         menu},
        {tr("Take Over in the &Block"),
         tr("Lay the rows of the block out as in the other alignment, where its columns differ"),
         {},
         [](Companion &companion) { companion.compare().takeOverInBlock(); },
         false,
         menu},
        {tr("Take &Over All"),
         tr("Lay all columns out as in the other alignment"),
         {},
         [](Companion &companion) { companion.compare().takeOverAll(); },
         false,
         menu},
        {tr("&Show the Other"),
         tr("Show the alignment that is compared with in a window"),
         {},
         [](Companion &companion) { companion.compare().showOther(); },
         false,
         menu},
        {tr("&End"),
         tr("Compare no more"),
         {},
         [](Companion &companion) { companion.compare().end(); },
         false,
         menu},
    };
}

} // namespace companion
